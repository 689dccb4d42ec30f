#include "tools/check/wording.h"

#include "tools/report.h"

namespace paramdb::tools::check {

char const* const UnclosedQuote = "the quote is never closed, so colons and blanks behind it count as text";

std::string Counted(std::size_t count, std::string_view noun) {
    return Grouped(count).append(1, ' ').append(noun).append(count == 1 ? "" : "s");
}

std::string Shortened(std::wstring_view text) {
    constexpr std::size_t longest = 40;
    return text.size() <= longest ? Printable(text) : Printable(text.substr(0, longest - 3)) + "...";
}

std::string Shortened(LakeText text) {
    return Shortened(text.wide());
}

std::string Quoted(LakeText text) {
    std::string const shown = Shortened(text);
    return shown.starts_with('"') ? shown : '"' + shown + '"';
}

bool HasByteOrderMark(std::string_view bytes) {
    return bytes.starts_with("\xEF\xBB\xBF");
}

} // namespace paramdb::tools::check
