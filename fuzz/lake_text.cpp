// The text of parameter files: what is read, merged and changed is as the model of the tests has it, and what
// is written reads back as it was.
#include <paramdb/storage/lake.h>
#include <paramdb/storage/line_origins.h>

#include "support/expect.h"
#include "support/input.h"

#include <algorithm>
#include <stdexcept>
#include <tests/storage/lake_model.h>
#include <tests/storage/lake_support.h>

namespace {

// The model goes through all lines for each line, and into sections by calling itself.
bool IsSmall(std::string_view text) {
    return std::count(text.begin(), text.end(), '\n') < 250;
}

void CheckOrigins(CLake const& lake) {
    paramdb::LineOrigins const origins(lake);
    for (auto const& node : lake) {
        auto const origin = origins.Find(node);
        if (!origin)
            continue;
        fuzz::Expect(origin->file < origins.Files().size(), "a file of the lake");
        auto const& file = origins.Files()[origin->file];
        fuzz::Expect(origin->line >= 1 && origin->line <= file.line_begins.size(), "a line of the file");
        // A blank line is told by its end, which may be that of its CR.
        fuzz::Expect(origin->column <= file.Line(origin->line).size() + 2, "a column of the line");
    }
}

// Looks up whatever there is, and what there is not.
void Walk(CLake const& lake) {
    for (auto const& node : lake) {
        fuzz::Expect(node.level() >= -1, "no level below that of the root");
        for (auto child = node.begin_named(); child != node.end_named(); ++child) {
            auto const found = node[child->first];
            fuzz::Expect(!node.is_section() || found.position == child->second, "a child under its key");
            static_cast<void>(found.number());
            static_cast<void>(found.text());
        }
        fuzz::Expect(node.find_value(L"no such value") == -1, "a miss for what is not there");
        fuzz::Expect(!lake[L"no such key"].found(), "no line of a missing key");
    }
}

void CheckSame(CLake& lake, lake_model::Lake const& model, std::string_view when) {
    std::string const difference = lake_support::Difference(lake, model, false);
    fuzz::Expect(difference.empty(), when, difference);
}

// Whether a written line is the line again. Of one that begins with a colon only what is behind that is
// written, which may be another line.
bool IsLasting(CLake::CNode const& line) {
    std::string text;
    auto const add = [&](paramdb::LakeText part) {
        for (wchar_t const character : part.wide())
            text += static_cast<char>(character);
    };
    add(line.key_text());
    text += line.is_named() ? ": " : "";
    add(line.value_text());
    if (!line.comment_text().empty()) {
        text += "\t; ";
        add(line.comment_text());
    }
    auto const again = lake_model::ParseLine(text);
    return again.key == line.key_text().wide() && again.value == line.value_text().wide() &&
           again.comment == line.comment_text().wide();
}

// Written and read again, a lake is what it was; one whose top level is closed cannot be written.
void CheckWriting(CLake& lake) {
    auto const path = fuzz::ScratchFolder() / "written.lake";
    auto const written = lake_support::WriteLake(lake, path);
    bool const has_lost_line =
        std::any_of(std::next(lake.begin()), lake.end(), [](auto const& line) { return line.level() < 0; });
    fuzz::Expect(written.throws == has_lost_line, "a fault exactly for lines behind the end");
    if (written.throws || !std::all_of(std::next(lake.begin()), lake.end(), IsLasting))
        return;
    CLake again;
    again.read(fuzz::ScratchFile("again.lake", written.bytes));
    fuzz::Expect(lake_support::Lines(again) == lake_support::Lines(lake), "the lines that were written");
    for (auto left = lake.begin(), right = again.begin(); left != lake.end(); ++left, ++right)
        // A line that was a section in one of several files keeps that mark among all of them.
        fuzz::Expect(left->level() == right->level() && left->is_section() >= right->is_section(),
                     "the sections that were written",
                     "line " + std::to_string(std::distance(lake.begin(), left)) + ": level " +
                         std::to_string(left->level()) + ", then " + std::to_string(right->level()));
    fuzz::Expect(lake_support::WriteLake(again, path).bytes == written.bytes, "the bytes that were written");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::string_view const input = fuzz::TextOf(data, size);
    auto const files = fuzz::SplitFiles(input, 3);
    bool const is_small = IsSmall(input);

    CLake lake;
    lake_model::Lake model;
    for (std::string_view const file : files) {
        CLake other;
        lake_support::ReadText(other, file);
        CheckOrigins(other);
        Walk(other);
        CheckWriting(other);
        lake.merge(other);
        if (is_small) {
            lake_model::Lake other_model;
            other_model.Read(file);
            CheckSame(other, other_model, "read as the model has it");
            model.Merge(other_model);
            CheckSame(lake, model, "merged as the model has it");
        }
    }
    CheckOrigins(lake);
    Walk(lake);
    CheckWriting(lake);

    CLake copy(lake);
    copy.merge(copy);
    if (is_small) {
        lake_model::Lake copy_model = lake_model::Lake::CopyOf(model);
        copy_model.Merge(copy_model);
        CheckSame(copy, copy_model, "merged with itself as the model has it");
        lake_support::ReadText(lake, files.back());
        model.Read(files.back());
        CheckSame(lake, model, "read over as the model has it");
        if (lake.size() > 1) {
            std::size_t const line = 1 + size % (lake.size() - 1);
            lake_support::Node(lake, line).push_back(L"1 2");
            model.PushBack(line, L"1 2");
            CheckSame(lake, model, "added to as the model has it");
        }
        lake[L"<added>"] = L"value";
        model.AssignAtTop(L"<added>", L"value");
        CheckSame(lake, model, "assigned to as the model has it");
    }
    lake = copy;
    lake.clear();
    fuzz::Expect(lake.empty(), "nothing after clearing");
    return 0;
}
