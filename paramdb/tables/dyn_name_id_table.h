// A table of names and ids, searched in both directions.
//
// The tree is there to be walked; lookups go through an index, which follows the rows that are read and those
// that come by Add.
#pragma once

#include <paramdb/keys/index_keys.h>
#include <paramdb/platform/core/export.h>
#include <paramdb/tables/name_index.h>
#include <paramdb/tables/sea_typed_table.h>

#include <functional>
#include <string_view>

// The tree from id to name that a name table is.
using UniqueTree = CUniqueTreeMap<QIdx1, QIdxName, std::less<QIdx1>>;

class PARAMDB_API CDynNameIdTable : public CQParamSeaTypedTable<UniqueTree> {
public:
    using CQParamSeaTypedTable::CQParamSeaTypedTable;

    // The id of the row with that name, or -1. Of several rows with one name the one that was read first
    // counts. A name of 200 or more characters is looked up by its first 199, and TableType::strcopy reports
    // it.
    int Idx(wchar_t const* name) const;
    // The name of the row with that id, or a shared empty text. Valid until the table is cleared or read
    // again.
    wchar_t const* Name(int id) const;
    // The same with its length; the data are null if there is no such row.
    std::wstring_view NameText(int id) const { return m_index.NameText(id); }
    bool IsValidId(int id) const { return m_index.Name(id) != nullptr; }

    // Adds a row; false if there is one of that id, which then stays as it is.
    bool Add(int id, wchar_t const* name);

protected:
    void RowAdded(UniqueTree::const_iterator row) override;
    void DestroyRows() override;

private:
    // The names are those of the rows, which stay where they are.
    paramdb::NameIndex m_index;
};
