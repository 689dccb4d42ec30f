// Order definitions of spectral values and tracks.
#include <paramdb/distillery/spec_interval_store.h>

#include "tools/check/known_ids.h"
#include "tools/check/rules.h"
#include "tools/check/wording.h"
#include "tools/order_meaning.h"
#include "tools/report.h"
#include "tools/row_buffer.h"

#include <string>

namespace paramdb::tools::check {
namespace {

class DefinitionCheck {
public:
    DefinitionCheck(CheckContext const& context, FindingList& findings)
        : m_context(context), m_findings(findings) {}

    void Run() {
        // The load looks at the first two. The third is read by hosts alone.
        CheckTable(m_context.Table("TIpSpectralValue"), true);
        CheckTable(m_context.Table("TIpSpectralTrack"), true);
        CheckTable(m_context.Table("TIpResidualTrack"), false);
        ExplainMessages(m_context, m_findings,
                        L"OrderInterpreter::GetSpecPositions(): Syntax error in order definition '", m_bad);
        ExplainMessages(m_context, m_findings, L"CQtSpecIntervalStore::ProcessTables():\n", m_odd);
    }

private:
    void CheckTable(CheckedTable const& table, bool is_read_by_load) {
        std::size_t const definition = table.Column("definition");
        std::size_t const interpretation = table.Column("interpretation");
        table.VisitRows([&](CheckedRow const& row) {
            CheckDefinition(row, definition, is_read_by_load);
            std::int64_t const number = row.Integer(interpretation);
            if (is_read_by_load && number >= 1 && number <= 4)
                m_findings
                    .Add("P404", row.At(interpretation),
                         "the interpretation " + std::to_string(number) + " is deprecated")
                    .Hint("write 6 for the maximum or 8 for the sum");
        });
    }

    void CheckDefinition(CheckedRow const& row, std::size_t column, bool is_read_by_load) {
        OrderMeaning const meaning = MeaningOf(std::wstring(row.Text(column)));
        switch (meaning.verdict) {
        case OrderVerdict::Bad:
            m_bad += is_read_by_load ? 1U : 0U;
            ReportBad(row, column, *meaning.text.fault);
            return;
        case OrderVerdict::Empty:
            m_findings.Add("P407", row.At(column), "the definition is empty, so there is nothing to measure")
                .Hint("write positions, as in H1-L2;H1+L2");
            return;
        case OrderVerdict::Odd:
            m_odd += is_read_by_load ? 1U : 0U;
            m_findings
                .Add("P403", row.At(column),
                     "the definition has " + Counted(meaning.positions.size(), "position") +
                         ", one of which is left over, and is ignored as a whole")
                .Hint("write one position, or pairs of a lower and an upper one");
            break;
        case OrderVerdict::Good:
            break;
        }
        if (meaning.text.is_cut)
            m_findings
                .Add("P405", row.At(column),
                     "only the first " + std::to_string(CQtSpecIntervalStore::max_orders) +
                         " positions of the definition are read")
                .Hint("spread the positions over several parameters");
        for (std::size_t index = 0; index < meaning.text.positions.size(); ++index) {
            std::wstring const& ignored = meaning.text.positions[index].ignored;
            if (!ignored.empty())
                m_findings
                    .Add("P406", row.At(column),
                         "nothing looks at '" + Shortened(ignored) + "' in position " +
                             std::to_string(index + 1) + " of the definition")
                    .Hint("a position is a sum of F, O, H, M and L, each with a number and at most once");
        }
    }

    void ReportBad(CheckedRow const& row, std::size_t column, OrderFault const& fault) {
        Place place = row.At(column);
        std::size_t const last = place.length > 0 ? place.length - 1 : 0;
        place.column += std::min(fault.place, last);
        place.length = 1;
        m_findings.Add("P402", place, "the order definition is bad and counts as empty: " + fault.reason)
            .Hint("`paramdb order` explains definitions");
    }

    CheckContext const& m_context;
    FindingList& m_findings;
    std::size_t m_bad = 0;
    std::size_t m_odd = 0;
};

} // namespace

void CheckOrderDefinitions(CheckContext const& context, FindingList& findings) {
    Silence const silence;
    DefinitionCheck(context, findings).Run();
}

} // namespace paramdb::tools::check
