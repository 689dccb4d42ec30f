#include <paramdb/platform/core/string_tables.h>

#include <algorithm>
#include <array>

namespace paramdb {
namespace {

constexpr std::uint16_t English = 0x9;

wchar_t const* FindIn(std::span<StringEntry const> strings, unsigned id) noexcept {
    auto const found =
        std::lower_bound(strings.begin(), strings.end(), id,
                         [](StringEntry const& entry, unsigned wanted) { return entry.id < wanted; });
    return found != strings.end() && found->id == id ? found->text : nullptr;
}

} // namespace

std::span<StringTable const> StringTables() noexcept {
    static std::array<StringTable, 1> const tables{{
        {English, EnglishStrings()},
    }};
    return tables;
}

wchar_t const* FindString(std::uint16_t language, unsigned id) noexcept {
    for (StringTable const& table : StringTables()) {
        if (table.language != language)
            continue;
        if (wchar_t const* const text = FindIn(table.strings, id))
            return text;
    }
    return FindIn(EnglishStrings(), id);
}

} // namespace paramdb
