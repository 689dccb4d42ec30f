// The ordered map of the standard library.
#include "query_containers.h"

#include <functional>
#include <map>

namespace benchmarks {
namespace {

struct StdMaps {
    template <class V>
    using ByName = std::map<std::wstring, V, std::less<>>;
    template <class K, class V>
    using ByKey = std::map<K, V>;
    static constexpr bool is_ordered = true;
};

} // namespace

std::unique_ptr<Subject> StdMapSubject(CQtParamDistillery const& distillery) {
    return std::make_unique<ContainerSubject<StdMaps>>("std::map", distillery);
}

} // namespace benchmarks
