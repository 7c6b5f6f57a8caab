// Georef - transforms of one plane into another by control points.
#include <orvex/georef.h>

#include <cmath>
#include <memory>

#include "Call.h"

using namespace orvex;
using namespace orvex::web;

/// `controls`: the source points, then their destinations.
ORVEX_WEB CGeorefTransform* ow_georef_create(int method, GEOREFPOINT* controls, int count) {
  return Guarded<CGeorefTransform*>(nullptr, [&] {
    GEOREF record{};
    record.Method = static_cast<TransformMethod>(method);
    record.pSrc = controls;
    record.pDst = controls + count;
    record.nControls = count;
    auto transform = std::make_unique<CGeorefTransform>();
    if (!transform->Create(&record)) throw tool::Failure("the control points do not determine the transform");
    return transform.release();
  });
}

ORVEX_WEB void ow_georef_delete(CGeorefTransform* transform) {
  delete transform;
}

ORVEX_WEB int ow_georef_convert(CGeorefTransform* transform, PROJPOINT* points, int count) {
  static_assert(sizeof(GEOREFPOINT) == sizeof(PROJPOINT));
  return Guarded(kFailed, [&] {
    if (!transform->Forward(reinterpret_cast<GEOREFPOINT*>(points), count)) throw tool::Failure("the transform failed");
    MarkUnplottable(points, count);
    return kDone;
  });
}

/// Writes the distance at every control point, and behind them their root mean square and the six coefficients.
ORVEX_WEB int ow_georef_report(const CGeorefTransform* transform, double* values) {
  return Guarded(kFailed, [&] {
    GEOREF record{};
    if (!transform->GetInfo(&record)) throw tool::Failure("the transform failed");
    double* const behind = values + record.nControls;
    if (!transform->ComputeError(behind, values)) throw tool::Failure("the transform failed");
    RefControlsToCoeff(&record);  // leaves the coefficients alone where there are none
    for (int i = 0; i < 6; ++i) behind[1 + i] = record.Coeff[i];
    return kDone;
  });
}
