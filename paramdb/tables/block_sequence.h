// A sequence into which rows are inserted anywhere: in blocks, so that an insertion moves the rows of one
// block instead of all rows behind it.
//
// With n rows an insertion costs the square root of n in place of n. What it is for are rows that have no
// order of their own, so that nothing but inserting one after the other tells their places.
#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>
#include <vector>

namespace paramdb {

template <class Row>
class BlockSequence {
public:
    std::size_t size() const { return m_ends.empty() ? 0 : m_ends.back(); }

    Row const& operator[](std::size_t place) const {
        std::size_t const block = BlockOf(place);
        return m_blocks[block][place - BeginOf(block)];
    }

    // Puts the row before the one at that place, or at the end.
    void Insert(std::size_t place, Row row) {
        if (m_blocks.empty()) {
            m_blocks.reserve(1);
            m_ends.reserve(1);
            m_blocks.emplace_back();
            m_ends.push_back(0);
        }
        std::size_t const block = std::min(BlockOf(place), m_blocks.size() - 1);
        auto& rows = m_blocks[block];
        rows.insert(rows.begin() + static_cast<std::ptrdiff_t>(place - BeginOf(block)), std::move(row));
        for (std::size_t later = block; later < m_ends.size(); ++later)
            ++m_ends[later];
        if (rows.size() >= MostRows)
            Split(block);
    }

    // Hands out all rows in their order and is empty afterwards.
    template <class Take>
    void Drain(Take const& take) {
        for (auto& rows : m_blocks)
            for (Row& row : rows)
                take(std::move(row));
        m_blocks.clear();
        m_ends.clear();
    }

private:
    static constexpr std::size_t MostRows = 1024; // of a block

    std::size_t BlockOf(std::size_t place) const {
        return static_cast<std::size_t>(std::upper_bound(m_ends.begin(), m_ends.end(), place) -
                                        m_ends.begin());
    }
    std::size_t BeginOf(std::size_t block) const { return block == 0 ? 0 : m_ends[block - 1]; }

    // All memory is taken before anything changes.
    void Split(std::size_t block) {
        m_blocks.reserve(m_blocks.size() + 1);
        m_ends.reserve(m_ends.size() + 1);
        auto const at = [](auto& values, std::size_t place) {
            return values.begin() + static_cast<std::ptrdiff_t>(place);
        };
        std::vector<Row> behind;
        behind.reserve(MostRows);
        auto& rows = m_blocks[block];
        std::move(at(rows, MostRows / 2), rows.end(), std::back_inserter(behind));
        rows.erase(at(rows, MostRows / 2), rows.end());
        m_ends.insert(at(m_ends, block), BeginOf(block) + rows.size());
        m_blocks.insert(at(m_blocks, block + 1), std::move(behind));
    }

    std::vector<std::vector<Row>> m_blocks; // none is empty but that of an empty sequence
    std::vector<std::size_t> m_ends;        // the number of rows up to the end of each block
};

} // namespace paramdb
