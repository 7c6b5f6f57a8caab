// FirstMatch - the search of a table in its order.
#pragma once

#include <algorithm>
#include <cstddef>
#include <span>

namespace orvex::detail {

/// First row that meets the condition; null when there is none.
template <class Row, std::size_t N, class Condition>
const Row* FirstMatch(std::span<const Row, N> rows, Condition condition) {
  const auto found = std::find_if(rows.begin(), rows.end(), condition);
  return found != rows.end() ? &*found : nullptr;
}

}  // namespace orvex::detail
