#include <paramdb/storage/lake_text.h>

#include <algorithm>

namespace paramdb {

std::wstring LakeText::wide() const {
    return Visit([](auto text) {
        std::wstring result(text.size(), L'\0');
        std::transform(text.begin(), text.end(), result.begin(),
                       [](auto character) { return Widen(character); });
        return result;
    });
}

bool LakeText::operator==(std::wstring_view other) const {
    return Visit([&](auto text) {
        return std::equal(text.begin(), text.end(), other.begin(), other.end(),
                          [](auto character, wchar_t wide) { return Widen(character) == wide; });
    });
}

} // namespace paramdb
