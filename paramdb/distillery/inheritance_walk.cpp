#include <paramdb/distillery/inheritance_walk.h>

#include <algorithm>

namespace paramdb {

std::vector<InheritanceWalk::Result> const& InheritanceWalk::Run(std::vector<std::size_t> const& starts,
                                                                 std::vector<std::size_t> const& parents,
                                                                 std::vector<unsigned int> const& flags,
                                                                 CycleSink const& report) {
    m_results.resize(parents.size());
    m_states.assign(parents.size(), State::New);
    for (std::size_t const start : starts) {
        std::size_t channel = start;
        for (; channel != NoChannel && m_states[channel] == State::New; channel = parents[channel]) {
            m_states[channel] = State::OnLine;
            m_line.push_back(channel);
        }
        if (channel != NoChannel && m_states[channel] == State::OnLine)
            CloseCycle(channel, flags, report);
        // What is left of the line takes over from its parent, the oldest last.
        for (; !m_line.empty(); m_line.pop_back()) {
            std::size_t const current = m_line.back();
            std::size_t const parent = parents[current];
            m_results[current] = parent == NoChannel ? Result{current, flags[current]}
                                                     : Result{m_results[parent].base,
                                                              m_results[parent].flags | flags[current]};
            m_states[current] = State::Done;
        }
    }
    return m_results;
}

void InheritanceWalk::CloseCycle(std::size_t first, std::vector<unsigned int> const& flags,
                                 CycleSink const& report) {
    auto const begin = std::find(m_line.begin(), m_line.end(), first);
    std::vector<std::size_t> const cycle(begin, m_line.end());
    m_line.erase(begin, m_line.end());
    unsigned int all_flags = 0;
    for (std::size_t const channel : cycle)
        all_flags |= flags[channel];
    // Whoever enters the cycle goes once around and ends at the channel before the one where it came in.
    for (std::size_t place = 0; place < cycle.size(); ++place) {
        std::size_t const last = cycle[(place + cycle.size() - 1) % cycle.size()];
        m_results[cycle[place]] = {last, all_flags};
        m_states[cycle[place]] = State::Done;
    }
    report(cycle);
}

} // namespace paramdb
