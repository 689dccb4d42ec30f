#include <paramdb/keys/idx8_set.h>

namespace {

constexpr int Any = -1;
constexpr unsigned int TypeElement = 6;
constexpr unsigned int BenchElement = 7;

bool Holds(std::set<int> const& set, int value) {
    return set.contains(Any) || set.contains(value);
}

void Insert(std::set<int>& set, int value, bool any) {
    if (value != Any)
        set.insert(value);
    else if (any && !set.contains(Any))
        set = {Any};
}

void Intersect(std::set<int>& set, std::set<int> const& other) {
    std::erase_if(set, [&other](int value) { return !other.contains(value); });
}

void Unite(std::set<int>& set, std::set<int> const& other) {
    if (&set != &other)
        set.insert(other.begin(), other.end());
}

} // namespace

std::set<int>& CQIdx8Set::ElementSet(unsigned int element) {
    switch (element) {
    case TypeElement:
        return m_types;
    case BenchElement:
        return m_benches;
    default:
        return CClavisSet::ElementSet(element);
    }
}

std::set<int> const& CQIdx8Set::ElementSet(unsigned int element) const {
    switch (element) {
    case TypeElement:
        return m_types;
    case BenchElement:
        return m_benches;
    default:
        return CClavisSet::ElementSet(element);
    }
}

void CQIdx8Set::insert(QIdx8 const& key, bool any) {
    CClavisSet::insert(key.ToClavis(), any);
    insertTypeBench(key.type(), key.bench(), any);
}

void CQIdx8Set::insertTypeBench(int type, int bench, bool any) {
    Insert(m_types, type, any);
    Insert(m_benches, bench, any);
}

CQIdx8Set& CQIdx8Set::operator+=(QIdx8 const& key) {
    CClavisSet::operator+=(key.ToClavis());
    insertTypeBench(key.type(), key.bench(), false);
    return *this;
}

CQIdx8Set& CQIdx8Set::operator+=(CClavis const& key) {
    CClavisSet::operator+=(key);
    return *this;
}

CQIdx8Set& CQIdx8Set::operator-=(QIdx8 const& key) {
    CClavisSet::operator-=(key.ToClavis());
    m_types.erase(key.type());
    m_benches.erase(key.bench());
    return *this;
}

CQIdx8Set& CQIdx8Set::operator&=(CQIdx8Set const& other) {
    CClavisSet::operator&=(other);
    Intersect(m_types, other.m_types);
    Intersect(m_benches, other.m_benches);
    return *this;
}

CQIdx8Set& CQIdx8Set::operator|=(CQIdx8Set const& other) {
    CClavisSet::operator|=(other);
    Unite(m_types, other.m_types);
    Unite(m_benches, other.m_benches);
    return *this;
}

bool CQIdx8Set::contains(QIdx8 const& key) const {
    return contains(key.ToClavis()) && Holds(m_types, key.type()) && Holds(m_benches, key.bench());
}

bool CQIdx8Set::contains(CClavis const& key) const {
    return CClavisSet::operator&(key);
}

bool CQIdx8Set::contains(unsigned int element, int value) const {
    return Holds(ElementSet(element), value);
}

void CQIdx8Set::clear() noexcept {
    CClavisSet::clear();
    m_types.clear();
    m_benches.clear();
}

bool CQIdx8Set::valid() const noexcept {
    return CClavisSet::valid() && !m_types.empty() && !m_benches.empty();
}

bool CQIdx8Set::completeness_check(CQIdx8Set const& reference) {
    bool is_complete = CClavisSet::completeness_check(reference);
    is_complete &= CheckForCompleteness(m_types, reference.m_types);
    is_complete &= CheckForCompleteness(m_benches, reference.m_benches);
    return is_complete;
}
