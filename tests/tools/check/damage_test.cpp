// A good file with one random damage at a time: a byte changed, put in or taken out, a line dropped, doubled
// or put in the place of another. Where that costs or changes any row but those of the damaged lines
// themselves, a check must tell, at the place.
#include "tests/support/text_lines.h"
#include "tests/tools/command_run.h"
#include "tools/check/check_report.h"
#include "tools/check/context.h"
#include "tools/check/rules.h"
#include "tools/check/suppression.h"
#include "tools/report.h"
#include "tools/row_buffer.h"

#include <algorithm>
#include <memory>
#include <random>
#include <set>

using namespace paramdb;
using namespace paramdb::tools;
using namespace paramdb::tools::check;

namespace {

using test_support::JoinLines;
using test_support::Lines;
using test_support::SplitLines;

// The example with all rows that others refer to, and a few of each other table.
std::string GoodFile() {
    constexpr std::size_t rows = 5;
    std::set<std::string> const whole = {
        "<TMode>: {",     "<TModeProperty>: {", "<TPhysMode>: {",        "<TChannel>: {",
        "<TLocation>: {", "<TInstrument>: {",   "<TInstrumentParam>: {", "<TApplicationSignal>: {",
        "<TTrigger>: {"};
    Lines good;
    std::size_t row = 0;
    bool is_whole = false;
    for (std::string const& line :
         SplitLines(test_support::ReadBytes(PARAMDB_SOURCE_DIR "/examples/gearbox/gearbox.lake"))) {
        bool const is_row = line.starts_with('\t');
        row = is_row ? row + 1 : 0;
        if (!is_row)
            is_whole = whole.contains(line);
        if ((row <= rows || is_whole) && !line.starts_with("; ="))
            good.push_back(line);
    }
    return JoinLines(good);
}

// Lines counted from 1.
using LineSet = std::set<std::size_t>;

// A text after a damage: the lines that it touched, as they were counted before and as they are after it, and
// where it is to be told.
struct Damage {
    std::string text;
    LineSet before;
    LineSet after;
    LineSet places = after;
};

LineSet LinesFrom(std::size_t first, std::size_t last) {
    LineSet lines;
    for (std::size_t line = first; line <= last; ++line)
        lines.insert(line);
    return lines;
}

// A damage to bytes, which may have made two lines of one or one of two.
Damage WithDifferentLines(Lines const& left, std::string text) {
    Lines const right = SplitLines(text);
    std::size_t const least = std::min(left.size(), right.size());
    std::size_t same_first = 0;
    while (same_first < least && left[same_first] == right[same_first])
        ++same_first;
    std::size_t same_last = 0;
    while (same_last < least - same_first &&
           left[left.size() - 1 - same_last] == right[right.size() - 1 - same_last])
        ++same_last;
    return {std::move(text), LinesFrom(same_first + 1, left.size() - same_last),
            LinesFrom(same_first + 1, right.size() - same_last)};
}

class Damager {
public:
    explicit Damager(std::string const& text) : m_text(text), m_lines(SplitLines(text)) {}

    Damage Make(std::mt19937& random) const {
        static std::string const letters = "\"\n:;{}<> \t0123456789.-ax\x80\xC3";
        char const letter = letters[random() % letters.size()];
        std::size_t const place = random() % m_text.size();
        std::string text = m_text;
        switch (random() % 9) {
        case 0:
        case 1:
            text[place] = letter;
            return WithDifferentLines(m_lines, std::move(text));
        case 2:
            return WithDifferentLines(m_lines, text.insert(place, 1, letter));
        case 3:
            return WithDifferentLines(m_lines, text.erase(place, 1));
        case 4: // at an end of a line, where most is at stake
            return WithDifferentLines(m_lines, text.erase(text.find('\n', place), 1));
        case 5:
            return WithDifferentLines(m_lines, text.insert(text.find('\n', place) + 1, 1, letter));
        case 6:
            return Drop(random() % m_lines.size());
        case 7:
            return Double(random() % m_lines.size());
        default:
            return Swap(random() % m_lines.size(), random());
        }
    }

private:
    Damage Drop(std::size_t line) const {
        Lines lines = m_lines;
        lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(line));
        return {JoinLines(lines), {line + 1}, {}, {line + 1}};
    }

