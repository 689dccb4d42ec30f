// An ordered map whose at() fails with the same text on every platform.
#pragma once

#include <map>
#include <stdexcept>

namespace paramdb {

template <class K, class V>
class CheckedMap : public std::map<K, V> {
public:
    using std::map<K, V>::map;

    // The value of the key. Throws std::out_of_range("invalid map<K, T> key") on a miss.
    V const& at(K const& key) const {
        auto const found = this->find(key);
        if (found == this->end())
            throw std::out_of_range("invalid map<K, T> key");
        return found->second;
    }
    V& at(K const& key) { return const_cast<V&>(static_cast<CheckedMap const&>(*this).at(key)); }
};

} // namespace paramdb
