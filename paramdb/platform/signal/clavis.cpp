#include <paramdb/platform/core/lib_mgr.h>
#include <paramdb/platform/core/string_tables.h>
#include <paramdb/platform/signal/clavis.h>

#include <algorithm>

namespace Clavis {
namespace {

static_assert(ElementCount == paramdb::KeyElements);

// The words of form 0; those of the forms 1 and 2 stand in the string tables.
constexpr wchar_t const* TechnicalWords[ElementCount] = {
    L"Mode", L"Instrument", L"Channel", L"Location", L"InstrumentParam", L"ApplicationSignal",
};

} // namespace

CString ElementName(int element, int form) {
    if (element < 0 || element >= ElementCount)
        return {};
    auto const index = static_cast<std::size_t>(element);
    auto const language = static_cast<std::uint16_t>(CLibMgr::GetLanguage());
    switch (form) {
    case 0:
        return TechnicalWords[index];
    case 1:
        return paramdb::FindElements(language)[index].singular;
    case 2:
        return paramdb::FindElements(language)[index].plural;
    default:
        return {};
    }
}

} // namespace Clavis

CClavis::CClavis(int const* elements) noexcept {
    std::copy_n(elements, m_elements.size(), m_elements.begin());
}

bool CClavis::Matches(CClavis const& concrete) const noexcept {
    for (std::size_t i = 0; i < m_elements.size(); ++i) {
        if (m_elements[i] != -1 && m_elements[i] != concrete.m_elements[i])
            return false;
    }
    return true;
}
