#include <paramdb/platform/core/utf8.h>
#include <paramdb/platform/sea/resource_sea.h>
#include <paramdb/platform/sea/sea_text.h>

#include "tools/convert/cell_text.h"
#include "tools/convert/forms.h"
#include "tools/convert/row_collector.h"
#include "tools/convert/row_line.h"
#include "tools/report.h"
#include "tools/rewrite/message_list.h"
#include "tools/table_names.h"

#include <algorithm>

namespace paramdb::tools {
namespace {

class SeaReader {
public:
    SeaReader(std::string_view bytes, ReadResult& result) : m_content(ReadSeaText(bytes)), m_result(result) {
        LookAtLines(bytes);
    }

    void Read() {
        MessageList const unseen;
        CResourceSea sea;
        for (auto const& [name, lines] : m_content.lists) {
            sea.MakeList(name) = lines;
            if (TableDescription const* const table = TableOfTag(name))
                ReadList(*table, lines);
            else
                Lose(LossKind::Unknown, "", "no table has the list " + Printable(name));
        }
        for (auto const& [key, text] : m_content.values)
            ReadValue(key.first, key.second, text);
        m_result.tables = ReadTables(sea);
    }

private:
    void Lose(LossKind kind, std::string place, std::string text, std::size_t count = 1) {
        m_result.losses.push_back({kind, {std::move(place), std::move(text)}, count});
    }

    // Tells of lines that the content does not show.
    void LookAtLines(std::string_view bytes) {
        std::size_t comments = 0;
        std::size_t first_comment = 0;
        std::size_t values = 0;
        auto const& bad = m_content.bad_lines;
        if (bytes.starts_with("\xEF\xBB\xBF"))
            bytes.remove_prefix(3);
        for (int number = 1; !bytes.empty(); ++number) {
            std::size_t const end = std::min(bytes.find('\n'), bytes.size());
            std::string_view const line = bytes.substr(0, end);
            bytes.remove_prefix(std::min(end + 1, bytes.size()));
            if (std::binary_search(bad.begin(), bad.end(), number))
                Lose(LossKind::Faulty, ":" + std::to_string(number), "the line makes no sense");
            else if (line.starts_with("value\t"))
                ++values;
            if (line.starts_with('#') && comments++ == 0)
                first_comment = static_cast<std::size_t>(number);
        }
        if (values > m_content.values.size())
            Lose(LossKind::Superseded, "", "a value that is given again further down is passed over",
                 values - m_content.values.size());
        if (comments > 0)
            Lose(LossKind::Comments, ":" + std::to_string(first_comment),
                 comments == 1 ? "a comment" : Grouped(comments) + " comments, the first of them here",
                 comments);
    }

    void ReadList(TableDescription const& table, CResourceSea::LineList const& lines) {
        auto const place = static_cast<std::size_t>(&table - Catalogue().data());
        RowCollector collector(table, m_result.parameters.tables[place]);
        for (std::size_t index = 0; index < lines.size(); ++index) {
            std::string const where = TagOf(table) + ", line " + std::to_string(index + 1);
            std::wstring_view rest = lines[index];
            // A text would end at the zero.
            if (rest.find(L'\0') != std::wstring_view::npos ||
                collector.Add(rest) == RowCollector::Result::Faulty) {
                m_result.has_partial_rows = true;
                Lose(LossKind::Faulty, "", where + ": the row cannot be read");
            } else if (auto const begin = std::ranges::find_if_not(rest, IsBlank); begin != rest.end()) {
                Lose(LossKind::Surplus, "",
                     where + ": the end of the row is not read: " +
                         Printable(std::wstring_view(begin, rest.end())));
            }
        }
    }
    static bool IsBlank(wchar_t unit) { return IsWhiteSpace(unit); }

    void ReadValue(std::wstring const& key, int index, std::wstring const& text) {
        auto const part = VersionOfKey(key);
        auto const named = TextOfKey(key);
        auto const number = part ? NumberOf(FieldType::Int, text) : std::nullopt;
        std::string const name = Printable(key) + " " + std::to_string(index);
        if (index != 0 || (!part && !named))
            Lose(LossKind::Unknown, "", "nothing reads the value " + name);
        else if (part && !number)
            Lose(LossKind::Faulty, "", "the value " + name + " is no number: " + Printable(text));
        else if (part)
            m_result.parameters.version[*part] = std::get<std::int32_t>(*number);
        else
            m_result.parameters.texts[*named] = text;
    }

    SeaContent m_content;
    ReadResult& m_result;
};

} // namespace

ReadResult ReadSeaForm(std::string_view bytes) {
    ReadResult result;
    SeaReader(bytes, result).Read();
    return result;
}

std::string WriteSeaForm(ParameterSet const& parameters, std::vector<std::string>& faults) {
    MessageList const unseen;
    CResourceSea::ListMap lists;
    CResourceSea::ValueMap values;
    for (std::size_t part = 0; part < VersionNames.size(); ++part)
        if (parameters.version[part])
            values[{VersionNames[part].key, 0}] = std::to_wstring(*parameters.version[part]);
    for (std::size_t text = 0; text < TextNames.size(); ++text)
        if (parameters.texts[text])
            values[{TextNames[text].key, 0}] = *parameters.texts[text];
    for (auto const& [table, rows] : parameters.tables) {
        auto& lines = lists[Catalogue()[table].tag];
        RowLineWriter writer(Catalogue()[table], LineForm::Sea);
        for (std::size_t row = 0; row < rows.size(); ++row) {
            std::string reason;
            std::size_t column = 0;
            if (auto line = writer.Write(rows[row], reason, column))
                lines.push_back(*std::move(line));
            else
                faults.push_back(
                    (column < rows[row].size() ? CellPlace(table, row, column) : RowPlace(table, row)) +
                    ": " + reason);
        }
    }
    return WriteSeaText(lists, values);
}

} // namespace paramdb::tools
