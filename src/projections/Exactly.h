// Exactly - how exact computation meets the points: longitudes modulo a turn from the central meridian, latitudes
// between the poles, and nothing outside the map. The operations get and give longitudes from the central meridian,
// within half a turn.
#pragma once

#include <type_traits>

#include "projections/Module.h"

namespace orvex::detail::ORVEX_LEVEL {

/// How far beyond the edge of a map a point may lie by rounding, in semi-major axes; on a globe, radians.
inline constexpr double kRim = 1e-12;

/// The difference of two longitudes within half a turn, degrees.
template <class T>
ORVEX_INLINE T WithinHalfTurn(T degrees) {
  return degrees - 360 * Nearest(degrees / 360);
}

/// The same where most are within it: that costs no division.
template <class T>
ORVEX_INLINE T WithinHalfTurnMostly(T degrees, MaskOf<T> within) {
  return All(within) ? degrees + T(0) : WithinHalfTurn(degrees);  // 0 has no sign, neither way
}

/// The same from the central meridian; its antimeridian is the edge of the map in the east or in the west, on the side
/// from which it was reached, also where rounding has led beyond.
template <class T>
ORVEX_INLINE T FromMeridian(T lon, double lon0) {
  constexpr double kEdge = 180 - 1.1e-13;  // what is further from it than three roundings has its own place
  const T degrees = lon - lon0, within = WithinHalfTurnMostly(degrees, Abs(degrees) <= T(180));
  return Select(Abs(within) > T(kEdge), CopySign(T(180), degrees), within);
}

/// From degrees to the map, whatever lies beyond a pole being unplottable.
class ExactlyToMap : private ToMap {
 public:
  explicit ExactlyToMap(const DriverSteps& steps) : ToMap(&steps), m_lon0(WithinHalfTurn(steps.lon0)) {}

  ORVEX_INLINE MaskOf<Real> IsPlain(const Point<Real>& p) const {
    return (Abs(p.x) < Real(kMostPlain)) & (Abs(p.y) <= Real(90));
  }
  ORVEX_INLINE void Enter(Point<Real>& p) const { p.x = FromMeridian(p.x, m_lon0); }
  bool EnterOne(double& x, double& y, bool& flagged) const {
    Screen(x, y, flagged);
    if (!IsMarked(x, y) && Abs(y) <= 90) {
      if (!(Abs(x) < kMostPlain)) x = RemainderNearest(x, 360.0);
      x = FromMeridian(x, m_lon0);
      return true;
    }
    if (!IsMarked(x, y)) flagged = true;
    x = y = DBL_MAX;
    return false;
  }
  using ToMap::Leave;

 private:
  static constexpr double kMostPlain = 3600;  // a few turns, in which nothing is lost by counting them

  double m_lon0;
};

/// From the map to degrees, longitudes within half a turn of Greenwich.
class ExactlyFromMap : private FromMap {
 public:
  explicit ExactlyFromMap(const DriverSteps& steps) : FromMap(&steps), m_lon0(WithinHalfTurn(steps.lon0)) {}

  using FromMap::Enter;
  using FromMap::IsPlain;
  bool EnterOne(double& x, double& y, bool& flagged) const {
    Screen(x, y, flagged);
    if (FromMap::EnterOne(x, y, flagged)) return true;
    x = y = DBL_MAX;
    return false;
  }
  ORVEX_INLINE void Leave(Point<Real>& p, MaskOf<Real>& plottable) const {
    plottable = plottable & (Abs(p.x) < Real(kMostTurned)) & (Abs(p.y) <= Real(kHalfPi + kRim));
    // The edge of the map keeps its side, east or west, by a longitude beyond the antimeridian of Greenwich.
    Real fromCentre = RadToDeg(p.x);
    const MaskOf<Real> edge = Abs(fromCentre) > Real(kEdge);
    fromCentre = Select(edge, CopySign(Real(180), fromCentre), fromCentre);
    const Real lon = fromCentre + m_lon0;
    const MaskOf<Real> stays = edge | (Abs(lon) <= Real(180));
    p.x = All(stays) ? lon : Select(stays, lon, WithinHalfTurn(lon));
    p.y = Clamp(RadToDeg(p.y), -90, 90);
  }

