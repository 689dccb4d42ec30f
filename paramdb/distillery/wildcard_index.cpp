#include <paramdb/distillery/wildcard_index.h>

#include <algorithm>

namespace paramdb {

WildcardIndex::Products WildcardIndex::MakeProducts(Elements const& elements) {
    constexpr Products factors{0x9E3779B97F4A7C15, 0xC2B2AE3D27D4EB4F, 0x165667B19E3779F9,
                               0xD6E8FEB86659FD93, 0xA0761D6478BD642F, 0xE7037ED1A0B428DB};
    Products products;
    for (std::size_t element = 0; element < elements.size(); ++element)
        products[element] = static_cast<std::uint32_t>(elements[element]) * factors[element];
    return products;
}

bool WildcardIndex::Matches(Elements const& pattern, Elements const& key, unsigned int mask) {
    for (std::size_t element = 0; element < key.size(); ++element)
        if ((mask >> element & 1) != 0 && pattern[element] != key[element])
            return false;
    return true;
}

void WildcardIndex::Add(QClavis const& pattern) {
    Elements const& elements = pattern.elements();
    unsigned int mask = 0;
    for (std::size_t element = 0; element < elements.size(); ++element)
        if (elements[element] != Wildcard)
            mask |= 1u << element;
    auto group = std::ranges::find(m_groups, mask, &Group::mask);
    if (group == m_groups.end())
        group = m_groups.insert(group, {mask, {}, {}});
    group->entries.push_back({Hash(MakeProducts(elements), mask), elements, m_rows++});
    if (group->entries.size() * 2 > group->slots.size())
        Grow(*group);
    else
        Insert(*group, group->entries.size() - 1);
}

void WildcardIndex::Insert(Group& group, std::size_t entry) {
    std::size_t const last = group.slots.size() - 1; // sizes are powers of two
    std::size_t slot = group.entries[entry].hash & last;
    while (group.slots[slot] != 0)
        slot = (slot + 1) & last;
    group.slots[slot] = static_cast<std::uint32_t>(entry + 1);
}

void WildcardIndex::Grow(Group& group) {
    constexpr std::size_t smallest = 16;
    group.slots.assign(std::max(smallest, group.slots.size() * 2), 0);
    for (std::size_t entry = 0; entry < group.entries.size(); ++entry)
        Insert(group, entry);
}

std::vector<std::size_t> const& WildcardIndex::Find(QClavis const& key) {
    m_found.clear();
    Elements const& elements = key.elements();
    Products const products = MakeProducts(elements);
    for (Group const& group : m_groups) {
        std::size_t const last = group.slots.size() - 1;
        std::uint64_t const hash = Hash(products, group.mask);
        for (std::size_t slot = hash & last; group.slots[slot] != 0; slot = (slot + 1) & last) {
            Entry const& entry = group.entries[group.slots[slot] - 1];
            if (entry.hash == hash && Matches(entry.elements, elements, group.mask))
                m_found.push_back(entry.row);
        }
    }
    if (m_found.size() > 1)
        std::ranges::sort(m_found);
    return m_found;
}

} // namespace paramdb
