// image_registration - warps: a least-squares affine map, and on top of it a radial-basis interpolation of what it
// leaves. Sources: Duchon 1977 and Wahba 1990 for thin plates and their side conditions; Shepard 1968 for inverse
// distances.
#include "shr/image_registration.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <span>

#include "math/LeastSquares.h"
#include "math/PlaneFrame.h"
#include "shr/RadialBasis.h"
#include "support/Errors.h"
#include "support/FpGuard.h"

namespace shr {

using detail::Node;
using orvex::detail::HouseholderQr;
using orvex::detail::Matrix;
using orvex::detail::PlaneBox;
using orvex::detail::PlaneFrame;
using orvex::detail::WithinMemory;

namespace {

constexpr char kSource[] = "ImageRegistration";
constexpr int kLineNoPoints = 20, kLineNoSystem = 40;  // reported when memory runs out

// A warp that misses a control by more than this part of the destination's extent is refused: its system was singular
// but for rounding.
constexpr double kLargestMiss = 1e-8;

// The second round takes up what rounding has left of the first.
constexpr int kRounds = 2;

std::vector<RPoint> Copy(const RPoints& points) {
  std::vector<RPoint> copy;
  copy.reserve(static_cast<std::size_t>(points.Count()));
  for (int i = 0; i < points.Count(); ++i) copy.push_back(points[i]);
  return copy;
}

// Mean distance of the nodes from their nearest neighbours; 0 when two coincide.
double MeanSpacing(const std::vector<Node>& nodes) {
  double sum = 0;
  for (const Node& node : nodes) {
    double nearest = DBL_MAX;
    for (const Node& other : nodes) {
      if (&other != &node) nearest = std::min(nearest, detail::SquaredDistance(other, node.u, node.v));
    }
    if (!(nearest > 0)) return 0;
    sum += std::sqrt(nearest);
  }
  return sum / static_cast<double>(nodes.size());
}

Matrix AffineDesign(const std::vector<Node>& nodes) {
  Matrix design(nodes.size(), 3);
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    design.Column(0)[i] = 1;
    design.Column(1)[i] = nodes[i].u;
    design.Column(2)[i] = nodes[i].v;
  }
  return design;
}

Matrix RadialMatrix(WarpingMethod method, double spacing, const std::vector<Node>& nodes) {
  const std::size_t n = nodes.size();
  Matrix radial(n, n);
  detail::VisitBasis(method, spacing, [&](const auto& basis) {
    for (std::size_t j = 0; j < n; ++j) {
      double* column = radial.Column(j);
      for (std::size_t i = 0; i < j; ++i) column[i] = radial.Column(i)[j];
      for (std::size_t i = j; i < n; ++i) column[i] = basis(detail::SquaredDistance(nodes[i], nodes[j].u, nodes[j].v));
    }
  });
  return radial;
}

// Interpolation of values at the nodes by an affine part and radial functions whose weights w fulfil the side
// conditions P^T w = 0 for P = (1 u v), that is w = Q (0 y) with the Q of P. The matrix of every one of the radial
// functions is positive definite on those w, so y follows by Cholesky instead of an indefinite system in w and the
// affine part together.
class Interpolator {
 public:
  Interpolator(const std::vector<Node>& nodes, double rankTolerance)
      : m_affine(AffineDesign(nodes), rankTolerance), m_radial(0, 0) {}

  bool FullRank() const { return m_affine.FullRank(); }

  // Adds the radial functions; without them the weights are what the affine part leaves. False for a singular system.
  bool Factor(WarpingMethod method, double spacing, const std::vector<Node>& nodes) {
    m_radial = RadialMatrix(method, spacing, nodes);
    m_affine.Conjugate(m_radial);
    return FactorPositiveDefinite(m_radial, 3);
  }

  // Affine part and weights for one value at each node; the weights replace the values.
  void Solve(double* values, double* affine) const {
    m_affine.ApplyTransposed(values);
    if (const std::size_t n = m_radial.Rows(); n != 0) {
      SolvePositiveDefinite(m_radial, 3, values);
      for (std::size_t k = 0; k < 3; ++k) {  // the affine part leaves room for the radial sum
        for (std::size_t i = 3; i < n; ++i) values[k] -= m_radial.Column(k)[i] * values[i];
      }
    }
    m_affine.Solve(values, affine);
    std::fill(values, values + 3, 0.0);
    m_affine.Apply(values);
  }

 private:
  HouseholderQr m_affine;
  Matrix m_radial;  // Q^T (radial functions at the nodes) Q; its Cholesky factor from row and column 3 on
};

}  // namespace

struct CImageRegistration::State {
  WarpingMethod method = WM_NONE;
  PlaneFrame from{}, to{};  // normalised source and destination coordinates
  double spacing = 0;       // s, in normalised units
  double affineX[3] = {};   // of 1, u, v
  double affineY[3] = {};
  std::vector<Node> nodes;

