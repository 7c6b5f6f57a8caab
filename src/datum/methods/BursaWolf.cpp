// BursaWolf - constants of the shift.
#include "datum/methods/BursaWolf.h"

#include "datum/StepFrame.h"
#include "support/Flag.h"

namespace orvex::detail {

namespace {

constexpr double ArcsecondsToRad(double arcseconds) {
  return arcseconds / 60 / 60 * kPi / 180;
}

}  // namespace

BursaWolf::BursaWolf(const DATUM2WGS84& step) {
  const StepFrame frame(step);
  const double sign = IsSet(step.bInverse) ? -1 : 1, factor = 1 + step.k * 1e-6;
  const auto [sourceA, sourceF] = frame.source;
  const auto [targetA, targetF] = frame.target;
  dx = frame.dx;
  dy = frame.dy;
  dz = frame.dz;
  pmShift = frame.pmShift;
  rx = ArcsecondsToRad(sign * step.rx);
  ry = ArcsecondsToRad(sign * step.ry);
  rz = ArcsecondsToRad(sign * step.rz);
  scale = IsSet(step.bInverse) ? 1 / factor : factor;
  aS = sourceA;
  e2S = (2 - sourceF) * sourceF;
  oneMinusF = 1 - targetF;
  e2a = targetF * (2 - targetF) * targetA;
  aT = targetA;
  e2T = (2 - targetF) * targetF;
}

}  // namespace orvex::detail
