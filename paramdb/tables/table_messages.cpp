#include <paramdb/platform/sea/pr_win.h>
#include <paramdb/tables/table_messages.h>

#include <string>

void DynTables::log_error(std::wstring_view function, std::wstring_view tag, std::wstring_view line) {
    std::wstring message(function);
    message.append(L": Error reading line '").append(line).append(L"' of table '").append(tag).append(L"'\n");
    PrWin::Output(8, 3, message);
}

void paramdb::LogBadCell(std::wstring_view tag, std::size_t left) {
    std::wstring message = L"CQParamSeaTypedTable< T >::ReadTable(): "
                           L"No data or incompatible data type in some field of line ";
    message.append(std::to_wstring(left)).append(L"' of table '").append(tag).append(L"'\n");
    PrWin::Output(8, 3, message);
}
