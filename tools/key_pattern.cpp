#include "tools/key_pattern.h"

#include <paramdb/tables/number_text.h>

#include "tools/report.h"
#include "tools/table_names.h"
#include "tools/wildcard_text.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace paramdb::tools {
namespace {

constexpr double Infinity = std::numeric_limits<double>::infinity();

// A part of the pattern that knows where it stands.
struct Part {
    std::wstring_view text;
    std::size_t place;

    Part From(std::size_t start) const { return {text.substr(start), place + start}; }
    Part Until(std::size_t end) const { return {text.substr(0, end), place}; }
    std::size_t End() const { return place + text.size(); }

    Part WithoutBlanks() const {
        std::size_t const start = std::min(text.find_first_not_of(L" \t"), text.size());
        return From(start).Until(text.find_last_not_of(L" \t") + 1 - start);
    }

    // Takes what stands before the separator, and the separator; everything where there is none.
    Part Take(wchar_t separator) {
        std::size_t const end = std::min(text.find(separator), text.size());
        Part const taken = Until(end);
        *this = From(std::min(end + 1, text.size()));
        return taken;
    }
};

template <class T>
NumberFault TakeAs(std::wstring_view& text, double& number) {
    T value{};
    NumberFault const fault = TakeNumber(text, value);
    number = static_cast<double>(value);
    return fault;
}

NumberFault TakeAs(FieldType type, std::wstring_view& text, double& number) {
    switch (type) {
    case FieldType::Int:
        return TakeAs<std::int32_t>(text, number);
    case FieldType::Unsigned:
        return TakeAs<std::uint32_t>(text, number);
    case FieldType::Int64:
        return TakeAs<std::int64_t>(text, number);
    case FieldType::Float: // as the rows were read, so that a number shown finds its row
        return TakeAs<float>(text, number);
    case FieldType::Double:
    case FieldType::Text:
        break;
    }
    return TakeAs<double>(text, number);
}

} // namespace

char const* const KeyPatternHelp =
    "KEY chooses rows: the elements of the key in their order, with a slash between them. Elements left\n"
    "out at the end, empty ones and * match anything. Quote what the shell would expand.\n"
    "  11/1        the number 11, then the number 1\n"
    "  */1         the second element is 1\n"
    "  1,5,9       one of these numbers\n"
    "  10..20      from 10 to 20, both included; 10.. and ..20 are open at one end\n"
    "  1,10..20/3  one of both, then the number 3\n"
    "  G?_DRIVE*   a text: ? for one character, * for any; it may hold slashes and commas\n"
    "An element of -1 is a number like any other.\n";

class KeyPatternParser {
public:
    KeyPatternParser(std::wstring_view text, std::span<ColumnDescription const> columns)
        : m_rest{text, 0}, m_columns(columns) {}

    std::variant<KeyPattern, KeyFault> Parse() {
        KeyPattern pattern;
        for (ColumnDescription const& column : m_columns) {
            KeyPattern::Element& element = pattern.m_elements.emplace_back();
            bool const is_text = column.type == FieldType::Text;
            bool const is_last = &column == &m_columns.back();
            Part const rest = m_rest;
            if (is_text && is_last)
                m_rest = m_rest.From(m_rest.text.size());
            Part const part = is_text && is_last ? rest : m_rest.Take(L'/');
            if (is_text)
                ReadText(part, element);
            else
                ReadNumbers(part, column.type, element);
            if (m_fault)
                return *m_fault;
            if (part.End() == rest.End())
                return pattern;
        }
        return KeyFault{m_rest.place - 1, "the key has no more elements"};
    }

private:
    using Interval = KeyPattern::Interval;

    void Fail(std::size_t place, char const* reason) {
        if (!m_fault)
            m_fault = KeyFault{place, reason};
    }

    static void ReadText(Part part, KeyPattern::Element& element) {
        element.is_any = part.text.empty();
        element.wildcards = part.text;
    }

    void ReadNumbers(Part part, FieldType type, KeyPattern::Element& element) {
        Part const inner = part.WithoutBlanks();
        if (inner.text.empty() || inner.text == L"*")
            return;
        element.is_any = false;
        for (bool more = true; more && !m_fault;) {
            Part const item = part.Take(L',');
            element.numbers.push_back(ReadInterval(item.WithoutBlanks(), type));
            more = item.End() != part.End();
        }
    }

    Interval ReadInterval(Part item, FieldType type) {
        std::size_t const dots = item.text.find(L"..");
        if (dots == std::wstring_view::npos) {
            double const number = ReadNumber(item, type);
            return {number, number};
        }
        Part const low = item.Until(dots).WithoutBlanks();
        Part const high = item.From(dots + 2).WithoutBlanks();
        Interval const interval{low.text.empty() ? -Infinity : ReadNumber(low, type),
                                high.text.empty() ? Infinity : ReadNumber(high, type)};
        if (!(interval.low <= interval.high))
            Fail(item.place, "the range ends before it begins");
        return interval;
    }

    double ReadNumber(Part part, FieldType type) {
        double number = 0;
        std::wstring_view rest = part.text;
        switch (TakeAs(type, rest, number)) {
        case NumberFault::None:
            break;
        case NumberFault::Invalid:
            Fail(part.place, "a number, a range or * is expected");
            break;
        case NumberFault::OutOfRange:
            Fail(part.place, "the number is too large for its column");
            break;
        }
        if (!rest.empty())
            Fail(part.From(part.text.size() - rest.size()).WithoutBlanks().place,
                 "not expected behind a number");
        return number;
    }

    Part m_rest;
    std::span<ColumnDescription const> m_columns;
    std::optional<KeyFault> m_fault;
};

std::variant<KeyPattern, KeyFault> KeyPattern::Parse(std::wstring_view text,
                                                     std::span<ColumnDescription const> key_columns) {
    return KeyPatternParser(text, key_columns).Parse();
}

bool KeyPattern::Element::Matches(ConstField field) const {
    if (is_any)
        return true;
    return field.Visit([this]<class T>(T const& value) {
        if constexpr (std::is_same_v<T, CFixedText>) {
            return MatchesWildcards(value.view(), wildcards);
        } else {
            auto const number = static_cast<double>(value);
            return std::ranges::any_of(numbers, [number](Interval const& interval) {
                bool const both_nan = std::isnan(number) && std::isnan(interval.low);
                return both_nan || (interval.low <= number && number <= interval.high);
            });
        }
    });
}

bool KeyPattern::Matches(CQParamTableRows::ConstFields key) const {
    return std::ranges::equal(
        m_elements, key.first(std::min(key.size(), m_elements.size())),
        [](Element const& element, ConstField field) { return element.Matches(field); });
}

std::string KeyFaultText(TableDescription const& table, std::wstring_view pattern, KeyFault const& fault) {
    std::string text = "key of " + TagOf(table) + ": " + fault.reason + "\n  " + Printable(pattern) + "\n  ";
    text.append(TextWidth(Printable(pattern.substr(0, fault.place))), ' ');
    text += "^\nThe key is ";
    for (ColumnDescription const& column : table.key_columns)
        text.append(&column == table.key_columns.data() ? "" : "/").append(column.name);
    text += '\n';
    return text;
}

} // namespace paramdb::tools
