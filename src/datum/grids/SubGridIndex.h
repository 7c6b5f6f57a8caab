// SubGridIndex - which of many rectangles is the first to hold a point, in a time that grows with the logarithm of
// their number, however they lie.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace orvex::detail {

/// Limits of a sub-grid, radians, longitudes positive west. Southern and eastern edges are its own.
struct SubGridLimits {
  double south, north, east, west;
};

class SubGridIndex {
 public:
  static constexpr std::uint32_t kNone = UINT32_MAX;

  /// Rectangles that are wider and higher than 0.
  explicit SubGridIndex(const std::vector<SubGridLimits>& rectangles);

  /// Place of the first rectangle that holds a point; where none does, of the first one on whose closing edges it lies.
  std::uint32_t First(double west, double north) const;

 private:
  /// The limits along one coordinate in order, and the pieces that they cut it into: piece 2i is the i-th limit, piece
  /// 2i + 1 what lies between it and the next one.
  class Axis {
   public:
    void Add(double limit) { m_limits.push_back(limit); }
    void Sort();
    /// -1 before the first limit.
    std::int64_t PieceOf(double value) const;
    std::size_t Pieces() const { return 2 * m_limits.size(); }

   private:
    std::vector<double> m_limits;
  };
  /// A rectangle's extent to the north, at a node of the tree whose extent to the west it spans.
  struct Span {
    std::uint32_t node, begin, end, place;
  };
  /// From a piece on to the next step, the first rectangle of a node.
  struct Step {
    std::uint32_t piece, place;
  };

  void Collect(const SubGridLimits& rectangle, std::uint32_t place, std::vector<Span>& spans) const;
  void AddSteps(const Span* span, const Span* last);
  std::uint32_t FirstIn(std::int64_t west, std::int64_t north) const;

  Axis m_west, m_north;
  std::vector<Step> m_steps;         // node by node
  std::vector<std::size_t> m_begin;  // of each node in m_steps, and the end of the last
};

}  // namespace orvex::detail
