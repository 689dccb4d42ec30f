#include "tools/convert/json_reader.h"

#include <paramdb/platform/core/utf8.h>

#include "tools/convert/cell_text.h"
#include "tools/rewrite/row_fields.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <set>

namespace paramdb::tools {
namespace {

using Json = nlohmann::json;
using ParamDb::cell_t;

std::string Quoted(std::string const& utf8) {
    return Json(utf8).dump(-1, ' ', false, Json::error_handler_t::replace);
}

// A value that is no object and no array.
struct Scalar {
    enum class Type { Other, Integer, Float, String };
    Type type;
    std::string text; // a number or word as it is written, a string without quotes

    std::string Shown() const { return type == Type::String ? Quoted(text) : text; }
};

// The cell of that type; none if the value is of another type or out of its range.
std::optional<cell_t> CellOf(FieldType type, Scalar const& value) {
    if (value.type == Scalar::Type::Other)
        return std::nullopt;
    bool const is_string = value.type == Scalar::Type::String;
    std::string const& text = value.text;
    if (type == FieldType::Text)
        return is_string ? std::optional<cell_t>(FromUtf8(text)) : std::nullopt;
    bool const is_float = type == FieldType::Float || type == FieldType::Double;
    bool fits = is_float || value.type == Scalar::Type::Integer;
    if (is_string)
        fits = is_float ? text == "nan" || text == "-nan" || text == "inf" || text == "-inf"
                        : type == FieldType::Int64;
    if (type == FieldType::Unsigned)
        fits = fits && !text.starts_with('-');
    return fits ? NumberOf(type, FromUtf8(text)) : std::nullopt;
}

// Without the number that the parser puts before its message.
std::string ParserMessage(std::string const& what) {
    std::size_t const end = what.find("] ");
    return end == std::string::npos ? what : what.substr(end + 2);
}

class JsonHandler : public nlohmann::json_sax<Json> {
public:
    explicit JsonHandler(ReadResult& result) : m_result(result) {}

    bool null() override { return Take({Scalar::Type::Other, "null"}); }
    bool boolean(bool value) override { return Take({Scalar::Type::Other, value ? "true" : "false"}); }
    bool number_integer(number_integer_t value) override {
        return Take({Scalar::Type::Integer, std::to_string(value)});
    }
    bool number_unsigned(number_unsigned_t value) override {
        return Take({Scalar::Type::Integer, std::to_string(value)});
    }
    bool number_float(number_float_t, string_t const& text) override {
        return Take({Scalar::Type::Float, text});
    }
    bool string(string_t& text) override { return Take({Scalar::Type::String, text}); }
    bool binary(binary_t&) override { return true; } // never in text

    bool start_object(std::size_t) override {
        if (!Enters(true))
            return true;
        m_names.emplace_back();
        if (m_place == Place::Nowhere)
            m_place = Place::Document;
        else if (m_place == Place::Document)
            m_place = m_name == "tables"    ? Place::Tables
                      : m_name == "version" ? Place::Version
                                            : Place::Texts;
        else if (m_place == Place::Rows)
            BeginRow();
        return true;
    }
    bool key(string_t& name) override {
        if (m_skipped > 0)
            return true;
        m_name = name;
        if (!m_names.back().insert(name).second)
            Fault("", "the member " + Quoted(name) + " stands twice in one object");
        return true;
    }
    bool end_object() override {
        if (Leaves())
            return true;
        m_names.pop_back();
        if (m_place == Place::Row)
            EndRow();
        else
            m_place = m_place == Place::Document ? Place::Nowhere : Place::Document;
        return true;
    }
    bool start_array(std::size_t) override {
        if (Enters(false))
            m_place = Place::Rows;
        return true;
    }
    bool end_array() override {
        if (!Leaves())
            m_place = Place::Tables;
        return true;
    }
    bool parse_error(std::size_t, std::string const&, nlohmann::detail::exception const& error) override {
        Fault("", ParserMessage(error.what()));
        return false;
    }

private:
    // In what the next value stands.
    enum class Place { Nowhere, Document, Version, Texts, Tables, Rows, Row };

    void Fault(std::string const& where, std::string const& text) {
        m_result.faults.push_back({"", where.empty() ? text : where + ": " + text});
    }
    void Lose(std::string const& name) {
        m_result.losses.push_back({LossKind::Unknown, {"", "nothing reads the member " + Quoted(name)}});
    }

    std::vector<ParamDb::row_t>& Rows() { return m_result.parameters.tables[m_table]; }
    static bool IsGroup(std::string const& name) {
        return name == "version" || name == "texts" || name == "tables";
    }

    // Whether an object or array that begins is to be read; all that is in another one is passed over.
    bool Enters(bool is_object) {
        bool const enters = m_skipped == 0 && IsWanted(is_object);
        m_skipped += enters ? 0 : 1;
        return enters;
    }
    // True at the end of one that is passed over.
    bool Leaves() {
        if (m_skipped == 0)
            return false;
        --m_skipped;
        return true;
    }

