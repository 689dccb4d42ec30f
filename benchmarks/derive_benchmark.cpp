// Measures two steps of the derivation against the plain loops that say what they mean: the expansion of
// wildcards, and the walk of channel inheritance.
#include <paramdb/distillery/channel_info.h>
#include <paramdb/distillery/grex_info.h>
#include <paramdb/platform/sea/pr_win.h>
#include <paramdb/service/param_store.h>

#include "command_line.h"
#include "figures.h"
#include "measure.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <exception>
#include <map>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace benchmarks;

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
};

void Measure(Contest const& contest, std::size_t repeats, Figures& figures) {
    Work const works[] = {contest.plain, contest.library};
    std::vector<double> const seconds = MedianSeconds(works, repeats);
    figures.figures.push_back(
        {contest.name, contest.keys, {seconds[0] * 1e3, seconds[1] * 1e3, seconds[0] / seconds[1]}});
}

// Expansion: every concrete key against every row.

struct PlainExpansion {
    std::map<CGrexInfo::group_map::key_type, CGrexInfo::group_element> groups;
    std::map<QClavis, CGrexInfo::entry> entries;

    static bool Matches(QClavis const& pattern, QClavis const& key) {
        for (std::size_t element = 0; element < QClavis::size(); ++element)
            if (pattern[element] != -1 && pattern[element] != key[element])
                return false;
        return true;
    }

    void Run(CParamTables const& tables) {
        int next_group = 0;
        for (auto const& [key, stored] : tables.IpParamAndStore)
            for (auto const& [pattern, row] : tables.IpTrackPolygon) {
                if (!Matches(pattern, key))
                    continue;
                CGrexInfo::entry entry{row.get<"area_interpretation">(), row.get<"source_parameter">(),
                                       row.get<"polygon">()};
                if (row.get<"polygon_mode">() == 1) {
                    float const offset = row.get<"offset">();
                    entry.group = next_group++;
                    groups.insert({{entry.group, 0}, {row.get<"x_start">(), row.get<"y_start">() + offset}});
                    groups.insert({{entry.group, 1}, {row.get<"x_end">(), row.get<"y_end">() + offset}});
                }
                if (!entries.insert({key, entry}).second)
                    PrWin::Output(8, 1, L"ambiguous\n");
            }
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

constexpr auto SameRow = [](auto const& left, auto const& right) {
    return left.first == right.first && left.second == right.second;
};

void MeasureExpansion(std::string const& name, int keys, int rows, WildcardOdds const& odds,
                      std::size_t repeats, Figures& figures) {
    CQtParamStore store;
    FillExpansion(store.Tables(), keys, rows, odds);
    std::optional<PlainExpansion> plain;
    std::optional<CGrexInfo> library;
    Contest const contest{name + ", " + std::to_string(rows) + " rows",
                          static_cast<std::size_t>(keys),
                          {"plain", [&] { plain.emplace(); }, [&] { plain->Run(store.Tables()); }, {}},
                          {"library", [&] { library.emplace(store); }, [&] { library->Init(); }, {}}};

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

void WalkChannels(CParamTables const& tables, CQtChannelInfo const& info, CQtChannelInfo::Table& results) {
    for (auto const& [mode, mode_name] : tables.Mode)
        for (auto const& [channel, channel_name] : tables.Channel) {
            unsigned int flags = 0;
            int last = channel[0];
            for (int current = last; current != -1; current = info.Parent(mode[0], current)) {
                auto const property = tables.ChannelProperty.find(current);
                if (property != tables.ChannelProperty.end())
                    flags |= property->second.get<"flags">();
                last = current;
            }
            results.insert_or_assign(QIdx2(mode[0], channel[0]), QVRefFlag(last, static_cast<int>(flags)));
        }
}

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
        {"plain", [&] { plain.PurgeTable(); }, [&] { WalkChannels(store.Tables(), library, plain); }, {}},
        {"library", [&] { library.BaseChannels().PurgeTable(); }, [&] { library.Build(); }, {}}};

    contest.plain.run();
    contest.library.run();
    Check(plain.size() == contest.keys, "a channel has no result");
    Check(SameResults(library.BaseChannels(), plain), "the walk of channels has other results");
    Measure(contest, repeats, figures);
}

void MeasureAll(CommandLine const& line, Figures& figures) {
    bool const is_default = line.sizes.size() > 1;
    std::vector<std::pair<int, int>> sizes{{3'900, 30}, {39'000, 308}, {388'000, 3'086}};
    if (!is_default) {
        int const keys = static_cast<int>(std::min<std::size_t>(line.sizes.front(), 10'000'000));
        sizes = {{keys, std::max(1, keys / 126)}};
    }
    auto const repeats = [&line](int keys) { return line.Repeats(static_cast<std::size_t>(keys)); };
    for (auto const& [keys, rows] : sizes)
        MeasureExpansion("wildcards", keys, rows, BenchFile, repeats(keys), figures);
    auto const& [keys, rows] = sizes.back();
    MeasureExpansion("wildcards anywhere", keys, rows, Anywhere, repeats(keys), figures);
    int const channels = std::clamp(keys / 388, 110, 1000);
    for (bool const modes_have_rows : {false, true})
        MeasureChannels(channels, channels, modes_have_rows, line.repeats, figures);
}

} // namespace

int main(int count, char** arguments) {
    try {
        CommandLine const line = ParseCommandLine(count, arguments);
        Figures figures{
            "Derivation: medians of interleaved runs", "keys", {"plain ms", "library ms", "times faster"}};
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
