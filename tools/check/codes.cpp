#include "tools/check/codes.h"

#include <algorithm>

namespace paramdb::tools::check {
namespace {

char Upper(char letter) {
    return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

} // namespace

std::vector<Code> const& Codes() {
    static std::vector<Code> const codes = [] {
        std::vector<Code> all;
        for (auto const family : {LakeCodes, TableCodes, ReferenceCodes, DerivedCodes}) {
            std::span<Code const> const list = family();
            all.insert(all.end(), list.begin(), list.end());
        }
        return all;
    }();
    return codes;
}

Code const* FindCode(std::string_view text) {
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(), Upper);
    for (Code const& code : Codes()) {
        if (code.code == upper || code.name == text)
            return &code;
    }
    return nullptr;
}

char const* SeverityWord(Severity severity) {
    constexpr char const* words[] = {"note", "warning", "error"};
    return words[static_cast<std::size_t>(severity)];
}

} // namespace paramdb::tools::check
