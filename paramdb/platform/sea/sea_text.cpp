#include <paramdb/platform/core/line_end.h>
#include <paramdb/platform/core/utf8.h>
#include <paramdb/platform/sea/sea_text.h>

#include <charconv>
#include <cstdint>
#include <optional>

namespace paramdb {
namespace {

constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view ListPrefix = "list\t";
constexpr std::string_view ValuePrefix = "value\t";

bool IsSurrogate(wchar_t unit, std::uint32_t first) {
    auto const c = static_cast<std::uint32_t>(unit);
    return c >= first && c < first + 0x400;
}

// The letter behind a backslash that stands for a unit, 0 if the unit stands for itself.
wchar_t EscapeLetter(wchar_t unit) {
    switch (unit) {
    case L'\\':
        return L'\\';
    case L'\n':
        return L'n';
    case L'\r':
        return L'r';
    case L'\t':
        return L't';
    case L'\0':
        return L'0';
    default:
        return L'\0';
    }
}

void AppendHex(std::wstring& text, wchar_t unit) {
    constexpr wchar_t Digits[] = L"0123456789ABCDEF";
    auto const c = static_cast<std::uint32_t>(unit);
    text += L"\\u";
    for (unsigned shift = 16; shift > 0; shift -= 4)
        text += Digits[(c >> (shift - 4)) & 0xF];
}

std::string Escape(std::wstring_view text) {
    std::wstring escaped;
    escaped.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        wchar_t const unit = text[i];
        if (wchar_t const letter = EscapeLetter(unit)) {
            escaped += L'\\';
            escaped += letter;
        } else if (IsSurrogate(unit, 0xD800) && i + 1 < text.size() && IsSurrogate(text[i + 1], 0xDC00)) {
            escaped += text.substr(i++, 2);
        } else if (IsSurrogate(unit, 0xD800) || IsSurrogate(unit, 0xDC00)) {
            AppendHex(escaped, unit);
        } else {
            escaped += unit;
        }
    }
    return ToUtf8(escaped);
}

std::optional<wchar_t> ReadHex(std::string_view digits) {
    std::uint16_t value = 0;
    if (digits.size() != 4)
        return std::nullopt;
    auto const [end, error] = std::from_chars(digits.data(), digits.data() + 4, value, 16);
    if (error != std::errc() || end != digits.data() + 4)
        return std::nullopt;
    return static_cast<wchar_t>(value);
}

// Nothing for a backslash with something unknown behind it.
std::optional<std::wstring> Unescape(std::string_view bytes) {
    std::wstring text;
    while (true) {
        std::size_t const backslash = bytes.find('\\');
        text += FromUtf8(bytes.substr(0, backslash));
        if (backslash == std::string_view::npos)
            return text;
        bytes.remove_prefix(backslash + 1);
        std::size_t used = 1;
        switch (bytes.empty() ? ' ' : bytes.front()) {
        case '\\':
            text += L'\\';
            break;
        case 'n':
            text += L'\n';
            break;
        case 'r':
            text += L'\r';
            break;
        case 't':
            text += L'\t';
            break;
        case '0':
            text += L'\0';
            break;
        case 'u': {
            auto const unit = ReadHex(bytes.substr(1, 4));
            if (!unit)
                return std::nullopt;
            text += *unit;
            used = 5;
            break;
        }
        default:
            return std::nullopt;
        }
        bytes.remove_prefix(used);
    }
}

// Reads line after line into a content.
class Reader {
public:
    explicit Reader(SeaContent& content) : m_content(content) {}

    // False for a line that makes no sense.
    bool Take(std::string_view line) {
        if (line.empty() || line.front() == '#')
            return true;
        if (line.front() == '\t')
            return TakeText(line.substr(1));
        if (line.starts_with(ListPrefix))
            return TakeList(line.substr(ListPrefix.size()));
        // A text behind any other line would land in a list that it was not meant for.
        m_list = nullptr;
        return line.starts_with(ValuePrefix) && TakeValue(line.substr(ValuePrefix.size()));
    }

private:
    bool TakeText(std::string_view field) {
        auto text = Unescape(field);
        if (!m_list || !text)
            return false;
        m_list->push_back(*std::move(text));
        return true;
    }

    bool TakeList(std::string_view field) {
        auto name = Unescape(field);
        m_list = name ? &m_content.lists[*std::move(name)] : nullptr;
        return m_list != nullptr;
    }

    bool TakeValue(std::string_view fields) {
        std::size_t const first = fields.find('\t');
        std::size_t const second = first == std::string_view::npos ? first : fields.find('\t', first + 1);
        if (second == std::string_view::npos)
            return false;
        auto key = Unescape(fields.substr(0, first));
        auto text = Unescape(fields.substr(second + 1));
        std::string_view const number = fields.substr(first + 1, second - first - 1);
        int index = 0;
        auto const [end, error] = std::from_chars(number.data(), number.data() + number.size(), index);
        if (!key || !text || error != std::errc() || end != number.data() + number.size())
            return false;
        m_content.values[{*std::move(key), index}] = *std::move(text);
        return true;
    }

    SeaContent& m_content;
    CResourceSea::LineList* m_list = nullptr;
};

} // namespace

SeaContent ReadSeaText(std::string_view bytes) {
    SeaContent content;
    Reader reader(content);
    if (bytes.starts_with(ByteOrderMark))
        bytes.remove_prefix(ByteOrderMark.size());
    for (int number = 1; !bytes.empty(); ++number) {
        std::size_t const end = bytes.find('\n');
        std::string_view line = bytes.substr(0, end);
        bytes.remove_prefix(end == std::string_view::npos ? bytes.size() : end + 1);
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        if (!reader.Take(line))
            content.bad_lines.push_back(number);
    }
    return content;
}

std::string WriteSeaText(CResourceSea::ListMap const& lists, CResourceSea::ValueMap const& values) {
    std::string bytes;
    for (auto const& [name, lines] : lists) {
        bytes.append(ListPrefix).append(Escape(name)).append(LineEnd);
        for (std::wstring const& line : lines)
            bytes.append("\t").append(Escape(line)).append(LineEnd);
    }
    for (auto const& [key, text] : values) {
        bytes.append(ValuePrefix).append(Escape(key.first)).append("\t").append(std::to_string(key.second));
        bytes.append("\t").append(Escape(text)).append(LineEnd);
    }
    return bytes;
}

} // namespace paramdb
