// A good file with one random damage at a time: a byte changed, put in or taken out, a line dropped or
// doubled. Where that costs or changes any row but those of the damaged lines themselves, a check must tell,
// at the place.
#include "tests/tools/command_run.h"
#include "tools/check/check_report.h"
#include "tools/check/context.h"
#include "tools/check/rules.h"
#include "tools/check/suppression.h"
#include "tools/row_buffer.h"
#include "tools/row_origins.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <random>
#include <set>
#include <sstream>

using namespace paramdb;
using namespace paramdb::tools;
using namespace paramdb::tools::check;

namespace {

using Lines = std::vector<std::string>;

Lines Split(std::string const& text) {
    Lines lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

std::string Join(Lines const& lines) {
    std::string text;
    for (std::string const& line : lines)
        text += line + '\n';
    return text;
}

// The example with a few rows of each table.
std::string GoodFile() {
    constexpr std::size_t rows = 5;
    Lines good;
    std::size_t row = 0;
    for (std::string const& line :
         Split(test_support::ReadBytes(PARAMDB_SOURCE_DIR "/examples/gearbox/gearbox.lake"))) {
        row = line.starts_with('\t') ? row + 1 : 0;
        if (row <= rows && !line.starts_with("; ="))
            good.push_back(line);
    }
    return Join(good);
}

// Lines counted from 1, both ends belonging to it; last is first - 1 for none.
struct LineRange {
    std::size_t first;
    std::size_t last;
    bool Holds(std::size_t line) const { return line >= first && line <= last; }
};

// The lines in which two texts differ, in each of them.
std::pair<LineRange, LineRange> DifferentLines(Lines const& left, Lines const& right) {
    std::size_t const least = std::min(left.size(), right.size());
    std::size_t same_first = 0;
    while (same_first < least && left[same_first] == right[same_first])
        ++same_first;
    std::size_t same_last = 0;
    while (same_last < least - same_first &&
           left[left.size() - 1 - same_last] == right[right.size() - 1 - same_last])
        ++same_last;
    return {{same_first + 1, left.size() - same_last}, {same_first + 1, right.size() - same_last}};
}

// All rows of all tables as text, but those that stand in these lines; each as often as it is there.
std::multiset<std::string> RowsOutside(CLake& lake, LineRange lines) {
    std::multiset<std::string> rows;
    CParamTables tables;
    Silence const silence;
    LineOrigins const origins(lake);
    for (CatalogueEntry const& entry : CatalogueEntries(tables)) {
        if (!lake[entry.description->tag].found())
            continue;
        entry.table->ReadTable(lake);
        RowOrigins const row_origins(entry, lake);
        std::size_t index = 0;
        entry.rows->VisitRows([&](auto key, auto row) {
            CLakeNode const* const line = row_origins.Line(index++);
            EXPECT_NE(line, nullptr) << ToUtf8(entry.description->tag) << ShownKey(key);
            auto const origin = line != nullptr ? origins.Find(*line) : std::nullopt;
            if (!origin || !lines.Holds(origin->line))
                rows.insert(ToUtf8(entry.description->tag) + ShownKey(key) + '|' + ShownKey(row));
            return true;
        });
    }
    return rows;
}

std::string Damaged(std::string text, std::mt19937& random) {
    static std::string const letters = "\"\n:;{}<> \t0123456789.-ax\x80\xC3";
    auto const letter = [&] { return letters[random() % letters.size()]; };
    Lines lines = Split(text);
    std::size_t const line = random() % lines.size();
    std::size_t const place = random() % text.size();
    switch (random() % 8) {
    case 0:
    case 1:
        text[place] = letter();
        return text;
    case 2:
        return text.insert(place, 1, letter());
    case 3:
        return text.erase(place, 1);
    case 4: // at an end of a line, where most is at stake
        return text.erase(text.find('\n', place), 1);
    case 5:
        return text.insert(text.find('\n', place) + 1, 1, letter());
    case 6:
        lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(line));
        return Join(lines);
    default:
        lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(line), lines[line]);
        return Join(lines);
    }
}

// Whether one of the places is in the lines, beside them, or opens or closes the section in which they stand.
bool IsAt(CheckContext const& context, Finding const& finding, LineRange lines) {
    std::set<std::size_t> places{finding.place.line};
    for (RelatedPlace const& related : finding.related)
        places.insert(related.place.line);
    LineRange const near{lines.first - 1, lines.last + 1};
    std::set<std::size_t> ends;
    for (std::size_t line = near.first; line <= near.last; ++line) {
        if (OutlineSection const* const section = context.Lines().SectionAt({0, line}))
            ends.insert({section->opener.place.line, section->closer.place.line});
    }
    return std::any_of(places.begin(), places.end(),
                       [&](std::size_t line) { return near.Holds(line) || ends.contains(line); });
}

