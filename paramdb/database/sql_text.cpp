#include <paramdb/database/sql_text.h>

#include <algorithm>
#include <cstdint>

namespace paramdb::database {
namespace {

constexpr std::uint32_t FirstSurrogate = 0xD800;
constexpr std::uint32_t FirstLowSurrogate = 0xDC00;
constexpr std::uint32_t LastSurrogate = 0xDFFF;
constexpr std::uint32_t FirstEscape = 0x10E000;
constexpr std::uint32_t LastEscape = FirstEscape + (LastSurrogate - FirstSurrogate);

constexpr bool IsIn(std::uint32_t value, std::uint32_t first, std::uint32_t last) {
    return value >= first && value <= last;
}

void Append(std::string& bytes, std::uint32_t character) {
    auto const add = [&bytes](std::uint32_t byte) { bytes += static_cast<char>(byte); };
    auto const add_tail = [&](unsigned shift) { add(0x80 | ((character >> shift) & 0x3F)); };
    if (character < 0x80) {
        add(character);
    } else if (character < 0x800) {
        add(0xC0 | (character >> 6));
        add_tail(0);
    } else if (character < 0x10000) {
        add(0xE0 | (character >> 12));
        add_tail(6);
        add_tail(0);
    } else {
        add(0xF0 | (character >> 18));
        add_tail(12);
        add_tail(6);
        add_tail(0);
    }
}

// The character at the front of the bytes, which are cut; false for none.
bool Take(std::string_view& bytes, std::uint32_t& character) {
    auto const byte = [&bytes](std::size_t index) {
        return std::uint32_t{static_cast<unsigned char>(bytes[index])};
    };
    std::uint32_t const lead = byte(0);
    std::size_t const length = lead < 0x80 ? 1 : lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (IsIn(lead, 0x80, 0xC1) || lead > 0xF4 || bytes.size() < length)
        return false;
    character = length == 1 ? lead : lead & (0x7Fu >> length);
    for (std::size_t index = 1; index < length; ++index) {
        if ((byte(index) & 0xC0) != 0x80)
            return false;
        character = (character << 6) | (byte(index) & 0x3F);
    }
    constexpr std::uint32_t least[] = {0, 0, 0x80, 0x800, 0x10000};
    bytes.remove_prefix(length);
    return character >= least[length] && character <= 0x10FFFF &&
           !IsIn(character, FirstSurrogate, LastSurrogate);
}

} // namespace

bool EncodeSqlText(std::wstring_view text, std::string& bytes) {
    bytes.clear();
    for (std::size_t place = 0; place < text.size(); ++place) {
        auto const unit = static_cast<std::uint32_t>(text[place]);
        if (unit == 0 || unit > 0xFFFF)
            return false;
        if (!IsIn(unit, FirstSurrogate, LastSurrogate)) {
            Append(bytes, unit);
            continue;
        }
        auto const next = place + 1 < text.size() ? static_cast<std::uint32_t>(text[place + 1]) : 0;
        std::uint32_t const pair =
            unit < FirstLowSurrogate && IsIn(next, FirstLowSurrogate, LastSurrogate)
                ? 0x10000 + ((unit - FirstSurrogate) << 10) + (next - FirstLowSurrogate)
                : FirstEscape;
        if (IsIn(pair, FirstEscape, LastEscape)) {
            Append(bytes, FirstEscape + (unit - FirstSurrogate));
        } else {
            Append(bytes, pair);
            ++place;
        }
    }
    return true;
}

bool DecodeSqlText(std::string_view bytes, std::wstring& text) {
    text.resize(bytes.size());
    std::size_t length = 0;
    // Most texts are wholly ASCII.
    while (length < bytes.size() && static_cast<unsigned char>(bytes[length]) < 0x80) {
        text[length] = static_cast<wchar_t>(bytes[length]);
        ++length;
    }
    bytes.remove_prefix(length);
    while (!bytes.empty()) {
        std::uint32_t character = 0;
        if (!Take(bytes, character))
            return false;
        if (IsIn(character, FirstEscape, LastEscape)) {
            text[length++] = static_cast<wchar_t>(FirstSurrogate + (character - FirstEscape));
        } else if (character >= 0x10000) {
            text[length++] = static_cast<wchar_t>(FirstSurrogate + ((character - 0x10000) >> 10));
            text[length++] = static_cast<wchar_t>(FirstLowSurrogate + ((character - 0x10000) & 0x3FF));
        } else {
            text[length++] = static_cast<wchar_t>(character);
        }
    }
    text.resize(length);
    return true;
}

} // namespace paramdb::database
