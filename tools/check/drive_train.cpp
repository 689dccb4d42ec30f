// Rotors: their ratios, base orders and speed sources.
#include "tools/check/known_ids.h"
#include "tools/check/rules.h"
#include "tools/short_number.h"

#include <cmath>
#include <set>
#include <utility>

namespace paramdb::tools::check {
namespace {

template <class Table>
bool Has(Table const& table, typename Table::key_type const& key) {
    return table.find(key) != table.end();
}

class DriveTrainCheck {
public:
    DriveTrainCheck(CheckContext const& context, FindingList& findings)
        : m_context(context), m_findings(findings), m_parameters(context.Parameters()), m_known(context) {}

    void Run() {
        CheckRatios();
        CheckOrderSources();
        CheckSpeedSources("RotorSpeedSource");
        CheckSpeedSources("RotorSpeedReference");
    }

private:
    using InMode = std::pair<int, int>; // physical mode; rotor

    bool IsThere(std::string_view table) const { return m_context.Table(table).Section() != nullptr; }

    // "1 Gear 1" and so on.
    std::string Mode(int physical_mode) { return m_known.Of("PhysMode").Shown(physical_mode); }
    std::string Location(int location) { return m_known.Of("Location").Shown(location); }

    int PhysicalGear(int physical_mode, int gear) const {
        auto const& gears = m_parameters.Virtual2PhysGear();
        auto const row = gears.find({physical_mode, gear});
        return row != gears.end() ? row->second.get<"referred_id">() : gear;
    }

    int RotorOf(int physical_mode, int source) const {
        auto const& rotors = m_parameters.OrderSource2Rotor();
        auto const row = rotors.find({source, physical_mode});
        return row != rotors.end() ? row->second.get<"referred_id">() : source;
    }

    // As queries look for it: behind the physical gear first.
    bool HasRatio(int physical_mode, int rotor) const {
        auto const& speeds = m_parameters.RotorSpeed();
        return Has(speeds, {physical_mode, RotorOf(physical_mode, PhysicalGear(physical_mode, rotor))}) ||
               Has(speeds, {physical_mode, RotorOf(physical_mode, rotor)});
    }

    void CheckRatios() {
        CheckedTable const& table = m_context.Table("RotorSpeed");
        std::size_t const ratio_column = table.Column("ratio");
        std::size_t const denominator_column = table.Column("denominator");
        std::size_t const numerator_column = table.Column("numerator");
        table.VisitRows([&](CheckedRow const& row) {
            double const ratio = row.Number(ratio_column);
            if (ratio == 0) {
                m_findings
                    .Add("P413", row.At(ratio_column),
                         "the ratio is 0, so every ratio to this rotor is 0 as well")
                    .Hint("write the speed of the rotor relative to that of the others");
                return;
            }
            double const denominator = row.Number(denominator_column);
            if (denominator == 0)
                return;
            double const fraction = row.Number(numerator_column) / denominator;
            constexpr double tolerance = 1e-4; // many programs write few digits
            if (std::fabs(fraction - ratio) > tolerance * std::fabs(ratio))
                m_findings
                    .Add("P414", row.At(ratio_column),
                         "the ratio is " + ShortNumber(ratio) + ", but " +
                             std::to_string(row.Integer(numerator_column)) + '/' +
                             std::to_string(row.Integer(denominator_column)) + " is " + ShortNumber(fraction))
                    .Hint("make the number and the fraction agree, or write 0 as the denominator");
        });
    }

    void CheckOrderSources() {
        bool const has_base_orders = IsThere("BaseOrder");
        bool const has_sources = IsThere("RotorSpeedSource") || IsThere("RotorSpeedReference");
        CheckedTable const& table = m_context.Table("OrderSource2Rotor");
        constexpr std::size_t rotor_column = 2;
        table.VisitRows([&](CheckedRow const& row) {
            int const source = static_cast<int>(row.Integer(0));
            int const mode = static_cast<int>(row.Integer(1));
            int const rotor = static_cast<int>(row.Integer(rotor_column));
            if (has_base_orders)
                CheckBaseOrder(row, mode, source);
            if (mode == -1 || rotor == -1)
                return;
            CheckRatio(row, rotor_column, mode, rotor);
            if (has_sources && !Has(m_parameters.RotorSpeedSource(), {mode, rotor}) &&
                !Has(m_parameters.RotorSpeedReference(), {mode, rotor}) &&
                m_without_source.insert({mode, rotor}).second)
                m_findings
                    .Add("P412", row.At(rotor_column),
                         "rotor " + Location(rotor) + " has no speed source in physical mode " + Mode(mode))
                    .Hint("add a row to <TRotorSpeedSource> or <TRotorSpeedReference>");
        });
    }

    void CheckBaseOrder(CheckedRow const& row, int mode, int source) {
        int const gear = mode == -1 || source == -1 ? -1 : PhysicalGear(mode, source);
        if (Has(m_parameters.BaseOrder(), gear))
            return;
        std::string const which = gear == source ? "" : ", which is gear " + Location(gear) + " there,";
        m_findings
            .Add("P410", row.At(0),
                 "order source " + Location(source) + which + " has no base order in physical mode " +
                     Mode(mode) + ", so the load leaves it out")
            .Hint("add gear " + std::to_string(gear) + " to <TBaseOrder>");
    }

    // Both ends of a relation to a speed source need a ratio.
    void CheckSpeedSources(std::string_view name) {
        CheckedTable const& table = m_context.Table(name);
        constexpr std::size_t rotor_column = 1;
        constexpr std::size_t source_column = 2;
        table.VisitRows([&](CheckedRow const& row) {
            int const mode = static_cast<int>(row.Integer(0));
            for (std::size_t const column : {rotor_column, source_column})
                if (int const rotor = static_cast<int>(row.Integer(column)); mode != -1 && rotor != -1)
                    CheckRatio(row, column, mode, rotor);
        });
    }

    void CheckRatio(CheckedRow const& row, std::size_t column, int mode, int rotor) {
        if (!IsThere("RotorSpeed") || HasRatio(mode, rotor) || !m_without_ratio.insert({mode, rotor}).second)
            return;
        m_findings
            .Add("P411", row.At(column),
                 "rotor " + Location(rotor) + " has no ratio in physical mode " + Mode(mode) +
                     ", so every ratio to it is 0")
            .Hint("add " + std::to_string(mode) + ' ' + std::to_string(rotor) + " to <TRotorSpeed>");
    }

    CheckContext const& m_context;
    FindingList& m_findings;
    CQtParamInstance const& m_parameters;
    KnownIds m_known;
    std::set<InMode> m_without_ratio;
    std::set<InMode> m_without_source;
};

} // namespace

void CheckDriveTrain(CheckContext const& context, FindingList& findings) {
    DriveTrainCheck(context, findings).Run();
}

} // namespace paramdb::tools::check
