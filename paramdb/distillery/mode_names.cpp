// CQtModeInfo: the names of virtual modes.
#include <paramdb/distillery/field_walk.h>
#include <paramdb/distillery/mode_info.h>
#include <paramdb/distillery/signal_unit.h>
#include <paramdb/keys/text_buffer.h>
#include <paramdb/service/param_store.h>

#include <charconv>
#include <cmath>
#include <iterator>

namespace {

// The style of a parameter's text: always followed by a state text, or only there when the parameter moves.
constexpr int StationaryStyle = 0;
constexpr int MovingStyle = 1;

bool Moves(unsigned int state) {
    return (state & 2) != 0;
}

// A whole number as %.0f prints it.
CTextBuffer<48> WholeNumber(float value) {
    CTextBuffer<48> text;
    if (std::signbit(value))
        text += L"-";
    if (!std::isfinite(value))
        return text += std::isnan(value) ? L"nan" : L"inf";
    char digits[40] = {}; // the largest float has 39
    char const* const end = std::to_chars(std::begin(digits), std::end(digits),
                                          std::fabs(static_cast<double>(value)), std::chars_format::fixed, 0)
                                .ptr;
    return text.AppendAscii(digits, end);
}

} // namespace

CString CQtModeInfo::Name(int virtual_mode) const {
    std::wstring name;
    AppendName(name, virtual_mode);
    return name;
}

CString CQtModeInfo::BaseName(int extension, int physical_mode) const {
    std::wstring name;
    AppendBaseName(name, extension, physical_mode);
    return name;
}

CString CQtModeInfo::NameFragment(CAutoModeParamMap::const_iterator parameter, float value,
                                  unsigned int precision) const {
    auto& properties = m_store->Tables().AppSignalProperty;
    auto const row = properties.find(parameter->second.SignalId);
    if (row == properties.end())
        return {};
    CString text;
    text.Format(L"%.*f", static_cast<int>(precision), static_cast<double>(value));
    return text += paramdb::UnitTextOf(row->second).c_str();
}

template <class Text>
void CQtModeInfo::AppendName(Text& text, int virtual_mode) const {
    int const physical_mode = PhysicalMode(virtual_mode);
    if (!IsVirtual(virtual_mode) || physical_mode == -1)
        return;
    int const extension = Extension(virtual_mode);
    auto const& orders = m_store->Tables().AutoModeParamOrder;
    if (orders.empty()) {
        // The mask goes onto the extension here, not onto the id: hosts know the names as they are.
        int const base = static_cast<int>(static_cast<unsigned int>(extension) & ~m_extension_mask);
        text += m_store->Tables().Mode.Name(base);
        text += L"#";
        text += (CTextBuffer<12>() += extension).view();
        return;
    }
    AppendBaseName(text, extension, physical_mode);
    FieldWalk walk(m_params, extension, m_state_bits);
    for (auto const& [order, row] : orders) {
        text += m_naming.PositionSeparatorText;
        if (order[0] >= 0 && walk.GoTo(static_cast<std::size_t>(order[0])))
            AppendPosition(text, walk.Params(), walk.Interval());
    }
}
template void CQtModeInfo::AppendName(CTextBuffer<500>& text, int virtual_mode) const;

template <class Text>
void CQtModeInfo::AppendBaseName(Text& text, int extension, int physical_mode) const {
    text += m_store->Tables().PhysMode.Name(physical_mode);
    text += m_naming.SeparatorText;
    FieldWalk const first(m_params, extension, m_state_bits);
    bool moves = false;
    for (FieldWalk walk = first; !walk.AtEnd() && !moves; walk.Next())
        moves = Moves(walk.State());
    if (!moves) {
        bool const indexed = !first.AtEnd() && first.Params().HasState && first.State() == 0;
        text += indexed ? m_naming.IndexedSuffix : m_naming.ConstantSuffix;
        return;
    }
    for (FieldWalk walk = first; !walk.AtEnd(); walk.Next())
        AppendLabel(text, walk.Params().SignalId, walk.State());
}

template <class Text>
void CQtModeInfo::AppendLabel(Text& text, int signal, unsigned int state) const {
    if (auto const entry = m_naming.ParamTexts.find(signal); entry != m_naming.ParamTexts.end()) {
        auto const& [style, label] = entry->second;
        if (style != MovingStyle || Moves(state))
            text += label;
        if (style == StationaryStyle && !Moves(state)) {
            text += m_naming.StationaryText;
            return;
        }
    }
    switch (state) {
    case 1:
        text += m_naming.StateDownText;
        break;
    case 2:
        text += m_naming.StateFallText;
        break;
    case 3:
        text += m_naming.StateUpText;
        break;
    default:
        text += m_naming.StateConstantText;
    }
}

template <class Text>
void CQtModeInfo::AppendPosition(Text& text, CVAutoModeParams const& params, unsigned int field) const {
    auto& properties = m_store->Tables().AppSignalProperty;
    auto const row = properties.find(params.SignalId);
    if (field == 0)
        text += L"x";
    if (row == properties.end())
        return;
    if (field != 0)
        text += WholeNumber(Position(params, field - 1)).view();
    text += paramdb::UnitTextOf(row->second).view();
}
