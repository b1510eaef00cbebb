#include "platform/Ranks.h"

#include <algorithm>
#include <numeric>

namespace cintal {

std::vector<std::size_t> OrderByRanks(const std::vector<int>& ranks, bool descending) {
    // A counting sort: linear, and stable as the order of equal texts must be.
    int top = 0;
    for (int r : ranks)
        top = std::max(top, r);
    std::vector<std::size_t> start(static_cast<std::size_t>(top) + 2, 0);
    auto slot = [&](int r) { return static_cast<std::size_t>(descending ? top - r : r); };
    for (int r : ranks)
        ++start[slot(r) + 1];
    std::partial_sum(start.begin(), start.end(), start.begin());
    std::vector<std::size_t> order(ranks.size());
    for (std::size_t i = 0; i < ranks.size(); ++i)
        order[start[slot(ranks[i])]++] = i;
    return order;
}

} // namespace cintal
