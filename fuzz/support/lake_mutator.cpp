#include "lake_mutator.h"

#include <paramdb/tables/catalogue.h>

#include "input.h"
#include "row_text.h"

#include <algorithm>
#include <tests/equality/random_lake.h>
#include <tests/support/text_lines.h>

namespace fuzz {
namespace {

using equality::Random;
using paramdb::TableDescription;
using Lines = test_support::Lines;

constexpr std::string_view OddFields[] = {"-1",          "0",
                                          "-2",          "2147483647",
                                          "-2147483648", "2147483646",
                                          "4294967295",  "9223372036854775807",
                                          "65536",       "31",
                                          "32",          "0.0",
                                          "-0.0",        "1e-45",
                                          "3.4e38",      "1e308",
                                          "nan",         "inf",
                                          "-inf",        "\"\"",
                                          "\"",          "x",
                                          "1001",        "2001",
                                          "2900",        "\"HX-O0.5;HX+O0.5\""};

std::string RowOf(Lines const& fields) {
    std::string row = "\t";
    for (std::string const& field : fields)
        row += (row.size() > 1 ? " " : "") + field;
    return row;
}

class Mutator {
public:
    Mutator(std::string_view text, std::uint32_t seed, Tags const& tags)
        : m_random(seed), m_tags(tags), m_lines(test_support::SplitLines(std::string(text))) {}

    void Mutate() {
        if (m_lines.empty())
            return AddRow();
        switch (m_random.Between(0, 15)) {
        case 0:
            return Erase(AnyRow());
        case 1: {
            std::size_t const row = AnyRow();
            return Insert(AnyRow(), m_lines[row]);
        }
        case 2: {
            std::size_t const row = AnyRow();
            return std::swap(m_lines[row], m_lines[AnyRow()]);
        }
        case 3:
            return DropSection();
        case 4:
            return CopySection();
        case 5:
        case 6:
        case 7:
        case 8:
            return AddRow();
        case 9:
            return Resize();
        default:
            return ChangeField();
        }
    }

    std::string Text(std::size_t most) const {
        std::string text = test_support::JoinLines(m_lines);
        if (text.size() > most)
            text.resize(most);
        return text;
    }

private:
    std::size_t AnyLine() { return m_random.Bits() % m_lines.size(); }
    bool IsRow(std::size_t line) const {
        return !OpensSection(m_lines[line]) && !Trimmed(m_lines[line]).starts_with('}');
    }
    // Mostly no line that opens or closes a section: where many are lost, hardly a row is read.
    std::size_t AnyRow() {
        std::size_t line = AnyLine();
        for (int attempt = 0; attempt < 4 && !IsRow(line); ++attempt)
            line = AnyLine();
        return line;
    }
    void Erase(std::size_t line) { m_lines.erase(m_lines.begin() + static_cast<std::ptrdiff_t>(line)); }
    void Insert(std::size_t line, std::string text) {
        m_lines.insert(m_lines.begin() + static_cast<std::ptrdiff_t>(line), std::move(text));
    }

    // The table in whose section a line stands, or null.
    TableDescription const* TableAt(std::size_t line) const {
        while (line > 0 && !OpensSection(m_lines[line]))
            --line;
        std::string_view const opener = Trimmed(m_lines[line]);
        return TableOf(opener.substr(0, opener.find(':')));
    }

    TableDescription AnyTable() {
        if (!m_tags.empty())
            if (TableDescription const* const table = TableOf(m_random.Pick(m_tags)))
                return *table;
        return m_random.Pick(paramdb::Catalogue());
    }

    // A field that stands elsewhere in the file, so that rows come to refer to one another.
    std::string KnownField() {
        for (int attempt = 0; attempt < 8; ++attempt) {
            std::size_t const line = AnyRow();
            Lines const fields = FieldsOf(m_lines[line]);
            if (IsRow(line) && !fields.empty())
                return fields[m_random.Bits() % std::min<std::size_t>(fields.size(), 7)];
        }
        return "0";
    }

    std::string NewField(TableDescription const* table, std::size_t place) {
        switch (m_random.Between(0, 5)) {
        case 0:
            return std::string(m_random.Pick(OddFields));
        case 1:
        case 2:
            return KnownField();
        default:
            break;
        }
        if (table == nullptr)
            return std::to_string(m_random.Between(-1, equality::HighestId));
        std::size_t const keys = table->key_columns.size();
        if (place < keys)
            return equality::RandomField(table->key_columns[place], m_random);
        if (place - keys < table->row_columns.size())
            return equality::RandomField(table->row_columns[place - keys], m_random);
        return std::to_string(m_random.Between(-1, equality::HighestId));
    }

