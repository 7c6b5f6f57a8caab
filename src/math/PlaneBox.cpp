// PlaneBox - frames and tolerances of boxes.
#include "math/PlaneBox.h"

namespace orvex::detail {

namespace {

PlaneFrame Scaled(const PlaneBox& box, double kx, double ky) {
  return {box.left + box.Width() / 2, box.bottom + box.Height() / 2, kx, ky};
}

}  // namespace

bool PlaneFrame::Usable() const {
  return std::isfinite(kx) && std::isfinite(ky);
}

PlaneFrame PlaneFrame::Isotropic(const PlaneBox& box) {
  return Scaled(box, 1 / box.Side(), 1 / box.Side());
}

PlaneFrame PlaneFrame::PerAxis(const PlaneBox& box) {
  return Scaled(box, 1 / box.Width(), 1 / box.Height());
}

PlaneFrame PlaneFrame::Destination(const PlaneBox& box) {
  const PlaneFrame frame = Isotropic(box);
  return frame.Usable() ? frame : Scaled(box, 1, 1);
}

double RankTolerance(const PlaneBox& box, const PlaneFrame& frame) {
  const double x = std::max(std::fabs(box.left), std::fabs(box.right)) * frame.kx;
  const double y = std::max(std::fabs(box.bottom), std::fabs(box.top)) * frame.ky;
  return 32 * DBL_EPSILON * (1 + std::max(x, y));
}

}  // namespace orvex::detail
