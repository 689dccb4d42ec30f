// Abseil: a flat hash map, and a tree whose nodes hold many rows.
#include "query_containers.h"

#include <absl/container/btree_map.h>
#include <absl/container/flat_hash_map.h>
#include <absl/hash/hash.h>
#include <absl/strings/string_view.h>
#include <functional>

namespace benchmarks {
namespace {

// A wide name hashed as its bytes, which is the library's own hash of texts.
struct NameHash {
    using is_transparent = void;
    std::size_t operator()(std::wstring_view name) const {
        return absl::Hash<absl::string_view>()(
            {reinterpret_cast<char const*>(name.data()), name.size() * sizeof(wchar_t)});
    }
};

struct FlatHashMaps {
    template <class V>
    using ByName = absl::flat_hash_map<std::wstring, V, NameHash, std::equal_to<>>;
    template <class K, class V>
    using ByKey = absl::flat_hash_map<K, V>;
    static constexpr bool is_ordered = false;
};

struct BtreeMaps {
    template <class V>
    using ByName = absl::btree_map<std::wstring, V, std::less<>>;
    template <class K, class V>
    using ByKey = absl::btree_map<K, V>;
    static constexpr bool is_ordered = true;
};

} // namespace

std::unique_ptr<Subject> AbslFlatHashMapSubject(CQtParamDistillery const& distillery) {
    return std::make_unique<ContainerSubject<FlatHashMaps>>("flat_hash_map", distillery);
}

std::unique_ptr<Subject> AbslBtreeMapSubject(CQtParamDistillery const& distillery) {
    return std::make_unique<ContainerSubject<BtreeMaps>>("btree_map", distillery);
}

} // namespace benchmarks
