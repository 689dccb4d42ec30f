#include "tools/rewrite/row_layout.h"

#include <paramdb/storage/lake_line.h>
#include <paramdb/storage/white_space.h>

#include "tools/rewrite/text_token.h"

#include <algorithm>

namespace paramdb::tools {
namespace {

std::string_view SkipBlanks(std::string_view text) {
    auto const begin =
        std::find_if_not(text.begin(), text.end(), [](char byte) { return IsWhiteSpace(byte); });
    return {begin, text.end()};
}

// The bytes of a text field in its canonical form, from those that it was read from.
std::string TextToken(std::string_view taken) {
    bool const quoted = taken.starts_with('"');
    std::string_view const text = quoted ? taken.substr(1, taken.find('"', 1) - 1) : taken;
    if (!NeedsQuotes(text))
        return std::string(text);
    // A bare text may hold a quote, and could have none around it.
    if (!quoted && text.find('"') != std::string_view::npos)
        return std::string(text);
    return '"' + std::string(text) + '"';
}

// Whether the text stands for a row of exactly this value.
bool IsRow(std::string const& text) {
    char const* next = text.data();
    char const* const end = next + text.size();
    if (next == end)
        return false;
    LakeLine const line = TakeLine(next, end);
    return next == end && line.key.empty() && line.comment.empty() && line.value == text &&
           !text.starts_with('}') && text != "{";
}

} // namespace

std::optional<std::string> RowLayout::Format(std::string_view row) {
    m_check.Assign(m_fields);
    std::string text;
    std::string_view rest = row;
    for (Field const& field : m_fields.All()) {
        std::string_view const before = SkipBlanks(rest);
        if (!ReadLine(rest, std::span(&field, 1)))
            return std::nullopt;
        if (before.empty()) // the line is exhausted
            continue;
        std::string_view const taken = before.substr(0, before.size() - rest.size());
        if (!text.empty())
            text += ' ';
        if (field.type() == FieldType::Text)
            text += TextToken(taken);
        else
            text += taken;
    }
    if (std::string_view const surplus = SkipBlanks(rest); !surplus.empty())
        text.append(" ").append(surplus);

    std::string_view line = text;
    bool const same = IsRow(text) && m_check.Read(line) && m_check == m_fields;
    return same ? std::optional(text) : std::nullopt;
}

} // namespace paramdb::tools
