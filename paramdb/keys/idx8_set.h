// Which values are selected of type, bench and the six elements of a key: what a range selection produces,
// and what a test against a key asks.
//
//     CQIdx8Set set;
//     set.insert(QIdx8(1, -1, 10, -1, -1, -1, -1, -1), true);   // type 1 and mode 10, all else any
//     set.contains(QIdx8(1, 7, 10, 1001, 3, 4, 5, 6));          // true
//
// The six sets of CClavisSet with its pairs, and a set each of types and of benches. -1 in a set stands for
// any value and may stand beside others; a set without values fits no key. In QIdx8 type and bench come
// first, in the numbers of the sets they come last: hosts rely on both orders.
//
// A plain value: no locks, const operations in any number of threads.
#pragma once

#include <paramdb/keys/q_idx8.h>
#include <paramdb/platform/core/export.h>
#include <paramdb/platform/signal/clavis_set.h>

#include <set>

class PARAMDB_API CQIdx8Set : public CClavisSet {
public:
    // The set of an element: 0 to 5 of the element of Clavis::qOrder, 6 of the types, 7 of the benches.
    // Throws std::out_of_range for any other number.
    [[nodiscard]] std::set<int>& ElementSet(unsigned int element);
    [[nodiscard]] std::set<int> const& ElementSet(unsigned int element) const;

    [[nodiscard]] std::set<int>& TypeSet() noexcept { return m_types; }
    [[nodiscard]] std::set<int> const& TypeSet() const noexcept { return m_types; }
    [[nodiscard]] std::set<int>& BenchSet() noexcept { return m_benches; }
    [[nodiscard]] std::set<int> const& BenchSet() const noexcept { return m_benches; }

    // Inserts the elements of the key. One that is -1 is left out unless `any` is set: then -1 replaces all
    // that its set holds, if it is not in there yet.
    void insert(QIdx8 const& key, bool any);
    // The same for type and bench alone.
    void insertTypeBench(int type, int bench, bool any);

    // Inserts the elements of the key that are not -1; a CClavis says nothing of type and bench.
    CQIdx8Set& operator+=(QIdx8 const& key);
    CQIdx8Set& operator+=(CClavis const& key);
    // Removes the elements of the key from their sets, -1 like any other.
    CQIdx8Set& operator-=(QIdx8 const& key);
    // Intersection and union, set by set; -1 is a value like any other here.
    CQIdx8Set& operator&=(CQIdx8Set const& other);
    CQIdx8Set& operator|=(CQIdx8Set const& other);

    // Whether each element of the key is in its set, or its set holds -1; for a CClavis type and bench are
    // not looked at.
    [[nodiscard]] bool contains(QIdx8 const& key) const;
    [[nodiscard]] bool contains(CClavis const& key) const;
    [[nodiscard]] bool operator&(QIdx8 const& key) const { return contains(key); }
    [[nodiscard]] bool operator&(CClavis const& key) const { return contains(key); }
    // The same for one element, numbered as for ElementSet, which it throws like.
    [[nodiscard]] bool contains(unsigned int element, int value) const;

    // Empties all sets, pairs included.
    void clear() noexcept;
    // Whether none of the eight sets is empty; pairs do not count.
    [[nodiscard]] bool valid() const noexcept;
    // CheckForCompleteness of each of the eight sets against the same set of the reference. All are checked,
    // and a complete one becomes -1 alone; true if all are complete.
    bool completeness_check(CQIdx8Set const& reference);

private:
    std::set<int> m_types;
    std::set<int> m_benches;
};