    // The second of the two is the one that is new.
    Damage Double(std::size_t line) const {
        Lines lines = m_lines;
        lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(line), lines[line]);
        return {JoinLines(lines), {}, {line + 2}};
    }

    // With the next line, or with any.
    Damage Swap(std::size_t line, std::size_t number) const {
        std::size_t const other = number % 2 == 0 ? (line + 1) % m_lines.size() : number / 2 % m_lines.size();
        Lines lines = m_lines;
        std::swap(lines[line], lines[other]);
        return {JoinLines(lines), {line + 1, other + 1}, {line + 1, other + 1}};
    }

    std::string const& m_text;
    Lines m_lines;
};

// A row of a loaded table, and where it stands.
struct LoadedRow {
    std::string bytes;
    Place place;
};

// All rows of all tables; none after a refusal. The load takes the instruments of relative limits from
// another table, which is no cell of theirs.
std::vector<LoadedRow> RowsOf(CheckContext const& context) {
    std::vector<LoadedRow> rows;
    if (context.IsRefused())
        return rows;
    std::string bytes;
    auto table = context.Tables().begin();
    for (CatalogueEntry const& entry : context.Parameters().Entries()) {
        bool const is_limit = entry.description->tag == std::wstring_view(L"<TRelativeLimit>");
        std::size_t index = 0;
        entry.rows->VisitRows([&](auto key, auto row) {
            EXPECT_NE(table->Line(index), nullptr) << table->Tag() << ShownKey(key);
            LoadedRow loaded{table->Tag(), table->PlaceOf(index++)};
            PackFields(is_limit ? key.first(1) : key, bytes);
            loaded.bytes += bytes;
            PackFields(is_limit ? key.subspan(2) : key.first(0), bytes);
            loaded.bytes += bytes;
            PackFields(row, bytes);
            loaded.bytes += bytes;
            rows.push_back(std::move(loaded));
            return true;
        });
        ++table;
    }
    return rows;
}

// Those that stand in none of these lines of the file.
std::vector<std::string> RowsOutside(std::vector<LoadedRow> const& rows, std::size_t file,
                                     LineSet const& lines) {
    std::vector<std::string> outside;
    for (LoadedRow const& row : rows)
        if (row.place.file != file || !lines.contains(row.place.line))
            outside.push_back(row.bytes);
    std::sort(outside.begin(), outside.end());
    return outside;
}

// Whether one of the places is in the lines, beside them, or opens or closes a section in which they stand,
// or is the file as a whole.
bool IsAt(CheckContext const& context, Finding const& finding, std::size_t file, LineSet const& lines) {
    std::set<std::pair<std::size_t, std::size_t>> wanted{{file, 0}};
    for (std::size_t const touched : lines) {
        for (std::size_t line = touched - 1; line <= touched + 1; ++line) {
            wanted.insert({file, line});
            if (OutlineSection const* const section = context.Lines().SectionAt({file, line})) {
                wanted.insert({section->opener.place.file, section->opener.place.line});
                wanted.insert({section->closer.place.file, section->closer.place.line});
            }
        }
    }
    auto const is_wanted = [&](Place const& place) { return wanted.contains({place.file, place.line}); };
    return is_wanted(finding.place) ||
           std::any_of(finding.related.begin(), finding.related.end(),
                       [&](RelatedPlace const& related) { return is_wanted(related.place); });
}

std::vector<Finding> FindingsOf(CheckContext const& context) {
    FindingList list;
    RunRules(context, list);
    return Suppress(context, list.Take());
}

