// CQtModeInfo: the names of virtual modes.
#include <paramdb/distillery/mode_info.h>
#include <paramdb/platform/signal/measuring_unit.h>
#include <paramdb/service/param_store.h>

#include <iterator>
#include <mutex>

namespace {

// The style of a parameter's text: always followed by a state text, or only there when the parameter moves.
constexpr int StationaryStyle = 0;
constexpr int MovingStyle = 1;

bool Moves(unsigned int state) {
    return (state & 2) != 0;
}

std::wstring FormatPosition(float value, unsigned int precision) {
    CString text;
    text.Format(L"%.*f", static_cast<int>(precision), static_cast<double>(value));
    return text.GetString();
}

} // namespace

CString CQtModeInfo::Name(int virtual_mode) const {
    int const physical_mode = PhysicalMode(virtual_mode);
    if (!IsVirtual(virtual_mode) || physical_mode == -1)
        return {};
    int const extension = Extension(virtual_mode);
    auto const& orders = m_store->Tables().AutoModeParamOrder;
    if (orders.empty()) {
        // The mask goes onto the extension here, not onto the id: hosts know the names as they are.
        int const base = static_cast<int>(static_cast<unsigned int>(extension) & ~m_extension_mask);
        return CString(m_store->Tables().Mode.Name(base)) + L"#" + std::to_wstring(extension);
    }
    CString name = BaseName(extension, physical_mode);
    for (auto const& [order, row] : orders) {
        name += m_naming.PositionSeparatorText;
        name += PositionFragment(order[0], virtual_mode, 0);
    }
    return name;
}

CString CQtModeInfo::BaseName(int extension, int physical_mode) const {
    return CString(m_store->Tables().PhysMode.Name(physical_mode)) + m_naming.SeparatorText +
           Suffix(extension);
}

CString CQtModeInfo::NameFragment(CAutoModeParamMap::const_iterator parameter, float value,
                                  unsigned int precision) const {
    std::wstring unit;
    if (!UnitText(parameter->second.SignalId, unit))
        return {};
    return FormatPosition(value, precision) + unit;
}

std::wstring CQtModeInfo::Suffix(int extension) const {
    std::wstring labels;
    bool moves = false;
    std::size_t position = 0;
    for (auto const& [order, params] : m_params) {
        unsigned int const state = State(position++, extension);
        moves = moves || Moves(state);
        labels += Label(params.SignalId, state);
    }
    if (moves)
        return labels;
    bool const indexed = !m_params.empty() && m_params.begin()->second.HasState && State(0, extension) == 0;
    return indexed ? m_naming.IndexedSuffix : m_naming.ConstantSuffix;
}

std::wstring CQtModeInfo::Label(int signal, unsigned int state) const {
    std::wstring label;
    if (auto const entry = m_naming.ParamTexts.find(signal); entry != m_naming.ParamTexts.end()) {
        auto const& [style, text] = entry->second;
        if (style != MovingStyle || Moves(state))
            label = text;
        if (style == StationaryStyle && !Moves(state))
            return label + m_naming.StationaryText;
    }
    switch (state) {
    case 1:
        return label + m_naming.StateDownText;
    case 2:
        return label + m_naming.StateFallText;
    case 3:
        return label + m_naming.StateUpText;
    default:
        return label + m_naming.StateConstantText;
    }
}

std::wstring CQtModeInfo::PositionFragment(int parameter, int virtual_mode, unsigned int precision) const {
    if (parameter < 0 || static_cast<std::size_t>(parameter) >= m_params.size())
        return {};
    auto const& params = std::next(m_params.begin(), parameter)->second;
    unsigned int const field = IntervalField(static_cast<std::size_t>(parameter), virtual_mode);
    std::wstring unit;
    bool const has_row = UnitText(params.SignalId, unit);
    if (field == 0)
        return L"x" + unit;
    return has_row ? FormatPosition(Position(params, field - 1), precision) + unit : std::wstring();
}

bool CQtModeInfo::UnitText(int signal, std::wstring& text) const {
    constexpr int first_common = 2;
    constexpr int last_common = 30;
    auto& properties = m_store->Tables().AppSignalProperty;
    auto const row = properties.find(signal);
    if (row == properties.end())
        return false;
    CFixedText& stored = row->second.get<"unit">();
    int const code = row->second.get<"unit_code">();
    int const prefix = row->second.get<"unit_prefix">();
    // Queries of several threads may come here at once.
    static std::mutex rewriting;
    std::lock_guard const lock(rewriting);
    if (code == 0 || (code >= first_common && code <= last_common)) {
        bool const no_prefix = prefix == 1 || prefix == -1;
        CString const unit = CMeasuringUnit(code, no_prefix ? 0 : prefix).prefixunit(false);
        if (!(stored == unit.GetString()))
            stored = CFixedText(unit.GetString());
    }
    text = stored.view();
    return true;
}
