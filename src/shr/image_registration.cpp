// image_registration - warps: a least-squares affine map, and on top of it a radial-basis interpolation of what it
// leaves. Sources: Duchon 1977 and Wahba 1990 for thin plates and their side conditions; Shepard 1968 for inverse
// distances.
#include "shr/image_registration.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <span>

#include "math/LeastSquares.h"
#include "math/PlaneBox.h"
#include "points/Levels.h"
#include "shr/RadialBasis.h"
#include "support/Errors.h"
#include "support/FpGuard.h"

namespace orvex::detail {
ORVEX_AT_EVERY_LEVEL(WarpOperations, kWarpOperations)
}

namespace shr {

using detail::Basis;
using detail::Node;
using detail::WarpModel;
using orvex::detail::HouseholderQr;
using orvex::detail::Matrix;
using orvex::detail::PlaneBox;
using orvex::detail::PlaneFrame;
using orvex::detail::ViewOf;
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
      if (&other != &node) nearest = std::min(nearest, orvex::detail::SquaredDistance(other, node.u, node.v));
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

Matrix RadialMatrix(Basis basis, double spacing, const std::vector<Node>& nodes) {
  const std::size_t n = nodes.size();
  Matrix radial(n, n);
  orvex::detail::VisitBasis(basis, spacing, [&](const auto& phi) {
    for (std::size_t j = 0; j < n; ++j) {
      double* column = radial.Column(j);
      for (std::size_t i = 0; i < j; ++i) column[i] = radial.Column(i)[j];
      for (std::size_t i = j; i < n; ++i)
        column[i] = phi(orvex::detail::SquaredDistance(nodes[i], nodes[j].u, nodes[j].v));
    }
  });
  return radial;
}

const orvex::detail::WarpOperations& Operations() {
  using namespace orvex::detail;
  return AtLevel<ORVEX_LEVELS_OF(kWarpOperations)>();
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
  bool Factor(Basis basis, double spacing, const std::vector<Node>& nodes) {
    m_radial = RadialMatrix(basis, spacing, nodes);
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
  WarpModel model{};
  std::vector<Node> nodes;  // of the model

  bool Calibrate(Basis basis, std::span<const RPoint> src, std::span<const RPoint> dst);
};

bool CImageRegistration::State::Calibrate(Basis basis, std::span<const RPoint> src, std::span<const RPoint> dst) {
  const auto srcBox = PlaneBox::Around(src), dstBox = PlaneBox::Around(dst);
  const std::size_t n = src.size();
  if (!srcBox || !dstBox || n < 3 || n != dst.size()) return false;
  const PlaneFrame from = PlaneFrame::Isotropic(*srcBox), to = PlaneFrame::Destination(*dstBox);
  if (!from.Usable()) return false;
  for (const RPoint& p : src) nodes.push_back({from.U(p.x), from.V(p.y), 0, 0});
  const double spacing = MeanSpacing(nodes);
  if (!(spacing > 0)) return false;
  Interpolator interpolator(nodes, RankTolerance(*srcBox, from));
  if (!interpolator.FullRank()) return false;
  if (basis != Basis::InverseDistance && !interpolator.Factor(basis, spacing, nodes)) return false;
  model = {basis, from, to, spacing, {}, {}, nodes.data(), static_cast<int>(n)};

  // The weights are zero to begin with, so the first round fits the destinations themselves.
  for (int round = 0;; ++round) {
    std::vector<RPoint> images(n);
    for (std::size_t i = 0; i < n; ++i) images[i] = {nodes[i].u, nodes[i].v};
    Operations().normalised(ViewOf(images.data()), static_cast<int>(n), model);
    std::vector<double> missX(n), missY(n);
    double largest = 0;
    for (std::size_t i = 0; i < n; ++i) {
      missX[i] = to.U(dst[i].x) - images[i].x;
      missY[i] = to.V(dst[i].y) - images[i].y;
      if (!std::isfinite(missX[i]) || !std::isfinite(missY[i])) return false;
      largest = std::max({largest, std::fabs(missX[i]), std::fabs(missY[i])});
    }
    if (round == kRounds) return largest <= kLargestMiss;
    double shiftX[3], shiftY[3];
    interpolator.Solve(missX.data(), shiftX);
    interpolator.Solve(missY.data(), shiftY);
    for (std::size_t k = 0; k < 3; ++k) {
      model.affineX[k] += shiftX[k];
      model.affineY[k] += shiftY[k];
    }
    for (std::size_t i = 0; i < n; ++i) {
      nodes[i].weightX += missX[i];
      nodes[i].weightY += missY[i];
    }
  }
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
    if (!state->Calibrate(static_cast<Basis>(method), Copy(src), Copy(dst))) return WM_NONE;
    m_state = std::move(state);
    return method;
  });
}

RPoint CImageRegistration::Transform(const RPoint& pt) const {
  RPoint p = pt;
  Transform(&p, 1);
  return p;
}

void CImageRegistration::Transform(RPoint* pts, int count) const {
  if (m_state == nullptr || pts == nullptr) return;
  const orvex::detail::FpGuard guard;
  Operations().transform(ViewOf(pts), count, m_state->model);
}

}  // namespace shr

void orvex::detail::WarpAccess::TransformScreened(const shr::CImageRegistration& registration, const PointView& points,
                                                  int count) {
  if (registration.m_state != nullptr) shr::Operations().screened(points, count, registration.m_state->model);
}
