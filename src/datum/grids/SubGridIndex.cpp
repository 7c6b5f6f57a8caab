// SubGridIndex - a segment tree over the pieces of one coordinate. A rectangle stands at the few nodes that make up its
// extent there; at each node the first rectangle is known for every piece of the other coordinate.
#include "datum/grids/SubGridIndex.h"

#include <algorithm>
#include <queue>
#include <tuple>
#include <utility>

namespace orvex::detail {

void SubGridIndex::Axis::Sort() {
  std::sort(m_limits.begin(), m_limits.end());
  m_limits.erase(std::unique(m_limits.begin(), m_limits.end()), m_limits.end());
}

std::int64_t SubGridIndex::Axis::PieceOf(double value) const {
  const auto next = std::lower_bound(m_limits.begin(), m_limits.end(), value);
  const std::int64_t piece = 2 * (next - m_limits.begin());
  return next != m_limits.end() && *next == value ? piece : piece - 1;
}

SubGridIndex::SubGridIndex(const std::vector<SubGridLimits>& rectangles) {
  for (const SubGridLimits& r : rectangles) {
    m_west.Add(r.east);
    m_west.Add(r.west);
    m_north.Add(r.south);
    m_north.Add(r.north);
  }
  m_west.Sort();
  m_north.Sort();
  std::vector<Span> spans;
  for (std::uint32_t place = 0; place < rectangles.size(); ++place) Collect(rectangles[place], place, spans);
  std::sort(spans.begin(), spans.end(),
            [](const Span& a, const Span& b) { return std::tie(a.node, a.begin) < std::tie(b.node, b.begin); });
  const Span *span = spans.data(), *const end = span + spans.size();
  for (std::size_t node = 0; node < 2 * m_west.Pieces(); ++node) {
    m_begin.push_back(m_steps.size());
    const Span* last = span;
    while (last != end && last->node == node) ++last;
    AddSteps(span, last);
    span = last;
  }
  m_begin.push_back(m_steps.size());
}

// Leaves stand from the number of pieces on; the parent of node k is k / 2.
void SubGridIndex::Collect(const SubGridLimits& rectangle, std::uint32_t place, std::vector<Span>& spans) const {
  const auto begin = static_cast<std::uint32_t>(m_north.PieceOf(rectangle.south));
  const auto end = static_cast<std::uint32_t>(m_north.PieceOf(rectangle.north));
  auto left = static_cast<std::uint32_t>(m_west.PieceOf(rectangle.east));
  auto right = static_cast<std::uint32_t>(m_west.PieceOf(rectangle.west));
  const auto pieces = static_cast<std::uint32_t>(m_west.Pieces());
  for (left += pieces, right += pieces; left < right; left /= 2, right /= 2) {
    if (left % 2 == 1) spans.push_back({left++, begin, end, place});
    if (right % 2 == 1) spans.push_back({--right, begin, end, place});
  }
}

// From south to north, with the rectangles that have begun and perhaps ended, the first one on top.
void SubGridIndex::AddSteps(const Span* span, const Span* last) {
  using Begun = std::pair<std::uint32_t, std::uint32_t>;  // place, end
  std::priority_queue<Begun, std::vector<Begun>, std::greater<>> begun;
  while (span != last || !begun.empty()) {
    std::uint32_t piece = begun.empty() ? span->begin : begun.top().second;
    if (span != last) piece = std::min(piece, span->begin);
    for (; span != last && span->begin <= piece; ++span) begun.emplace(span->place, span->end);
    while (!begun.empty() && begun.top().second <= piece) begun.pop();
    m_steps.push_back({piece, begun.empty() ? kNone : begun.top().first});
  }
}

// The first rectangle that holds a pair of pieces.
std::uint32_t SubGridIndex::FirstIn(std::int64_t west, std::int64_t north) const {
  std::uint32_t first = kNone;
  if (west < 0 || north < 0) return first;
  for (std::size_t node = static_cast<std::size_t>(west) + m_west.Pieces(); node > 0; node /= 2) {
    const auto begin = m_steps.begin() + static_cast<std::ptrdiff_t>(m_begin[node]);
    const auto end = m_steps.begin() + static_cast<std::ptrdiff_t>(m_begin[node + 1]);
    const auto next =
        std::upper_bound(begin, end, north, [](std::int64_t piece, const Step& step) { return piece < step.piece; });
    if (next != begin) first = std::min(first, std::prev(next)->place);
  }
  return first;
}

// A rectangle ends at a limit when it holds the piece before, but not the limit itself.
std::uint32_t SubGridIndex::First(double west, double north) const {
  const std::int64_t x = m_west.PieceOf(west), y = m_north.PieceOf(north);
  const std::uint32_t first = FirstIn(x, y);
  if (first != kNone) return first;
  const std::int64_t xBefore = x - (x % 2 == 0), yBefore = y - (y % 2 == 0);
  return std::min({FirstIn(xBefore, y), FirstIn(x, yBefore), FirstIn(xBefore, yBefore)});
}

}  // namespace orvex::detail
