// System - the twelve methods: which fit and which evaluation each one is.
#include "georef/System.h"

#include "georef/GeoCoeff.h"
#include "georef/GeoHelmert.h"
#include "georef/GeoOrder3.h"
#include "points/Levels.h"
#include "shr/WarpPoints.h"
#include "support/Log.h"

namespace orvex::detail {

ORVEX_AT_EVERY_LEVEL(PlaneOperations, kPlaneOperations)

namespace {

OrderCode OrderOf(TransformMethod method) {
  switch (method) {
    case RM_AFFINEPOLYNOMIAL:
      return OrderCode::Affine;
    case RM_POLYNOMIAL1:
      return OrderCode::Bilinear;
    case RM_POLYNOMIAL2:
      return OrderCode::Second;
    default:
      return OrderCode::Third;
  }
}

shr::WarpingMethod WarpOf(TransformMethod method) {
  return static_cast<shr::WarpingMethod>(method - RM_THINPLATE);
}

bool Calibrate(System& system) {
  shr::RPoints source, destination;
  const Controls controls = system.ControlPoints();
  for (const GEOREFPOINT& p : controls.source) source.Append({p.x, p.y});
  for (const GEOREFPOINT& p : controls.destination) destination.Append({p.x, p.y});
  const shr::WarpingMethod wanted = WarpOf(system.record.Method);
  return system.registration->Calibrate(source, destination, wanted) == wanted;
}

// Destinations near the largest number there is can make a fit overflow, even at the controls.
bool ImagesFinite(const System& system) {
  for (GEOREFPOINT p : system.ControlPoints().source) {
    if (!Forward(system, &p, 1) || p.x == DBL_MAX) return false;
  }
  return true;
}

}  // namespace

void TraceControls(const char* heading, const Controls& controls) {
  if (!LogEnabled()) return;
  Trace("%s", heading);
  for (std::size_t i = 0; i < controls.source.size(); ++i) {
    const GEOREFPOINT s = controls.source[i], d = controls.destination[i];
    Trace("Control %2d: sx=%6.2f sy=%6.2f dx=%6.2f dy=%6.2f\n", static_cast<int>(i), s.x, s.y, d.x, d.y);
  }
}

Controls System::ControlPoints() const {
  const int count = record.nControls;
  if (count < 1 || record.pSrc == nullptr || record.pDst == nullptr) return {};
  const auto size = static_cast<std::size_t>(count);
  return {{record.pSrc, size}, {record.pDst, size}};
}

void SystemDeleter::operator()(System* system) const {
  std::free(system->record.pSrc);
  std::free(system->record.pDst);
  delete system->registration;
  std::free(system);
}

bool FitSystem(System& system) {
  const TransformMethod method = system.record.Method;
  switch (method) {
    case RM_HELMERT:
      return InitializeHelmert(system.ControlPoints(), system.fit) && ImagesFinite(system);
    case RM_AFFINEPOLYNOMIAL:
    case RM_POLYNOMIAL1:
    case RM_POLYNOMIAL2:
    case RM_POLYNOMIAL3:
      return InitializeOrder3(OrderOf(method), system.ControlPoints(), system.fit) && ImagesFinite(system);
    case RM_AFFINECOEFFICIENTS:
      return true;
    case RM_THINPLATE:
    case RM_NATURALCUBIC:
    case RM_MARCOV:
    case RM_EXPONENTIAL:
    case RM_RATIONALQUADRATIC:
    case RM_INVERSEDISTANCE:
      return Calibrate(system);
    default:
      return false;
  }
}

bool Forward(const System& system, GEOREFPOINT* pts, int n) {
  const TransformMethod method = system.record.Method;
  const PointView points = ViewOf(pts);
  switch (method) {
    case RM_HELMERT:
      TransformPlane(points, n, OrderCode::Affine, system.fit);
      return true;
    case RM_AFFINEPOLYNOMIAL:
    case RM_POLYNOMIAL1:
    case RM_POLYNOMIAL2:
    case RM_POLYNOMIAL3:
      TransformPlane(points, n, OrderOf(method), system.fit);
      return true;
    case RM_AFFINECOEFFICIENTS:
      TransformPlane(points, n, OrderCode::Affine, PlaneOf(CoefficientsOf(system.record)));
      return true;
    default:
      if (system.registration == nullptr || pts == nullptr || n < 1) return false;
      WarpAccess::TransformScreened(*system.registration, points, n);
      return true;
  }
}

void TransformPlane(const PointView& points, int count, OrderCode order, const PlaneFit& fit) {
  AtLevel<ORVEX_LEVELS_OF(kPlaneOperations)>().transform(points, count, order, fit);
}

}  // namespace orvex::detail
