#include <paramdb/platform/sea/pr_win.h>
#include <paramdb/tables/table_type.h>

#include <algorithm>
#include <string>
#include <string_view>

bool TableType::strcopy(wchar_t* destination, wchar_t const* source, std::size_t length) {
    if (destination == nullptr || source == nullptr || length == 0)
        return false;
    std::wstring_view const text = source;
    std::size_t const copied = std::min(text.size(), length - 1);
    std::copy_n(text.begin(), copied, destination);
    destination[copied] = L'\0';
    if (copied == text.size())
        return true;
    PrWin::Output(1, 1,
                  L"TableType::strcopy(): copy truncated because destination string with length " +
                      std::to_wstring(length) + L" can't take '" + std::wstring(text) + L"'\n");
    return false;
}
