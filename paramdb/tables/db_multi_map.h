// The container of a table with several rows to a key, which stay in the order in which they came.
#pragma once

#include <functional>
#include <map>

template <class K, class V, class Less = std::less<K>>
class CDbMultiMap : public std::multimap<K, V, Less> {
public:
    using std::multimap<K, V, Less>::multimap;
};
