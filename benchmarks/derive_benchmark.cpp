// Measures two steps of the derivation against the plain loops that say what they mean: the expansion of
// wildcards, and the walk of channel inheritance.
#include <paramdb/distillery/channel_info.h>
#include <paramdb/distillery/grex_info.h>
#include <paramdb/platform/sea/pr_win.h>
#include <paramdb/service/param_store.h>

#include "command_line.h"
#include "figures.h"
#include "measure.h"
#include "naive_walks.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <exception>
#include <limits>
#include <map>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace benchmarks;

constexpr double None = std::numeric_limits<double>::quiet_NaN();
constexpr int ChannelsOfGoal = 1000; // as many modes

// The same numbers on every machine.
class Random {
public:
    int Below(int limit) {
        return static_cast<int>(static_cast<unsigned>(m_engine()) % static_cast<unsigned>(limit));
    }
    bool OneIn(int count) { return Below(count) == 0; }

private:
    std::mt19937 m_engine{20'260'101};
};

// Counts messages in place of printing them.
class MessageCount {
public:
    MessageCount() : m_previous(PrWin::SetSink([this](int, int, std::wstring const&) { ++m_count; })) {}
    MessageCount(MessageCount const&) = delete;
    MessageCount& operator=(MessageCount const&) = delete;
    ~MessageCount() { PrWin::SetSink(std::move(m_previous)); }

    std::size_t Take() { return std::exchange(m_count, 0); }

private:
    std::size_t m_count = 0;
    PrWin::Sink m_previous;
};

// A step of the derivation in both forms.
struct Contest {
    std::string name;
    std::size_t keys;
    Work plain;
    Work library;
    double goal; // how many times faster the library is to be; NaN for any
};

void Measure(Contest const& contest, std::size_t repeats, Figures& figures) {
    Work const works[] = {contest.plain, contest.library};
    std::vector<double> const seconds = MedianSeconds(works, repeats);
    figures.figures.push_back({contest.name,
                               contest.keys,
                               {seconds[0] * 1e3, seconds[1] * 1e3, seconds[0] / seconds[1], contest.goal}});
}

// Expansion: every concrete key against every row.

struct PlainExpansion {
    std::map<CGrexInfo::group_map::key_type, CGrexInfo::group_element> groups;
    std::map<QClavis, CGrexInfo::entry> entries;

    void Run(CParamTables const& tables) {
        ExpandByLoops(tables, 0, groups, entries, [] { PrWin::Output(8, 1, L"ambiguous\n"); });
    }
};

// Which elements of a row are wildcards, and how often: one row in so many, 0 for never. In the files of
// benches these are test steps, locations and signals.
using WildcardOdds = std::array<int, QClavis::size()>;
constexpr WildcardOdds BenchFile{2, 0, 0, 2, 0, 2};
constexpr WildcardOdds Anywhere{3, 3, 3, 3, 1000, 3};

// Concrete keys of test steps, channels, locations and parameters, and ten rows for each parameter.
void FillExpansion(CParamTables& tables, int keys, int rows, WildcardOdds const& odds) {
    constexpr int channels = 6;
    constexpr int locations = 3;
    constexpr int signals = 2;
    int const parameters = std::max(1, rows / 10);
    int const modes = keys / (channels * locations * signals * parameters) + 1;
    auto const instrument = [](int parameter) { return 2001 + parameter % 7; };
    auto const insert_keys_of_mode = [&](int mode) {
        for (int parameter = 0; parameter < parameters; ++parameter)
            for (int rest = 0; rest < channels * locations * signals; ++rest)
                if (tables.IpParamAndStore.size() < static_cast<std::size_t>(keys))
                    tables.IpParamAndStore.insert(
                        {{mode, instrument(parameter), rest % channels, rest / channels % locations,
                          parameter, rest / channels / locations},
                         QVIpParamAndStore()});
    };
    for (int mode = 0; mode < modes; ++mode)
        insert_keys_of_mode(mode);

    Random random;
    while (tables.IpTrackPolygon.size() < static_cast<std::size_t>(rows)) {
        int const parameter = random.Below(parameters);
        QClavis pattern(random.Below(modes), instrument(parameter), random.Below(channels),
                        random.Below(locations), parameter, random.Below(signals));
        for (std::size_t element = 0; element < odds.size(); ++element)
            if (odds[element] > 0 && random.OneIn(odds[element]))
                pattern[element] = -1;
        auto const number = [&random] { return static_cast<float>(random.Below(1000)); };
        tables.IpTrackPolygon.insert(
            {pattern, QVIpTrackPolygon(random.Below(50), 0, random.Below(9), parameter, number(),
                                       random.OneIn(4) ? 1 : 0, number(), number(), number(), number())});
    }
}

struct ExpansionSize {
    int keys;
    int rows;
    double goal;
};

constexpr auto SameRow = [](auto const& left, auto const& right) {
    return left.first == right.first && left.second == right.second;
};

