#include <paramdb/platform/core/utf8.h>

#include <cstdint>

namespace paramdb {
namespace {

constexpr bool IsHighSurrogate(std::uint32_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
constexpr bool IsLowSurrogate(std::uint32_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

void AppendUtf8(std::string& bytes, std::uint32_t character) {
    auto const add = [&bytes](std::uint32_t byte) {
        bytes += static_cast<char>(static_cast<unsigned char>(byte));
    };
    if (character < 0x80) {
        add(character);
    } else if (character < 0x800) {
        add(0xC0 | (character >> 6));
        add(0x80 | (character & 0x3F));
    } else if (character < 0x10000) {
        add(0xE0 | (character >> 12));
        add(0x80 | ((character >> 6) & 0x3F));
        add(0x80 | (character & 0x3F));
    } else {
        add(0xF0 | (character >> 18));
        add(0x80 | ((character >> 12) & 0x3F));
        add(0x80 | ((character >> 6) & 0x3F));
        add(0x80 | (character & 0x3F));
    }
}

struct Decoded {
    std::uint32_t character;
    std::size_t length; // 0: no well-formed sequence starts here
};

// The sequence at the front of `bytes`, which is not empty.
Decoded Decode(std::string_view bytes) {
    auto const byte = [&bytes](std::size_t i) { return std::uint32_t{static_cast<unsigned char>(bytes[i])}; };
    std::uint32_t const lead = byte(0);
    if (lead < 0x80)
        return {lead, 1};
    std::size_t const length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    // 0xC0 and 0xC1 could only begin overlong forms, above 0xF4 lies nothing.
    if (lead < 0xC2 || lead > 0xF4 || bytes.size() < length)
        return {0, 0};
    std::uint32_t character = lead & (0x7Fu >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80)
            return {0, 0};
        character = (character << 6) | (byte(i) & 0x3F);
    }
    bool const overlong = (length == 3 && character < 0x800) || (length == 4 && character < 0x10000);
    if (overlong || (character >= 0xD800 && character <= 0xDFFF) || character > 0x10FFFF)
        return {0, 0};
    return {character, length};
}

} // namespace

std::string ToUtf8(std::wstring_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        auto const unit = static_cast<std::uint32_t>(text[i]);
        if (IsHighSurrogate(unit) && i + 1 < text.size() &&
            IsLowSurrogate(static_cast<std::uint32_t>(text[i + 1]))) {
            ++i;
            AppendUtf8(bytes,
                       0x10000 + ((unit - 0xD800) << 10) + (static_cast<std::uint32_t>(text[i]) - 0xDC00));
        } else if (unit >= 0xDC80 && unit <= 0xDCFF) {
            bytes += static_cast<char>(static_cast<unsigned char>(unit - 0xDC00));
        } else if (IsHighSurrogate(unit) || IsLowSurrogate(unit) || unit > 0x10FFFF) {
            AppendUtf8(bytes, 0xFFFD);
        } else {
            AppendUtf8(bytes, unit);
        }
    }
    return bytes;
}

std::wstring FromUtf8(std::string_view bytes) {
    std::wstring text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        auto const [character, length] = Decode(bytes);
        if (length == 0) {
            text += static_cast<wchar_t>(0xDC00 + static_cast<unsigned char>(bytes.front()));
            bytes.remove_prefix(1);
            continue;
        }
        if (character >= 0x10000) {
            text += static_cast<wchar_t>(0xD800 + ((character - 0x10000) >> 10));
            text += static_cast<wchar_t>(0xDC00 + ((character - 0x10000) & 0x3FF));
        } else {
            text += static_cast<wchar_t>(character);
        }
        bytes.remove_prefix(length);
    }
    return text;
}

} // namespace paramdb
