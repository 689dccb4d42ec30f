// The container of tables that change after loading: a tree with no key twice and rows that stay where they
// are.
#pragma once

#include <paramdb/platform/core/export.h>

#include <functional>
#include <map>
#include <memory_resource>
#include <utility>

namespace paramdb {

// The pool behind the trees of all tables. It has no lock: tables are filled and emptied by one thread at a
// time.
PARAMDB_API std::pmr::memory_resource& TreeMemory();

} // namespace paramdb

template <class K, class V, class Less = std::less<K>>
class CUniqueTreeMap : public std::map<K, V, Less, std::pmr::polymorphic_allocator<std::pair<K const, V>>> {
    using Map = std::map<K, V, Less, std::pmr::polymorphic_allocator<std::pair<K const, V>>>;

public:
    CUniqueTreeMap() : Map(&paramdb::TreeMemory()) {}
};
