#include "channel_model.h"

#include "derivation_support.h"

#include <algorithm>
#include <map>
#include <set>

namespace derivation {
namespace {

using ParentRows = std::map<std::pair<int, int>, int>;

int ParentOf(ParentRows const& parents, int channel, int mode) {
    for (int const row_mode : {mode, -1})
        if (auto const row = parents.find({channel, row_mode}); row != parents.end())
            return row->second;
    return -1;
}

// The channels of a cycle, the lowest first: the same for every place where it is entered.
std::vector<int> Turned(std::vector<int> cycle) {
    std::rotate(cycle.begin(), std::min_element(cycle.begin(), cycle.end()), cycle.end());
    return cycle;
}

Message CycleMessage(int mode, std::vector<int> const& cycle) {
    std::wstring text =
        L"CQtChannelInfo::Build(): cyclic channel inheritance in mode " + std::to_wstring(mode) + L": ";
    for (int const channel : cycle)
        text += std::to_wstring(channel) + L" -> ";
    return {8, 3, text + std::to_wstring(cycle.front()) + L"\n"};
}

} // namespace

ChannelWalk WalkChannels(CParamTables const& tables) {
    ParentRows parents;
    for (auto const& [key, row] : tables.ChannelInheritance)
        parents[{key[0], key[1]}] = std::get<0>(row.tuple());
    std::map<int, unsigned int> properties;
    for (auto const& [key, row] : tables.ChannelProperty)
        properties[key[0]] = std::get<0>(row.tuple());

    ChannelWalk walk;
    std::set<std::vector<int>> known_cycles;
    for (auto const& [mode_key, mode_name] : tables.Mode)
        for (auto const& [channel_key, channel_name] : tables.Channel) {
            int const mode = mode_key[0];
            std::vector<int> line;
            unsigned int flags = 0;
            int current = channel_key[0];
            do {
                line.push_back(current);
                flags |= properties.count(current) > 0 ? properties[current] : 0;
                current = ParentOf(parents, current, mode);
            } while (current != -1 && std::ranges::count(line, current) == 0);
            if (current != -1) {
                std::vector<int> const cycle(std::ranges::find(line, current), line.end());
                if (known_cycles.insert(Turned(cycle)).second)
                    walk.messages.push_back(CycleMessage(mode, cycle));
            }
            walk.longest_line = std::max(walk.longest_line, line.size());
            walk.rows.push_back(std::to_wstring(mode) + L' ' + std::to_wstring(channel_key[0]) + L" | " +
                                std::to_wstring(line.back()) + L' ' +
                                std::to_wstring(static_cast<int>(flags)) + L' ');
        }
    return walk;
}

void FillChannelTables(CParamTables& tables, unsigned seed, ParentNames names) {
    Random random(seed);
    tables.Mode.Clear();
    tables.Channel.Clear();
    tables.ChannelProperty.Clear();
    tables.ChannelInheritance.Clear();
    int const highest = random.Between(1, 10);
    for (int mode = 0; mode <= 5; ++mode)
        if (!random.OneIn(3))
            tables.Mode.Add(mode, L"");
    for (int channel = -1; channel <= highest; ++channel) {
        bool const has_name = names != ParentNames::Some || random.OneIn(2);
        if (has_name && channel >= 0)
            tables.Channel.Add(channel, L"");
        if (random.OneIn(2))
            tables.ChannelProperty.insert({channel, QVChannelProperty(1u << random.Between(0, 4), 0)});
    }
    int const frequency = random.Between(1, 4);
    for (int channel = 0; channel <= highest; ++channel)
        for (int mode = -1; mode <= 5; ++mode) {
            if (!random.OneIn(mode == -1 ? 2 : 2 * frequency))
                continue;
            int const lowest = names == ParentNames::HigherOnly ? channel + 1 : 0;
            bool const has_parent = lowest <= highest && !random.OneIn(8);
            int const parent = has_parent ? random.Between(lowest, highest) : -1;
            tables.ChannelInheritance.insert({{channel, mode}, QVRefIdx(parent)});
        }
}

} // namespace derivation
