#include <paramdb/distillery/order_interpreter.h>
#include <paramdb/distillery/spec_interval_store.h>
#include <paramdb/platform/framework/cstring.h>
#include <paramdb/platform/sea/pr_win.h>
#include <paramdb/service/param_store.h>

#include <algorithm>
#include <array>
#include <limits>

namespace {

using Positions = std::array<QVSpecIntervalEntry::Definition, CQtSpecIntervalStore::max_orders>;

void ReportDeprecated(QVIpSvOfSpec const& row) {
    auto const interpretation = static_cast<unsigned int>(row.get<"interpretation">());
    if (interpretation < 1 || interpretation > 4)
        return;
    CString message;
    message.Format(L"check_obsolete_interpretation(): order definition '%s' has deprecated interpretation\n",
                   row.get<"definition">().c_str());
    PrWin::Output(8, 1, message.GetString());
}

} // namespace

void CQtSpecIntervalStore::Build(unsigned int orders) {
    m_intervals.PurgeTable();
    if (orders > max_orders) {
        CString message;
        message.Format(L"QtSpecIntervalStore: nr_orders %d > max_orders %d.\n", orders, max_orders);
        PrWin::Output(8, 3, message.GetString());
        return;
    }
    constexpr int spectral_value = 1001;
    constexpr int spectral_track = 2001;
    for (int const instrument : {spectral_value, spectral_track})
        for (auto const& [parameter, row] : m_store->Tables().IpSvOfSpec.at(instrument))
            ProcessRow(parameter[0], row);
}

void CQtSpecIntervalStore::ProcessRow(int parameter, QVIpSvOfSpec const& row) {
    ReportDeprecated(row);
    ProcessTables(parameter, row.get<"definition">());
}

void CQtSpecIntervalStore::ProcessTables(int parameter, wchar_t const* text) {
    Positions positions;
    unsigned int const count = OrderInterpreter::GetSpecPositions(text, positions.data(), max_orders);
    if (count > 1 && count % 2 != 0) {
        CString message;
        message.Format(
            L"CQtSpecIntervalStore::ProcessTables():\nIpSvOfSpec contains entry with %u terms. Number of "
            L"terms has to be one ore even. Entrys id is %d. Definition ignored\n",
            count, parameter);
        PrWin::Output(8, 3, message.GetString());
        return;
    }
    for (unsigned int lower = 0; lower < count; lower += 2) {
        unsigned int const upper = std::min(lower + 1, count - 1);
        m_intervals.try_emplace(QIdx2(parameter, static_cast<int>(lower)), positions[lower],
                                positions[upper]);
    }
}

CQtSpecIntervalStore::Range_t CQtSpecIntervalStore::Entries(unsigned int parameter) const {
    auto const id = static_cast<int>(parameter);
    auto const end =
        id == std::numeric_limits<int>::max() ? m_intervals.end() : m_intervals.lower_bound({id + 1, -1});
    return {m_intervals.lower_bound({id, -1}), end};
}

unsigned int CQtSpecIntervalStore::Range(wchar_t const* text, QVSpecIntervalEntry* out, unsigned int max) {
    Positions positions;
    unsigned int const count =
        OrderInterpreter::GetSpecPositions(text, positions.data(), std::min(max, max_orders));
    for (unsigned int upper = 1; upper < count; upper += 2)
        out[upper] = {positions[upper - 1], positions[upper]};
    return count / 2;
}
