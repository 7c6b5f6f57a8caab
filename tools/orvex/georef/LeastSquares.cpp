// LeastSquares - small systems of linear equations with more equations than unknowns.
#include "georef/LeastSquares.h"

#include <cmath>

namespace orvex::tool {

namespace {

constexpr double kDependent = 1e-10;  // what is left of a column that is one of those before it, relative to itself

using Rows = std::vector<std::vector<double>>;

double NormOfColumn(const Rows& rows, std::size_t column, std::size_t first) {
  double squares = 0;
  for (std::size_t i = first; i < rows.size(); ++i) squares += rows[i][column] * rows[i][column];
  return std::sqrt(squares);
}

/// Reflects the rows from `pivot` on so that the column of that number is 0 below it; `norm` is that of the column
/// there.
void Reflect(Rows& rows, std::size_t pivot, double norm) {
  const double diagonal = rows[pivot][pivot] > 0 ? -norm : norm;  // the sign that cancels nothing
  std::vector<double> mirror(rows.size());
  for (std::size_t i = pivot; i < rows.size(); ++i) mirror[i] = rows[i][pivot];
  mirror[pivot] -= diagonal;
  const double half = -diagonal * mirror[pivot];  // half of the mirror's square
  for (std::size_t column = pivot; column < rows[pivot].size(); ++column) {
    double product = 0;
    for (std::size_t i = pivot; i < rows.size(); ++i) product += mirror[i] * rows[i][column];
    for (std::size_t i = pivot; i < rows.size(); ++i) rows[i][column] -= product / half * mirror[i];
  }
}

}  // namespace

void LinearSystem::Add(const std::vector<double>& coefficients, double value) {
  m_rows.push_back(coefficients);
  m_rows.back().push_back(value);
}

std::optional<std::vector<double>> LinearSystem::Solve() const {
  if (m_rows.size() < m_unknowns) return std::nullopt;
  Rows rows = m_rows;
  for (std::size_t k = 0; k < m_unknowns; ++k) {
    const double norm = NormOfColumn(rows, k, k);
    if (!(norm > kDependent * NormOfColumn(m_rows, k, 0))) return std::nullopt;
    Reflect(rows, k, norm);
  }
  std::vector<double> unknowns(m_unknowns);
  for (std::size_t k = m_unknowns; k-- > 0;) {
    double value = rows[k][m_unknowns];
    for (std::size_t j = k + 1; j < m_unknowns; ++j) value -= rows[k][j] * unknowns[j];
    unknowns[k] = value / rows[k][k];
  }
  return unknowns;
}

}  // namespace orvex::tool
