#include <paramdb/tables/dyn_name_id_table.h>
#include <paramdb/tables/table_type.h>

int CDynNameIdTable::Idx(wchar_t const* name) const {
    std::wstring_view sought = name;
    wchar_t cut[CFixedText::Capacity];
    if (sought.size() >= CFixedText::Capacity) {
        TableType::strcopy(cut, name, CFixedText::Capacity);
        sought = cut;
    }
    auto const found = m_ids.find(sought);
    return found != m_ids.end() ? found->second : -1;
}

wchar_t const* CDynNameIdTable::Name(int id) const {
    auto const found = find(id);
    return found != end() ? found->second.name().c_str() : L"";
}

bool CDynNameIdTable::Add(int id, wchar_t const* name) {
    auto const [row, is_new] = emplace(id, name);
    if (is_new)
        RowAdded(row);
    return is_new;
}

void CDynNameIdTable::RowAdded(UniqueTree::const_iterator row) {
    m_ids.try_emplace(row->second.name().view(), row->first[0]);
}

void CDynNameIdTable::DestroyRows() {
    m_ids.clear();
    CQParamSeaTypedTable::DestroyRows();
}
