#include <paramdb/platform/core/utf8.h>

#include "tools/convert/cell_text.h"
#include "tools/convert/csv_text.h"
#include "tools/convert/forms.h"
#include "tools/report.h"
#include "tools/rewrite/row_fields.h"
#include "tools/table_names.h"

#include <algorithm>

namespace paramdb::tools {
namespace {

constexpr char ValuesFile[] = "values.csv";
constexpr std::string_view Extension = ".csv";

// "TMode.csv" for <TMode>.
std::string FileOf(TableDescription const& table) {
    std::string const tag = TagOf(table);
    return tag.substr(1, tag.size() - 2).append(Extension);
}

// The table whose file has that name; null if there is none.
TableDescription const* TableOfFile(std::string const& name) {
    if (!name.ends_with(Extension))
        return nullptr;
    return TableOfTag(L"<" + FromUtf8(name.substr(0, name.size() - Extension.size())) + L">");
}

class CsvFolderReader {
public:
    explicit CsvFolderReader(ReadResult& result) : m_result(result) {}

    void Read(FolderBytes const& files) {
        for (auto const& [name, bytes] : files) {
            m_file = name;
            TableDescription const* const table = TableOfFile(name);
            if (name == ValuesFile)
                ReadValues(bytes);
            else if (table != nullptr)
                ReadTable(*table, bytes);
            else
                m_result.losses.push_back({LossKind::Unknown, {"/" + name, "no table has this name"}});
        }
    }

private:
    void Fault(std::size_t line, std::string text) {
        m_result.faults.push_back({"/" + m_file + ":" + std::to_string(line), std::move(text)});
    }

    // The records behind the first one, whose cells are the names of columns; none after a fault.
    std::vector<CsvRecord> Records(std::string_view bytes, std::vector<std::string>& names) {
        if (bytes.starts_with("\xEF\xBB\xBF"))
            bytes.remove_prefix(3);
        CsvFault fault;
        auto records = ReadCsv(bytes, fault);
        if (fault.line > 0)
            Fault(fault.line, fault.text);
        else if (records.empty())
            Fault(1, "the line with the names of the columns is missing");
        if (records.empty())
            return records;
        names = std::move(records.front().cells);
        records.erase(records.begin());
        for (CsvRecord const& record : records)
            if (record.cells.size() != names.size())
                Fault(record.line, std::to_string(record.cells.size()) +
                                       (record.cells.size() == 1 ? " cell" : " cells") + " in place of " +
                                       std::to_string(names.size()));
        return m_result.faults.empty() ? std::move(records) : std::vector<CsvRecord>();
    }

    // The text of a cell, which may be faulty: a byte that is no UTF-8 becomes a half character.
    std::wstring TextOf(std::size_t line, std::string const& cell) {
        std::wstring text = FromUtf8(cell);
        if (auto const unit = LoneSurrogate(text))
            Fault(line, "a byte that is no UTF-8: 0x" +
                            UnitText(static_cast<wchar_t>(*unit - 0xDC00)).substr(4)); // "U+00E4"
        return text;
    }

    void ReadValues(std::string_view bytes) {
        std::vector<std::string> names;
        auto const records = Records(bytes, names);
        if (!names.empty() && names != std::vector<std::string>{"key", "value"}) {
            Fault(1, "the columns are not key and value");
            return;
        }
        for (CsvRecord const& record : records)
            ReadValue(record.line, TextOf(record.line, record.cells[0]),
                      TextOf(record.line, record.cells[1]));
    }
    void ReadValue(std::size_t line, std::wstring const& key, std::wstring const& value) {
        auto const part = VersionOfKey(key);
        auto const text = TextOfKey(key);
        if (!part && !text) {
            m_result.losses.push_back({LossKind::Unknown,
                                       {"/" + m_file + ":" + std::to_string(line),
                                        "nothing reads the value of " + Printable(key)}});
            return;
        }
        if (part ? m_result.parameters.version[*part].has_value()
                 : m_result.parameters.texts[*text].has_value()) {
            Fault(line, Printable(key) + " stands here again");
            return;
        }
        if (text) {
            if (value.find(L'\0') != std::wstring::npos)
                Fault(line, "a text with a zero in it");
            m_result.parameters.texts[*text] = value;
        } else if (auto const number = NumberOf(FieldType::Int, value)) {
            m_result.parameters.version[*part] = std::get<std::int32_t>(*number);
        } else {
            Fault(line, Printable(key) + ": no int: " + Printable(value));
        }
    }

