#include "tools/convert/row_line.h"

#include <paramdb/platform/core/utf8.h>
#include <paramdb/storage/lake_line.h>
#include <paramdb/storage/lake_text.h>
#include <paramdb/storage/unquote.h>

#include "tools/convert/cell_text.h"
#include "tools/rewrite/text_token.h"

#include <algorithm>

namespace paramdb::tools {
namespace {

constexpr char NoLineReads[] = "no line reads as it";

// The bytes of a text for a lake, in which every character has one; `fault` tells why there are none.
std::optional<std::string> LakeBytes(std::wstring_view text, std::string& fault) {
    std::string bytes;
    for (wchar_t const unit : text) {
        if (unit == L'\n' || unit == L'\0' || static_cast<unsigned long>(unit) > 0xFF) {
            fault = "the character " + UnitText(unit) + " cannot be in a lake";
            return std::nullopt;
        }
        bytes += static_cast<char>(static_cast<unsigned char>(unit));
    }
    return bytes;
}

// Whether a lake has the text as a line with this key and the rest as its value.
bool IsLakeLine(std::wstring const& line, std::string_view key, std::wstring const& value) {
    std::string fault;
    auto const bytes = LakeBytes(line, fault);
    if (!bytes || bytes->empty())
        return false;
    char const* next = bytes->data();
    LakeLine const parts = TakeLine(next, next + bytes->size());
    return parts.key == key && parts.comment.empty() && LakeText(parts.value).wide() == value;
}

} // namespace

struct RowLineWriter::Style {
    bool blank_before_text = true; // where a number stands before it
    bool closing_quote = true;     // of the last field
    bool empty_tail = true;        // empty texts that nothing follows
};

std::optional<std::wstring> RowLineWriter::Write(ParamDb::row_t const& row, std::string& reason,
                                                 std::size_t& column) {
    bool has_quote = false;
    for (column = 0; column < row.size(); ++column) {
        auto const* const text = std::get_if<std::wstring>(&row[column]);
        if (text == nullptr)
            continue;
        reason = TextReason(*text);
        if (!reason.empty())
            return std::nullopt;
        has_quote = has_quote || text->find(L'"') != std::wstring::npos;
    }
    m_fields.Assign(row);
    constexpr Style styles[] = {
        {}, {true, true, false}, {false, true, false}, {false, false, false}, {true, false, false}};
    for (Style const& style : styles)
        if (auto line = Compose(row, style); ReadsAsFields(line))
            return line;
    reason = has_quote ? NoLineReads : "its texts are too long for one line";
    return std::nullopt;
}

std::wstring RowLineWriter::Compose(ParamDb::row_t const& row, Style const& style) const {
    auto const is_empty = [](ParamDb::cell_t const& cell) {
        auto const* const text = std::get_if<std::wstring>(&cell);
        return text != nullptr && text->empty();
    };
    std::size_t count = row.size();
    while (!style.empty_tail && count > 0 && is_empty(row[count - 1]))
        --count;
    std::wstring line;
    for (std::size_t column = 0; column < count; ++column) {
        auto const* const text = std::get_if<std::wstring>(&row[column]);
        bool const behind_number = column > 0 && m_columns[column - 1].type != FieldType::Text;
        if (column > 0 && (style.blank_before_text || text == nullptr || !behind_number))
            line += L' ';
        if (text == nullptr) {
            line += FromUtf8(NumberText(row[column]));
        } else if (!NeedsQuotes(std::wstring_view(*text)) || text->find(L'"') != std::wstring::npos) {
            line += *text;
        } else {
            line.append(L"\"").append(*text);
            if (column + 1 < count || style.closing_quote)
                line += L'"';
        }
    }
    return line;
}

bool RowLineWriter::ReadsAsFields(std::wstring const& line) {
    bool const may_stand =
        m_form == LineForm::Sea || (IsLakeLine(line, "", line) && line != L"{" && !line.starts_with(L'}'));
    std::wstring_view rest = line;
    return may_stand && m_read.Read(rest) && rest.empty() && m_read == m_fields;
}

std::string RowLineWriter::TextReason(std::wstring const& text) const {
    std::string reason = TextFault(text);
    if (reason.empty() && m_form == LineForm::Lake)
        LakeBytes(text, reason);
    auto const is_blank = [](wchar_t unit) { return IsWhiteSpace(unit); };
    bool const has_quote = text.find(L'"') != std::wstring::npos;
    if (reason.empty() && has_quote && (text[0] == L'"' || std::ranges::any_of(text, is_blank)))
        reason = "no line can hold a quote at the start of a text or in one with blanks";
    return reason;
}

std::optional<std::wstring> TextValue(std::wstring const& text, std::string& reason) {
    if (!LakeBytes(text, reason))
        return std::nullopt;
    std::wstring const value = NeedsQuotes(std::wstring_view(text)) ? L'"' + text + L'"' : text;
    for (std::wstring const& candidate : {value, text})
        if (candidate != L"{" && Unquote(candidate) == text && IsLakeLine(L"k: " + candidate, "k", candidate))
            return candidate;
    reason = "no line can hold a quote at the start of a text or in one with blanks";
    return std::nullopt;
}

} // namespace paramdb::tools
