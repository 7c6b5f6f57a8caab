// LeastSquares - dense linear systems of control-point size.
#include "math/LeastSquares.h"

#include <cfloat>
#include <cmath>
#include <cstddef>
#include <limits>
#include <new>
#include <utility>

namespace orvex::detail {

namespace {

// A pivot below this part of its diagonal element is rounding error.
constexpr double kPivotTolerance = 8 * DBL_EPSILON;

// Columns that are eliminated together: the inner loops below do this many updates for every value they load.
constexpr std::size_t kPanel = 4;

std::size_t CheckedSize(std::size_t rows, std::size_t columns) {
  // Beyond this a vector would throw std::length_error, which nobody expects.
  constexpr std::size_t kLargest = std::numeric_limits<std::ptrdiff_t>::max() / sizeof(double);
  if (columns != 0 && rows > kLargest / columns) throw std::bad_alloc();
  return rows * columns;
}

double Dot(const double* a, const double* b, std::size_t begin, std::size_t end) {
  double sum = 0;
  for (std::size_t i = begin; i < end; ++i) sum += a[i] * b[i];
  return sum;
}

double Length(const double* a, std::size_t begin, std::size_t end) {
  return std::sqrt(Dot(a, a, begin, end));
}

// y <- y - factor x, elements begin to end.
void Subtract(double* __restrict y, double factor, const double* __restrict x, std::size_t begin, std::size_t end) {
  for (std::size_t i = begin; i < end; ++i) y[i] -= factor * x[i];
}

// Takes the factor's columns first to j - 1 out of the `Width` columns of `a` that start at j; j - first is a multiple
// of kPanel.
template <std::size_t Width>
void UpdatePanel(Matrix& a, std::size_t first, std::size_t j) {
  const std::size_t n = a.Rows();
  for (std::size_t k = first; k < j; k += kPanel) {
    const double* __restrict s0 = a.Column(k);
    const double* __restrict s1 = a.Column(k + 1);
    const double* __restrict s2 = a.Column(k + 2);
    const double* __restrict s3 = a.Column(k + 3);
    for (std::size_t pair = 0; pair < Width; pair += 2) {
      const std::size_t p = j + pair;
      double* __restrict t0 = a.Column(p);
      const double a0 = s0[p], a1 = s1[p], a2 = s2[p], a3 = s3[p];
      if (pair + 1 == Width) {
        for (std::size_t i = j; i < n; ++i) t0[i] -= a0 * s0[i] + a1 * s1[i] + (a2 * s2[i] + a3 * s3[i]);
        break;
      }
      double* __restrict t1 = a.Column(p + 1);
      const double b0 = s0[p + 1], b1 = s1[p + 1], b2 = s2[p + 1], b3 = s3[p + 1];
      for (std::size_t i = j; i < n; ++i) {
        t0[i] -= a0 * s0[i] + a1 * s1[i] + (a2 * s2[i] + a3 * s3[i]);
        t1[i] -= b0 * s0[i] + b1 * s1[i] + (b2 * s2[i] + b3 * s3[i]);
      }
    }
  }
}

}  // namespace

Matrix::Matrix(std::size_t rows, std::size_t columns)
    : m_rows(rows), m_columns(columns), m_values(CheckedSize(rows, columns)) {}

HouseholderQr::HouseholderQr(Matrix a, double tolerance)
    : m_a(std::move(a)),
      m_diagonal(m_a.Columns()),
      m_tau(m_a.Columns()),
      m_lengths(m_a.Columns()),
      m_columns(m_a.Columns()),
      m_fullRank(m_a.Rows() >= m_a.Columns() && Factor(tolerance)) {}

bool HouseholderQr::Factor(double tolerance) {
  const std::size_t rows = m_a.Rows(), columns = m_a.Columns();
  for (std::size_t j = 0; j < columns; ++j) {
    double* column = m_a.Column(j);
    m_columns[j] = j;
    m_lengths[j] = Length(column, 0, rows);
    if (!(m_lengths[j] > 0) || !std::isfinite(m_lengths[j])) return false;
    for (std::size_t i = 0; i < rows; ++i) column[i] /= m_lengths[j];
  }
  for (std::size_t k = 0; k < columns; ++k) {
    std::size_t pivot = k;
    double left = -1;
    for (std::size_t j = k; j < columns; ++j) {
      const double length = Length(m_a.Column(j), k, rows);
      if (length > left) {
        left = length;
        pivot = j;
      }
    }
    if (!(left > tolerance)) return false;
    if (pivot != k) {
      std::swap(m_columns[k], m_columns[pivot]);
      for (std::size_t i = 0; i < rows; ++i) std::swap(m_a.Column(k)[i], m_a.Column(pivot)[i]);
    }
    double* v = m_a.Column(k);
    const double beta = -std::copysign(left, v[k]);
    m_tau[k] = (beta - v[k]) / beta;
    m_diagonal[k] = beta;
    const double divisor = v[k] - beta;
    for (std::size_t i = k + 1; i < rows; ++i) v[i] /= divisor;
    for (std::size_t j = k + 1; j < columns; ++j) Reflect(k, m_a.Column(j));
  }
  return true;
}

void HouseholderQr::Reflect(std::size_t k, double* b) const {
  const double* v = m_a.Column(k);
  const std::size_t rows = m_a.Rows();
  const double factor = m_tau[k] * (b[k] + Dot(v, b, k + 1, rows));
  b[k] -= factor;
  Subtract(b, factor, v, k + 1, rows);
}

void HouseholderQr::ApplyTransposed(double* b) const {
  for (std::size_t k = 0; k < m_a.Columns(); ++k) Reflect(k, b);
}

void HouseholderQr::Apply(double* b) const {
  for (std::size_t k = m_a.Columns(); k-- > 0;) Reflect(k, b);
}

void HouseholderQr::Conjugate(Matrix& s) const {
  const std::size_t n = s.Rows();
  std::vector<double> v(n), w(n);
  for (std::size_t k = 0; k < m_a.Columns(); ++k) {
    // H s H = s - v w^T - w v^T with w = p - (tau v.p / 2) v and p = tau s v.
    for (std::size_t i = 0; i < n; ++i) v[i] = i < k ? 0 : i == k ? 1 : m_a.Column(k)[i];
    for (std::size_t j = 0; j < n; ++j) w[j] = m_tau[k] * Dot(s.Column(j), v.data(), k, n);
    Subtract(w.data(), m_tau[k] * Dot(v.data(), w.data(), k, n) / 2, v.data(), k, n);
    for (std::size_t j = 0; j < n; ++j) {
      double* column = s.Column(j);
      for (std::size_t i = 0; i < n; ++i) column[i] -= v[i] * w[j] + w[i] * v[j];
    }
  }
}

void HouseholderQr::Solve(const double* transposedB, double* x) const {
  const std::size_t columns = m_a.Columns();
  std::vector<double> y(transposedB, transposedB + columns);
  for (std::size_t k = columns; k-- > 0;) {
    y[k] /= m_diagonal[k];
    Subtract(y.data(), y[k], m_a.Column(k), 0, k);
    x[m_columns[k]] = y[k] / m_lengths[m_columns[k]];
  }
}

bool FactorPositiveDefinite(Matrix& a, std::size_t first) {
  const std::size_t n = a.Rows();
  for (std::size_t j = first; j < n; j += kPanel) {
    const std::size_t end = j + kPanel < n ? j + kPanel : n;
    double whole[kPanel] = {};
    for (std::size_t p = j; p < end; ++p) whole[p - j] = a.Column(p)[p];
    switch (end - j) {
      case 1:
        UpdatePanel<1>(a, first, j);
        break;
      case 2:
        UpdatePanel<2>(a, first, j);
        break;
      case 3:
        UpdatePanel<3>(a, first, j);
        break;
      default:
        UpdatePanel<kPanel>(a, first, j);
        break;
    }
    for (std::size_t p = j; p < end; ++p) {
      double* column = a.Column(p);
      for (std::size_t k = j; k < p; ++k) Subtract(column, a.Column(k)[p], a.Column(k), p, n);
      if (!(column[p] > kPivotTolerance * whole[p - j]) || !std::isfinite(column[p])) return false;
      const double scale = 1 / std::sqrt(column[p]);
      for (std::size_t i = p; i < n; ++i) column[i] *= scale;
    }
  }
  return true;
}

void SolvePositiveDefinite(const Matrix& factor, std::size_t first, double* b) {
  const std::size_t n = factor.Rows();
  for (std::size_t j = first; j < n; ++j) {
    b[j] /= factor.Column(j)[j];
    Subtract(b, b[j], factor.Column(j), j + 1, n);
  }
  for (std::size_t j = n; j-- > first;) {
    b[j] = (b[j] - Dot(factor.Column(j), b, j + 1, n)) / factor.Column(j)[j];
  }
}

}  // namespace orvex::detail
