#include <paramdb/platform/core/string_tables.h>

#include <algorithm>
#include <array>

namespace paramdb {
namespace {

wchar_t const* FindIn(StringTable const& table, unsigned id) noexcept {
    auto const found =
        std::lower_bound(table.strings.begin(), table.strings.end(), id,
                         [](StringEntry const& entry, unsigned wanted) { return entry.id < wanted; });
    return found != table.strings.end() && found->id == id ? found->text : nullptr;
}

// The table of a language, the English one for an unknown language.
StringTable const& TableOf(std::uint16_t language) noexcept {
    for (StringTable const& table : StringTables()) {
        if (table.language == language)
            return table;
    }
    return StringTables().front();
}

} // namespace

std::span<StringTable const> StringTables() noexcept {
    static std::array<StringTable, 10> const tables{{
        EnglishTable(0x9),
        PortugueseTable(0x16),
        CzechTable(0x405),
        GermanTable(0x407),
        FrenchTable(0x40C),
        HungarianTable(0x40E),
        ItalianTable(0x410),
        EnglishTable(0x800), // what the host system takes by default
        ChineseTable(0x804),
        SpanishTable(0xC0A),
    }};
    return tables;
}

wchar_t const* FindString(std::uint16_t language, unsigned id) noexcept {
    wchar_t const* const text = FindIn(TableOf(language), id);
    return text ? text : FindIn(StringTables().front(), id);
}

std::span<ElementWords const, KeyElements> FindElements(std::uint16_t language) noexcept {
    return TableOf(language).elements;
}

} // namespace paramdb
