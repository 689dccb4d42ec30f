#include <paramdb/database/table_content.h>
#include <paramdb/platform/core/utf8.h>
#include <paramdb/tables/line_reader.h>

#include <algorithm>
#include <cmath>
#include <variant>

namespace paramdb::database {
namespace {

using ParamDb::CDbTable;
using ParamDb::CDbTableSet;
using ParamDb::row_t;

// Fields of their own for one row after the other.
class RowFields {
public:
    explicit RowFields(SqlTable const& table) : m_values(table.columns.size()) {
        for (std::size_t column = 0; column < m_values.size(); ++column) {
            SetType(m_values[column], table.columns[column].type);
            std::visit([this](auto& value) { m_fields.emplace_back(value); }, m_values[column]);
        }
    }

    std::span<Field const> fields() const { return m_fields; }

private:
    using Value = std::variant<std::int32_t, std::uint32_t, std::int64_t, float, double, CFixedText>;

    static void SetType(Value& value, FieldType type) {
        switch (type) {
        case FieldType::Int:
            value.emplace<std::int32_t>();
            break;
        case FieldType::Unsigned:
            value.emplace<std::uint32_t>();
            break;
        case FieldType::Int64:
            value.emplace<std::int64_t>();
            break;
        case FieldType::Float:
            value.emplace<float>();
            break;
        case FieldType::Double:
            value.emplace<double>();
            break;
        case FieldType::Text:
            value.emplace<CFixedText>();
            break;
        }
    }

    std::vector<Value> m_values;
    std::vector<Field> m_fields;
};

// What is wrong with a cell that a field of the type does not take.
std::string CellFaultText(ParamDb::cell_t const& cell, FieldType type) {
    return std::visit(
        [type]<class Value>(Value const& value) -> std::string {
            std::string const wanted = ToUtf8(FieldTypeName(type));
            if constexpr (std::is_same_v<Value, std::wstring>) {
                if (type == FieldType::Text)
                    return "a text of " + std::to_string(value.size()) + " characters where 198 fit";
                return "the text '" + ToUtf8(value.substr(0, 40)) + (value.size() > 40 ? "...'" : "'") +
                       " where " + wanted + " is wanted";
            } else {
                std::string const number = CellText(value);
                if (type == FieldType::Text)
                    return number + " where text is wanted";
                if constexpr (std::is_floating_point_v<Value>)
                    if (value != std::floor(value))
                        return number + " is no whole number";
                return number + " is out of range for " + wanted;
            }
        },
        cell);
}

// Whether every cell of a row is one that a load takes and a database keeps. Reports the first that is not.
bool CheckRow(SqlTable const& table, row_t const& row, std::span<Field const> fields, Report& report) {
    std::size_t taken = 0;
    bool is_good = false;
    try {
        is_good = ReadCells(row, fields, taken);
    } catch (std::bad_variant_access const&) {
        is_good = false;
    }
    std::string fault;
    if (!is_good) {
        fault =
            taken < row.size() ? CellFaultText(row[taken], table.columns[taken].type) : "the cell is missing";
    } else {
        for (taken = 0; taken < fields.size(); ++taken) {
            auto const* const text = std::get_if<std::wstring>(&row[taken]);
            if (text != nullptr && text->find(L'\0') != std::wstring::npos) {
                fault = "a text with a zero character";
                break;
            }
        }
    }
    if (!fault.empty()) {
        auto const key = std::span(row).first(std::min(table.key_size, row.size()));
        report.Fault(PlaceText(table.name, table.columns[taken].name, KeyText(key)) + fault);
    }
    return fault.empty();
}

std::string Name(std::wstring const& key) {
    return ToUtf8(key);
}

} // namespace

SetContent::SetContent(CDbTableSet const& set, Report& report)
    : m_tables(std::make_unique<CParamTables>()), m_entries(CatalogueEntries(*m_tables)) {
    for (auto const& [key, rows] : set) {
        if (!TakeTable(key, rows, report) && !TakeSingleValue(key, rows, report))
            report.Note(PlaceText(Name(key)) + "is no table of parameter data and is left out");
    }
    if (report.faults() > 0)
        return;
    for (std::size_t index = 0; index < m_entries.size(); ++index) {
        SqlTable const& table = SqlTables()[index];
        auto const found = set.find(table.Tag());
        if (found == set.end())
            continue;
        // Reading looks for the tag and changes nothing.
        m_entries[index].table->ReadTable(const_cast<CDbTableSet&>(set));
        std::size_t const rows = m_entries[index].rows->RowCount();
        if (rows < found->second.size())
            report.Note(PlaceText(table.name) + Count(found->second.size() - rows, "row") +
                        " with the key of an earlier row left out");
        m_content.tables.push_back({&table, m_entries[index].rows, found->second.table_type()});
    }
}

bool SetContent::TakeTable(std::wstring const& key, CDbTable const& rows, Report& report) {
    auto const tables = SqlTables();
    auto const table = std::find_if(tables.begin(), tables.end(),
                                    [&](SqlTable const& entry) { return key == entry.description->tag; });
    if (table == tables.end())
        return false;
    RowFields const fields(*table);
    for (row_t const& row : rows)
        CheckRow(*table, row, fields.fields(), report);
    return true;
}

bool SetContent::TakeSingleValue(std::wstring const& key, CDbTable const& rows, Report& report) {
    bool const is_major = key == MajorVersionKey;
    auto const texts = NamedTexts();
    auto const text =
        std::find_if(texts.begin(), texts.end(), [&](NamedText const& entry) { return key == entry.key; });
    if (!is_major && key != MinorVersionKey && text == texts.end())
        return false;
    bool const has_cell = !rows.empty() && !rows.front().empty();
    try {
        if (text != texts.end())
            m_content.texts.emplace_back(text->name,
                                         rows.empty() ? std::wstring() : CDbTable::to_wstring(rows.front()));
        else if (has_cell)
            (is_major ? m_content.major : m_content.minor) = rows.to_long();
    } catch (std::bad_variant_access const&) {
        report.Fault(PlaceText(Name(key)) + (text != texts.end()
                                                 ? "the value is no text"
                                                 : CellFaultText(rows.front().front(), FieldType::Int)));
    }
    return true;
}

RevisionContent StoreContent(CQtParamInstance const& parameters) {
    RevisionContent content;
    auto const entries = parameters.Entries();
    for (std::size_t index = 0; index < entries.size(); ++index)
        if (entries[index].rows->RowCount() > 0)
            content.tables.push_back({&SqlTables()[index], entries[index].rows, 0});
    content.major = CQTableManager::RequiredMajor;
    content.minor = CQTableManager::RequiredMinor;
    auto const add = [&content](char const* name, CString const& text) {
        content.texts.emplace_back(name, std::wstring(text.GetString()));
    };
    add("learn_file", parameters.LearnFileName());
    add("calib_file", parameters.CalibFileName());
    add("base_type", parameters.BaseType());
    add("alias_type", parameters.AliasType());
    return content;
}

} // namespace paramdb::database
