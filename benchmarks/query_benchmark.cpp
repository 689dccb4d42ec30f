// Measures single queries: names and ids, triggers, base orders, order sources; beside the same lookups in
// containers of other libraries and in a database.
#include <paramdb/platform/sea/pr_win.h>
#include <paramdb/query/param_instance.h>

#include "command_line.h"
#include "figures.h"
#include "measure.h"
#include "query_data.h"
#include "query_subject.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <functional>
#include <limits>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace benchmarks;

constexpr double None = std::numeric_limits<double>::quiet_NaN();
constexpr std::uint64_t Seed = 7;

using SubjectList = std::vector<std::unique_ptr<Subject>>;

// One kind of question, asked of every subject that can answer it.
struct Contest {
    std::string name;
    std::size_t rows;
    std::size_t questions;
    std::function<void(Subject&, Answers)> ask;
    bool needs_ranges = false;
    double goal = None;    // how many times faster than SQLite the library is to be
    double at_most = None; // the most time it is to take against a flat hash map
};

// The nanoseconds of a query for each subject; NaN for one that does not answer.
std::vector<double> Measure(Contest const& contest, SubjectList const& subjects, std::size_t repeats) {
    std::vector<std::uint32_t> answers(contest.questions);
    std::vector<std::uint32_t> expected;
    std::vector<Work> works;
    for (auto const& subject : subjects) {
        if (contest.needs_ranges && !subject->HasRanges())
            continue;
        std::ranges::fill(answers, 0xDEADu);
        contest.ask(*subject, answers);
        if (expected.empty())
            expected = answers;
        if (answers != expected)
            throw std::runtime_error(contest.name + ": " + subject->name() + " has other answers");
        works.push_back({subject->name(), {}, [&] { contest.ask(*subject, answers); }, {}});
    }
    std::vector<double> const seconds = MedianSeconds(works, repeats);
    std::vector<double> times;
    std::size_t work = 0;
    for (auto const& subject : subjects) {
        bool const has_answered = work < works.size() && works[work].name == subject->name();
        times.push_back(has_answered ? seconds[work++] * 1e9 / static_cast<double>(contest.questions) : None);
    }
    return times;
}

// A line of the table for a query; remembers its time at the smallest size.
class Report {
public:
    explicit Report(Figures& figures) : m_figures(&figures) {}

    void Add(Contest const& contest, std::vector<double> values, double beside_sqlite, double beside_hash) {
        auto const smallest = std::ranges::find(m_figures->figures, contest.name, &Figure::work);
        double const first = smallest != m_figures->figures.end() ? smallest->values.front() : values.front();
        values.insert(values.end(), {values.front() / first, beside_sqlite, contest.goal, beside_hash,
                                     std::isnan(beside_hash) ? None : contest.at_most});
        m_figures->figures.push_back({contest.name, contest.rows, std::move(values)});
    }

private:
    Figures* m_figures;
};

void Run(Contest const& contest, SubjectList const& subjects, std::size_t repeats, Report& report) {
    std::vector<double> times = Measure(contest, subjects, repeats);
    auto const time_of = [&](char const* name) {
        auto const subject = std::ranges::find(subjects, name, [](auto const& each) { return each->name(); });
        return subject != subjects.end() ? times[static_cast<std::size_t>(subject - subjects.begin())] : None;
    };
    double const library = times.front();
    double const beside_sqlite = time_of("SQLite") / library;
    double const beside_hash = library / time_of("flat_hash_map");
    report.Add(contest, std::move(times), beside_sqlite, beside_hash);
}

void CheckNames(SubjectList const& subjects, std::span<int const> ids) {
    for (int const id : ids.first(std::min<std::size_t>(ids.size(), 1000)))
        for (auto const& subject : subjects)
            if (subject->Name(id) != subjects.front()->Name(id))
                throw std::runtime_error(subject->name() + " has other names");
}

