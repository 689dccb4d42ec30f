#include <paramdb/distillery/field_walk.h>
#include <paramdb/distillery/mode_info.h>
#include <paramdb/platform/numeric/round.h>
#include <paramdb/platform/numeric/truncate.h>
#include <paramdb/platform/sea/pr_win.h>
#include <paramdb/service/param_store.h>

#include <bit>
#include <cmath>
#include <numbers>

namespace {

constexpr int IdBits = 31;
constexpr int BitsOfState = 2;

unsigned int ShiftLeft(unsigned int value, int count) {
    return value << (static_cast<unsigned int>(count) & 31);
}

// The sign bit comes in from the left.
int ShiftRight(int value, int count) {
    return value >> (static_cast<unsigned int>(count) & 31);
}

unsigned int LowBits(int count) {
    return ShiftLeft(1, count) - 1;
}

// ceil of the binary logarithm; 0 for what has none or a negative one.
int CeilBits(double logarithm) {
    double const bits = std::ceil(logarithm / std::numbers::ln2);
    return std::isfinite(bits) && bits > 0 ? numeric::Truncate32(bits) : 0;
}

int BitsOfBaseMode(int largest) {
    return CeilBits(std::log(static_cast<double>(largest)));
}

// Quotient and logarithm are of single precision. The logarithm is rounded from a double one, so that it is
// the same under every C library.
int BitsOfIntervals(CVAutoModeParams const& params) {
    if (params.Step == 0)
        return 0;
    float const intervals = (params.Stop - params.Start) / params.Step;
    return CeilBits(static_cast<float>(std::log(static_cast<double>(intervals))));
}

} // namespace

bool CQtModeInfo::Build() {
    if (!CombineParams()) {
        m_params.clear();
        PrWin::Output(
            16, 1, L"CQtModeInfo: Failed to combine the Auto Mode Param Table from the Application Sea.\n");
    }
    auto const& modes = m_store->Tables().Mode;
    int const largest = modes.empty() ? 0 : modes.rbegin()->first[0];
    UpdateLayout();
    if (IdBits - m_extension_bits >= BitsOfBaseMode(largest))
        return true;
    PrWin::Output(16, 3, L"CQtModeInfo: Not enough bits to encode virtual modes\n");
    return false;
}

bool CQtModeInfo::UpdateLayout() {
    m_extension_bits = 0;
    m_state_bits = 0;
    for (auto& [order, params] : m_params) {
        params.IntervalBits = BitsOfIntervals(params);
        m_extension_bits += params.IntervalBits;
        if (params.HasState)
            m_state_bits += BitsOfState;
    }
    m_extension_bits += m_state_bits;
    m_extension_mask = ShiftLeft(LowBits(m_extension_bits), IdBits - m_extension_bits);
    return IdBits - m_extension_bits > 0;
}

bool CQtModeInfo::CombineParams() {
    auto const& params = m_store->Tables().AutoModeParam;
    auto const& orders = m_store->Tables().AutoModeParamOrder;
    if (params.size() != orders.size())
        return false;
    m_params.clear();
    for (auto const& [order, row] : orders) {
        int const signal = row.get<"signal">();
        auto const found = params.find(signal);
        if (signal == -1 || found == params.end())
            return false;
        m_params.try_emplace(order[0], signal, found->second);
    }
    return true;
}

bool CQtModeInfo::WriteTables() const {
    auto& params = m_store->Tables().AutoModeParam;
    auto& orders = m_store->Tables().AutoModeParamOrder;
    orders.clear();
    params.clear();
    for (auto const& [order, parameter] : m_params) {
        orders.try_emplace(order, parameter.SignalId);
        params.try_emplace(parameter.SignalId, parameter.ToRow());
    }
    return true;
}

int CQtModeInfo::BaseMode(int virtual_mode) const {
    return virtual_mode == -1 ? -1
                              : static_cast<int>(static_cast<unsigned int>(virtual_mode) & ~m_extension_mask);
}

int CQtModeInfo::Extension(int virtual_mode) const {
    return virtual_mode == -1 ? -1 : ShiftRight(virtual_mode, IdBits - m_extension_bits);
}

int CQtModeInfo::Extension(int const* intervals, int const* states) const {
    if (m_params.empty())
        return 0;
    unsigned int value = 0;
    unsigned int state = 0;
    for (auto const& [order, params] : m_params) {
        value = ShiftLeft(value, params.IntervalBits) | (static_cast<unsigned int>(*intervals++) + 1);
        if (states == nullptr)
            continue;
        if (params.HasState)
            state = state * 4 | static_cast<unsigned int>(*states);
        ++states;
    }
    return static_cast<int>(ShiftLeft(value, m_state_bits) | state);
}

int CQtModeInfo::GenerateId(int mode, int extension) const {
    if (mode == -1 || extension == -1)
        return mode;
    return static_cast<int>(static_cast<unsigned int>(mode) +
                            ShiftLeft(static_cast<unsigned int>(extension), IdBits - m_extension_bits));
}

bool CQtModeInfo::IsVirtual(int mode) const {
    return mode != -1 && (static_cast<unsigned int>(mode) & m_extension_mask) != 0;
}

bool CQtModeInfo::IsValidVirtual(int mode) const {
    auto const& orders = m_store->Tables().AutoModeParamOrder;
    if (!IsVirtual(mode) || orders.empty())
        return false;
    FieldWalk walk(m_params, Extension(mode), m_state_bits);
    for (auto const& [order, row] : orders)
        if (order[0] < 0 || !walk.GoTo(static_cast<std::size_t>(order[0])) || walk.Interval() == 0)
            return false;
    return true;
}

int CQtModeInfo::Intervals(CVAutoModeParams const& params) {
    if (!(params.Start < params.Stop) || params.Step == 0)
        return -1;
    return numeric::Truncate32(std::ceil((params.Stop - params.Start) / params.Step));
}

float CQtModeInfo::Position(CVAutoModeParams const& params, unsigned int index) {
    double const middle =
        (index + 0.5) * static_cast<double>(params.Step) + static_cast<double>(params.Start);
    return numeric::Round(static_cast<float>(middle));
}

int CQtModeInfo::PhysicalMode(int mode) const {
    auto const& modes = m_store->Tables().ModeProperty;
    auto const row = mode == -1 ? modes.end() : modes.find(BaseMode(mode));
    return row != modes.end() ? row->second.get<"physical_mode">() : -1;
}
