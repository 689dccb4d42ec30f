// Which values are selected, element by element, of the six-part key of the measurement data.
//
//     CClavisSet set;
//     set.insert(key, true);   // -1 in the key: any value of that element
//     if (set & other) ...     // every element of `other` is selected
//
// Six sets of values, one for each element in the order of Clavis::qOrder, and beside them two sets of pairs:
// location with channel, instrument with instrument parameter. In a set of values -1 stands for any value; it
// may stand beside others. In a stored pair -1 stands for any value of its half. Tests of keys look at the
// six sets alone, the pairs answer only containsLocaChan and containsInstrPar.
//
// A plain value: no locks, const operations in any number of threads.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/platform/signal/clavis.h>

#include <array>
#include <set>
#include <utility>

class PARAMDB_API CClavisSet {
public:
    // The set of an element, one of Clavis::qOrder. Throws std::out_of_range for any other element.
    [[nodiscard]] std::set<int>& ElementSet(unsigned int element);
    [[nodiscard]] std::set<int> const& ElementSet(unsigned int element) const;

    // The pairs: location and channel, instrument and instrument parameter.
    [[nodiscard]] std::set<std::pair<int, int>>& LocaChanSet() noexcept { return m_loca_chan; }
    [[nodiscard]] std::set<std::pair<int, int>> const& LocaChanSet() const noexcept { return m_loca_chan; }
    [[nodiscard]] std::set<std::pair<int, int>>& InstrParamSet() noexcept { return m_instr_param; }
    [[nodiscard]] std::set<std::pair<int, int>> const& InstrParamSet() const noexcept {
        return m_instr_param;
    }

    // Inserts the elements of the key. One that is -1 is left out unless `any` is set: then -1 replaces all
    // that its set holds, if it is not in there yet.
    void insert(CClavis const& key, bool any);
    // Inserts a pair. One with -1 in it is left out unless `any` is set: then it replaces the pairs that it
    // covers, if it is not in there yet.
    void insertLocaChan(int location, int channel, bool any);
    void insertInstrPar(int instrument, int parameter, bool any);

    // Inserts the elements of the key that are not -1.
    CClavisSet& operator+=(CClavis const& key);
    // Removes the elements of the key from their sets, -1 like any other.
    CClavisSet& operator-=(CClavis const& key);
    // Intersection and union, set by set, pairs included; -1 is a value like any other here.
    CClavisSet& operator&=(CClavisSet const& other);
    CClavisSet& operator|=(CClavisSet const& other);

    // Whether each element of the key is in its set, or its set holds -1. An empty set fits no key.
    [[nodiscard]] bool contains(CClavis const& key) const;
    [[nodiscard]] bool operator&(CClavis const& key) const { return contains(key); }
    // The same for one element; throws as ElementSet does.
    [[nodiscard]] bool contains(unsigned int element, int value) const;
    // Whether a stored pair fits these values.
    [[nodiscard]] bool containsLocaChan(int location, int channel) const;
    [[nodiscard]] bool containsInstrPar(int instrument, int parameter) const;

    // Empties all sets, pairs included.
    void clear() noexcept;
    // Whether none of the six sets is empty.
    [[nodiscard]] bool valid() const noexcept;

    // CheckForCompleteness of each of the six sets against the same set of the reference. All are checked;
    // true if all are complete.
    bool completeness_check(CClavisSet const& reference);
    // Whether the set holds -1 or every value of the reference; -1 is then all that it holds. Any set holds
    // every value of an empty reference.
    static bool CheckForCompleteness(std::set<int>& set, std::set<int> const& reference);

private:
    std::array<std::set<int>, Clavis::ElementCount> m_elements;
    std::set<std::pair<int, int>> m_loca_chan;
    std::set<std::pair<int, int>> m_instr_param;
};
