// `paramdb order`: explains an order definition, given as it is or as that of an instrument parameter.
#include <paramdb/platform/core/utf8.h>
#include <paramdb/query/param_instance.h>

#include "tools/loading.h"
#include "tools/order_report.h"
#include "tools/sources.h"
#include "tools/verb.h"

#include <CLI/CLI.hpp>
#include <ostream>

namespace paramdb::tools {
namespace {

constexpr int SpectralClasses[] = {1001, 2001}; // value and track, in the order in which they are asked

class OrderFormatter : public CLI::Formatter {
public:
    std::string make_usage(CLI::App const*, std::string name) const override {
        return "Usage: " + name + " [OPTIONS] DEFINITION\n       " + name +
               " [OPTIONS] FILE... --parameter ID\n";
    }
};

bool IsFinding(OrderVerdict verdict) {
    return verdict == OrderVerdict::Bad || verdict == OrderVerdict::Odd;
}

// The definition of a parameter; none if it has no row.
std::optional<OrderQuestion> QuestionOf(CQtParamInstance const& parameters, int parameter) {
    for (int const instrument : SpectralClasses) {
        auto const& table = parameters.IpSvOfSpec().at(instrument);
        auto const row = table.find(parameter);
        if (row != table.end())
            return OrderQuestion{
                NamedParameter(parameters, parameter),
                Named(parameters.Location(), row->second.get<"base_order_reference">()),
                std::wstring(row->second.get<"definition">().view()),
            };
    }
    return std::nullopt;
}

class OrderVerb : public Verb {
public:
    CLI::App& AddTo(CLI::App& command) override {
        CLI::App& verb = *command.add_subcommand(
            "order", "Explain an order definition, given here or in a parameter file");
        verb.formatter(std::make_shared<OrderFormatter>());
        verb.add_option("DEFINITION", m_words, "The definition, or with --parameter the files as for load")
            ->required()
            ->type_name("");
        verb.add_option("-p,--parameter", m_parameter, "The definition of this instrument parameter")
            ->type_name("ID");
        AddFormatOption(verb, m_format);
        verb.footer(
            std::string("A definition is a list of positions with ; between them, each a sum of F\n"
                        "(frequency in Hz), O (order), H (multiple of the base order), M (modulation) "
                        "and\n"
                        "L (spectral lines). HX repeats the positions for all harmonics. One that begins\n"
                        "with a minus goes behind --.\n\n"
                        "Examples:\n"
                        "  paramdb order 'H1-O0.5;H1+O0.5'\n"
                        "  paramdb order gearbox.lake --parameter 1023\n\n") +
            ExitCodeHelp + "\nA bad definition, one that gives no intervals, and none are findings.");
        return verb;
    }

    ExitCode Run(std::ostream& out, std::ostream& err) override {
        return m_parameter ? ExplainParameter(out, err) : ExplainText(out, err);
    }

private:
    ExitCode ExplainText(std::ostream& out, std::ostream& err) const {
        if (m_words.size() > 1 || IsFile(m_words.front())) {
            err << "paramdb: "
                << (m_words.size() > 1 ? "more than one DEFINITION" : "that is a file and no DEFINITION")
                << "; to explain one in a file, add --parameter ID\n";
            return ExitCode::NoLoad;
        }
        OrderVerdict const verdict = PrintOrder(out, {{}, {}, FromUtf8(m_words.front())}, m_format);
        return IsFinding(verdict) ? ExitCode::Findings : ExitCode::Clean;
    }

    ExitCode ExplainParameter(std::ostream& out, std::ostream& err) const {
        auto const load = LoadFiles(m_words, err);
        if (!load || load->result == LoadResult::Refused)
            return ExitCode::NoLoad;
        auto const question = QuestionOf(CQtParamInstance(), *m_parameter);
        if (!question) {
            err << "paramdb: parameter " << *m_parameter
                << " has no order definition; <TIpSpectralValue> and <TIpSpectralTrack> have them\n";
            return ExitCode::Findings;
        }
        OrderVerdict const verdict = PrintOrder(out, *question, m_format);
        return IsFinding(verdict) ? ExitCode::Findings : ExitCodeOf(*load);
    }

    std::vector<std::string> m_words;
    std::optional<int> m_parameter;
    ReportFormat m_format = ReportFormat::Text;
};

} // namespace

std::unique_ptr<Verb> MakeOrderVerb() {
    return std::make_unique<OrderVerb>();
}

} // namespace paramdb::tools