  bool Calibrate(std::span<const RPoint> src, std::span<const RPoint> dst);
  RPoint Transform(const RPoint& pt) const;

 private:
  RPoint Normalised(double u, double v) const;
};

bool CImageRegistration::State::Calibrate(std::span<const RPoint> src, std::span<const RPoint> dst) {
  const auto srcBox = PlaneBox::Around(src), dstBox = PlaneBox::Around(dst);
  const std::size_t n = src.size();
  if (!srcBox || !dstBox || n < 3 || n != dst.size()) return false;
  from = PlaneFrame::Isotropic(*srcBox);
  to = PlaneFrame::Destination(*dstBox);
  if (!from.Usable()) return false;
  for (const RPoint& p : src) nodes.push_back({from.U(p.x), from.V(p.y), 0, 0});
  spacing = MeanSpacing(nodes);
  if (!(spacing > 0)) return false;
  Interpolator interpolator(nodes, RankTolerance(*srcBox, from));
  if (!interpolator.FullRank()) return false;
  if (method != WM_INVERSE_DISTANCE && !interpolator.Factor(method, spacing, nodes)) return false;

  // The weights are zero to begin with, so the first round fits the destinations themselves.
  for (int round = 0;; ++round) {
    std::vector<double> missX(n), missY(n);
    double largest = 0;
    for (std::size_t i = 0; i < n; ++i) {
      const RPoint p = Normalised(nodes[i].u, nodes[i].v);
      missX[i] = to.U(dst[i].x) - p.x;
      missY[i] = to.V(dst[i].y) - p.y;
      if (!std::isfinite(missX[i]) || !std::isfinite(missY[i])) return false;
      largest = std::max({largest, std::fabs(missX[i]), std::fabs(missY[i])});
    }
    if (round == kRounds) return largest <= kLargestMiss;
    double shiftX[3], shiftY[3];
    interpolator.Solve(missX.data(), shiftX);
    interpolator.Solve(missY.data(), shiftY);
    for (std::size_t k = 0; k < 3; ++k) {
      affineX[k] += shiftX[k];
      affineY[k] += shiftY[k];
    }
    for (std::size_t i = 0; i < n; ++i) {
      nodes[i].weightX += missX[i];
      nodes[i].weightY += missY[i];
    }
  }
}

RPoint CImageRegistration::State::Normalised(double u, double v) const {
  const RPoint bend = method == WM_INVERSE_DISTANCE ? detail::InverseDistanceMean(nodes, u, v)
                                                    : detail::RadialSum(method, spacing, nodes, u, v);
  return {affineX[0] + (affineX[1] * u + affineX[2] * v) + bend.x,
          affineY[0] + (affineY[1] * u + affineY[2] * v) + bend.y};
}

RPoint CImageRegistration::State::Transform(const RPoint& pt) const {
  const RPoint p = Normalised(from.U(pt.x), from.V(pt.y));
  return {to.cx + p.x / to.kx, to.cy + p.y / to.ky};
}

RPoints::RPoints() = default;
RPoints::RPoints(const RPoints& other) {
  *this = other;
}
RPoints::RPoints(RPoints&&) noexcept = default;
RPoints& RPoints::operator=(const RPoints& other) {
  WithinMemory(kSource, kLineNoPoints, [&] { m_points = other.m_points; });
  return *this;
}
RPoints& RPoints::operator=(RPoints&&) noexcept = default;
RPoints::~RPoints() = default;

void RPoints::Append(const RPoint& point) {
  WithinMemory(kSource, kLineNoPoints, [&] { m_points.push_back(point); });
}

CImageRegistration::CImageRegistration() = default;
CImageRegistration::~CImageRegistration() = default;

WarpingMethod CImageRegistration::Calibrate(const RPoints& src, const RPoints& dst, WarpingMethod method) {
  m_state.reset();
  if (method < WM_THIN_PLATE || method > WM_INVERSE_DISTANCE) return WM_NONE;
  const orvex::detail::FpGuard guard;
  return WithinMemory(kSource, kLineNoSystem, [&] {
    auto state = std::make_unique<State>();
    state->method = method;
    if (!state->Calibrate(Copy(src), Copy(dst))) return WM_NONE;
    m_state = std::move(state);
    return method;
  });
}

RPoint CImageRegistration::Transform(const RPoint& pt) const {
  if (m_state == nullptr) return pt;
  const orvex::detail::FpGuard guard;
  return m_state->Transform(pt);
}

void CImageRegistration::Transform(RPoint* pts, int count) const {
  if (m_state == nullptr || pts == nullptr) return;
  const orvex::detail::FpGuard guard;
  for (int i = 0; i < count; ++i) pts[i] = m_state->Transform(pts[i]);
}

}  // namespace shr
