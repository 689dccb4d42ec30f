#include "tools/check/row_scan.h"

#include <paramdb/storage/white_space.h>
#include <paramdb/tables/number_text.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace paramdb::tools::check {
namespace {

bool IsDigit(char byte) {
    return byte >= '0' && byte <= '9';
}

char const* SkipBlanks(char const* place, char const* end) {
    while (place != end && IsWhiteSpace(*place))
        ++place;
    return place;
}

char const* SkipWord(char const* place, char const* end) {
    while (place != end && !IsWhiteSpace(*place))
        ++place;
    return place;
}

char const* SkipDigits(char const* place, char const* end) {
    while (place != end && IsDigit(*place))
        ++place;
    return place;
}

std::string_view View(char const* begin, char const* end) {
    return {begin, static_cast<std::size_t>(end - begin)};
}

class Scanner {
public:
    Scanner(std::string_view line, std::vector<FieldType> const& types) : m_rest(line), m_types(types) {}

    RowScan Run() {
        for (FieldType const type : m_types) {
            if (m_rest.empty())
                return std::move(m_scan);
            if (!(type == FieldType::Text ? TakeText() : TakeNumberField(type)))
                return std::move(m_scan);
            if (!m_rest.empty() && !IsWhiteSpace(m_rest.front()) && !m_scan.glued)
                m_scan.glued = m_scan.fields.size() - 1;
        }
        m_scan.surplus = WithoutBlanks(m_rest);
        return std::move(m_scan);
    }

private:
    static std::string_view WithoutBlanks(std::string_view text) {
        char const* const end = text.data() + text.size();
        return View(SkipBlanks(text.data(), end), end);
    }

    bool Stumble(RowScan::Fault fault) {
        std::string_view const rest = WithoutBlanks(m_rest);
        m_scan.fault = fault;
        m_scan.at_fault = View(rest.data(), SkipWord(rest.data(), rest.data() + rest.size()));
        return false;
    }

    bool TakeNumberField(FieldType type) {
        switch (type) {
        case FieldType::Int:
            return Take(std::int32_t());
        case FieldType::Unsigned:
            return Take(std::uint32_t());
        case FieldType::Int64:
            return Take(std::int64_t());
        case FieldType::Float:
            return Take(float());
        default:
            return Take(double());
        }
    }

    template <class T>
    bool Take(T value) {
        std::string_view const before = WithoutBlanks(m_rest);
        switch (TakeNumber(m_rest, value)) {
        case NumberFault::Invalid:
            return Stumble(RowScan::Fault::Invalid);
        case NumberFault::OutOfRange:
            return Stumble(RowScan::Fault::OutOfRange);
        case NumberFault::None:
            break;
        }
        if constexpr (std::is_floating_point_v<T>)
            if (std::isnan(value) && !m_scan.nan)
                m_scan.nan = m_scan.fields.size();
        m_scan.fields.push_back(before.substr(0, before.size() - m_rest.size()));
        return true;
    }

    bool TakeText() {
        if (m_rest.size() >= TextLimit)
            return Stumble(RowScan::Fault::TooLong);
        bool const at_limit = m_rest.size() == TextLimit - 1;
        std::string_view const text = WithoutBlanks(m_rest);
        if (!text.empty() && text.front() == '"') {
            std::size_t const end = text.find('"', 1);
            if (end == std::string_view::npos)
                m_scan.open_quote = text;
            m_scan.fields.push_back(text.substr(1, end - 1));
            m_rest = text.substr(std::min(text.size(), end == std::string_view::npos ? end : end + 1));
        } else {
            char const* const end = SkipWord(text.data(), text.data() + text.size());
            m_scan.fields.push_back(View(text.data(), end));
            m_rest = View(end, text.data() + text.size());
        }
        if (at_limit && m_scan.at_limit.empty())
            m_scan.at_limit = m_scan.fields.back();
        return true;
    }

    std::string_view m_rest;
    std::vector<FieldType> const& m_types;
    RowScan m_scan;
};

// Each of these answers where a field ends that begins there and is written in the usual way; null for any
// other.

char const* PlainInteger(char const* place, char const* end) {
    constexpr std::ptrdiff_t safe_digits = 9;
    if (place != end && *place == '-')
        ++place;
    char const* const digits = place;
    place = SkipDigits(place, end);
    return place != digits && place - digits <= safe_digits ? place : nullptr;
}

char const* PlainFloat(char const* place, char const* end) {
    constexpr std::ptrdiff_t safe_digits = 30; // below the largest float
    if (place != end && *place == '-')
        ++place;
    char const* const digits = place;
    place = SkipDigits(place, end);
    if (place == digits || place - digits > safe_digits)
        return nullptr;
    return place != end && *place == '.' ? SkipDigits(place + 1, end) : place;
}

char const* PlainText(char const* place, char const* end) {
    if (place == end)
        return nullptr;
    if (*place != '"') {
        auto const is_usual = [](char character) {
            return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
                   (character >= '0' && character <= '9');
        };
        char const* const word = std::find_if_not(place, end, is_usual);
        return word != place && (word == end || *word == ' ' || *word == '\t') ? word : nullptr;
    }
    char const* const quote = std::find(place + 1, end, '"');
    return quote == end ? nullptr : quote + 1;
}

} // namespace

std::vector<FieldType> FieldTypesOf(TableDescription const& table) {
    std::vector<FieldType> types;
    for (auto const* columns : {&table.key_columns, &table.row_columns})
        for (ColumnDescription const& column : *columns)
            types.push_back(column.type);
    return types;
}

RowScan ScanRow(std::string_view line, std::vector<FieldType> const& types) {
    return Scanner(line, types).Run();
}

bool IsPlainRow(std::string_view line, std::vector<FieldType> const& types) {
    char const* place = line.data();
    char const* const end = place + line.size();
    for (FieldType const type : types) {
        std::size_t const left = static_cast<std::size_t>(end - place);
        char const* const begin = SkipBlanks(place, end);
        if (begin == place && begin != line.data())
            return false;
        if (type == FieldType::Text)
            place = left < TextLimit - 1 ? PlainText(begin, end) : nullptr;
        else
            place = type == FieldType::Float || type == FieldType::Double ? PlainFloat(begin, end)
                                                                          : PlainInteger(begin, end);
        if (place == nullptr)
            return false;
    }
    return place == end;
}

} // namespace paramdb::tools::check