    void ReadTable(TableDescription const& table, std::string_view bytes) {
        std::vector<std::string> names;
        auto const records = Records(bytes, names);
        auto const columns = ColumnsOf(table);
        std::vector<std::size_t> order; // of the cells, by column
        for (ColumnDescription const& column : columns) {
            auto const found = std::ranges::find(names, column.name);
            if (found == names.end() && !names.empty())
                Fault(1, "the column " + std::string(column.name) + " is missing");
            order.push_back(static_cast<std::size_t>(found - names.begin()));
        }
        std::vector<std::string> known;
        for (std::string const& name : names) {
            if (std::ranges::find(columns, name, &ColumnDescription::name) == columns.end())
                m_result.losses.push_back(
                    {LossKind::Unknown,
                     {"/" + m_file, TagOf(table) + " has no column " + Printable(FromUtf8(name))}});
            else if (std::ranges::find(known, name) != known.end())
                Fault(1, "the column " + name + " stands there twice");
            known.push_back(name);
        }
        auto& rows = m_result.parameters.tables[static_cast<std::size_t>(&table - Catalogue().data())];
        if (!m_result.faults.empty())
            return;
        for (CsvRecord const& record : records) {
            ParamDb::row_t& row = rows.emplace_back();
            for (std::size_t column = 0; column < columns.size(); ++column)
                row.push_back(ReadCell(record.line, columns[column], record.cells[order[column]]));
        }
    }

    ParamDb::cell_t ReadCell(std::size_t line, ColumnDescription const& column, std::string const& cell) {
        std::wstring text = TextOf(line, cell);
        std::string const name = std::string(column.name) + ": ";
        if (column.type == FieldType::Text) {
            if (auto const fault = TextFault(text); !fault.empty())
                Fault(line, name + fault);
            return text;
        }
        if (auto const number = NumberOf(column.type, text))
            return *number;
        Fault(line, name + "no " + ToUtf8(FieldTypeName(column.type)) + ": " + Printable(text));
        return 0;
    }

    ReadResult& m_result;
    std::string m_file;
};

class CsvFolderWriter {
public:
    explicit CsvFolderWriter(std::vector<std::string>& faults) : m_faults(faults) {}

    FolderBytes Write(ParameterSet const& parameters) {
        WriteValues(parameters);
        for (auto const& [table, rows] : parameters.tables)
            WriteTable(table, rows);
        return std::move(m_files);
    }

private:
    // The text as UTF-8; `where` tells the place of one that cannot be written.
    template <class Where>
    std::string Utf8(std::wstring const& text, Where const& where) {
        if (auto const unit = LoneSurrogate(text))
            m_faults.push_back(where() + ": the half character " + UnitText(*unit) + " cannot be in CSV");
        return ToUtf8(text);
    }

    void WriteValues(ParameterSet const& parameters) {
        std::string& text = m_files[ValuesFile];
        AppendCsv(text, {"key", "value"});
        for (std::size_t part = 0; part < VersionNames.size(); ++part)
            if (auto const& number = parameters.version[part])
                AppendCsv(text, {ToUtf8(VersionNames[part].key), std::to_string(*number)});
        for (std::size_t name = 0; name < TextNames.size(); ++name)
            if (auto const& value = parameters.texts[name])
                AppendCsv(text, {ToUtf8(TextNames[name].key),
                                 Utf8(*value, [&] { return std::string(TextNames[name].name); })});
    }

    void WriteTable(std::size_t table, std::vector<ParamDb::row_t> const& rows) {
        TableDescription const& description = Catalogue()[table];
        auto const columns = ColumnsOf(description);
        std::string& text = m_files[FileOf(description)];
        std::vector<std::string> cells;
        for (ColumnDescription const& column : columns)
            cells.emplace_back(column.name);
        AppendCsv(text, cells);
        for (std::size_t row = 0; row < rows.size(); ++row) {
            for (std::size_t column = 0; column < columns.size(); ++column) {
                auto const* const value = std::get_if<std::wstring>(&rows[row][column]);
                cells[column] = value == nullptr
                                    ? NumberText(rows[row][column])
                                    : Utf8(*value, [&] { return CellPlace(table, row, column); });
            }
            AppendCsv(text, cells);
        }
    }

    std::vector<std::string>& m_faults;
    FolderBytes m_files;
};

} // namespace

bool IsCsvFile(std::string const& name) {
    return name == ValuesFile || TableOfFile(name) != nullptr;
}

ReadResult ReadCsvForm(FolderBytes const& files) {
    ReadResult result;
    CsvFolderReader(result).Read(files);
    if (result.faults.empty()) {
        auto set = TableSetOf(result.parameters);
        result.tables = ReadTables(set);
    }
    return result;
}

FolderBytes WriteCsvForm(ParameterSet const& parameters, std::vector<std::string>& faults) {
    return CsvFolderWriter(faults).Write(parameters);
}

} // namespace paramdb::tools
