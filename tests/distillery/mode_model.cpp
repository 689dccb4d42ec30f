#include "mode_model.h"

#include <cmath>
#include <cwchar>

namespace {

std::int64_t Power(int exponent) {
    return std::int64_t{1} << (static_cast<std::uint32_t>(exponent) % 32);
}
int Low32(std::int64_t value) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
}
std::int64_t Unsigned(int value) {
    return static_cast<std::uint32_t>(value);
}
int Times(int value, int exponent) {
    return Low32(Unsigned(value) * Power(exponent));
}
// Division that rounds down, also below 0.
int Over(int value, int exponent) {
    std::int64_t const wide = value;
    std::int64_t const divisor = Power(exponent);
    return Low32(wide >= 0 ? wide / divisor : -((-wide + divisor - 1) / divisor));
}

int Ceil(double bits) {
    return std::isfinite(bits) && bits > 0 ? static_cast<int>(std::ceil(bits)) : 0;
}

template <class Value>
Value Find(std::map<int, Value> const& rows, int key, Value const& fallback) {
    auto const row = rows.find(key);
    return row == rows.end() ? fallback : row->second;
}

} // namespace

int ModeModel::IntervalBits(float start, float stop, float step) {
    if (step == 0)
        return 0; // endless or no number
    float const range = stop - start;
    float const count = range / step;
    auto const logarithm = static_cast<float>(std::log(static_cast<long double>(count)));
    return Ceil(static_cast<double>(logarithm) / std::log(2.0));
}

bool ModeModel::Combine() {
    m_params.clear();
    bool fits = order_rows.size() == param_rows.size();
    for (auto const& [order, signal] : order_rows)
        fits = fits && signal != -1 && param_rows.count(signal) > 0;
    if (!fits)
        return false;
    for (auto const& [order, signal] : order_rows) {
        ModelParam param = param_rows.at(signal);
        param.signal = signal;
        param.bits = IntervalBits(param.start, param.stop, param.step);
        m_params.push_back(param);
    }
    return true;
}

bool ModeModel::HasRoom() const {
    int const largest = mode_names.empty() ? 0 : mode_names.rbegin()->first;
    int const needed = largest > 0 ? Ceil(std::log(static_cast<double>(largest)) / std::log(2.0)) : 0;
    return 31 - ExtensionBits() >= needed;
}

int ModeModel::StateBits() const {
    int bits = 0;
    for (auto const& param : m_params)
        bits += param.has_state ? 2 : 0;
    return bits;
}

int ModeModel::ExtensionBits() const {
    int bits = StateBits();
    for (auto const& param : m_params)
        bits += param.bits;
    return bits;
}

std::uint32_t ModeModel::Mask() const {
    return static_cast<std::uint32_t>((Power(ExtensionBits()) - 1) * Power(31 - ExtensionBits()));
}

int ModeModel::Base(int id) const {
    return id == -1 ? -1 : Low32(Unsigned(id) - (Unsigned(id) & Mask()));
}

int ModeModel::Extension(int id) const {
    return id == -1 ? -1 : Over(id, 31 - ExtensionBits());
}

int ModeModel::Pack(std::vector<int> const& intervals, std::vector<int> const* states) const {
    int value = 0;
    int state = 0;
    for (std::size_t i = 0; i < m_params.size(); ++i) {
        value = Times(value, m_params[i].bits) | Low32(std::int64_t{intervals[i]} + 1);
        if (states != nullptr && m_params[i].has_state)
            state = Low32(Unsigned(state) * 4) | (*states)[i];
    }
    return Times(value, StateBits()) | state;
}

int ModeModel::Generate(int mode, int extension) const {
    if (mode == -1 || extension == -1)
        return mode;
    return Low32(Unsigned(mode) + Unsigned(Times(extension, 31 - ExtensionBits())));
}

bool ModeModel::IsVirtual(int id) const {
    return id != -1 && (Unsigned(id) & Mask()) != 0;
}

