// Modes: their physical modes, and the grid of virtual modes with the bits that it takes.
#include <paramdb/distillery/mode_info.h>

#include "tools/check/known_ids.h"
#include "tools/check/rules.h"
#include "tools/check/wording.h"
#include "tools/report.h"
#include "tools/short_number.h"

#include <bit>
#include <cstdint>
#include <limits>
#include <map>

namespace paramdb::tools::check {
namespace {

constexpr int IdBits = 31;

class GridCheck {
public:
    GridCheck(CheckContext const& context, FindingList& findings)
        : m_context(context), m_findings(findings), m_orders(context.Table("AutoModeParamOrder")),
          m_params(context.Table("AutoModeParam")), m_known(context) {}

    void Run() {
        if (m_orders.Section() == nullptr || m_params.Section() == nullptr || !CheckPairs())
            return;
        CheckOrderKeys();
        if (!IsDerived(m_context))
            return;
        bool const all_have_room = CheckIntervals();
        CheckBits(all_have_room);
    }

private:
    // Every signal must be in both tables, once.
    bool CheckPairs() {
        constexpr std::size_t signal_column = 1;
        std::map<std::int64_t, std::size_t> order_rows; // by signal
        std::size_t faults = 0;
        IdTable const& params = m_known.Of("AutoModeParam", "ApplicationSignal");
        m_orders.VisitRows([&](CheckedRow const& row) {
            std::int64_t const signal = row.Integer(signal_column);
            auto const [first, is_new] = order_rows.try_emplace(signal, row.Index());
            if (signal == -1 || !params.Contains(signal)) {
                ++faults;
                m_findings
                    .Add("P421", row.At(signal_column),
                         "signal " + std::to_string(signal) + " has no row in " + m_params.Tag() +
                             ", so the load makes no grid of virtual modes")
                    .Hint(params.Hint(static_cast<int>(signal)));
            } else if (!is_new && m_orders.RowCount() != m_params.RowCount()) {
                ++faults;
                m_findings
                    .Add("P421", row.At(signal_column),
                         "signal " + std::to_string(signal) +
                             " is in the grid already, so the load makes none")
                    .Hint("leave one of the rows out")
                    .Relate(m_orders.PlaceOf(first->second, signal_column), "the row that has it first");
            }
        });
        if (m_orders.RowCount() == m_params.RowCount())
            return faults == 0;
        m_params.VisitRows([&](CheckedRow const& row) {
            if (order_rows.contains(row.Integer(0)))
                return;
            ++faults;
            m_findings
                .Add("P421", row.At(0),
                     "signal " + std::to_string(row.Integer(0)) + " has no row in " + m_orders.Tag() +
                         ", so the load makes no grid of virtual modes")
                .Hint("give the signal a place in the grid, or leave the row out");
        });
        return faults == 0;
    }

    // Order keys count as positions where a virtual mode is looked at.
    void CheckOrderKeys() {
        std::int64_t position = 0;
        m_orders.VisitRows([&](CheckedRow const& row) {
            std::int64_t const key = row.Integer(0);
            if (key != position)
                m_findings
                    .Add("P422", row.At(0),
                         "the order key " + std::to_string(key) +
                             " is not the place of its row in the grid, which is " + std::to_string(position))
                    .Hint("number the rows from 0");
            ++position;
        });
    }

    // The parameter of each signal, the first where the grid has several.
    std::map<std::int64_t, CVAutoModeParams const*> ParamsBySignal() const {
        std::map<std::int64_t, CVAutoModeParams const*> by_signal;
        for (auto const& [order, params] : m_context.Parameters().AutoModeParams())
            by_signal.try_emplace(params.SignalId, &params);
        return by_signal;
    }

