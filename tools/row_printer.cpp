#include "tools/row_printer.h"

#include <paramdb/platform/core/utf8.h>

#include "tools/report.h"
#include "tools/short_number.h"

#include <cmath>
#include <nlohmann/json.hpp>
#include <ostream>
#include <type_traits>

namespace paramdb::tools {
namespace {

using ConstFields = CQParamTableRows::ConstFields;

// The field as it is; no number has a character that CSV or JSON would have to quote.
std::string CellText(ConstField field) {
    std::string text;
    field.Visit([&text]<class T>(T const& value) {
        if constexpr (std::is_same_v<T, CFixedText>)
            text = ToUtf8(value.view());
        else if constexpr (std::is_floating_point_v<T>)
            text = ShortNumber(value);
        else
            text = std::to_string(value);
    });
    return text;
}

bool IsText(ColumnDescription const& column) {
    return column.type == FieldType::Text;
}

// A way to print rows: the columns first, then row by row, then the end.
class RowPrinter {
public:
    RowPrinter(std::ostream& out, TableDescription const& table, RowOriginOf const& origin)
        : m_out(out), m_key_columns(table.key_columns.size()), m_columns(table.key_columns),
          m_origin(origin) {
        m_columns.insert(m_columns.end(), table.row_columns.begin(), table.row_columns.end());
    }
    RowPrinter(RowPrinter const&) = delete;
    RowPrinter& operator=(RowPrinter const&) = delete;
    virtual ~RowPrinter() = default;

    virtual void Begin() {}
    virtual void End() {}

    void Print(ConstFields key, ConstFields row, std::size_t index) {
        m_line.clear();
        for (std::size_t column = 0; column < m_columns.size(); ++column)
            Add(column, column < m_key_columns ? key[column] : row[column - m_key_columns]);
        if (m_origin)
            AddOrigin(m_origin(index));
        EndLine();
        m_out.write(m_line.data(), static_cast<std::streamsize>(m_line.size()));
    }

protected:
    virtual void Add(std::size_t column, ConstField field) = 0;
    virtual void AddOrigin(std::optional<RowOrigin> const& origin) = 0;
    virtual void EndLine() = 0;

    std::ostream& m_out;
    std::size_t m_key_columns;
    std::vector<ColumnDescription> m_columns;
    RowOriginOf const& m_origin; // empty where nobody asks
    std::string m_line;
};

class TextPrinter : public RowPrinter {
public:
    TextPrinter(std::ostream& out, TableDescription const& table, RowOriginOf const& origin)
        : RowPrinter(out, table, origin) {
        for (ColumnDescription const& column : m_columns)
            m_widths.push_back(TextWidth(column.name));
    }

    // To be called for every row before the first is printed.
    void Measure(ConstFields key, ConstFields row) {
        for (std::size_t column = 0; column < m_columns.size(); ++column) {
            ConstField const field = column < m_key_columns ? key[column] : row[column - m_key_columns];
            m_widths[column] = std::max(m_widths[column], TextWidth(Shown(field)));
        }
    }

    void Begin() override {
        m_line.clear();
        for (std::size_t column = 0; column < m_columns.size(); ++column)
            AddPadded(column, std::string(m_columns[column].name));
        if (m_origin)
            m_line += " | origin";
        EndLine();
        m_out << m_line;
    }

protected:
    void Add(std::size_t column, ConstField field) override { AddPadded(column, Shown(field)); }

    void AddOrigin(std::optional<RowOrigin> const& origin) override {
        if (origin)
            m_line += " | " + Printable(FromUtf8(origin->file)) + ':' + std::to_string(origin->line);
    }

    void EndLine() override {
        m_line.erase(m_line.find_last_not_of(' ') + 1);
        m_line += '\n';
    }

private:
    static std::string Shown(ConstField field) {
        return field.type() == FieldType::Text ? Printable(field.As<CFixedText>().view()) : CellText(field);
    }

    void AddPadded(std::size_t column, std::string const& text) {
        if (column > 0)
            m_line += column == m_key_columns ? " | " : "  ";
        std::size_t const padding = m_widths[column] - TextWidth(text);
        bool const right = !IsText(m_columns[column]);
        m_line.append(right ? padding : 0, ' ').append(text).append(right ? 0 : padding, ' ');
    }

