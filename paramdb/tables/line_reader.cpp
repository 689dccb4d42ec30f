#include <paramdb/platform/sea/pr_win.h>
#include <paramdb/storage/lake_text.h>
#include <paramdb/storage/white_space.h>
#include <paramdb/tables/line_reader.h>
#include <paramdb/tables/number_text.h>
#include <paramdb/tables/plain_fields.h>

#include <algorithm>
#include <string>
#include <type_traits>

namespace paramdb {
namespace {

// A line on which this many characters are left holds no text field.
constexpr std::size_t TextLimit = CFixedText::Capacity - 1;

// The standard conversion whose faults are reported for a field of this type.
template <class T>
constexpr wchar_t const* Conversion() {
    if constexpr (std::is_same_v<T, std::int32_t>)
        return L"stoi";
    else if constexpr (std::is_same_v<T, std::uint32_t>)
        return L"stoul";
    else if constexpr (std::is_same_v<T, std::int64_t>)
        return L"stoll";
    else
        return std::is_same_v<T, float> ? L"stof" : L"stod";
}

void ReportConversion(NumberFault fault, std::wstring const& conversion, std::wstring const& rest) {
    std::wstring const reason = fault == NumberFault::Invalid ? L"invalid " + conversion + L" argument"
                                                              : conversion + L" argument out of range";
    PrWin::Output(8, 3,
                  L"Error converting parameter sea to parameter tables: '" + reason + L"' for substring '" +
                      rest + L"'\n");
}

template <class Character>
bool TakeField(std::basic_string_view<Character>& line, CFixedText& target) {
    if (line.size() >= TextLimit)
        return false;
    auto const is_blank = [](Character character) { return IsWhiteSpace(character); };
    auto begin = std::find_if_not(line.begin(), line.end(), is_blank);
    bool const quoted = begin != line.end() && *begin == Character('"');
    if (quoted)
        ++begin;
    auto const end =
        quoted ? std::find(begin, line.end(), Character('"')) : std::find_if(begin, line.end(), is_blank);
    target.Assign(std::basic_string_view<Character>(begin, end),
                  [](Character character) { return Widen(character); });
    line = {quoted && end != line.end() ? end + 1 : end, line.end()};
    return true;
}

template <class T, class Character>
bool TakeField(std::basic_string_view<Character>& line, T& target) {
    if (line.empty())
        return true;
    NumberFault const fault = TakeNumber(line, target);
    if (fault != NumberFault::None)
        ReportConversion(fault, Conversion<T>(), LakeText(line).wide());
    return fault == NumberFault::None;
}

} // namespace

bool ReadLine(std::wstring_view& line, std::span<Field const> fields) {
    return std::all_of(fields.begin(), fields.end(), [&](Field const& field) {
        return field.Visit([&](auto& target) { return TakeField(line, target); });
    });
}

bool ReadLine(std::string_view& line, std::span<Field const> fields) {
    PlainFields plain(line);
    for (Field const& field : fields) {
        bool const is_good = field.Visit([&]<class T>(T& target) {
            if constexpr (!std::is_same_v<T, CFixedText>) {
                if (plain.empty() || plain.Take(target))
                    return true;
            }
            line = plain.Rest();
            bool const is_taken = TakeField(line, target);
            plain.SetRest(line);
            return is_taken;
        });
        if (!is_good)
            return false;
    }
    line = plain.Rest();
    return true;
}

bool ReadCells(std::span<ParamDb::cell_t const> cells, std::span<Field const> fields, std::size_t& taken) {
    taken = 0;
    for (Field const& field : fields) {
        if (taken == cells.size())
            return false;
        ParamDb::cell_t const& cell = cells[taken];
        bool const good = field.Visit([&]<class T>(T& target) {
            if constexpr (std::is_same_v<T, CFixedText>) {
                std::wstring const& text = ParamDb::ToText(cell);
                if (text.size() >= TextLimit)
                    return false;
                target = CFixedText(std::wstring_view(text));
            } else if constexpr (std::is_floating_point_v<T>) {
                target = ParamDb::ToFloat<T>(cell);
            } else {
                target = ParamDb::ToInteger<T>(cell);
            }
            return true;
        });
        if (!good)
            return false;
        ++taken;
    }
    return true;
}

} // namespace paramdb
