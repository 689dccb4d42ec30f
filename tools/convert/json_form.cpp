#include <paramdb/platform/core/utf8.h>

#include "tools/convert/cell_text.h"
#include "tools/convert/forms.h"
#include "tools/convert/json_reader.h"
#include "tools/rewrite/row_fields.h"
#include "tools/table_names.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>
#include <type_traits>

namespace paramdb::tools {
namespace {

using ParamDb::cell_t;

// Integers up to here are the same in every reader, also in one that knows doubles alone.
constexpr std::int64_t LargestNumber = (std::int64_t{1} << 53) - 1;

std::string Quotation(std::string const& utf8) {
    return nlohmann::json(utf8).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

// The float that a double stands for; none if it is beyond all of them.
std::optional<float> FloatOf(double value) {
    constexpr float largest = std::numeric_limits<float>::max();
    // Half a step above the largest float.
    constexpr double limit = 0x1.ffffffp127;
    if (std::abs(value) >= limit)
        return std::nullopt;
    if (std::abs(value) > static_cast<double>(largest))
        return value < 0 ? -largest : largest;
    return static_cast<float>(value);
}

// A number of JSON, or a text where a reader would get another value from a number.
std::string JsonText(cell_t const& cell) {
    if (auto const* const text = std::get_if<std::wstring>(&cell))
        return Quotation(ToUtf8(*text));
    std::string const number = NumberText(cell);
    return std::visit(
        [&number]<class T>(T const& value) -> std::string {
            if constexpr (std::is_same_v<T, std::int64_t>)
                return value > LargestNumber || value < -LargestNumber ? Quotation(number) : number;
            if constexpr (std::is_floating_point_v<T>) {
                if (!std::isfinite(value))
                    return Quotation(number);
                if (value == 0 && std::signbit(value))
                    return "-0.0"; // without a point it would be an integer, which has no sign at 0
            }
            if constexpr (std::is_same_v<T, float>) {
                // Readers take it as a double and round that once more.
                double wide = 0;
                std::from_chars(number.data(), number.data() + number.size(), wide);
                if (FloatOf(wide) != value)
                    return NumberText(static_cast<double>(value));
            }
            return number;
        },
        cell);
}

class JsonWriter {
public:
    explicit JsonWriter(std::vector<std::string>& faults) : m_faults(faults) {}

    std::string Write(ParameterSet const& parameters) {
        m_text = "{";
        for (std::size_t part = 0; part < VersionNames.size(); ++part)
            if (parameters.version[part])
                AddMember("version", VersionNames[part].name, std::to_string(*parameters.version[part]));
        EndGroup();
        for (std::size_t text = 0; text < TextNames.size(); ++text)
            if (auto const& value = parameters.texts[text]) {
                CheckText(std::string(TextNames[text].name), *value);
                AddMember("texts", TextNames[text].name, Quotation(ToUtf8(*value)));
            }
        EndGroup();
        for (auto const& [table, rows] : parameters.tables)
            AddMember("tables", TagOf(Catalogue()[table]), Rows(table, rows));
        EndGroup();
        return m_text + "\n}\n";
    }

private:
    // Adds a member to the group of that name, which is opened for the first one.
    void AddMember(std::string_view group, std::string_view name, std::string const& value) {
        if (!m_in_group)
            m_text.append(m_text == "{" ? "" : ",").append("\n  \"").append(group).append("\": {");
        m_text.append(m_in_group ? ",\n    \"" : "\n    \"").append(name).append("\": ").append(value);
        m_in_group = true;
    }
    void EndGroup() {
        if (m_in_group)
            m_text += "\n  }";
        m_in_group = false;
    }

    std::string Rows(std::size_t table, std::vector<ParamDb::row_t> const& rows) {
        auto const columns = ColumnsOf(Catalogue()[table]);
        std::string text = "[";
        for (std::size_t row = 0; row < rows.size(); ++row) {
            text += row == 0 ? "\n      {" : ",\n      {";
            for (std::size_t column = 0; column < columns.size(); ++column) {
                if (auto const* const value = std::get_if<std::wstring>(&rows[row][column]))
                    CheckText(table, row, column, *value);
                text.append(column == 0 ? "\"" : ", \"").append(columns[column].name).append("\": ");
                text += JsonText(rows[row][column]);
            }
            text += '}';
        }
        return text + (rows.empty() ? "]" : "\n    ]");
    }

    void CheckText(std::string const& where, std::wstring const& text) {
        if (auto const unit = LoneSurrogate(text))
            m_faults.push_back(where + ": the half character " + UnitText(*unit) + " cannot be in JSON");
    }
    void CheckText(std::size_t table, std::size_t row, std::size_t column, std::wstring const& text) {
        if (LoneSurrogate(text))
            CheckText(CellPlace(table, row, column), text);
    }

    std::vector<std::string>& m_faults;
    std::string m_text;
    bool m_in_group = false;
};

} // namespace

ReadResult ReadJsonForm(std::string_view bytes) {
    ReadResult result;
    ReadJson(bytes, result);
    if (result.faults.empty()) {
        auto set = TableSetOf(result.parameters);
        result.tables = ReadTables(set);
    }
    return result;
}

std::string WriteJsonForm(ParameterSet const& parameters, std::vector<std::string>& faults) {
    return JsonWriter(faults).Write(parameters);
}

} // namespace paramdb::tools
