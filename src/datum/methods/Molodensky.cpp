// Molodensky - constants of the shift.
#include "datum/methods/Molodensky.h"

#include "datum/StepFrame.h"

namespace orvex::detail {

Molodensky::Molodensky(const DATUM2WGS84& step) {
  const StepFrame frame(step);
  const auto [axis, f] = frame.source;
  const double b = (1 - f) * axis;
  dx = frame.dx;
  dy = frame.dy;
  dz = frame.dz;
  pmShift = frame.pmShift;
  a = axis;
  e2 = 2 * f - f * f;
  perMeridional = 1 / (a * (1 - e2));
  axisTerm = (frame.target.a - a) * e2;
  aOverB = a / b;
  bOverA = b / a;
  df = frame.target.f - f;
}

}  // namespace orvex::detail
