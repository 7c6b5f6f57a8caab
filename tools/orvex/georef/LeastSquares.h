// LeastSquares - small systems of linear equations with more equations than unknowns.
#pragma once

#include <optional>
#include <vector>

namespace orvex::tool {

/// Equations in a fixed number of unknowns, row by row.
class LinearSystem {
 public:
  explicit LinearSystem(std::size_t unknowns) : m_unknowns(unknowns) {}

  /// Adds the equation: coefficients times unknowns is `value`.
  void Add(const std::vector<double>& coefficients, double value);

  /// The unknowns for which the sum of the squared contradictions is least, by orthogonal reflections (Householder), so
  /// that no digits are lost to squared coefficients. Nothing when the equations do not determine them.
  std::optional<std::vector<double>> Solve() const;

 private:
  std::size_t m_unknowns;
  std::vector<std::vector<double>> m_rows;  // the value behind the coefficients
};

}  // namespace orvex::tool
