#include <paramdb/platform/signal/clavis_set.h>

#include <algorithm>
#include <stdexcept>

namespace {

constexpr int Any = -1;

using Pair = std::pair<int, int>;

bool Holds(std::set<int> const& set, int value) {
    return set.contains(Any) || set.contains(value);
}

bool Holds(std::set<Pair> const& set, int first, int second) {
    return set.contains({first, second}) || set.contains({first, Any}) || set.contains({Any, second}) ||
           set.contains({Any, Any});
}

bool Covers(Pair const& pattern, Pair const& pair) {
    return (pattern.first == Any || pattern.first == pair.first) &&
           (pattern.second == Any || pattern.second == pair.second);
}

void Insert(std::set<int>& set, int value, bool any) {
    if (value != Any)
        set.insert(value);
    else if (any && !set.contains(Any))
        set = {Any};
}

void Insert(std::set<Pair>& set, Pair const& pair, bool any) {
    bool const is_pattern = pair.first == Any || pair.second == Any;
    if (is_pattern) {
        if (!any || set.contains(pair))
            return;
        std::erase_if(set, [&pair](Pair const& other) { return Covers(pair, other); });
    }
    set.insert(pair);
}

template <class Value>
void Intersect(std::set<Value>& set, std::set<Value> const& other) {
    std::erase_if(set, [&other](Value const& value) { return !other.contains(value); });
}

template <class Value>
void Unite(std::set<Value>& set, std::set<Value> const& other) {
    if (&set != &other)
        set.insert(other.begin(), other.end());
}

// The set of that element of a constant or writable array.
template <class Sets>
auto& Element(Sets& sets, unsigned int element) {
    if (element >= sets.size())
        throw std::out_of_range("invalid key element");
    return sets[element];
}

} // namespace

std::set<int>& CClavisSet::ElementSet(unsigned int element) {
    return Element(m_elements, element);
}

std::set<int> const& CClavisSet::ElementSet(unsigned int element) const {
    return Element(m_elements, element);
}

void CClavisSet::insert(CClavis const& key, bool any) {
    for (int element = 0; element < Clavis::ElementCount; ++element)
        Insert(m_elements[static_cast<unsigned int>(element)], key[element], any);
}

void CClavisSet::insertLocaChan(int location, int channel, bool any) {
    Insert(m_loca_chan, {location, channel}, any);
}

void CClavisSet::insertInstrPar(int instrument, int parameter, bool any) {
    Insert(m_instr_param, {instrument, parameter}, any);
}

CClavisSet& CClavisSet::operator+=(CClavis const& key) {
    insert(key, false);
    return *this;
}

CClavisSet& CClavisSet::operator-=(CClavis const& key) {
    for (int element = 0; element < Clavis::ElementCount; ++element)
        m_elements[static_cast<unsigned int>(element)].erase(key[element]);
    return *this;
}

CClavisSet& CClavisSet::operator&=(CClavisSet const& other) {
    for (unsigned int element = 0; element < m_elements.size(); ++element)
        Intersect(m_elements[element], other.m_elements[element]);
    Intersect(m_loca_chan, other.m_loca_chan);
    Intersect(m_instr_param, other.m_instr_param);
    return *this;
}

CClavisSet& CClavisSet::operator|=(CClavisSet const& other) {
    for (unsigned int element = 0; element < m_elements.size(); ++element)
        Unite(m_elements[element], other.m_elements[element]);
    Unite(m_loca_chan, other.m_loca_chan);
    Unite(m_instr_param, other.m_instr_param);
    return *this;
}

bool CClavisSet::contains(CClavis const& key) const {
    for (int element = 0; element < Clavis::ElementCount; ++element)
        if (!Holds(m_elements[static_cast<unsigned int>(element)], key[element]))
            return false;
    return true;
}

bool CClavisSet::contains(unsigned int element, int value) const {
    return Holds(ElementSet(element), value);
}

bool CClavisSet::containsLocaChan(int location, int channel) const {
    return Holds(m_loca_chan, location, channel);
}

bool CClavisSet::containsInstrPar(int instrument, int parameter) const {
    return Holds(m_instr_param, instrument, parameter);
}

void CClavisSet::clear() noexcept {
    for (auto& set : m_elements)
        set.clear();
    m_loca_chan.clear();
    m_instr_param.clear();
}

bool CClavisSet::valid() const noexcept {
    return std::none_of(m_elements.begin(), m_elements.end(), [](auto const& set) { return set.empty(); });
}

bool CClavisSet::completeness_check(CClavisSet const& reference) {
    bool is_complete = true;
    for (unsigned int element = 0; element < m_elements.size(); ++element)
        is_complete &= CheckForCompleteness(m_elements[element], reference.m_elements[element]);
    return is_complete;
}

bool CClavisSet::CheckForCompleteness(std::set<int>& set, std::set<int> const& reference) {
    if (!set.contains(Any) && !std::includes(set.begin(), set.end(), reference.begin(), reference.end()))
        return false;
    set = {Any};
    return true;
}
