// Channels that inherit from themselves.
#include "tools/check/known_ids.h"
#include "tools/check/rules.h"

#include <algorithm>
#include <limits>
#include <map>
#include <set>
#include <unordered_map>
#include <vector>

namespace paramdb::tools::check {
namespace {

constexpr int AnyMode = -1;

struct Parent {
    int channel;
    std::size_t row; // of <TChannelInheritance>
};

using Parents = std::unordered_map<int, Parent>; // by channel

class CycleCheck {
public:
    CycleCheck(CheckContext const& context, FindingList& findings)
        : m_context(context), m_findings(findings), m_table(context.Table("ChannelInheritance")) {}

    void Run() {
        std::map<int, Parents> of_mode;
        m_table.VisitRows([&](CheckedRow const& row) {
            of_mode[static_cast<int>(row.Integer(1))].emplace(
                static_cast<int>(row.Integer(0)), Parent{static_cast<int>(row.Integer(2)), row.Index()});
        });
        m_common = of_mode[AnyMode];
        Walk(AnyMode, {});
        of_mode.erase(AnyMode);
        for (auto const& [mode, own] : of_mode)
            Walk(mode, own);
        if (!m_told.empty())
            ExplainMessages(m_context, m_findings, L"CQtChannelInfo::Build(): cyclic channel inheritance",
                            std::numeric_limits<std::size_t>::max());
    }

private:
    Parent const* ParentOf(Parents const& own, int channel) const {
        for (Parents const* const parents : {&own, &m_common})
            if (auto const found = parents->find(channel); found != parents->end())
                return found->second.channel != -1 ? &found->second : nullptr;
        return nullptr;
    }

    // A circle that is not there in any mode has one of the mode's own rows, so it is enough to begin there.
    void Walk(int mode, Parents const& own) {
        std::vector<int> starts;
        for (auto const& [channel, parent] : mode == AnyMode ? m_common : own)
            starts.push_back(channel);
        std::sort(starts.begin(), starts.end());
        std::unordered_map<int, int> walk_of; // channels with the start of the walk that came there first
        for (int const start : starts) {
            std::vector<int> line;
            int channel = start;
            while (walk_of.emplace(channel, start).second) {
                line.push_back(channel);
                Parent const* const parent = ParentOf(own, channel);
                if (parent == nullptr)
                    break;
                channel = parent->channel;
            }
            auto const begin = std::find(line.begin(), line.end(), channel);
            if (begin != line.end() && ParentOf(own, line.back()) != nullptr)
                Report(mode, own, {begin, line.end()});
        }
    }

    void Report(int mode, Parents const& own, std::vector<int> cycle) {
        std::rotate(cycle.begin(), std::min_element(cycle.begin(), cycle.end()), cycle.end());
        if (!m_told.insert(cycle).second)
            return;
        std::string text;
        for (int const channel : cycle)
            text += std::to_string(channel) + " -> ";
        KnownIds known(m_context);
        std::string const where = mode == AnyMode ? "" : " in mode " + known.Of("Mode").Shown(mode);
        constexpr std::size_t parent_column = 2;
        auto& finding =
            m_findings.Add("P401", m_table.PlaceOf(ParentOf(own, cycle.front())->row, parent_column),
                           "channel " + known.Of("Channel").Shown(cycle.front()) + " inherits from itself" +
                               where + ": " + text + std::to_string(cycle.front()));
        finding.Hint("leave one of the rows out, or write -1 as the parent");
        constexpr std::size_t most_related = 4;
        for (std::size_t index = 1; index < std::min(cycle.size(), most_related + 1); ++index)
            finding.Relate(m_table.PlaceOf(ParentOf(own, cycle[index])->row, parent_column),
                           "the parent of channel " + std::to_string(cycle[index]));
    }

    CheckContext const& m_context;
    FindingList& m_findings;
    CheckedTable const& m_table;
    Parents m_common;
    std::set<std::vector<int>> m_told;
};

} // namespace

void CheckChannelCycles(CheckContext const& context, FindingList& findings) {
    CycleCheck(context, findings).Run();
}

} // namespace paramdb::tools::check
