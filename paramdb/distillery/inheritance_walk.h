// The lines of parents of all channels in one mode, walked together: what a parent's line gave serves its
// children.
#pragma once

#include <cstddef>
#include <functional>
#include <vector>

namespace paramdb {

// Channels are numbered from 0; a channel without parent has the parent NoChannel.
class InheritanceWalk {
public:
    static constexpr std::size_t NoChannel = static_cast<std::size_t>(-1);

    struct Result {
        std::size_t base;   // the last channel of the line
        unsigned int flags; // of all channels of the line
    };

    // Takes the channels of a line of parents that is closed, each once, from the first one met.
    using CycleSink = std::function<void(std::vector<std::size_t> const& channels)>;

    // Walks from each of the channels in `starts`, in their order; the results of these channels hold. A line
    // that comes to a channel that it holds already ends before it.
    std::vector<Result> const& Run(std::vector<std::size_t> const& starts,
                                   std::vector<std::size_t> const& parents,
                                   std::vector<unsigned int> const& flags, CycleSink const& report);

private:
    enum class State : unsigned char { New, OnLine, Done };

    void CloseCycle(std::size_t first, std::vector<unsigned int> const& flags, CycleSink const& report);

    std::vector<Result> m_results;
    std::vector<State> m_states;
    std::vector<std::size_t> m_line;
};

} // namespace paramdb
