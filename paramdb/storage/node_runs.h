// The positions of many nodes in a row, such as the rows of a table, in little memory: nodes that were made
// one after the other lie side by side in the pool, so where the first one lies and how many follow says it
// all.
//
// It is a vector of positions to whom asks for one: All() makes it at the first call.
#pragma once

#include <paramdb/storage/node_list.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace paramdb {

template <class Node>
class NodeRuns {
    struct Run {
        std::byte* first;
        std::size_t count;

        bool IsFollowedBy(std::byte const* node) const {
            return reinterpret_cast<std::uintptr_t>(node) - reinterpret_cast<std::uintptr_t>(first) ==
                   count * sizeof(Node);
        }
    };

public:
    using position = NodePosition<Node>;

    NodeRuns() = default;
    NodeRuns(NodeRuns const& other) : m_runs(other.m_runs), m_size(other.m_size) {}
    NodeRuns& operator=(NodeRuns const&) = delete;
    ~NodeRuns() { delete m_all.load(std::memory_order_relaxed); }

    std::size_t size() const { return m_size; }

    void push_back(position node) {
        std::byte* const address = reinterpret_cast<std::byte*>(node.m_links);
        if (auto* const all = m_all.load(std::memory_order_relaxed))
            all->push_back(node);
        if (!m_runs.empty() && m_runs.back().IsFollowedBy(address))
            ++m_runs.back().count;
        else
            m_runs.push_back({address, 1});
        ++m_size;
    }
    void clear() {
        m_runs.clear();
        m_size = 0;
        if (auto* const all = m_all.load(std::memory_order_relaxed))
            all->clear();
    }

    class iterator {
    public:
        position operator*() const { return At(m_run->first + m_index * sizeof(Node)); }
        iterator& operator++() {
            if (++m_index == m_run->count) {
                ++m_run;
                m_index = 0;
            }
            return *this;
        }
        bool operator==(iterator const&) const = default;

    private:
        friend class NodeRuns;
        explicit iterator(Run const* run) : m_run(run) {}
        Run const* m_run;
        std::size_t m_index = 0;
    };
    iterator begin() const { return iterator(m_runs.data()); }
    iterator end() const { return iterator(m_runs.data() + m_runs.size()); }

    // The same as a vector, which changes with the runs. May run in several threads at once. Throws
    // std::bad_alloc.
    std::vector<position> const& All() const {
        if (auto const* const all = m_all.load(std::memory_order_acquire))
            return *all;
        auto made = std::make_unique<std::vector<position>>();
        made->reserve(m_size);
        for (position const node : *this)
            made->push_back(node);
        std::vector<position>* winner = nullptr;
        if (m_all.compare_exchange_strong(winner, made.get(), std::memory_order_acq_rel))
            winner = made.release();
        return *winner;
    }

private:
    static position At(std::byte* address) { return position(reinterpret_cast<NodeLinks*>(address)); }

    std::vector<Run> m_runs;
    std::size_t m_size = 0;
    mutable std::atomic<std::vector<position>*> m_all = nullptr; // owned; null until somebody asks
};

} // namespace paramdb
