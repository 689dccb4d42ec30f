#include <paramdb/tables/dyn_name_id_table.h>
#include <paramdb/tables/table_type.h>

int CDynNameIdTable::Idx(wchar_t const* name) const {
    std::wstring_view sought = name;
    wchar_t cut[CFixedText::Capacity];
    if (sought.size() >= CFixedText::Capacity) {
        TableType::strcopy(cut, name, CFixedText::Capacity);
        sought = cut;
    }
    return m_index.Id(sought);
}

wchar_t const* CDynNameIdTable::Name(int id) const {
    wchar_t const* const name = m_index.Name(id);
    return name != nullptr ? name : L"";
}

bool CDynNameIdTable::Add(int id, wchar_t const* name) {
    auto const [row, is_new] = emplace(id, name);
    if (is_new)
        RowAdded(row);
    return is_new;
}

void CDynNameIdTable::RowAdded(UniqueTree::const_iterator row) {
    m_index.Add(row->first[0], row->second.name().view());
}

void CDynNameIdTable::DestroyRows() {
    m_index.Clear();
    CQParamSeaTypedTable::DestroyRows();
}
