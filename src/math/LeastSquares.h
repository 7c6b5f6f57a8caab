// LeastSquares - dense linear systems of control-point size: Householder QR with a rank test, and blocked Cholesky.
#pragma once

#include <cstddef>
#include <vector>

namespace orvex::detail {

/// Dense matrix of zeros to begin with, stored by columns. Throws std::bad_alloc when it cannot be held.
class Matrix {
 public:
  Matrix(std::size_t rows, std::size_t columns);

  std::size_t Rows() const { return m_rows; }
  std::size_t Columns() const { return m_columns; }
  double* Column(std::size_t j) { return m_values.data() + j * m_rows; }
  const double* Column(std::size_t j) const { return m_values.data() + j * m_rows; }

 private:
  std::size_t m_rows, m_columns;
  std::vector<double> m_values;
};

/// QR factors of a matrix with at least as many rows as columns. Columns are scaled to unit length and taken in the
/// order of what is left of them once the earlier ones are projected out (Golub and Van Loan, Matrix
/// Computations, 5.4.2). O(rows columns^2).
class HouseholderQr {
 public:
  /// A column of which no more than `tolerance` of its length is left counts as dependent on the others.
  HouseholderQr(Matrix a, double tolerance);

  /// False when a column depends on the others, or is zero or not finite; nothing else may be called then.
  bool FullRank() const { return m_fullRank; }
  std::size_t Rows() const { return m_a.Rows(); }

  /// b <- Q^T b and b <- Q b, for a vector of as many elements as the matrix has rows.
  void ApplyTransposed(double* b) const;
  void Apply(double* b) const;
  /// s <- Q^T s Q for a symmetric s, both triangles kept.
  void Conjugate(Matrix& s) const;
  /// Least-squares solution x, one value for each column, from Q^T b.
  void Solve(const double* transposedB, double* x) const;

 private:
  bool Factor(double tolerance);
  void Reflect(std::size_t k, double* b) const;

  Matrix m_a;                          // reflectors below the diagonal (their first element is 1), R above it
  std::vector<double> m_diagonal;      // of R
  std::vector<double> m_tau;           // H_k = I - tau v v^T
  std::vector<double> m_lengths;       // of the columns as they came
  std::vector<std::size_t> m_columns;  // which column stands where
  bool m_fullRank;
};

/// Lower Cholesky factor, in place, of the symmetric matrix made of the rows and columns of `a` from `first` on; only
/// the lower triangle is read and written. False when that matrix is not positive definite up to rounding. O(n^3 / 3).
bool FactorPositiveDefinite(Matrix& a, std::size_t first);

/// The solution, by that factor, for a right-hand side that stands in b from element `first` on.
void SolvePositiveDefinite(const Matrix& factor, std::size_t first, double* b);

}  // namespace orvex::detail