class DamageTest : public CommandTest {};

} // namespace

TEST_F(DamageTest, WhatCostsOtherRowsIsTold) {
    std::string const good = GoodFile();
    Lines const good_lines = Split(good);
    int costly = 0;
    for (unsigned seed = 1; seed <= 150; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        std::string const damaged = Damaged(good, random);
        auto const [before, after] = DifferentLines(good_lines, Split(damaged));
        std::string const file = File(u8"damaged.lake", damaged);

        std::ostringstream err;
        auto const context = CheckContext::Make({file}, err);
        ASSERT_NE(context, nullptr) << err.str();
        FindingList list;
        RunRules(*context, list);
        std::vector<Finding> const findings = Suppress(*context, list.Take());
        std::ostringstream out;
        PrintFindingsText(out, *context, findings);

        CLake good_lake(test_support::WideName(std::filesystem::path(File(u8"good.lake", good))).c_str());
        CLake damaged_lake(context->Lake());
        if (RowsOutside(good_lake, before) == RowsOutside(damaged_lake, after))
            continue;
        ++costly;
        bool const is_told =
            std::any_of(findings.begin(), findings.end(), [&, lines = after](Finding const& finding) {
                return (finding.code->code.starts_with("P1") || finding.code->code.starts_with("P2")) &&
                       IsAt(*context, finding, lines);
            });
        EXPECT_TRUE(is_told) << "line " << after.first << ": "
                             << (after.first <= after.last ? Split(damaged)[after.first - 1] : "") << '\n'
                             << out.str();
    }
    EXPECT_GT(costly, 15);
}

TEST_F(DamageTest, TheGoodFileIsGood) {
    auto const run = RunCommand({"check", File(u8"good.lake", GoodFile())});
    // What is derived from so few rows is another matter.
    for (char const* const family : {" P10", " P11", " P12", " P2"})
        EXPECT_EQ(run.out.find(family), std::string::npos) << run.out;
}

// Whatever stands in a file, a check comes to an end, and every finding has a place in it.
TEST_F(DamageTest, AnyText) {
    std::string const pieces[] = {"<TMode>",
                                  ":",
                                  " ",
                                  "{",
                                  "}",
                                  "\n",
                                  "\n",
                                  "\n",
                                  "; ",
                                  "paramdb:",
                                  "1",
                                  "-5",
                                  "\"Idle\"",
                                  "\"",
                                  "a",
                                  "\xC3",
                                  "\xBC",
                                  "\x96",
                                  "<TBaseOrder>",
                                  "\t",
                                  "\r",
                                  "1 2\n",
                                  "nan",
                                  " all",
                                  " for ",
                                  "<TMode>: {\n",
                                  "disable",
                                  "3",
                                  "0.5",
                                  "; paramdb: disable P204 for 1\n",
                                  "1 a\n",
                                  "\xEF\xBB\xBF"};
    for (unsigned seed = 1; seed <= 300; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        std::string text =
            random() % 4 == 0 ? "" : "<DbDesign.CacheVersion>: 216\n<DbDesign.CacheMinorVersion>: 1\n";
        for (std::size_t piece = 0, count = random() % 60; piece < count; ++piece)
            text += pieces[random() % std::size(pieces)];
        std::vector<std::string> files{File(u8"any.lake", "a:\n" + text)};
        if (random() % 3 == 0)
            files.push_back(File(u8"other.lake", text + "\nb:\n"));
        std::ostringstream err;
        auto const context = CheckContext::Make(files, err);
        ASSERT_NE(context, nullptr) << err.str();
        FindingList list;
        RunRules(*context, list);
        auto const findings = Suppress(*context, list.Take());
        for (auto const format :
             {CheckFormat::Text, CheckFormat::Json, CheckFormat::Sarif, CheckFormat::Github}) {
            std::ostringstream out;
            PrintFindings(out, *context, findings, format);
            EXPECT_EQ(out.str().empty(), format == CheckFormat::Github && findings.empty());
        }
        for (Finding const& finding : findings) {
            ASSERT_LT(finding.place.file, files.size());
            ASSERT_LE(finding.place.line, context->Files()[finding.place.file].line_begins.size());
        }
    }
}
