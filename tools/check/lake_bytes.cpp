// The characters of the files: quotes, encodings, characters that cannot be seen.
#include <paramdb/platform/core/utf8.h>
#include <paramdb/tables/load_progress.h>

#include "tools/check/rules.h"
#include "tools/check/wording.h"
#include "tools/report.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <utility>

namespace paramdb::tools::check {
namespace {

// What the bytes 0x80 to 0x9F are in Windows-1252; 0 for none.
constexpr std::array<char16_t, 32> Windows1252{
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

bool IsControl(unsigned char byte) {
    return (byte < 0x20 && byte != '\t') || (byte >= 0x7F && byte < 0xA0);
}

// Whether a line holds nothing but printable ASCII behind the tabs at its begin, and its quotes go in pairs.
// Eight bytes at a time, since nearly every line is like that.
bool IsPlainLine(std::string_view line) {
    constexpr std::uint64_t ones = 0x0101010101010101U;
    constexpr std::uint64_t highs = ones * 0x80U;
    line.remove_prefix(std::min(line.find_first_not_of('\t'), line.size()));
    std::uint64_t strange = 0;
    std::uint64_t quotes = 0; // of the quotes at each place in the eight, whether their number is odd
    auto const look_at = [&](std::uint64_t eight) {
        // A byte from 0x80 on, below 0x20, or 0x7F sets its highest bit; a carry comes from one of those.
        strange |= eight | (eight - ones * 0x20U) | (eight + ones);
        std::uint64_t const others = (eight ^ ones * 0x22U) & ~highs;
        quotes ^= ~(others + ~highs) & highs;
    };
    std::uint64_t eight = 0;
    for (; line.size() >= sizeof eight; line.remove_prefix(sizeof eight)) {
        std::memcpy(&eight, line.data(), sizeof eight);
        look_at(eight);
    }
    if (!line.empty()) {
        eight = ones * 0x20U;
        std::memcpy(&eight, line.data(), line.size());
        look_at(eight);
    }
    return (strange & highs) == 0 && std::popcount(quotes) % 2 == 0;
}

std::string Hexadecimal(unsigned value, int digits) {
    char text[16];
    std::snprintf(text, sizeof text, "%0*X", digits, value);
    return text;
}

// Whether every byte from 0x80 on is a part of a UTF-8 sequence, and there is one.
bool IsUtf8(std::string_view line) {
    std::wstring const wide = FromUtf8(line);
    auto const is_high = [](wchar_t unit) { return static_cast<unsigned long>(unit) >= 0x80; };
    auto const is_no_part = [](wchar_t unit) {
        auto const code = static_cast<unsigned long>(unit);
        return code >= 0xDC80 && code <= 0xDCFF;
    };
    // A low surrogate of a pair is none, but then a pair is the character of a UTF-8 sequence.
    for (std::size_t place = 0; place < wide.size(); ++place) {
        bool const in_pair = place > 0 && (static_cast<unsigned long>(wide[place - 1]) & 0xFC00UL) == 0xD800;
        if (is_no_part(wide[place]) && !in_pair)
            return false;
    }
    return std::any_of(wide.begin(), wide.end(), is_high);
}

// The length of the UTF-8 sequence that begins there, of well-formed bytes.
std::size_t SequenceLength(std::string_view bytes) {
    auto const first = static_cast<unsigned char>(bytes.front());
    return first < 0x80 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
}

class FileBytes {
public:
    FileBytes(CheckContext const& context, FindingList& findings, std::size_t file)
        : m_context(context), m_findings(findings), m_file(context.Files()[file]) {
        m_place.file = file;
    }

    void Run() {
        if (HasByteOrderMark(m_file.bytes))
            m_findings
                .Add("P121", Place{m_place.file, 1, 1, 3},
                     "a byte order mark stands before the first line and belongs to it")
                .Hint("save the file without a byte order mark");
        RowProgress progress;
        for (m_place.line = 1; m_place.line <= m_file.line_begins.size(); ++m_place.line) {
            progress.AddRow();
            Scan(m_file.Line(m_place.line));
        }
        if (m_utf8_lines > 0) {
            std::string const more =
                m_utf8_lines == 1 ? "" : "; " + Counted(m_utf8_lines - 1, "line") + " more in this file";
            m_findings
                .Add("P122", m_utf8_place,
                     "this is UTF-8, but is read byte by byte, as \"" + m_utf8_seen + "\"" + more)
                .Hint("save the file as ISO 8859-1");
        }
    }

private:
    void Scan(std::string_view line) {
        if (IsPlainLine(line))
            return;
        unsigned strange = 0;
        unsigned quotes = 0;
        for (char const character : line) {
            auto const byte = static_cast<unsigned char>(character);
            strange |= static_cast<unsigned>(byte < 0x20) & static_cast<unsigned>(byte != '\t');
            strange |= static_cast<unsigned>(byte >= 0x7F);
            quotes += static_cast<unsigned>(character == '"');
        }
        if (strange == 0 && quotes % 2 == 0)
            return;
        std::size_t const begin = line.find_first_not_of(" \t");
        if (begin == std::string_view::npos || line[begin] == ';' || line[begin] == '}')
            return; // a comment
        if (quotes % 2 != 0)
            m_findings.Add("P110", m_context.PlaceOf(line.substr(line.rfind('"'), 1)), UnclosedQuote)
                .Hint("put a quote behind the text");
        if (strange != 0)
            ScanCharacters(line);
    }

    void ScanCharacters(std::string_view line) {
        bool const is_utf8 = IsUtf8(line);
        if (is_utf8)
            ScanUtf8(line.substr(m_place.line == 1 && HasByteOrderMark(line) ? 3 : 0));
        for (std::size_t place = 0; place < line.size(); ++place) {
            auto const byte = static_cast<unsigned char>(line[place]);
            if (IsControl(byte) && (byte < 0x80 || !is_utf8))
                ReportControl(line.substr(place, 1), byte);
        }
    }

    void ScanUtf8(std::string_view line) {
        for (std::size_t length = 0; !line.empty(); line.remove_prefix(length)) {
            length = SequenceLength(line);
            if (length == 1)
                continue;
            std::string_view const sequence = line.substr(0, length);
            std::wstring const character = FromUtf8(sequence);
            if (std::exchange(m_last_utf8_line, m_place.line) != m_place.line && ++m_utf8_lines == 1) {
                m_utf8_place = m_context.PlaceOf(sequence);
                m_utf8_seen = Printable(LakeText(sequence).wide());
            }
            if (character.size() > 1 || static_cast<unsigned long>(character[0]) > 0xFF)
                m_findings
                    .Add("P123", m_context.PlaceOf(sequence),
                         "the character " + Printable(character) +
                             " has no byte in this format, and cannot be written")
                    .Hint("use characters of ISO 8859-1, U+0000 to U+00FF");
        }
    }

    void ReportControl(std::string_view piece, unsigned char byte) {
        std::string const code = "0x" + Hexadecimal(byte, 2);
        char16_t const meant = byte >= 0x80 ? Windows1252[byte - 0x80U] : u'\0';
        std::string hint = "leave it out";
        if (meant != 0)
            hint = "it is " + ToUtf8(std::wstring(1, static_cast<wchar_t>(meant))) +
                   " in Windows-1252, which this format does not have: save the file as ISO 8859-1";
        m_findings.Add("P124", m_context.PlaceOf(piece), "the byte " + code + " is a control character")
            .Hint(hint);
    }

    CheckContext const& m_context;
    FindingList& m_findings;
    LineOrigins::File const& m_file;
    Place m_place;
    Place m_utf8_place;
    std::size_t m_utf8_lines = 0;
    std::size_t m_last_utf8_line = 0;
    std::string m_utf8_seen;
};

} // namespace

void CheckBytes(CheckContext const& context, FindingList& findings) {
    for (std::size_t file = 0; file < context.Files().size(); ++file)
        FileBytes(context, findings, file).Run();
}

} // namespace paramdb::tools::check
