// Texts of the tables as a database keeps them: well-formed UTF-8.
//
// Wide text may hold lone surrogates, which no UTF-8 can. Each becomes the private character U+10E000 plus
// its distance from U+D800, and so do both halves of a pair that means such a private character. So every
// text without U+0000 comes back unit for unit.
#pragma once

#include <string>
#include <string_view>

namespace paramdb::database {

// Replaces `bytes`. False if the text holds what no database can keep: U+0000, or a unit above U+FFFF.
[[nodiscard]] bool EncodeSqlText(std::wstring_view text, std::string& bytes);

// Replaces `text`. False if the bytes are no well-formed UTF-8.
[[nodiscard]] bool DecodeSqlText(std::string_view bytes, std::wstring& text);

} // namespace paramdb::database
