#pragma once
// Ordering by places already known: whoever knows the order of some texts
// (the catalogue's collation) hands over one number per text, and sorting by
// those numbers needs no text at all.

#include <cstddef>
#include <vector>

namespace cintal {

// Positions 0..n-1 ordered by their ranks, ascending or descending; equal
// ranks keep their order.
std::vector<std::size_t> OrderByRanks(const std::vector<int>& ranks, bool descending = false);

} // namespace cintal