    std::vector<std::size_t> m_widths;
};

class JsonPrinter : public RowPrinter {
public:
    using RowPrinter::RowPrinter;

    void Begin() override { m_out << '['; }
    void End() override { m_out << (m_is_first ? "]\n" : "\n]\n"); }

protected:
    void Add(std::size_t column, ConstField field) override {
        if (column == 0) {
            m_line += m_is_first ? "\n  {" : ",\n  {";
            m_is_first = false;
        }
        m_line.append(column == 0 ? "\"" : ", \"").append(m_columns[column].name).append("\": ");
        std::string const text = CellText(field);
        if (IsText(m_columns[column]) || !IsFinite(field))
            m_line += JsonOf(text);

        else
            m_line += text;
    }

    void AddOrigin(std::optional<RowOrigin> const& origin) override {
        m_line += ", \"origin\": ";
        if (origin)
            m_line +=
                "{\"file\": " + JsonOf(origin->file) + ", \"line\": " + std::to_string(origin->line) + '}';
        else
            m_line += "null";
    }

    void EndLine() override { m_line += '}'; }

private:
    static std::string JsonOf(std::string const& text) {
        return nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
    }

    static bool IsFinite(ConstField field) {
        return field.Visit([]<class T>(T const& value) {
            if constexpr (std::is_floating_point_v<T>)
                return std::isfinite(value);
            return true;
        });
    }

    bool m_is_first = true;
};

class CsvPrinter : public RowPrinter {
public:
    using RowPrinter::RowPrinter;

    void Begin() override {
        m_line.clear();
        for (std::size_t column = 0; column < m_columns.size(); ++column)
            AddCell(column, std::string(m_columns[column].name));
        if (m_origin)
            m_line += ",file,line";
        EndLine();
        m_out << m_line;
    }

protected:
    void Add(std::size_t column, ConstField field) override { AddCell(column, CellText(field)); }

    void AddOrigin(std::optional<RowOrigin> const& origin) override {
        AddCell(1, origin ? origin->file : std::string());
        AddCell(1, origin ? std::to_string(origin->line) : std::string());
    }

    void EndLine() override { m_line += "\r\n"; }

private:
    void AddCell(std::size_t column, std::string const& text) {
        if (column > 0)
            m_line += ',';
        if (text.find_first_of(",\"\r\n") == std::string::npos) {
            m_line += text;
            return;
        }
        m_line += '"';
        for (char const letter : text)
            m_line.append(letter == '"' ? 2 : 1, letter);
        m_line += '"';
    }
};

template <class Function>
std::size_t VisitMatches(CQParamTableRows const& rows, KeyPattern const& pattern, Function function) {
    std::size_t count = 0;
    std::size_t index = 0;
    rows.VisitRows([&](ConstFields key, ConstFields row) {
        if (pattern.Matches(key)) {
            ++count;
            function(key, row, index);
        }
        ++index;
        return true;
    });
    return count;
}

std::size_t PrintWith(RowPrinter& printer, CQParamTableRows const& rows, KeyPattern const& pattern) {
    printer.Begin();
    std::size_t const count = VisitMatches(
        rows, pattern, [&](auto key, auto row, std::size_t index) { printer.Print(key, row, index); });
    printer.End();
    return count;
}

} // namespace

std::size_t PrintRows(std::ostream& out, TableDescription const& table, CQParamTableRows const& rows,
                      KeyPattern const& pattern, RowFormat format, RowOriginOf const& origin) {
    if (format == RowFormat::Json) {
        JsonPrinter printer(out, table, origin);
        return PrintWith(printer, rows, pattern);
    }
    if (format == RowFormat::Csv) {
        CsvPrinter printer(out, table, origin);
        return PrintWith(printer, rows, pattern);
    }
    TextPrinter printer(out, table, origin);
    auto const measure = [&](auto key, auto row, std::size_t) { printer.Measure(key, row); };
    bool const none = VisitMatches(rows, pattern, measure) == 0;
    return none ? 0 : PrintWith(printer, rows, pattern);
}

} // namespace paramdb::tools
