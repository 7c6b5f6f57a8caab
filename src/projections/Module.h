// Module - what every projection module shares: argument checks, and how its formula meets the points. A module itself
// holds mathematics only. Compiled once for each instruction set, like all that includes it.
#pragma once

#include "math/Angles.h"
#include "math/Normalize.h"
#include "orvex/projdata.h"
#include "points/PointLoop.h"
#include "projections/Conversion.h"
#include "projections/Remembered.h"

namespace orvex::detail::ORVEX_LEVEL {

/// Where a module's argument checks and assertions report.
struct Site {
  const char* source;
  int nullPoints;
  int badCount;
};

/// The argument checks of every conversion: false for a null record; asserts for null points and counts below 1.
inline bool Ready(const Conversion& call, const Site& site) {
  if (call.work == nullptr) return false;
  if (call.points.x == nullptr) Assert(site.source, site.nullPoints);
  if (call.count < 1) Assert(site.source, site.badCount);
  return true;
}

/// A flag of the host's record: any byte but 0 is true, which is no value of bool; so the byte is looked at.
ORVEX_INLINE bool IsSet(const bool& flag) {
  unsigned char byte = 0;
  __builtin_memcpy(&byte, &flag, 1);
  return byte != 0;
}

/// What is not done to a marker.
template <class Operation>
ORVEX_INLINE double UnlessMarker(double value, const Operation& operation) {
  return value == DBL_MAX ? value : operation(value);
}

// Both stages do in a conversion what the driver has to do around it; without steps they hand the points over as they
// are, radians and unscaled coordinates about the natural origin.

/// Degrees to radians, and to the map: false origin, then scale, on purpose in this order. A coordinate beside a marker
/// goes its own way.
class ToMap {
 public:
  ORVEX_INLINE explicit ToMap(const DriverSteps* steps)
      : m_steps(steps != nullptr ? *steps : DriverSteps{0, 0, 1}), m_bare(steps == nullptr), m_moves(Moves(m_steps)) {}

  ORVEX_INLINE MaskOf<Real> IsPlain(const Point<Real>& p) const { return IsOnGlobe(p.x, p.y); }

  ORVEX_INLINE void Enter(Point<Real>& p) const {
    if (m_bare) return;
    p.x = DegToRad(p.x);
    p.y = DegToRad(p.y);
  }

  bool EnterOne(double& x, double& y, bool& flagged) const {
    if (m_bare) return !IsMarked(x, y);
    Screen(x, y, flagged);
    x = UnlessMarker(NormalizeLon(x), [](double value) { return DegToRad(value); });
    y = UnlessMarker(NormalizeLat(y), [](double value) { return DegToRad(value); });
    if (!IsMarked(x, y)) return true;
    x = UnlessMarker(x, [this](double value) { return (m_moves ? value + m_steps.xOrg : value) * m_steps.scale; });
    y = UnlessMarker(y, [this](double value) { return (m_moves ? value + m_steps.yOrg : value) * m_steps.scale; });
    Screen(x, y, flagged);
    return false;
  }

  ORVEX_INLINE void Leave(Point<Real>& p, MaskOf<Real>& plottable) const {
    if (m_bare) return;
    if (m_moves) {
      p.x = p.x + m_steps.xOrg;
      p.y = p.y + m_steps.yOrg;
    }
    p.x = p.x * m_steps.scale;
    p.y = p.y * m_steps.scale;
    plottable = plottable & IsFinite(p.x) & IsFinite(p.y);
  }

 private:
  static bool Moves(const DriverSteps& steps) { return steps.xOrg != 0 || steps.yOrg != 0; }

  DriverSteps m_steps;
  bool m_bare, m_moves;
};

/// The mirror image. A point that its input screening marks does not count as flagged, unlike on the way to the map:
/// deliberate.
class FromMap {
 public:
  explicit FromMap(const DriverSteps* steps)
      : m_steps(steps != nullptr ? *steps : DriverSteps{0, 0, 1}),
        m_bare(steps == nullptr),
        m_moves(m_steps.xOrg != 0 || m_steps.yOrg != 0),
        m_scales(m_steps.scale != 1),
        m_limit(LimitOf(m_steps)) {}

  ORVEX_INLINE MaskOf<Real> IsPlain(const Point<Real>& p) const {
    return (Abs(p.x) < Real(m_limit)) & (Abs(p.y) < Real(m_limit));
  }

  ORVEX_INLINE void Enter(Point<Real>& p) const {
    if (m_scales) {
      p.x = p.x / m_steps.scale;
      p.y = p.y / m_steps.scale;
    }
    if (m_moves) {
      p.x = p.x - m_steps.xOrg;
      p.y = p.y - m_steps.yOrg;
    }
  }

  bool EnterOne(double& x, double& y, bool& flagged) const {
    if (m_bare) return !IsMarked(x, y);
    bool ignored = false;
    Screen(x, y, ignored);
    x = UnlessMarker(x,
                     [this](double value) { return (m_scales ? value / m_steps.scale : value) - Moved(m_steps.xOrg); });
    y = UnlessMarker(y,
                     [this](double value) { return (m_scales ? value / m_steps.scale : value) - Moved(m_steps.yOrg); });
    if (!IsMarked(x, y)) return true;
    Screen(x, y, flagged);
    x = NormalizeLon(UnlessMarker(x, [](double value) { return RadToDeg(value); }));
    y = NormalizeLat(UnlessMarker(y, [](double value) { return RadToDeg(value); }));
    return false;
  }

  ORVEX_INLINE void Leave(Point<Real>& p, MaskOf<Real>& plottable) const {
    if (m_bare) return;
    plottable = plottable & IsFinite(p.x) & IsFinite(p.y);
    p.x = RadToDeg(Select(plottable, p.x, Real(0)));
    p.y = RadToDeg(Select(plottable, p.y, Real(0)));
    if (!All(IsOnGlobe(p.x, p.y))) NormalizeEach(p.x, p.y);
  }

 private:
  /// Coordinates below it are still below the marker without scale and false origin.
  static double LimitOf(const DriverSteps& steps) {
    constexpr double kFarBelow = DBL_MAX / 4;
    if (!(Abs(steps.xOrg) < kFarBelow && Abs(steps.yOrg) < kFarBelow)) return 0;
    return Abs(steps.scale) < 1 ? kFarBelow * Abs(steps.scale) : kFarBelow;
  }

  /// 0 where nothing is taken off: x - 0 is x, whatever its sign.
  double Moved(double origin) const { return m_moves ? origin : 0.0; }

  DriverSteps m_steps;
  bool m_bare, m_moves, m_scales;
  double m_limit;
};

/// Runs a module's operation (Point<T>& -> Plot<T>, radians to unscaled coordinates about the natural origin) over the
/// points of a call; 1 in the record's result where one is flagged. Always true.
template <class Operation>
ORVEX_INLINE bool ForwardEach(const Conversion& call, const Site& site, const Operation& operation) {
  if (ConvertPoints(call.points, call.count, ToMap(call.steps), operation, site.source)) call.work->iResult = 1;
  return true;
}

/// The same for operations that lead back.
template <class Operation>
ORVEX_INLINE bool InverseEach(const Conversion& call, const Site& site, const Operation& operation) {
  if (ConvertPoints(call.points, call.count, FromMap(call.steps), operation, site.source)) call.work->iResult = 1;
  return true;
}

}  // namespace orvex::detail::ORVEX_LEVEL