    bool IsWanted(bool is_object) {
        switch (m_place) {
        case Place::Nowhere:
            if (!is_object)
                Fault("", "no object");
            return is_object;
        case Place::Document:
            if (!IsGroup(m_name))
                Lose(m_name);
            else if (!is_object)
                Fault(m_name, "no object");
            return is_object && IsGroup(m_name);
        case Place::Tables:
            return BeginTable(!is_object);
        case Place::Rows:
            if (!is_object)
                TakeRowFault();
            return is_object;
        case Place::Version:
        case Place::Texts:
        case Place::Row:
            break;
        }
        TakeMember({Scalar::Type::Other, is_object ? "an object" : "an array"});
        return false;
    }

    bool Take(Scalar const& value) {
        if (m_skipped > 0)
            return true;
        switch (m_place) {
        case Place::Nowhere:
            Fault("", "no object");
            break;
        case Place::Document:
            if (IsGroup(m_name))
                Fault(m_name, "no object");
            else
                Lose(m_name);
            break;
        case Place::Tables:
            BeginTable(false);
            break;
        case Place::Rows:
            TakeRowFault();
            break;
        case Place::Version:
        case Place::Texts:
        case Place::Row:
            TakeMember(value);
            break;
        }
        return true;
    }

    void TakeMember(Scalar const& value) {
        if (m_place == Place::Row)
            TakeCell(value);
        else if (m_place == Place::Version ? !SetVersion(value) : !SetText(value))
            Lose((m_place == Place::Version ? "version." : "texts.") + m_name);
    }
    bool SetVersion(Scalar const& value) {
        for (std::size_t part = 0; part < VersionNames.size(); ++part) {
            if (VersionNames[part].name != m_name)
                continue;
            if (auto const cell = CellOf(FieldType::Int, value))
                m_result.parameters.version[part] = std::get<std::int32_t>(*cell);
            else
                Fault("version." + m_name, "no int: " + value.Shown());
            return true;
        }
        return false;
    }
    bool SetText(Scalar const& value) {
        for (std::size_t text = 0; text < TextNames.size(); ++text) {
            if (TextNames[text].name != m_name)
                continue;
            auto cell = CellOf(FieldType::Text, value);
            if (!cell)
                Fault("texts." + m_name, "no text: " + value.Shown());
            else if (std::get<std::wstring>(*cell).find(L'\0') != std::wstring::npos)
                Fault("texts." + m_name, "a text with a zero in it");
            else
                m_result.parameters.texts[text] = std::get<std::wstring>(*std::move(cell));
            return true;
        }
        return false;
    }

    // Whether the member of the tables that begins is one.
    bool BeginTable(bool is_array) {
        TableDescription const* const table = TableOfTag(FromUtf8(m_name));
        if (table == nullptr)
            Lose(m_name);
        else if (!is_array)
            Fault(m_name, "no array");
        if (table == nullptr || !is_array)
            return false;
        m_table = static_cast<std::size_t>(table - Catalogue().data());
        m_columns = ColumnsOf(*table);
        Rows().clear();
        return true;
    }

    void TakeRowFault() {
        Fault(RowPlace(m_table, Rows().size()), "no object");
        Rows().emplace_back();
    }
    void BeginRow() {
        m_place = Place::Row;
        Rows().emplace_back(m_columns.size());
        m_seen.assign(m_columns.size(), false);
    }
    void EndRow() {
        m_place = Place::Rows;
        for (std::size_t column = 0; column < m_columns.size(); ++column)
            if (!m_seen[column])
                Fault(CellPlace(m_table, Rows().size() - 1, column), "missing");
    }
    void TakeCell(Scalar const& value) {
        auto const found = std::ranges::find(m_columns, m_name, &ColumnDescription::name);
        std::size_t const row = Rows().size() - 1;
        if (found == m_columns.end()) {
            Lose(RowPlace(m_table, row) + ", " + m_name);
            return;
        }
        auto const column = static_cast<std::size_t>(found - m_columns.begin());
        m_seen[column] = true;
        auto cell = CellOf(found->type, value);
        std::string fault;
        if (!cell)
            fault = "no " + ToUtf8(FieldTypeName(found->type)) + ": " + value.Shown();
        else if (auto const* const text = std::get_if<std::wstring>(&*cell))
            fault = TextFault(*text);
        if (fault.empty())
            Rows().back()[column] = *std::move(cell);
        else
            Fault(CellPlace(m_table, row, column), fault);
    }

    ReadResult& m_result;
    Place m_place = Place::Nowhere;
    std::size_t m_skipped = 0;                  // objects and arrays that are open and passed over
    std::string m_name;                         // of the member that comes
    std::vector<std::set<std::string>> m_names; // of the members so far, of each open object
    std::size_t m_table = 0;
    std::vector<ColumnDescription> m_columns;
    std::vector<bool> m_seen; // the columns of the row so far
};

} // namespace

void ReadJson(std::string_view bytes, ReadResult& result) {
    JsonHandler handler(result);
    Json::sax_parse(bytes.begin(), bytes.end(), &handler);
}

} // namespace paramdb::tools
