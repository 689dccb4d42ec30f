// Instrument parameters and the rows with their settings, which stand in the table of their instrument.
#include "tools/check/class_tables.h"
#include "tools/check/known_ids.h"
#include "tools/check/row_lines.h"
#include "tools/check/rules.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <vector>

namespace paramdb::tools::check {
namespace {

constexpr int TrackPolygon = 10001;

class ParameterCheck {
public:
    ParameterCheck(CheckContext const& context, FindingList& findings)
        : m_context(context), m_findings(findings), m_parameters(context.Table("InstrumentParam")),
          m_known(context) {}

    void Run() {
        CheckParameters();
        for (ClassTable const& table : ClassTables())
            CheckRowsOf(table);
    }

private:
    // A file without the table of any instrument holds no settings at all: they are in another file.
    static bool HasSettings(CheckContext const& context) {
        auto const is_there = [&](ClassTable const& table) {
            return context.Table(table.table).Section() != nullptr;
        };
        return context.Table("IpTrackPolygon").Section() != nullptr ||
               std::any_of(ClassTables().begin(), ClassTables().end(), is_there);
    }

    void CheckParameters() {
        if (!HasSettings(m_context))
            return;
        std::size_t const instrument_column = m_parameters.Column("instrument");
        bool const all_polygons = HasPolygonParameters();
        m_parameters.VisitRows([&](CheckedRow const& row) {
            int const parameter = static_cast<int>(row.Integer(0));
            int const instrument = static_cast<int>(row.Integer(instrument_column));
            if (instrument == TrackPolygon && !all_polygons && !m_polygon_parameters.contains(parameter))
                ReportNoRow(row, "<TIpTrackPolygon>", "");
            ClassTable const* const table = ClassTableOf(instrument);
            if (table != nullptr && !m_known.Of(table->table).Contains(parameter))
                ReportMissing(row, parameter, *table);
        });
    }

    // Collects the parameters of track polygons; true if a row is for all of them.
    bool HasPolygonParameters() {
        for (auto const& [key, row] : m_context.Parameters().IpTrackPolygon())
            m_polygon_parameters.insert(key[Clavis::qInstrParam]);
        return m_polygon_parameters.contains(-1);
    }

    void ReportMissing(CheckedRow const& row, int parameter, ClassTable const& table) {
        CheckedTable const& settings = m_context.Table(table.table);
        // The load looks for triggers of instruments alone that have a name.
        bool const is_sought = table.gives_trigger && m_context.Parameters().Instrument().IsValidId(
                                                          static_cast<int>(row.Integer(1)));
        if (!is_sought) {
            ReportNoRow(row, settings.Tag(), "");
            return;
        }
        if (m_rows_of != &settings)
            CollectRows(settings);
        auto const next =
            std::lower_bound(m_rows.begin(), m_rows.end(), parameter,
                             [](SettingsRow const& entry, int wanted) { return entry.parameter < wanted; });
        if (next == m_rows.end()) {
            ReportNoRow(row, settings.Tag(), " and no trigger");
            return;
        }
        m_findings
            .Add("P306", row.At(0),
                 "the parameter has no row in " + settings.Tag() +
                     " and takes the trigger of the next one there: " +
                     (next->trigger == -1 ? "none" : m_known.Of("Trigger").Shown(next->trigger)))
            .Hint("add a row with the settings of the parameter to " + settings.Tag())
            .Relate(settings.PlaceOf(static_cast<std::size_t>(next - m_rows.begin())),
                    "the row it takes the trigger of");
    }

    void ReportNoRow(CheckedRow const& row, std::string const& tag, std::string const& more) {
        m_findings
            .Add("P305", row.At(0), "the parameter has no row in " + tag + ", so it has no settings" + more)
            .Hint("add a row with the settings of the parameter to " + tag);
    }

    struct SettingsRow {
        int parameter;
        int trigger;
    };

    void CollectRows(CheckedTable const& settings) {
        m_rows.clear();
        m_rows_of = &settings;
        std::size_t const trigger = settings.Column("trigger");
        settings.VisitRows([&](CheckedRow const& row) {
            m_rows.push_back({static_cast<int>(row.Integer(0)), static_cast<int>(row.Integer(trigger))});
        });
    }

    // Rows for a parameter of another instrument.
    void CheckRowsOf(ClassTable const& table) {
        CheckedTable const& settings = m_context.Table(table.table);
        auto const& parameters = m_context.Parameters().InstrumentParam();
        settings.VisitRows([&](CheckedRow const& row) {
            auto const parameter = parameters.find(static_cast<int>(row.Integer(0)));
            if (parameter == parameters.end())
                return; // see CheckReferences
            int const instrument = parameter->second.get<"instrument">();
            if (instrument == table.instrument)
                return;
            ClassTable const* const right = ClassTableOf(instrument);
            m_findings
                .Add("P307", row.At(0),
                     "the parameter is one of instrument " + m_known.Of("Instrument").Shown(instrument) +
                         ", which has nothing to do with " + settings.Tag())
                .Hint(right != nullptr ? "move the row to <" + std::string(right->table) + '>'
                                       : "leave the row out, or correct the parameter");
        });
    }

    CheckContext const& m_context;
    FindingList& m_findings;
    CheckedTable const& m_parameters;
    KnownIds m_known;
    std::set<int> m_polygon_parameters;
    CheckedTable const* m_rows_of = nullptr;
    std::vector<SettingsRow> m_rows;
};

} // namespace

void CheckParameterRows(CheckContext const& context, FindingList& findings) {
    if (context.Table("InstrumentParam").Section() != nullptr)
        ParameterCheck(context, findings).Run();
}

// The load writes the instrument into the keys of relative limits, so that their rows cannot be found by key
// any more: the lines are read once more.
void CheckRelativeLimits(CheckContext const& context, FindingList& findings) {
    CheckedTable const& limits = context.Table("RelativeLimit");
    if (limits.Section() == nullptr || context.Table("InstrumentParam").Section() == nullptr)
        return;
    KnownIds known(context);
    IdTable const& parameters = known.Of("InstrumentParam");
    std::size_t const column = limits.Column("parameter");
    VisitRowLines(limits, [&](CLakeNode const& line, RowBuffer const& row) {
        int const parameter = row.Key()[column].As<std::int32_t>();
        if (parameters.Contains(parameter))
            return;
        findings
            .Add("P308", limits.FieldPlace(line, column),
                 "there is no parameter " + std::to_string(parameter) + ", which ends the load")
            .Hint(parameter == -1 ? "name a parameter: a relative limit cannot be for all of them"
                                  : parameters.Hint(parameter));
    });
}

} // namespace paramdb::tools::check