    bool CheckIntervals() {
        auto const by_signal = ParamsBySignal();
        std::size_t const stop_column = m_params.Column("stop");
        std::size_t const step_column = m_params.Column("step");
        bool good = true;
        m_params.VisitRows([&](CheckedRow const& row) {
            auto const found = by_signal.find(row.Integer(0));
            if (found == by_signal.end())
                return;
            CVAutoModeParams const* const params = found->second;
            int const count = CQtModeInfo::Intervals(*params);
            if (count < 1) {
                good = false;
                bool const is_empty = !(params->Start < params->Stop);
                m_findings
                    .Add("P423", row.At(is_empty ? stop_column : step_column),
                         "the range from " + ShortNumber(params->Start) + " to " + ShortNumber(params->Stop) +
                             " in steps of " + ShortNumber(params->Step) + " has no intervals")
                    .Hint(is_empty ? "write an end above the start" : "write a step above 0");
                return;
            }
            std::int64_t const highest = (std::int64_t{1} << params->IntervalBits) - 1;
            if (count <= highest)
                return;
            good = false;
            m_findings
                .Add("P424", row.At(step_column),
                     "the parameter has " + Counted(static_cast<std::size_t>(count), "interval") +
                         ", but only " + Counted(static_cast<std::size_t>(params->IntervalBits), "bit") +
                         " in a virtual mode, which " +
                         (highest == 0 ? "hold none"
                                       : "hold " + Grouped(static_cast<std::uint64_t>(highest))) +
                         ": the last one runs over into the next field")
                .Hint("widen or narrow the range; " + BitsText());
        });
        return good;
    }

    int LargestMode() const {
        auto const& modes = m_context.Parameters().Mode();
        return modes.empty() ? 0 : modes.rbegin()->first[0];
    }

    static int BitsOf(int mode) {
        return mode < 0 ? 0 : static_cast<int>(std::bit_width(static_cast<unsigned int>(mode)));
    }

    int GridBits() const {
        int bits = 0;
        for (auto const& [order, params] : m_context.Parameters().AutoModeParams())
            bits += params.IntervalBits + (params.HasState ? 2 : 0);
        return bits;
    }

    std::string BitsText() const {
        int const left = IdBits - GridBits() - BitsOf(LargestMode());
        return "the grid takes " + std::to_string(GridBits()) + " of " + std::to_string(IdBits) +
               " bits, modes up to " + std::to_string(LargestMode()) + " take " +
               std::to_string(BitsOf(LargestMode())) + ", and " +
               (left < 0 ? std::to_string(-left) + " too many" : std::to_string(left) + " are left");
    }

    void CheckBits(bool all_have_room) {
        int const left = IdBits - GridBits() - BitsOf(LargestMode());
        Place const place = m_context.PlaceOf(*m_params.Section());
        if (left < 0) {
            m_findings
                .Add("P425", place,
                     "the ids of modes and the grid of virtual modes need more bits than there are")
                .Hint(BitsText());
            ExplainMessages(m_context, m_findings, L"CQtModeInfo: Not enough bits to encode virtual modes",
                            1);
        } else if (left == 0 && all_have_room && m_params.RowCount() > 0) {
            m_findings.Add("P426", place, "no bit is left for a finer grid or for modes with higher ids")
                .Hint(BitsText());
        }
    }

    CheckContext const& m_context;
    FindingList& m_findings;
    CheckedTable const& m_orders;
    CheckedTable const& m_params;
    KnownIds m_known;
};

} // namespace

void CheckPhysicalModes(CheckContext const& context, FindingList& findings) {
    IdTable const properties(context, context.Table("ModeProperty"));
    if (!properties.IsThere())
        return;
    bool const is_derived = IsDerived(context);
    context.Table("Mode").VisitRows([&](CheckedRow const& row) {
        int const mode = static_cast<int>(row.Integer(0));
        int const base = is_derived ? context.Parameters().VirtMode2BaseMode(mode) : mode;
        if (mode == -1 || properties.Contains(base))
            return;
        findings
            .Add("P420", row.At(0),
                 "the mode has no row in " + properties.Tag() + ", so no physical mode and no rotor ratios")
            .Hint("add " + std::to_string(base) + " to " + properties.Tag() +
                  ", with -1 if it has no physical mode");
    });
}

void CheckVirtualModes(CheckContext const& context, FindingList& findings) {
    GridCheck(context, findings).Run();
}

} // namespace paramdb::tools::check