void MeasureNames(CQtParamDistillery& distillery, SubjectList const& subjects, std::size_t repeats,
                  Report& report) {
    std::size_t const rows = distillery.Tables().Location.size();
    Random random(Seed);
    for (bool const missing : {false, true}) {
        std::string const kind = missing ? ", miss" : ", hit";
        NameQuestions const names(distillery, missing, random);
        Run({"name to id" + kind, rows, names.questions().size(),
             [&](Subject& subject, Answers answers) { subject.Ids(names.questions(), answers); }, false, 4,
             missing ? None : 1.1},
            subjects, repeats, report);
        std::vector<int> const ids = LocationIds(distillery, missing, random);
        CheckNames(subjects, ids);
        Run({"id to name" + kind, rows, ids.size(),
             [&](Subject& subject, Answers answers) { subject.Names(ids, answers); }, false, 20,
             missing ? None : 1.0},
            subjects, repeats, report);
    }
}

void MeasureTriggers(CQtParamDistillery& distillery, SubjectList const& subjects, std::size_t repeats,
                     Report& report) {
    Random random(Seed);
    for (bool const missing : {false, true}) {
        std::vector<int> const parameters = Parameters(distillery, missing, random);
        Run({missing ? "trigger of a parameter, miss" : "trigger of a parameter, hit",
             distillery.Tables().InstrumentParam.size(), parameters.size(),
             [&](Subject& subject, Answers answers) { subject.Triggers(parameters, answers); }},
            subjects, repeats, report);
    }
}

void MeasureRotors(CQtParamDistillery& distillery, SubjectList const& subjects, std::size_t repeats,
                   Report& report) {
    std::size_t const rows = distillery.Tables().OrderSource2Rotor.size();
    Random random(Seed);
    auto const gears = Gears(distillery, random);
    Run({"base order of a gear", rows, gears.size(),
         [&](Subject& subject, Answers answers) { subject.BaseOrders(gears, answers); }},
        subjects, repeats, report);
    auto const rotors = Rotors(distillery, random);
    Run({"order sources of a rotor", rows, rotors.size(),
         [&](Subject& subject, Answers answers) { subject.OrderSources(rotors, answers); }, true},
        subjects, repeats, report);
}

// The sizes are rows of locations, parameters and order sources.
void MeasureAll(std::vector<std::size_t> const& sizes, CommandLine const& line, Figures& figures) {
    std::vector<std::unique_ptr<CQtParamDistillery>> distilleries;
    std::vector<SubjectList> subjects;
    for (std::size_t const rows : sizes) {
        auto& distillery = *distilleries.emplace_back(std::make_unique<CQtParamDistillery>());
        FillForQueries(distillery, {rows, rows, rows});
        subjects.push_back(Subjects(distillery));
    }
    for (auto const& subject : subjects.front())
        figures.columns.push_back(subject->name());
    figures.columns.insert(figures.columns.end(), {"times smallest size", "SQLite / paramdb", "goal",
                                                   "paramdb / flat_hash_map", "at most"});

    Report report(figures);
    auto const measure_each = [&](auto const& measure) {
        for (std::size_t size = 0; size < sizes.size(); ++size)
            measure(*distilleries[size], subjects[size], line.Repeats(sizes[size]), report);
    };
    measure_each(MeasureNames);
    measure_each(MeasureTriggers);
    measure_each(MeasureRotors);
}

// The rows have no fault.
void RefuseMessages() {
    PrWin::SetSink(
        [](int, int, std::wstring const&) { throw std::runtime_error("the library reports a fault"); });
}

} // namespace

int main(int count, char** arguments) {
    try {
        CommandLine const line = ParseCommandLine(count, arguments);
        RefuseMessages();
        Figures figures{"Queries: nanoseconds for each, medians of interleaved runs", "rows", {}};
        MeasureAll(line.sizes.size() > 1 ? std::vector<std::size_t>{1'000, 100'000} : line.sizes, line,
                   figures);
        Print(figures);
        if (!line.json.empty())
            WriteJson(figures, line.json);
        return 0;
    } catch (std::exception const& error) {
        std::fprintf(stderr, "query_benchmark: %s\n", error.what());
        return 1;
    }
}
