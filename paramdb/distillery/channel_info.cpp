#include <paramdb/distillery/channel_info.h>
#include <paramdb/distillery/inheritance_walk.h>
#include <paramdb/platform/sea/pr_win.h>
#include <paramdb/service/param_store.h>

#include <algorithm>
#include <map>
#include <set>
#include <utility>
#include <vector>

namespace {

using paramdb::InheritanceWalk;

constexpr int AnyMode = -1;

// The channels that stand in a channel table, numbered by id, with what each gives and where it inherits
// from.
class Channels {
public:
    explicit Channels(CParamTables const& tables) {
        for (auto const& [channel, name] : tables.Channel)
            m_ids.push_back(channel[0]);
        for (auto const& [key, parent] : tables.ChannelInheritance) {
            m_ids.push_back(key[0]);
            m_ids.push_back(parent.get<"referred_id">());
        }
        std::ranges::sort(m_ids);
        m_ids.erase(std::unique(m_ids.begin(), m_ids.end()), m_ids.end());

        for (int const id : m_ids) {
            auto const property = tables.ChannelProperty.find(id);
            m_flags.push_back(property != tables.ChannelProperty.end() ? property->second.get<"flags">() : 0);
        }
        m_parents.assign(m_ids.size(), InheritanceWalk::NoChannel);
        for (auto const& [key, parent] : tables.ChannelInheritance) {
            std::size_t const child = Number(key[0]);
            std::size_t const number = ParentNumber(parent.get<"referred_id">());
            if (key[1] == AnyMode)
                m_parents[child] = number;
            else
                m_of_mode[key[1]].emplace_back(child, number);
        }
    }

    int Id(std::size_t number) const { return m_ids[number]; }
    std::size_t Number(int id) const {
        return static_cast<std::size_t>(std::ranges::lower_bound(m_ids, id) - m_ids.begin());
    }
    std::vector<unsigned int> const& flags() const { return m_flags; }
    bool HasRowsOf(int mode) const { return m_of_mode.count(mode) > 0; }
    // The parents in a mode without rows of its own.
    std::vector<std::size_t> const& parents() const { return m_parents; }
    std::vector<std::size_t> ParentsIn(int mode) const {
        std::vector<std::size_t> parents = m_parents;
        for (auto const& [child, parent] : m_of_mode.at(mode))
            parents[child] = parent;
        return parents;
    }

private:
    std::size_t ParentNumber(int id) const { return id == -1 ? InheritanceWalk::NoChannel : Number(id); }

    std::vector<int> m_ids;
    std::vector<unsigned int> m_flags;
    std::vector<std::size_t> m_parents;
    std::map<int, std::vector<std::pair<std::size_t, std::size_t>>> m_of_mode;
};

// Reports each closed line of parents once in a load.
class CycleReport {
public:
    void operator()(int mode, Channels const& channels, std::vector<std::size_t> const& cycle) {
        std::vector<std::size_t> from_lowest = cycle;
        std::rotate(from_lowest.begin(), std::min_element(from_lowest.begin(), from_lowest.end()),
                    from_lowest.end());
        if (!m_known.insert(from_lowest).second)
            return;
        std::wstring message =
            L"CQtChannelInfo::Build(): cyclic channel inheritance in mode " + std::to_wstring(mode) + L":";
        for (std::size_t const channel : cycle)
            message += L" " + std::to_wstring(channels.Id(channel)) + L" ->";
        PrWin::Output(8, 3, message + L" " + std::to_wstring(channels.Id(cycle.front())) + L"\n");
    }

private:
    std::set<std::vector<std::size_t>> m_known;
};

} // namespace

void CQtChannelInfo::Build() {
    CParamTables const& tables = m_store->Tables();
    m_base_channels.PurgeTable();
    if (tables.Mode.empty() || tables.Channel.empty())
        return;

    Channels const channels(tables);
    std::vector<std::size_t> walked; // the channels to enter
    for (auto const& [channel, name] : tables.Channel)
        walked.push_back(channels.Number(channel[0]));

    CycleReport report;
    InheritanceWalk common_walk;
    InheritanceWalk mode_walk;
    std::vector<InheritanceWalk::Result> const* common = nullptr;
    for (auto const& [mode_key, name] : tables.Mode) {
        int const mode = mode_key[0];
        auto const report_cycle = [&](auto const& cycle) { report(mode, channels, cycle); };
        auto const* results = common;
        if (channels.HasRowsOf(mode))
            results = &mode_walk.Run(walked, channels.ParentsIn(mode), channels.flags(), report_cycle);
        else if (common == nullptr)
            results = common = &common_walk.Run(walked, channels.parents(), channels.flags(), report_cycle);
        for (std::size_t const channel : walked) {
            auto const& [base, flags] = (*results)[channel];
            m_base_channels.try_emplace(m_base_channels.end(), QIdx2(mode, channels.Id(channel)),
                                        channels.Id(base), static_cast<int>(flags));
        }
    }
}

int CQtChannelInfo::Parent(int mode, int channel) const {
    auto const& inheritance = m_store->Tables().ChannelInheritance;
    auto row = inheritance.find({channel, mode});
    if (row == inheritance.end())
        row = inheritance.find({channel, AnyMode});
    return row != inheritance.end() ? row->second.get<"referred_id">() : -1;
}

int CQtChannelInfo::BaseChannel(int mode, int channel) const {
    auto const entry = m_base_channels.find({mode, channel});
    return entry != m_base_channels.end() ? entry->second.get<"base_channel">() : 0;
}

int CQtChannelInfo::Flags(int mode, int channel) const {
    auto const entry = m_base_channels.find({mode, channel});
    return entry != m_base_channels.end() ? entry->second.get<"flags">() : 0;
}
