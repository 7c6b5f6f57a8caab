// Points - coordinates where a host's arrays have them, and the blocks in which they are converted.
#pragma once

#include <cstddef>

#include <orvex/projection.h>

namespace orvex::python {

/// One coordinate of many points; the stride is in doubles and may be 0 (one value for all) or negative.
struct Column {
  double* first;
  std::ptrdiff_t stride;

  double& operator[](std::size_t i) const { return first[static_cast<std::ptrdiff_t>(i) * stride]; }
};

/// Both coordinates of `size` points.
struct Points {
  Column x, y;
  std::size_t size;

  Points Part(std::size_t from, std::size_t count) const { return {{&x[from], x.stride}, {&y[from], y.stride}, count}; }
  /// Whether x and y take turns, as in an array of the library's points.
  bool AreRecords() const { return x.stride == 2 && y.stride == 2 && y.first == x.first + 1; }
  /// Whether each coordinate has an array of its own.
  bool AreColumns() const { return x.stride == 1 && y.stride == 1; }
};

/// Points in either of the two layouts that the library converts.
class Block {
 public:
  /// The points must be records or columns.
  explicit Block(const Points& points) : m_points(points) {}
  bool operator==(const Block& other) const {
    return m_points.x.first == other.m_points.x.first && m_points.y.first == other.m_points.y.first;
  }

  const Points& All() const { return m_points; }
  double& X(std::size_t i) const { return m_points.x[i]; }
  double& Y(std::size_t i) const { return m_points.y[i]; }
  std::size_t Size() const { return m_points.size; }
  int Count() const { return static_cast<int>(m_points.size); }
  Block One(std::size_t i) const { return Block(m_points.Part(i, 1)); }
  bool AreRecords() const { return m_points.AreRecords(); }
  /// Records only: the points as the library's own type, which all its kinds of points share.
  template <class Point>
  Point* Records() const {
    static_assert(sizeof(Point) == 2 * sizeof(double));
    return reinterpret_cast<Point*>(m_points.x.first);
  }

 private:
  Points m_points;
};

/// Copies all points; the two must not overlap.
void Copy(const Points& from, const Points& to);
/// The same unless the two are one.
void Copy(const Block& from, const Block& to);

/// Puts NaN into both coordinates where the library left its marker in one. Answers how many points those are.
std::size_t Unmark(const Block& block);

}  // namespace orvex::python
