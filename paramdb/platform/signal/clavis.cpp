#include <paramdb/platform/signal/clavis.h>

#include <algorithm>

namespace Clavis {
namespace {

constexpr int FormCount = 3;

constexpr wchar_t const* Words[ElementCount][FormCount] = {
    {L"Mode", L"Test step", L"Test steps"},
    {L"Instrument", L"Instrument", L"Instruments"},
    {L"Channel", L"Channel", L"Channels"},
    {L"Location", L"Object", L"Objects"},
    {L"InstrumentParam", L"Parameter", L"Parameters"},
    {L"ApplicationSignal", L"Sensor", L"Sensors"},
};

} // namespace

CString ElementName(int element, int form) {
    if (element < 0 || element >= ElementCount || form < 0 || form >= FormCount)
        return {};
    return Words[element][form];
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