    void ChangeField() {
        std::size_t const line = AnyRow();
        Lines fields = FieldsOf(m_lines[line]);
        if (fields.empty())
            return;
        std::size_t const place = m_random.Bits() % fields.size();
        fields[place] = NewField(TableAt(line), place);
        m_lines[line] = RowOf(fields);
    }

    // A field less or more at the end.
    void Resize() {
        std::size_t const line = AnyRow();
        Lines fields = FieldsOf(m_lines[line]);
        if (m_random.OneIn(2) && !fields.empty())
            fields.pop_back();
        else
            fields.push_back(NewField(TableAt(line), fields.size()));
        m_lines[line] = RowOf(fields);
    }

    // A row of a table that is there, mostly, or of a new one. The tables of signals get the same ids.
    void AddRow() {
        std::vector<std::size_t> openers;
        for (std::size_t line = 0; line < m_lines.size(); ++line)
            if (OpensSection(m_lines[line]))
                openers.push_back(line);
        if (!openers.empty() && m_random.Between(0, 2) > 0) {
            std::size_t const opener = m_random.Pick(openers);
            if (TableDescription const* const table = TableAt(opener))
                Insert(opener + 1, "\t" + equality::RandomRow(*table, m_random));
            return;
        }
        TableDescription const table = AnyTable();
        std::wstring_view const wide = table.tag;
        std::string const tag(wide.begin(), wide.end());
        for (std::size_t const opener : openers)
            if (Trimmed(m_lines[opener]).starts_with(tag + ":"))
                return Insert(opener + 1, "\t" + equality::RandomRow(table, m_random));
        m_lines.push_back(tag + ": {");
        for (int rows = m_random.Between(1, 3); rows > 0; --rows)
            m_lines.push_back("\t" + equality::RandomRow(table, m_random));
        m_lines.push_back("}");
    }

    // The lines from an opener to its closing line.
    std::pair<std::size_t, std::size_t> Section(std::size_t line) const {
        while (line > 0 && !OpensSection(m_lines[line]))
            --line;
        std::size_t end = line;
        while (end < m_lines.size() && !Trimmed(m_lines[end]).starts_with('}'))
            ++end;
        return {line, std::min(end + 1, m_lines.size())};
    }
    void DropSection() {
        auto const [begin, end] = Section(AnyLine());
        m_lines.erase(m_lines.begin() + static_cast<std::ptrdiff_t>(begin),
                      m_lines.begin() + static_cast<std::ptrdiff_t>(end));
    }
    void CopySection() {
        auto const [begin, end] = Section(AnyLine());
        Lines const section(m_lines.begin() + static_cast<std::ptrdiff_t>(begin),
                            m_lines.begin() + static_cast<std::ptrdiff_t>(end));
        std::size_t place = m_random.OneIn(2) ? m_lines.size() : AnyLine();
        if (place < m_lines.size() && !m_random.OneIn(8))
            place = Section(place).first;
        if (m_random.OneIn(4))
            Insert(place, std::string(1, FileSeparator));
        m_lines.insert(m_lines.begin() + static_cast<std::ptrdiff_t>(place), section.begin(), section.end());
    }

    Random m_random;
    Tags const& m_tags;
    Lines m_lines;
};

} // namespace

std::string MutateLake(std::string_view text, std::size_t most, std::uint32_t seed, Tags const& tags) {
    Mutator mutator(text, seed, tags);
    for (std::uint32_t changes = seed % 4 + 1; changes > 0; --changes)
        mutator.Mutate();
    return mutator.Text(most);
}

std::string CrossLakes(std::string_view left, std::string_view right, std::size_t most, std::uint32_t seed) {
    Random random(seed);
    Lines crossed;
    for (std::string_view const text : {left, right}) {
        bool is_taken = true;
        for (std::string& line : test_support::SplitLines(std::string(text))) {
            if (OpensSection(line))
                is_taken = random.Between(0, 2) > 0;
            if (is_taken)
                crossed.push_back(std::move(line));
        }
    }
    std::string text = test_support::JoinLines(crossed);
    if (text.size() > most)
        text.resize(most);
    return text;
}

} // namespace fuzz
