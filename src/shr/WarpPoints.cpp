// WarpPoints - evaluation of warps, once for each instruction set.
#include "shr/WarpPoints.h"

#include "shr/RadialBasis.h"

namespace orvex::detail::ORVEX_LEVEL {

namespace {

void TransformNormalised(const PointView& points, int count, const WarpModel& warp) {
  const auto operation = [&warp](Point<Real>& p) -> Plot<Real> {
    Normalised(warp, p);
    return Plottable<Real>();
  };
  ConvertPoints(points, count, WithoutMarkers{}, operation, "ImageRegistration");
}

template <class Stage>
void Transform(const PointView& points, int count, const WarpModel& warp) {
  const auto operation = [&warp](Point<Real>& p) -> Plot<Real> {
    p = {warp.from.U(p.x), warp.from.V(p.y)};
    Normalised(warp, p);
    p = {warp.to.cx + p.x / warp.to.kx, warp.to.cy + p.y / warp.to.ky};
    return Plottable<Real>();
  };
  ConvertPoints(points, count, Stage{}, operation, "ImageRegistration");
}

}  // namespace

const WarpOperations kWarpOperations{Transform<WithoutMarkers>, Transform<ScreenedImages>, TransformNormalised};

}  // namespace orvex::detail::ORVEX_LEVEL
