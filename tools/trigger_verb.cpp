// `paramdb trigger`: the field of a trigger, the cell of a position and the position of a cell.
#include <paramdb/platform/core/utf8.h>
#include <paramdb/query/param_instance.h>

#include "tools/drive_options.h"
#include "tools/id_choice.h"
#include "tools/id_words.h"
#include "tools/loading.h"
#include "tools/outer_word.h"
#include "tools/trigger_listing.h"
#include "tools/verb.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <nlohmann/json.hpp>
#include <ostream>

namespace paramdb::tools {
namespace {

// Positions with commas between, an empty one for a dimension that is left out; none if it is no such list.
std::optional<CTriggerStore::CDimensions> ReadPosition(std::string const& text) {
    CTriggerStore::CDimensions position;
    std::size_t begin = 0;
    for (unsigned int dim = 0; dim < CTriggerStore::dimensions_d; ++dim) {
        std::size_t const end = std::min(text.find(',', begin), text.size());
        if (end > begin) {
            auto const number = FiniteNumber(text.substr(begin, end - begin));
            if (!number)
                return std::nullopt;
            position.positions[dim] = *number;
            position.dimensions.set(dim);
        }
        if (end == text.size())
            return position.dimensions.any() ? std::optional(position) : std::nullopt;
        begin = end + 1;
    }
    return std::nullopt;
}

std::optional<std::int64_t> ReadCell(std::string const& text) {
    std::int64_t number = 0;
    char const* const last = text.data() + text.size();
    auto const [end, fault] = std::from_chars(text.data(), last, number);
    return fault == std::errc() && end == last ? std::optional(number) : std::nullopt;
}

class TriggerVerb : public Verb {
public:
    CLI::App& AddTo(CLI::App& command) override {
        CLI::App& verb = *command.add_subcommand(
            "trigger", "Load parameter files and show the field of a trigger and its cells");
        AddLastWordsArgument(verb, m_words, "TRIGGER");
        verb.add_option("-m,--mode", m_mode, "The field in this mode (default: in all)")->type_name("ID");
        AddQuestionOptions(verb);
        AddFormatOption(verb, m_format);
        verb.footer(
            std::string("TRIGGER is an id or a name. Cells and their numbers are counted from 0,\n"
                        "dimensions from 1. A cell number has 16 bits for each dimension; those of\n"
                        "positions in dimensions 3 and 4 lie upon those in 1 and 2.\n\n"
                        "Examples:\n"
                        "  paramdb trigger gearbox.lake Speed\n"
                        "  paramdb trigger gearbox.lake 2 --mode 11 --position 1234.5,150\n"
                        "  paramdb trigger gearbox.lake 2 --mode 11 --cell 3\n\n") +
            ExitCodeHelp +
            "\nA trigger without field, a position without cell, and a dimension that there is not are\n"
            "findings.");
        return verb;
    }

    ExitCode Run(std::ostream& out, std::ostream& err) override {
        auto const words = SplitOuterWord(m_words);
        if (!words) {
            err << "paramdb: a FILE is required before the TRIGGER\n";
            return ExitCode::NoLoad;
        }
        auto const load = LoadFiles(words->files, err);
        if (!load || load->result == LoadResult::Refused)
            return ExitCode::NoLoad;
        CQtParamInstance const parameters;
        auto const trigger = ChosenTrigger(parameters, words->words.front(), err);
        if (!trigger || (m_mode && !ChooseId("mode", std::to_string(*m_mode), parameters, err)))
            return ExitCode::Findings;
        auto const modes = CollectTrigger(parameters, *trigger, m_mode, m_question);
        NamedId const name{*trigger, parameters.TriggerName(*trigger)};
        Print(out, name, modes);
        return TellFindings(err, name, modes) ? ExitCode::Findings : ExitCodeOf(*load);
    }

private:
    void AddQuestionOptions(CLI::App& verb) {
        auto* const position =
            verb.add_option_function<std::string>(
                    "-p,--position",
                    [this](std::string const& text) { m_question.position = ReadPosition(text); },
                    "The cell of this position, with a number for each dimension")
                ->check([](std::string const& text) {
                    return ReadPosition(text) ? "" : text + " is no list of up to four numbers";
                })
                ->type_name("X[,Y..]");
        verb.add_flag("--clamp", m_question.clamp, "Take the nearest cell number for one beyond 16 bits")
            ->needs(position);
        auto* const cell = AddCellNumber(verb, "-c,--cell", "The position of this cell number",
                                         [this](std::int64_t number) { m_question.cell = number; });
        cell->excludes(position);
        AddCellNumber(verb, "-e,--extent", "The far edge of so many cells, given as a cell number is",
                      [this](std::int64_t number) { m_question.extent = number; })
            ->needs(cell);
    }

    template <class Store>
    static CLI::Option* AddCellNumber(CLI::App& verb, std::string const& name, std::string const& help,
                                      Store store) {
        return verb
            .add_option_function<std::string>(
                name, [store](std::string const& text) { store(ReadCell(text).value_or(0)); }, help)
            ->check([](std::string const& text) {
                return ReadCell(text) ? "" : text + " is no whole number of 64 bits";
            })
            ->type_name("N");
    }

    // A trigger without a name is there, too.
    static std::optional<int> ChosenTrigger(CQtParamInstance const& parameters, std::string const& word,
                                            std::ostream& err) {
        auto const number = ReadId(FromUtf8(word));
        if (number && !CollectTrigger(parameters, *number, std::nullopt, {}).empty())
            return number;
        return ChooseId("trigger", word, parameters, err);
    }

    void Print(std::ostream& out, NamedId const& trigger, std::vector<TriggerInMode> const& modes) const {
        if (m_format == ReportFormat::Json) {
            PrintJson(out, TriggerJson(trigger, modes, m_question));
            return;
        }
        if (modes.empty())
            return;
        out << "Trigger " << Shown(trigger) << "\n\n";
        PrintDimensions(out, modes);
        bool const has_places = std::any_of(modes.begin(), modes.end(),
                                            [](TriggerInMode const& entry) { return !entry.places.empty(); });
        if (has_places) {
            out << '\n';
            PrintPlaces(out, modes, m_question);
        }
    }

    // Whether there are any.
    bool TellFindings(std::ostream& err, NamedId const& trigger,
                      std::vector<TriggerInMode> const& modes) const {
        if (modes.empty()) {
            err << "paramdb: trigger " << trigger.id << " has no dimensions";
            if (m_mode)
                err << " in mode " << *m_mode;
            err << '\n';
            return true;
        }
        bool const has_cell = std::any_of(modes.begin(), modes.end(), [](TriggerInMode const& entry) {
            return entry.cell_number.has_value();
        });
        if (m_question.position && !has_cell)
            err << "paramdb: the position has no cell\n";
        bool const is_usable = std::all_of(modes.begin(), modes.end(), [](TriggerInMode const& entry) {
            return std::all_of(entry.dimensions.begin(), entry.dimensions.end(),
                               [](TriggerDimension const& dimension) { return dimension.IsUsable(); });
        });
        if (!is_usable)
            err << "paramdb: a dimension that is none of 1 to 4 makes the field of that mode unusable\n";
        return !is_usable || (m_question.position && !has_cell);
    }

    std::vector<std::string> m_words;
    std::optional<int> m_mode;
    TriggerQuestion m_question;
    ReportFormat m_format = ReportFormat::Text;
};

} // namespace

std::unique_ptr<Verb> MakeTriggerVerb() {
    return std::make_unique<TriggerVerb>();
}

} // namespace paramdb::tools
