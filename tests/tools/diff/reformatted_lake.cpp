#include "tests/tools/diff/reformatted_lake.h"

#include <paramdb/platform/core/utf8.h>
#include <paramdb/tables/catalogue.h>

#include <algorithm>
#include <sstream>
#include <stdexcept>
#include <vector>

namespace {

using paramdb::FieldType;

struct Section {
    std::string tag; // empty for a plain line, which is the one row
    std::vector<std::string> rows;
};

std::string Trimmed(std::string const& line) {
    std::size_t const begin = line.find_first_not_of(" \t\r");
    return begin == line.npos ? "" : line.substr(begin, line.find_last_not_of(" \t\r") + 1 - begin);
}

std::vector<Section> Sections(std::string_view lake) {
    std::vector<Section> sections;
    bool is_open = false;
    std::istringstream stream{std::string(lake)};
    for (std::string line; std::getline(stream, line);) {
        line = Trimmed(line);
        if (is_open && line.starts_with('}')) {
            is_open = false;
        } else if (is_open) {
            sections.back().rows.push_back(line);
        } else if (line.ends_with(": {")) {
            sections.push_back({line.substr(0, line.size() - 3), {}});
            is_open = true;
        } else if (!line.empty() && !line.starts_with(';')) {
            sections.push_back({"", {line}});
        }
    }
    return sections;
}

std::vector<FieldType> TypesOf(std::string const& tag) {
    for (auto const& table : paramdb::Catalogue()) {
        if (paramdb::ToUtf8(table.tag) != tag)
            continue;
        std::vector<FieldType> types;
        for (auto const* const columns : {&table.key_columns, &table.row_columns})
            for (auto const& column : *columns)
                types.push_back(column.type);
        return types;
    }
    throw std::invalid_argument("no table " + tag);
}

class Writer {
public:
    explicit Writer(std::mt19937& random) : m_random(random) {}

    std::string Write(std::vector<Section> sections) {
        std::shuffle(sections.begin(), sections.end(), m_random);
        for (Section& section : sections) {
            Between();
            if (section.tag.empty())
                m_text += Blanks(0) + section.rows.front() + Blanks(0) + "\n";
            else
                WriteSection(section);
        }
        Between();
        return std::move(m_text);
    }

private:
    bool Chance(unsigned int of) { return m_random() % of == 0; }

    std::string Blanks(std::size_t least) {
        std::string blanks;
        for (std::size_t count = least + m_random() % 3; count > 0; --count)
            blanks += Chance(3) ? '\t' : ' ';
        return blanks;
    }

    void Between() {
        while (Chance(3))
            m_text += Blanks(0) + (Chance(2) ? "" : "; a comment: { \"") + "\n";
    }

    void WriteSection(Section& section) {
        auto const types = TypesOf(section.tag);
        std::shuffle(section.rows.begin(), section.rows.end(), m_random);
        m_text += Blanks(0) + section.tag + ":" + Blanks(0) + "{" + Blanks(0) + "\n";
        for (std::string const& row : section.rows)
            WriteRow(row, types);
        m_text += Blanks(0) + "}" + (Chance(2) ? "\t; " + section.tag : "") + "\n";
    }

    void WriteRow(std::string const& row, std::vector<FieldType> const& types) {
        std::string line = Blanks(0);
        std::size_t place = 0;
        for (FieldType const type : types) {
            place = row.find_first_not_of(" \t", place);
            if (place == row.npos)
                throw std::invalid_argument("a short row: " + row);
            bool const is_quoted = row[place] == '"';
            std::size_t const begin = place + (is_quoted ? 1 : 0);
            std::size_t const end = std::min(row.find_first_of(is_quoted ? "\"" : " \t", begin), row.size());
            std::string const field = row.substr(begin, end - begin);
            place = end + (is_quoted ? 1 : 0);
            line += &type == types.data() ? "" : Blanks(1);
            line += type == FieldType::Text ? Text(field) : Number(field);
        }
        m_text += line + Blanks(0) + "\n";
    }

    std::string Text(std::string const& field) {
        bool const needs_quotes =
            field.empty() || !std::ranges::all_of(field, [](char letter) {
                return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') || letter == '_';
            });
        return needs_quotes || Chance(2) ? '"' + field + '"' : field;
    }

    std::string Number(std::string field) {
        bool const is_plain = field.find_first_not_of("-.0123456789") == field.npos;
        if (!is_plain)
            return field;
        bool const has_sign = field.starts_with('-');
        if (Chance(4))
            field.insert(has_sign ? 1 : 0, "00");
        if (!has_sign && Chance(4))
            field.insert(0, "+");
        if (field.find('.') != field.npos && Chance(4))
            field += "000";
        return field;
    }

    std::mt19937& m_random;
    std::string m_text;
};

} // namespace

std::string ReformattedLake(std::string_view lake, std::mt19937& random) {
    return Writer(random).Write(Sections(lake));
}