// A finding without its place, which lines that come and go move.
std::string TextOf(Finding const& finding) {
    return std::string(finding.code->code) + ' ' + finding.message + ' ' + finding.hint;
}

class DamageTest : public CommandTest, public testing::WithParamInterface<unsigned> {
protected:
    std::unique_ptr<CheckContext> Context(Lines const& files) {
        Lines names;
        for (std::string const& text : files) {
            std::string const name = std::to_string(names.size()) + ".lake";
            names.push_back(File(std::u8string(name.begin(), name.end()), text));
        }
        std::ostringstream err;
        auto context = CheckContext::Make(names, err);
        EXPECT_NE(context, nullptr) << err.str();
        return context;
    }

    // Does a damage for each seed to one of the files. Where any row but those of the touched lines differs
    // then, a finding that was not there before must be at the place. Returns how often one differed.
    int Damage(Lines const& good, unsigned first_seed, unsigned last_seed) {
        std::multiset<std::string> known;
        std::vector<LoadedRow> good_rows;
        {
            auto const context = Context(good);
            good_rows = RowsOf(*context);
            for (Finding const& finding : FindingsOf(*context))
                known.insert(TextOf(finding));
        }
        std::vector<Damager> damagers(good.begin(), good.end());
        int differing = 0;
        for (unsigned seed = first_seed; seed <= last_seed; ++seed) {
            SCOPED_TRACE(seed);
            std::mt19937 random(seed);
            std::size_t const file = random() % good.size();
            auto const [text, before, after, places] = damagers[file].Make(random);
            Lines files = good;
            files[file] = text;
            auto const context = Context(files);
            if (context == nullptr)
                return differing;
            std::vector<Finding> const findings = FindingsOf(*context);
            if (RowsOutside(good_rows, file, before) == RowsOutside(RowsOf(*context), file, after))
                continue;
            ++differing;
            auto left = known;
            std::string added;
            bool is_told = false;
            for (Finding const& finding : findings) {
                if (auto const same = left.find(TextOf(finding)); same != left.end()) {
                    left.erase(same);
                    continue;
                }
                is_told = is_told || IsAt(*context, finding, file, places);
                added += std::to_string(finding.place.line) + ' ' + TextOf(finding) + '\n';
            }
            EXPECT_TRUE(is_told) << "file " << file << ", line " << *places.begin() << ": "
                                 << (*places.begin() <= SplitLines(text).size()
                                         ? SplitLines(text)[*places.begin() - 1]
                                         : "")
                                 << '\n'
                                 << added;
        }
        return differing;
    }
};

using GoodFileTest = CommandTest;
using AnyFileTest = CommandTest;

} // namespace

TEST_P(DamageTest, WhatCostsOtherRowsIsTold) {
    constexpr unsigned seeds = 250;
    unsigned const block = GetParam();
    std::string const good = GoodFile();
    Lines files{good};
    // A section that is not closed, or one too many that is, reaches into the next file.
    if (block % 2 == 0) {
        std::size_t const middle = good.find("\n\n", good.size() / 2) + 2;
        files = {good.substr(0, middle), good.substr(middle)};
    }
    EXPECT_GT(Damage(files, block * seeds, (block + 1) * seeds - 1), 30);
}

INSTANTIATE_TEST_SUITE_P(Blocks, DamageTest, testing::Range(0U, 8U));

TEST_F(GoodFileTest, IsGood) {
    auto const run = RunCommand({"check", File(u8"good.lake", GoodFile())});
    // What is derived from so few rows is another matter.
    for (char const* const family : {" P10", " P11", " P12", " P2"})
        EXPECT_EQ(run.out.find(family), std::string::npos) << run.out;
}

// Whatever stands in a file, a check comes to an end, and every finding has a place in it.
TEST_F(AnyFileTest, ComesToAnEnd) {
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
