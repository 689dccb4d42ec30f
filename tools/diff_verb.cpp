// `paramdb diff`: what differs between two sets of parameter files, row by row, and what follows from it.
#include "tools/diff/comparison.h"
#include "tools/diff/diff_writers.h"
#include "tools/drive_options.h"
#include "tools/language_option.h"
#include "tools/sources.h"
#include "tools/verb.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <map>
#include <ostream>

namespace paramdb::tools {
namespace {

enum class DiffFormat { Text, Json, Page };

constexpr std::size_t TextLimit = 50;
constexpr std::size_t PageLimit = 1000;

// The files of a word: the word itself if there is such a file, else what stands between its commas.
std::vector<std::string> FilesOf(std::string const& word) {
    if (IsFile(word))
        return {word};
    std::vector<std::string> files;
    std::size_t begin = 0;
    for (std::size_t end = 0; end < word.size(); begin = end + 1) {
        end = std::min(word.find(',', begin), word.size());
        files.push_back(word.substr(begin, end - begin));
    }
    return files.empty() ? std::vector<std::string>{word} : files;
}

// What is wrong with the text as a limit; nothing if it is one.
std::string WrongRowCount(std::string const& text) {
    std::size_t limit = 0;
    char const* const last = text.data() + text.size();
    auto const [end, fault] = std::from_chars(text.data(), last, limit);
    return fault == std::errc() && end == last ? "" : text + " is no whole number from 0 on";
}

class DiffVerb : public Verb {
public:
    CLI::App& AddTo(CLI::App& command) override {
        CLI::App& verb = *command.add_subcommand(
            "diff", "Compare two parameter files by their rows, and tell what follows from the differences");
        verb.add_option("A", m_a, "A parameter file, or several to merge with commas between them")
            ->required()
            ->type_name("");
        verb.add_option("B", m_b, "What to compare it with")->required()->type_name("");
        verb.add_option("-w,--with", m_with, "A file to merge into both; may be given more than once")
            ->allow_extra_args(false)
            ->type_name("FILE");
        AddNumber(verb, "-s,--speed", 1, "Place spectral intervals at this speed of the rotor (default: 50)",
                  [this](float speed) { m_options.speed = speed; })
            ->type_name("HZ");
        AddNumber(verb, "--rpm", 60, "The same in turns per minute",
                  [this](float speed) { m_options.speed = speed; })
            ->type_name("RPM")
            ->excludes("--speed");
        AddNumber(verb, "-d,--line-distance", 1, "Between two lines of the spectra, in Hz or in orders",
                  [this](float distance) { m_options.line_distance = distance; })
            ->type_name("HZ");
        verb.add_option("-n,--limit", m_limit,
                        "Show N differences of each table at most; 0 for all (default: 50, on a page 1000;\n"
                        "JSON has all)")
            ->check(WrongRowCount)
            ->type_name("N");
        AddDiffFormatOption(verb);
        verb.footer(
            "Tables are compared as they are loaded, by the keys of their rows: comments, blanks and\n"
            "the order of lines do not count. Behind the rows stands what follows from them: layouts\n"
            "of virtual modes, ratios, spectral intervals, triggers, polygons.\n\n"
            "Examples:\n"
            "  paramdb diff gearbox.lake gearbox_new.lake --rpm 3000\n"
            "  paramdb diff gearbox.lake gearbox.lake,customer.lake --format html > diff.html\n\n"
            "Exit codes:\n"
            "  0  no difference\n"
            "  1  different\n"
            "  2  not compared: wrong arguments, an unreadable file, a refused version");
        return verb;
    }

    ExitCode Run(std::ostream& out, std::ostream& err) override {
        auto const a = LoadSnapshot(Merged(m_a), m_options, err);
        auto const b = LoadSnapshot(Merged(m_b), m_options, err);
        if (!a || !b)
            return ExitCode::NoLoad;
        Comparison const comparison = Compare(*a, *b);
        LanguageInForce const english(CLibMgr::Language::english);
        switch (m_format) {
        case DiffFormat::Text:
            PrintDiffText(out, comparison, m_options, m_limit.value_or(TextLimit));
            break;
        case DiffFormat::Json:
            PrintDiffJson(out, comparison, m_options);
            break;
        case DiffFormat::Page:
            PrintDiffPage(out, comparison, m_options, m_limit.value_or(PageLimit));
            break;
        }
        return comparison.IsEqual() ? ExitCode::Clean : ExitCode::Findings;
    }

private:
    template <class Store>
    static CLI::Option* AddNumber(CLI::App& verb, std::string const& name, double divisor,
                                  std::string const& help, Store store) {
        return verb
            .add_option_function<std::string>(
                name,
                [store, divisor](std::string const& text) {
                    store(static_cast<float>(double{FiniteNumber(text).value_or(0)} / divisor));
                },
                help)
            ->check([](std::string const& text) { return FiniteNumber(text) ? "" : text + " is no number"; });
    }

    void AddDiffFormatOption(CLI::App& verb) {
        static std::map<std::string, DiffFormat> const formats{
            {"text", DiffFormat::Text}, {"json", DiffFormat::Json}, {"html", DiffFormat::Page}};
        verb.add_option_function<std::string>(
                "--format", [this](std::string const& name) { m_format = formats.at(name); },
                "How the differences are printed (default: text)")
            ->check(CLI::IsMember({"text", "json", "html"}))
            ->type_name("FORM");
    }

    std::vector<std::string> Merged(std::string const& word) const {
        auto files = FilesOf(word);
        files.insert(files.end(), m_with.begin(), m_with.end());
        return files;
    }

    std::string m_a;
    std::string m_b;
    std::vector<std::string> m_with;
    AnswerOptions m_options;
    std::optional<std::size_t> m_limit;
    DiffFormat m_format = DiffFormat::Text;
};

} // namespace

std::unique_ptr<Verb> MakeDiffVerb() {
    return std::make_unique<DiffVerb>();
}

} // namespace paramdb::tools
