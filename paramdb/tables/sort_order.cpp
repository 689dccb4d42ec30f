#include <paramdb/tables/sort_order.h>

#include <algorithm>
#include <numeric>

namespace paramdb {

std::vector<std::size_t>
StableUniqueOrder(std::size_t count, std::function<bool(std::size_t left, std::size_t right)> const& less) {
    std::vector<std::size_t> order(count);
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), std::cref(less));
    auto const repeated = std::unique(
        order.begin(), order.end(), [&](std::size_t left, std::size_t right) { return !less(left, right); });
    order.erase(repeated, order.end());
    return order;
}

} // namespace paramdb
