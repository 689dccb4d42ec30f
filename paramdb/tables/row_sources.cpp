#include <paramdb/platform/sea/resource_list.h>
#include <paramdb/tables/line_reader.h>
#include <paramdb/tables/line_writer.h>
#include <paramdb/tables/load_progress.h>
#include <paramdb/tables/row_sources.h>
#include <paramdb/tables/table_messages.h>

namespace paramdb {
namespace {

// The name of the reader in its messages, in every form of reading.
constexpr wchar_t ReaderName[] = L"CQParamSeaTypedTable< T >::ReadTable()";

} // namespace

RowReader RowsOf(CLake::CNode const& section, wchar_t const* tag) {
    return [&section, tag](std::span<Field const> fields, AddRow const& add) {
        bool all_good = true;
        RowProgress progress;
        for (CLake::iterator const node : section.unnamed_lines()) {
            progress.AddRow();
            LakeText const line = node->value_text();
            if (line.Visit([&](auto text) { return ReadLine(text, fields); })) {
                add();
            } else {
                DynTables::log_error(ReaderName, tag, line.wide());
                all_good = false;
            }
        }
        return all_good;
    };
}

RowReader RowsOf(ParamDb::CDbTable const& table, wchar_t const* tag) {
    return [&table, tag](std::span<Field const> fields, AddRow const& add) {
        bool all_good = true;
        RowProgress progress;
        for (ParamDb::row_t const& row : table) {
            progress.AddRow();
            std::size_t taken = 0;
            try {
                if (ReadCells(row, fields, taken)) {
                    add();
                } else {
                    DynTables::log_error(ReaderName, tag, L"<variants>");
                    all_good = false;
                }
            } catch (std::bad_variant_access const&) {
                LogBadCell(tag, row.size() - taken);
            }
        }
        return all_good;
    };
}

RowReader RowsOf(CResourceSea& sea, wchar_t const* tag) {
    return [&sea, tag](std::span<Field const> fields, AddRow const& add) {
        bool all_good = true;
        CResourceList list(sea, tag);
        for (list.GotoHead(); list.IsValid(); list.GotoNext()) {
            std::wstring_view line = list.GetCurrentLine();
            bool const good = ReadLine(line, fields);
            add();
            if (!good) {
                DynTables::log_error(ReaderName, tag, line);
                all_good = false;
            }
        }
        return all_good;
    };
}

void WriteRows(CQParamTableRows const& table, CResourceSea& sea, wchar_t const* tag) {
    CResourceList list(sea, tag);
    list.RemoveAll();
    table.VisitRows([&](auto key, auto row) {
        std::wstring line;
        AppendFields(line, key);
        line += L' ';
        AppendFields(line, row);
        list.AddLineTail().SetSeaLine(line);
        return true;
    });
}

} // namespace paramdb
