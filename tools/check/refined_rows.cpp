// What the load checks and corrects in the tables themselves: the tables of signals, result codes, the
// accumulation of spectra, and the dimensions of triggers.
#include "tools/check/known_ids.h"
#include "tools/check/row_lines.h"
#include "tools/check/rules.h"
#include "tools/check/wording.h"
#include "tools/short_number.h"

#include <algorithm>
#include <string_view>

namespace paramdb::tools::check {
namespace {

// Tells of the ids of one table that the other lacks. Where it lacks all of them, once.
void CheckSignalsOf(CheckContext const& context, FindingList& findings, CheckedTable const& table,
                    CheckedTable const& other) {
    IdTable const ids(context, other);
    auto const report = [&](CheckedRow const& row, std::string const& more) {
        findings
            .Add("P450", row.At(0),
                 "signal " + std::to_string(row.Integer(0)) + more + " has no row in " + other.Tag() +
                     ", and the load ends")
            .Hint(
                "the two tables of signals must have the same ids: add the row there, or leave this one out");
    };
    table.VisitRows([&](CheckedRow const& row) {
        if (other.RowCount() == 0 && row.Index() == 0)
            report(row, table.RowCount() == 1 ? "" : " as every other");
        else if (other.RowCount() > 0 && !ids.Contains(row.Integer(0)))
            report(row, "");
    });
}

// The present meaning of an accumulation of older data or of today; none for any other.
bool IsKnownAccumulation(int accumulation) {
    constexpr int known[] = {0, 2, 3, 20, 21, 22};
    return std::find(std::begin(known), std::end(known), accumulation) != std::end(known);
}

std::size_t ColumnOf(CheckedTable const& table, std::string_view name) {
    return table.Column(name) - table.Description().key_columns.size();
}

void CheckAccumulation(CheckContext const& context, FindingList& findings, std::string_view name) {
    CheckedTable const& table = context.Table(name);
    std::size_t const column = ColumnOf(table, "accumulation");
    VisitRowLines(table, [&](CLakeNode const& line, RowBuffer const& row) {
        int const accumulation = row.Row()[column].As<std::int32_t>();
        bool const is_section = name == "IpSgSection";
        constexpr int first_kept = 9; // in sections the load leaves these as they are
        if (IsKnownAccumulation(accumulation) || (is_section && accumulation >= first_kept))
            return;
        findings
            .Add("P452", table.FieldPlace(line, column + table.Description().key_columns.size()),
                 "there is no accumulation " + std::to_string(accumulation) +
                     ", which the load takes for 0, none")
            .Hint("write 0 for none, 20 for the maximum, 21 for the average or 22 for the last spectrum");
    });
}

void CheckDecay(CheckContext const& context, FindingList& findings, std::string_view name) {
    constexpr float infinite = 1000;
    CheckedTable const& table = context.Table(name);
    std::size_t const accumulation_column = ColumnOf(table, "accumulation");
    std::size_t const decay_column = ColumnOf(table, "decay");
    std::size_t count = 0;
    VisitRowLines(table, [&](CLakeNode const& line, RowBuffer const& row) {
        int const accumulation = row.Row()[accumulation_column].As<std::int32_t>();
        float const decay = row.Row()[decay_column].As<float>();
        bool const is_average = accumulation == 21 || (accumulation == 3 && decay != 0);
        if (!is_average || !(decay < infinite))
            return;
        ++count;
        findings
            .Add("P453", table.FieldPlace(line, decay_column + table.Description().key_columns.size()),
                 "the decay " + ShortNumber(decay) + " counts as infinite: the average is over all spectra")
            .Hint("write 1000 or more, which means the same");
    });
    ExplainMessages(context, findings, L"CQtParamDistillery::RefineDatabaseTables(): exponential decay ",
                    count);
}

} // namespace

void CheckSignals(CheckContext const& context, FindingList& findings) {
    CheckedTable const& signals = context.Table("ApplicationSignal");
    CheckedTable const& properties = context.Table("AppSignalProperty");
    CheckSignalsOf(context, findings, signals, properties);
    CheckSignalsOf(context, findings, properties, signals);
    ExplainMessages(context, findings, L"CQtParamDistillery::CheckIntegrity(): ", 1);
}

void CheckResultCodes(CheckContext const& context, FindingList& findings) {
    constexpr unsigned int highest = 3;
    CheckedTable const& groups = context.Table("ErrorGroup");
    std::size_t count = 0;
    VisitRowLines(groups, [&](CLakeNode const& line, RowBuffer const& row) {
        int const code = row.Row()[0].As<std::int32_t>();
        if (static_cast<unsigned int>(code) <= highest)
            return;
        ++count;
        findings
            .Add("P451", groups.FieldPlace(line, 1),
                 "there is no result code " + std::to_string(code) +
                     ", which the load takes for 3, system error")
            .Hint("write a code from 0 to 3");
    });
    ExplainMessages(context, findings, L"CQtParamDistillery::RefineDatabaseTables(): illegal result code ",
                    count);
}

void CheckAccumulations(CheckContext const& context, FindingList& findings) {
    for (std::string_view const name : {"IpSpectrum", "IpModSpectrogram"}) {
        CheckAccumulation(context, findings, name);
        CheckDecay(context, findings, name);
    }
    CheckAccumulation(context, findings, "IpSgSection");
}

void CheckTriggers(CheckContext const& context, FindingList& findings) {
    CheckedTable const& rows = context.Table("TriggerParam");
    std::size_t const dimension = rows.Column("dimension");
    std::size_t const step = rows.Column("step");
    rows.VisitRows([&](CheckedRow const& row) {
        if (std::int64_t const number = row.Integer(dimension); number < 1 || number > 4)
            findings
                .Add("P460", row.At(dimension),
                     "a trigger has no dimension " + std::to_string(number) +
                         ", and every query for this trigger fails")
                .Hint("write a dimension from 1 to 4");
        if (double const width = row.Number(step); !(width > 0))
            findings
                .Add("P461", row.At(step),
                     "the step " + ShortNumber(static_cast<float>(width)) + " makes no cells")
                .Hint("write a step above 0");
    });
}

} // namespace paramdb::tools::check