void MeasureExpansion(std::string const& name, ExpansionSize const& size, WildcardOdds const& odds,
                      std::size_t repeats, Figures& figures) {
    auto const [keys, rows, goal] = size;
    CQtParamStore store;
    FillExpansion(store.Tables(), keys, rows, odds);
    std::optional<PlainExpansion> plain;
    std::optional<CGrexInfo> library;
    Contest const contest{name + ", " + std::to_string(rows) + " rows",
                          static_cast<std::size_t>(keys),
                          {"plain", [&] { plain.emplace(); }, [&] { plain->Run(store.Tables()); }, {}},
                          {"library", [&] { library.emplace(store); }, [&] { library->Init(); }, {}},
                          goal};

    MessageCount messages;
    contest.plain.prepare();
    contest.plain.run();
    std::size_t const ambiguous = messages.Take();
    contest.library.prepare();
    contest.library.run();
    Check(!plain->entries.empty() && !plain->groups.empty(), "no key matches a row");
    Check(std::ranges::equal(library->Entries(), plain->entries, SameRow), "the expansion has other entries");
    Check(std::ranges::equal(library->Groups(), plain->groups, SameRow), "the expansion has other groups");
    Check(messages.Take() == ambiguous, "the expansion reports other ambiguities");
    Measure(contest, repeats, figures);
}

// Channels: each walks its own line of parents in each mode.

// Ten lines of ten channels, and others that each inherit from one of these lines; where modes have rows of
// their own, one channel in a hundred from another line than in the other modes.
void FillChannels(CParamTables& tables, int modes, int channels, bool modes_have_rows) {
    constexpr int depth = 10;
    constexpr int lines = 10;
    for (int mode = 0; mode < modes; ++mode)
        tables.Mode.Add(mode, L"");
    Random random;
    auto const inherit = [&tables](int channel, int mode, int parent) {
        tables.ChannelInheritance.insert({{channel, mode}, QVRefIdx(parent)});
    };
    for (int channel = 0; channel < channels; ++channel) {
        tables.Channel.Add(channel, L"");
        tables.ChannelProperty.insert({channel, QVChannelProperty(1u << random.Below(3), 0)});
        if (channel >= lines * depth)
            inherit(channel, -1, channel % lines * depth);
        else if (channel % depth < depth - 1)
            inherit(channel, -1, channel + 1);
        if (modes_have_rows && channel >= lines * depth)
            for (int mode = channel % 100; mode < modes; mode += 100)
                inherit(channel, mode, (channel + 1) % lines * depth);
    }
}

bool SameResults(CQtChannelInfo::Table const& left, CQtChannelInfo::Table const& right) {
    return std::ranges::equal(left, right, [](auto const& left_row, auto const& right_row) {
        return left_row.first == right_row.first && left_row.second.tuple() == right_row.second.tuple();
    });
}

void MeasureChannels(int modes, int channels, bool modes_have_rows, std::size_t repeats, Figures& figures) {
    CQtParamStore store;
    FillChannels(store.Tables(), modes, channels, modes_have_rows);
    CQtChannelInfo library(store);
    CQtChannelInfo::Table plain(L"");
    Contest const contest{
        modes_have_rows ? "channels, modes differ" : "channels, modes alike",
        static_cast<std::size_t>(modes) * static_cast<std::size_t>(channels),
        {"plain", [&] { plain.PurgeTable(); }, [&] { WalkChannelsByLoops(store.Tables(), plain); }, {}},
        {"library", [&] { library.BaseChannels().PurgeTable(); }, [&] { library.Build(); }, {}},
        channels == ChannelsOfGoal ? 50 : None};

    contest.plain.run();
    contest.library.run();
    Check(plain.size() == contest.keys, "a channel has no result");
    Check(SameResults(library.BaseChannels(), plain), "the walk of channels has other results");
    Measure(contest, repeats, figures);
}

void MeasureAll(CommandLine const& line, Figures& figures) {
    bool const is_default = line.sizes.size() > 1;
    std::vector<ExpansionSize> sizes{{3'900, 30, 4}, {39'000, 308, 15}, {388'000, 3'086, 40}};
    if (!is_default) {
        int const keys = static_cast<int>(std::min<std::size_t>(line.sizes.front(), 10'000'000));
        sizes = {{keys, std::max(1, keys / 126), None}};
    }
    auto const repeats = [&line](int keys) { return line.Repeats(static_cast<std::size_t>(keys)); };
    for (ExpansionSize const& size : sizes)
        MeasureExpansion("wildcards", size, BenchFile, repeats(size.keys), figures);
    int const keys = sizes.back().keys;
    MeasureExpansion("wildcards anywhere", {keys, sizes.back().rows, None}, Anywhere, repeats(keys), figures);
    int const channels = std::clamp(keys / 388, 110, ChannelsOfGoal);
    for (bool const modes_have_rows : {false, true})
        MeasureChannels(channels, channels, modes_have_rows, line.repeats, figures);
}

} // namespace

int main(int count, char** arguments) {
    try {
        CommandLine const line = ParseCommandLine(count, arguments);
        Figures figures{"Derivation: medians of interleaved runs",
                        "keys",
                        {"plain ms", "library ms", "times faster", "goal"}};
        MeasureAll(line, figures);
        Print(figures);
        if (!line.json.empty())
            WriteJson(figures, line.json);
        return 0;
    } catch (std::exception const& error) {
        std::fprintf(stderr, "derive_benchmark: %s\n", error.what());
        return 1;
    }
}