 private:
  static constexpr double kEdge = 180 - 1e-12;  // degrees; up to it, rounding
  static constexpr double kMostTurned = 7;      // radians; the operations answer longitudes within half a turn

  double m_lon0;
};

/// What the latitude in radians lacks of the one in degrees, by the rounding of the product and of its factor. Next to
/// a pole some maps grow without bound, and it would be seen.
template <class T>
ORVEX_INLINE T LatitudeRest(T degrees, T radians) {
  constexpr double kFactorRest = 2.9486522708701687e-19;  // pi / 180 less its double
  const T high = High(degrees), low = degrees - high;
  constexpr double kFactorHigh = 0.01745329238474369, kFactorLow = kRadiansPerDegree - kFactorHigh;
  return ((high * kFactorHigh - radians) + high * kFactorLow + low * kFactorHigh) + low * kFactorLow +
         degrees * kFactorRest;
}

/// A latitude as some maps need it.
template <class T>
struct ExactPoint : Point<T> {
  T latRest;  ///< what y lacks of the latitude
};

template <class Operation>
ORVEX_INLINE bool ForwardExactly(const Conversion& call, const Site& site, const Operation& operation) {
  const auto inRadians = [&operation](auto& p) {
    using T = std::remove_cvref_t<decltype(p.x)>;
    ExactPoint<T> point{{DegToRad(p.x), DegToRad(p.y)}, T(0)};
    point.latRest = LatitudeRest(p.y, point.y);
    const Plot<T> plot = operation(point);
    p.x = point.x;
    p.y = point.y;
    return plot;
  };
  if (ConvertPoints(call.points, call.count, ExactlyToMap(*call.steps), inRadians, site.source)) call.work->iResult = 1;
  return true;
}

template <class Operation>
ORVEX_INLINE bool InverseExactly(const Conversion& call, const Site& site, const Operation& operation) {
  if (ConvertPoints(call.points, call.count, ExactlyFromMap(*call.steps), operation, site.source)) {
    call.work->iResult = 1;
  }
  return true;
}

/// Longitude from the central meridian of a place `x` along a parallel that is `perRadian` long for each radian of
/// longitude, both in semi-major axes; not beyond the antimeridian, and 0 where the parallel is a point.
template <class T>
ORVEX_INLINE T AlongParallel(T x, T perRadian, MaskOf<T>& plottable, T rim = T(kRim)) {
  constexpr double kPiAndRounding = kPi * (1 + 2e-15);
  plottable = plottable & (Abs(x) <= kPiAndRounding * perRadian + rim);
  const MaskOf<T> wide = perRadian > T(0);
  return Select(wide, Clamp(x / OneUnless<T>(wide, perRadian), -kPi, kPi), T(0));
}

/// The rim of maps on which parallels lie the closer the nearer the pole: what rounding of the height on the map leaves
/// open of its angle from the pole.
template <class T>
ORVEX_INLINE T PoleRim(T sineFromPole) {
  return kRim + 1e-15 / Select(sineFromPole > T(1e-8), sineFromPole, T(1e-8));
}

/// Sine and cosine of a latitude by all of its digits: the cosine keeps them up to the pole, where it is 0.
template <class T>
ORVEX_INLINE SineCosine<T> SinCosOfLatitude(const ExactPoint<T>& p) {
  const auto [sine, cosine] = SinCos(p.y);
  const T full = cosine - sine * p.latRest;
  return {sine, Select(full < T(0), T(0), full)};
}

/// Distance from the nearer pole, by all digits of the latitude.
template <class T>
ORVEX_INLINE T Colatitude(const ExactPoint<T>& p) {
  constexpr double kQuarterTurnRest = 6.123233995736766e-17;  // pi / 2 less its double
  const T colatitude = (kHalfPi - Abs(p.y)) + (kQuarterTurnRest - Select(p.y < T(0), -p.latRest, p.latRest));
  return Select(colatitude < T(0), T(0), colatitude);
}

/// Whether a record's angle is a latitude; parameters beyond the poles have no exact form.
inline bool IsLatitude(double radians) {
  return Abs(radians) <= kHalfPi;
}

}  // namespace orvex::detail::ORVEX_LEVEL
