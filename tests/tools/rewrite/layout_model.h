// The canonical layout once more, as plainly as it can be said: the judge of the real one.
#pragma once

#include <paramdb/tables/catalogue.h>

#include <cerrno>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <cwchar>
#include <optional>
#include <string>
#include <vector>

namespace layout_model {

inline bool IsBlank(char byte) {
    auto const code = static_cast<unsigned char>(byte);
    return (code >= 9 && code <= 13) || code == 32 || code == 0x85 || code == 0xA0;
}

inline std::string Trim(std::string text) {
    while (!text.empty() && IsBlank(text.back()))
        text.pop_back();
    while (!text.empty() && IsBlank(text.front()))
        text.erase(0, 1);
    return text;
}

struct Parts {
    std::string key, value, comment;
    bool operator==(Parts const&) const = default;
};

inline Parts Split(std::string const& line) {
    bool quoted = false;
    for (std::size_t at = 0; at < line.size(); ++at) {
        quoted = quoted != (line[at] == '"');
        if (quoted)
            continue;
        std::string const front = Trim(line.substr(0, at));
        std::string const back = Trim(line.substr(at + 1));
        if (line[at] == ':')
            return {front, back, ""};
        if (line[at] == ';') {
            if (front.empty() || front[0] == '}')
                return {"", front, back};
            break;
        }
    }
    return {"", Trim(line), ""};
}

// How many bytes of the text a number of that type takes; 0 for none or one out of range.
inline std::size_t NumberLength(paramdb::FieldType type, std::string text) {
    std::size_t blanks = 0;
    while (blanks < text.size() && IsBlank(text[blanks]))
        ++blanks;
    text.erase(0, blanks);
    // Behind a zero no conversion sees anything; neither may it skip blanks that are none here.
    if (text.empty() || text[0] == '\x1C')
        return 0;
    char* end = nullptr;
    errno = 0;
    bool good = true;
    if (type == paramdb::FieldType::Float)
        good = !std::isinf(std::strtof(text.c_str(), &end)) || errno == 0;
    else if (type == paramdb::FieldType::Double)
        good = !std::isinf(std::strtod(text.c_str(), &end)) || errno == 0;
    else {
        long long const number = std::strtoll(text.c_str(), &end, 10);
        good = errno == 0;
        if (type == paramdb::FieldType::Int)
            good = good && number >= INT_MIN && number <= INT_MAX;
        if (type == paramdb::FieldType::Unsigned)
            good = good && std::llabs(number) <= static_cast<long long>(UINT_MAX);
    }
    auto const length = static_cast<std::size_t>(end - text.c_str());
    return good && length > 0 ? blanks + length : 0;
}

// The fields of a row with one blank between; none if it cannot be read.
inline std::optional<std::string> Row(std::vector<paramdb::FieldType> const& types, std::string rest) {
    std::string row;
    for (paramdb::FieldType const type : types) {
        if (type != paramdb::FieldType::Text) {
            if (rest.empty())
                continue;
            std::size_t const length = NumberLength(type, rest);
            if (length == 0)
                return std::nullopt;
            row += (row.empty() ? "" : " ") + Trim(rest.substr(0, length));
            rest.erase(0, length);
            continue;
        }
        if (rest.size() >= 199)
            return std::nullopt;
        if (rest.empty())
            continue;
        while (!rest.empty() && IsBlank(rest.front()))
            rest.erase(0, 1);
        std::string text;
        bool const quoted = !rest.empty() && rest[0] == '"';
        if (quoted)
            rest.erase(0, 1);
        while (!rest.empty() && (quoted ? rest[0] != '"' : !IsBlank(rest[0]))) {
            text += rest[0];
            rest.erase(0, 1);
        }
        if (quoted && !rest.empty())
            rest.erase(0, 1);
        bool special = text.empty();
        for (char const byte : text)
            special = special || IsBlank(byte) || std::string(":;{}").find(byte) != std::string::npos;
        bool const holds_quote = text.find('"') != std::string::npos;
        row += (row.empty() ? "" : " ") + (special && !holds_quote ? '"' + text + '"' : text);
    }
    rest = Trim(rest);
    return row + (rest.empty() ? "" : " " + rest);
}

inline std::string Plain(Parts const& parts, bool is_comment) {
    std::string text = parts.value;
    if (!parts.key.empty())
        text = parts.key + ":" + (parts.value.empty() ? "" : " " + parts.value);
    else if (is_comment)
        text = parts.comment.empty() ? ";" : (parts.comment[0] == ';' ? ";" : "; ") + parts.comment;
    else if (!parts.comment.empty())
        text += " ; " + parts.comment;
    return Split(text) == parts ? text : ": " + parts.value;
}

inline std::string Format(std::string const& bytes) {
    // Lines, and which line end most of them have.
    std::vector<std::string> lines;
    std::size_t balance = 0, two = 0;
    for (std::size_t at = 0; at < bytes.size();) {
        std::size_t const end = bytes.find('\n', at);
        lines.push_back(bytes.substr(at, end == std::string::npos ? end : end - at));
        if (end != std::string::npos) {
            ++balance;
            two += end > at && bytes[end - 1] == '\r' ? 1 : 0;
        }
        at = end == std::string::npos ? bytes.size() : end + 1;
    }
#ifdef _WIN32
    bool const crlf = 2 * two >= balance;
#else
    bool const crlf = 2 * two > balance;
#endif

    std::string text;
    std::vector<std::vector<paramdb::FieldType>> open; // the columns of each open section, none for most
    bool ended = false;
    for (std::string const& line : lines) {
        Parts const parts = Split(line);
        std::size_t level = open.size();
        std::string shown;
        if (ended) {
            shown = line;
            while (!shown.empty() && shown.back() == '\r')
                shown.pop_back();
        } else if (parts.value == "{") {
            shown = std::string(level, '\t') + Plain(parts, false);
            auto& types = open.emplace_back();
            if (level == 0)
                for (auto const& table : paramdb::Catalogue())
                    if (std::wstring(parts.key.begin(), parts.key.end()) == table.tag) {
                        for (auto const& column : table.key_columns)
                            types.push_back(column.type);
                        for (auto const& column : table.row_columns)
                            types.push_back(column.type);
                    }
        } else if (parts.key.empty() && !parts.value.empty() && parts.value[0] == '}') {
            ended = open.empty();
            level -= level > 0 ? 1 : 0;
            if (!open.empty())
                open.pop_back();
            shown = std::string(level, '\t') + Plain(parts, false);
        } else if (parts == Parts()) {
            shown = line.find(';') == std::string::npos ? "" : std::string(level, '\t') + ";";
        } else {
            bool const is_row = parts.key.empty() && !parts.value.empty();
            std::optional<std::string> row;
            if (is_row && !open.empty() && !open.back().empty())
                row = Row(open.back(), parts.value);
            // A row that would be no row any more stays as it is.
            if (row && (Split(*row) != Parts{"", *row, ""} || row->starts_with('}') || *row == "{" ||
                        !Row(open.back(), *row)))
                row.reset();
            shown = std::string(level, '\t') + (row ? *row : Plain(parts, parts.value.empty()));
        }
        text += shown + (crlf ? "\r\n" : "\n");
    }
    return text;
}

} // namespace layout_model