bool ModeModel::IsValid(int id) const {
    if (!IsVirtual(id) || order_rows.empty())
        return false;
    for (auto const& [order, signal] : order_rows)
        if (order < 0 || order >= static_cast<std::int64_t>(m_params.size()) ||
            !Interval(static_cast<std::size_t>(order), id))
            return false;
    return true;
}

int ModeModel::PhysicalMode(int id) const {
    return Find(physical_modes, Base(id), -1);
}

int ModeModel::State(std::size_t param, int extension) const {
    if (param >= m_params.size() || !m_params[param].has_state)
        return 0;
    for (std::size_t later = param + 1; later < m_params.size(); ++later)
        extension = Over(extension, m_params[later].has_state ? 2 : 0);
    return Low32(Unsigned(extension) % 4);
}

std::optional<int> ModeModel::Interval(std::size_t param, int id) const {
    int field = Over(Extension(id), StateBits());
    for (std::size_t later = param + 1; later < m_params.size(); ++later)
        field = Over(field, m_params[later].bits);
    auto const value = Unsigned(field) % Power(m_params[param].bits);
    return value == 0 ? std::nullopt : std::optional(Low32(value - 1));
}

std::wstring ModeModel::Label(int signal, int state) const {
    std::wstring label;
    auto const text = naming.ParamTexts.find(signal);
    if (text != naming.ParamTexts.end()) {
        if (text->second.first != 1 || state >= 2)
            label += text->second.second;
        if (text->second.first == 0 && state < 2)
            return label + naming.StationaryText;
    }
    std::wstring const states[] = {naming.StateConstantText, naming.StateDownText, naming.StateFallText,
                                   naming.StateUpText};
    return label + states[state];
}

std::wstring ModeModel::BaseName(int extension, int physical_mode) const {
    std::wstring suffix;
    int moving = 0;
    for (std::size_t i = 0; i < m_params.size(); ++i) {
        moving += State(i, extension) >= 2 ? 1 : 0;
        suffix += Label(m_params[i].signal, State(i, extension));
    }
    if (moving == 0) {
        bool const is_indexed = !m_params.empty() && m_params[0].has_state && State(0, extension) == 0;
        suffix = is_indexed ? naming.IndexedSuffix : naming.ConstantSuffix;
    }
    return Find(physical_names, physical_mode, std::wstring()) + naming.SeparatorText + suffix;
}

std::wstring ModeModel::Fragment(int param, int id) const {
    if (param < 0 || param >= static_cast<std::int64_t>(m_params.size()))
        return {};
    ModelParam const& own = m_params[static_cast<std::size_t>(param)];
    auto const interval = Interval(static_cast<std::size_t>(param), id);
    auto const unit = units.find(own.signal);
    if (!interval)
        return L"x" + (unit == units.end() ? std::wstring() : unit->second);
    if (unit == units.end())
        return {};
    double const middle = (static_cast<double>(*interval) + 0.5) * static_cast<double>(own.step) +
                          static_cast<double>(own.start);
    wchar_t text[400];
    std::swprintf(text, std::size(text), L"%.0f",
                  static_cast<double>(std::roundf(static_cast<float>(middle))));
    return text + unit->second;
}

std::wstring ModeModel::VirtualName(int id) const {
    int const physical_mode = PhysicalMode(id);
    if (!IsVirtual(id) || physical_mode == -1)
        return {};
    int const extension = Extension(id);
    if (order_rows.empty()) {
        int const base = Low32(Unsigned(extension) - (Unsigned(extension) & Mask()));
        return Find(mode_names, base, std::wstring()) + L"#" + std::to_wstring(extension);
    }
    std::wstring name = BaseName(extension, physical_mode);
    for (auto const& [order, signal] : order_rows)
        name += naming.PositionSeparatorText + Fragment(order, id);
    return name;
}

std::wstring ModeModel::Name(int id) const {
    if (id == -1)
        return {};
    auto const row = mode_names.find(id);
    return row != mode_names.end() ? row->second : VirtualName(id).substr(0, 499);
}
