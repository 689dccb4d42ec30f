#include <paramdb/platform/sea/resource_list.h>

void CResourceEntry::SetSeaLine(std::wstring_view text) {
    CResourceSea::LineList* const lines = m_sea->FindList(m_tag);
    if (lines && m_line < lines->size())
        (*lines)[m_line] = text;
}

bool CResourceList::IsValid() const {
    CResourceSea::LineList const* const lines = m_sea->FindList(m_tag);
    return lines && m_current < lines->size();
}

std::wstring const& CResourceList::GetCurrentLine() const {
    static std::wstring const none;
    CResourceSea::LineList const* const lines = m_sea->FindList(m_tag);
    return lines && m_current < lines->size() ? (*lines)[m_current] : none;
}

void CResourceList::RemoveAll() {
    m_sea->MakeList(m_tag).clear();
    m_current = 0;
}

CResourceEntry CResourceList::AddLineTail() {
    CResourceSea::LineList& lines = m_sea->MakeList(m_tag);
    lines.emplace_back();
    return {*m_sea, m_tag, lines.size() - 1};
}
