// Choosing rows of a table by their keys.
//
// A pattern has the elements of the key in their order, with a slash between them: 11/1/2. Elements that are
// left out at the end, empty ones and * match anything. A number element is a list of numbers and ranges with
// commas between them, such as 1,5,10..20; a range holds both its ends, and one without an end is open there.
// Blanks around numbers do not count. A text element has * for any characters and ? for one; as the last
// element it goes to the end, so that it may hold slashes.
#pragma once

#include <paramdb/tables/catalogue.h>
#include <paramdb/tables/table_rows.h>

#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace paramdb::tools {

// The syntax in the words of a help text.
extern char const* const KeyPatternHelp;

// Why a text is no pattern, and where: the number of characters before the fault.
struct KeyFault {
    std::size_t place;
    std::string reason;
};

class KeyPattern {
public:
    // Matches every key.
    KeyPattern() = default;

    static std::variant<KeyPattern, KeyFault> Parse(std::wstring_view text,
                                                    std::span<ColumnDescription const> key_columns);

    // Whether the key, of the columns that the pattern was made for, is one of those meant.
    bool Matches(CQParamTableRows::ConstFields key) const;

private:
    friend class KeyPatternParser;

    // Both ends belong to it. Exact for int, unsigned int, float and double.
    struct Interval {
        double low;
        double high;
    };
    struct Element {
        bool is_any = true;
        std::vector<Interval> numbers;
        std::wstring wildcards;

        bool Matches(ConstField field) const;
    };

    std::vector<Element> m_elements;
};

// The fault with the pattern, a mark under the place, and what the key of the table is.
std::string KeyFaultText(TableDescription const& table, std::wstring_view pattern, KeyFault const& fault);

} // namespace paramdb::tools
