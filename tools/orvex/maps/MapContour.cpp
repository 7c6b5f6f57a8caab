// MapContour - where a field of values on a grid exceeds a threshold, as closed curves.
#include "maps/MapContour.h"

#include <array>
#include <unordered_map>

namespace orvex::tool {

namespace {

/// The grid with a border all round that lies below every threshold. Its edges are numbered: two for each grid point,
/// to the right and down.
class Tracer {
 public:
  Tracer(const Field2D& field, double threshold)
      : m_field(field), m_threshold(threshold), m_columns(field.columns + 2), m_rows(field.rows + 2) {}

  void Trace(Pen& pen) {
    for (std::size_t row = 0; row + 1 < m_rows; ++row) {
      for (std::size_t column = 0; column + 1 < m_columns; ++column) AddCell(column, row);
    }
    while (!m_next.empty()) {
      const std::size_t start = m_next.begin()->first;
      for (std::size_t edge = start;;) {
        pen.Add(Crossing(edge));
        const auto found = m_next.find(edge);
        if (found == m_next.end()) break;
        edge = found->second;
        m_next.erase(found);
        if (edge == start) break;
      }
      pen.Finish(true);
    }
  }

 private:
  bool Inner(std::size_t column, std::size_t row) const {
    return column > 0 && row > 0 && column + 1 < m_columns && row + 1 < m_rows;
  }
  bool Above(std::size_t column, std::size_t row) const {
    return Inner(column, row) && m_field.At(column - 1, row - 1) > m_threshold;
  }
  std::size_t Right(std::size_t column, std::size_t row) const { return 2 * (row * m_columns + column); }
  std::size_t Down(std::size_t column, std::size_t row) const { return Right(column, row) + 1; }

  /// Links the edges of a cell at which a curve enters and leaves it, what is above on its right.
  void AddCell(std::size_t c, std::size_t r) {
    const std::array<bool, 4> above{Above(c, r), Above(c + 1, r), Above(c + 1, r + 1), Above(c, r + 1)};  // clockwise
    const std::array<std::size_t, 4> edges{Right(c, r), Down(c + 1, r), Right(c, r + 1), Down(c, r)};  // from corner i
    // Going clockwise round the cell, a curve leaves where corners rise above and enters where they fall below; saddles
    // keep their high corners apart.
    for (std::size_t i = 0; i < 4; ++i) {
      if (above[i] || !above[(i + 1) % 4]) continue;
      std::size_t k = (i + 1) % 4;
      while (above[(k + 1) % 4]) k = (k + 1) % 4;
      m_next[edges[k]] = edges[i];
    }
  }

  Spot Corner(std::size_t column, std::size_t row) const {
    return {m_field.origin.x + (static_cast<double>(column) - 1) * m_field.cell,
            m_field.origin.y + (static_cast<double>(row) - 1) * m_field.cell};
  }

  /// Where the threshold lies on an edge; on one to the border half way.
  Spot Crossing(std::size_t edge) const {
    const std::size_t point = edge / 2, column = point % m_columns, row = point / m_columns;
    const std::size_t column2 = column + (edge % 2 == 0), row2 = row + (edge % 2 == 1);
    const Spot a = Corner(column, row), b = Corner(column2, row2);
    double t = 0.5;
    if (Inner(column, row) && Inner(column2, row2)) {
      const double u = m_field.At(column - 1, row - 1), v = m_field.At(column2 - 1, row2 - 1);
      t = (m_threshold - u) / (v - u);
    }
    return {a.x + t * (b.x - a.x), a.y + t * (b.y - a.y)};
  }

  const Field2D& m_field;
  double m_threshold;
  std::size_t m_columns, m_rows;
  std::unordered_map<std::size_t, std::size_t> m_next;
};

}  // namespace

void TraceAbove(const Field2D& field, double threshold, Pen& pen) {
  Tracer(field, threshold).Trace(pen);
}

}  // namespace orvex::tool
