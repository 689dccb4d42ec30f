#include <paramdb/platform/sea/pr_win.h>
#include <paramdb/tables/line_writer.h>
#include <paramdb/tables/table_rows.h>

#include <string>

namespace paramdb {
namespace {

void Print(std::wstring const& line) {
    PrWin::Output(8, 1, line);
}

std::wstring DumpLine(unsigned count, CQParamTableRows::ConstFields key, CQParamTableRows::ConstFields row) {
    constexpr std::size_t width = 4;
    std::wstring line = std::to_wstring(count);
    if (line.size() < width)
        line.insert(0, width - line.size(), L' ');
    line += L":\t";
    AppendFields(line, key);
    line += L" | ";
    AppendFields(line, row);
    line += L'\n';
    return line;
}

} // namespace

std::size_t MemoryBytes(CQParamTableRows const& table) {
    std::size_t bytes = table.ContainerBytes();
    table.VisitRows([&](auto key, auto row) {
        bytes += TextBytes(key) + TextBytes(row);
        return true;
    });
    return bytes;
}

void DumpRows(CQParamTableRows const& table, wchar_t const* tag, int limit) {
    Print(std::wstring(L"<-\t") + tag + L"\n");
    unsigned count = 0;
    table.VisitRows([&](auto key, auto row) {
        Print(DumpLine(++count, key, row));
        if (limit == 0 || count <= static_cast<unsigned>(limit))
            return true;
        Print(L"... more ...\n");
        return false;
    });
    Print(std::wstring(L"->\t") + tag + L"\n");
}

} // namespace paramdb
