// SystemRecord - from the registry's methods and parameters to the library's records.
// Sources: IOGP Publication 373-7-2 (2019), whose method codes these are; Snyder, Map Projections - A Working Manual,
// USGS PP 1395 (1987), by whose equations the library computes.
#include "systems/SystemRecord.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "Failure.h"

namespace orvex::tool {

namespace {

constexpr double kDegree = std::numbers::pi / 180;

/// Codes of the methods that are represented.
enum Method {
  kPseudoMercator = 1024,
  kAzimuthalEqualAreaSphere = 1027,
  kEquidistantCylindricalSphere = 1029,
  kLambertMichigan = 1051,
  kLambertOneParallel = 9801,
  kLambertTwoParallels = 9802,
  kLambertBelgium = 9803,
  kMercatorA = 9804,
  kMercatorB = 9805,
  kTransverseMercator = 9807,
  kPolarStereographicA = 9810,
  kHotineA = 9812,
  kHotineB = 9815,
  kPolyconic = 9818,
  kAlbers = 9822,
  kEquidistantCylindricalSphereOld = 9823,
  kPolarStereographicB = 9829,
  kPolarStereographicC = 9830,
  kMercatorSphere = 9841,
};

struct Refusal {
  int method;
  const char* reason;
};

constexpr Refusal kRefusals[] = {
    {1028, "Orvex has the equidistant cylindrical projection of the sphere only"},
    {9806, "Orvex has the Cassini projection of the sphere only"},
    {9808, "its axes run west and south"},
    {9809, "Orvex's oblique stereographic projection of the ellipsoid is another one, without Gauss's sphere between"},
    {9820, "Orvex has the azimuthal equal area projection of the sphere only"},
    {9824, "it is a family of zones; name the zone's own system, for example EPSG:32633"},
    {9826, "its axes run west and north"},
    {9828, "its axes run west and south"},
    {9842, "Orvex has the equidistant cylindrical projection of the sphere only"},
};

/// A meridian ellipse and what conformal projections need of it; latitudes in radians.
class Ellipse {
 public:
  explicit Ellipse(double flattening) : m_es(flattening * (2 - flattening)), m_e(std::sqrt(m_es)) {}

  double Eccentricity() const { return m_e; }
  /// Radius of the parallel in semi-major axes: Snyder 14-15.
  double Parallel(double lat) const {
    const double s = std::sin(lat);
    return std::cos(lat) / std::sqrt(1 - m_es * s * s);
  }
  /// Isometric latitude, -ln t with t of Snyder 15-9.
  double Isometric(double lat) const { return std::asinh(std::tan(lat)) - m_e * std::atanh(m_e * std::sin(lat)); }
  /// Of a conformal cone with the constant n, but for a constant: Snyder 15-2 and 15-7.
  double LogInverseScale(double lat, double n) const { return std::log(Parallel(lat)) + n * Isometric(lat); }
  /// Its derivative.
  double Slope(double lat, double n) const {
    const double s = std::sin(lat);
    return (1 - m_es) / (1 - m_es * s * s) / std::cos(lat) * (n - s);
  }

 private:
  double m_es, m_e;
};

void Centre(PROJDATA& record, double lat, double lon) {
  record.Lat0 = lat;
  record.Lon0 = lon;
}

void FalseOrigin(PROJDATA& record, double x, double y) {
  record.xOrg = x;
  record.yOrg = y;
}

/// The library adds the false origin before it multiplies by the scale.
void Scaled(PROJDATA& record, double scale, double x, double y) {
  record.Scale = scale;
  FalseOrigin(record, x / scale, y / scale);
}

/// A conformal cone by the parallel (radians) along which it touches and the scale there. It is also one that cuts the
/// ellipsoid: any two parallels on either side whose scales are equal on it have its cone constant, which is the sine,
/// and the map scale makes up for the rest.
void TouchingCone(PROJDATA& record, double parallel, double k0, double x0, double y0) {
  const Ellipse ellipse(record.Flattening);
  const double n = std::sin(parallel);
  const double away = std::min(10 * kDegree, (std::numbers::pi / 2 - std::abs(parallel)) / 2);
  const double cut = ellipse.LogInverseScale(parallel - away, n);
  double other = parallel + away;
  for (int i = 0; i < 20; ++i) other -= (ellipse.LogInverseScale(other, n) - cut) / ellipse.Slope(other, n);
  record.Type = PT_LAMBERT;
  record.Lat1 = (parallel - away) / kDegree;
  record.Lat2 = other / kDegree;
  Scaled(record, k0 * std::exp(ellipse.LogInverseScale(parallel, n) - cut), x0, y0);
}

void TwoParallels(PROJDATA& record, ProjType type, const double* p) {
  record.Type = type;
  Centre(record, p[0], p[1]);
  record.Lat1 = p[2];
  record.Lat2 = p[3];
  FalseOrigin(record, p[4], p[5]);
}

/// The constant of a conformal cone by its standard parallels, in degrees: Snyder 15-3 and 15-8.
double ConeConstant(const Ellipse& ellipse, double parallel1, double parallel2) {
  if (parallel1 == parallel2) return std::sin(parallel1 * kDegree);
  const double lat1 = parallel1 * kDegree, lat2 = parallel2 * kDegree;
  return (ellipse.LogInverseScale(lat1, 0) - ellipse.LogInverseScale(lat2, 0)) /
         (ellipse.Isometric(lat2) - ellipse.Isometric(lat1));
}

/// The library wants parallels a tenth of a degree apart; the cone of closer ones is described by others.
void LambertTwoParallels(PROJDATA& record, const double* p) {
  TwoParallels(record, PT_LAMBERT, p);
  if (std::abs(p[2] - p[3]) >= 0.1) return;
  const Ellipse ellipse(record.Flattening);
  const double n = ConeConstant(ellipse, p[2], p[3]), parallel = std::asin(n);
  const double scale = std::exp(ellipse.LogInverseScale(p[2] * kDegree, n) - ellipse.LogInverseScale(parallel, n));
  TouchingCone(record, parallel, scale, p[4], p[5]);
}

void LambertOneParallel(PROJDATA& record, const double* p) {
  Centre(record, p[0], p[1]);
  TouchingCone(record, p[0] * kDegree, p[2], p[3], p[4]);
}

/// Every plane angle of the Belgian Lambert of 1972 is smaller by 29.2985": that is a shift of its meridian.
void Belgium(PROJDATA& record, const double* p) {
  LambertTwoParallels(record, p);
  record.Lon0 += 29.2985 / 3600 / ConeConstant(Ellipse(record.Flattening), p[2], p[3]);
}

void Mercator(PROJDATA& record, double lon0, double latTrue, double k0, double x0, double y0) {
  record.Type = PT_MERCATOR;
  Centre(record, latTrue, lon0);
  Scaled(record, k0, x0, y0);
}

void PolarStereographic(PROJDATA& record, double pole, double lon0, double k0, double x0, double y0) {
  record.Type = PT_STEREOGRAPHIC;
  Centre(record, pole, lon0);
  record.K0 = k0;
  FalseOrigin(record, x0, y0);
}

/// The scale at the pole of a map that is true to scale on a parallel: Snyder 21-33 and 21-34.
double PolarScale(const Ellipse& ellipse, double latTrue) {
  const double e = ellipse.Eccentricity(), lat = std::abs(latTrue);
  if (lat == std::numbers::pi / 2) return 1;
  const double flattened = std::sqrt(std::pow(1 + e, 1 + e) * std::pow(1 - e, 1 - e));
  return ellipse.Parallel(lat) * std::exp(ellipse.Isometric(lat)) * flattened / 2;
}

/// Variants B and C name the parallel that is true to scale; C counts northings from it, on the central meridian.
void PolarByParallel(PROJDATA& record, bool fromParallel, const double* p) {
  const Ellipse ellipse(record.Flattening);
  const double lat = p[0] * kDegree;
  const double radius = record.MajorRadius * ellipse.Parallel(lat);
  const double shift = !fromParallel ? 0 : lat > 0 ? radius : -radius;
  PolarStereographic(record, lat > 0 ? 90 : -90, p[1], PolarScale(ellipse, lat), p[2], p[3] + shift);
}

void Hotine(SystemRecord& system, bool fromCentre, const double* p) {
  PROJDATA& record = system.record;
  record.Type = PT_HOTINE;
  Centre(record, p[0], p[1]);
  record.bUseAlpha = true;
  record.Alpha = std::remainder(p[2], 360);
  record.K0 = p[4];
  record.bRotate = true;
  record.bUOffset = fromCentre;
  if (p[3] == p[2]) {
    FalseOrigin(record, p[5], p[6]);
  } else {
    system.turn = Turn{std::remainder(p[3] - p[2], 360), p[5], p[6]};
  }
}

void Centred(PROJDATA& record, ProjType type, const double* p) {
  record.Type = type;
  Centre(record, p[0], p[1]);
  FalseOrigin(record, p[2], p[3]);
}

/// These have their latitude, of the centre or of true scale, in Lat1 and are projections of the sphere.
void OfSphere(PROJDATA& record, ProjType type, const double* p) {
  if (record.Flattening != 0) throw Failure("Orvex has this projection of the sphere only");
  Centred(record, type, p);
  const double centre = record.Lat0;  // fields of a packed record cannot be swapped
  record.Lat0 = record.Lat1;
  record.Lat1 = centre;
}

void Fill(SystemRecord& system, const ProjectionDefinition& definition) {
  PROJDATA& record = system.record;
  const double* const p = definition.parameters.data();
  switch (definition.method) {
    case kTransverseMercator:
      record.Type = PT_TRANSVERSEMERCATOR;
      Centre(record, p[0], p[1]);
      record.K0 = p[2];
      return FalseOrigin(record, p[3], p[4]);
    case kLambertOneParallel:
      return LambertOneParallel(record, p);
    case kLambertTwoParallels:
      return LambertTwoParallels(record, p);
    case kLambertBelgium:
      return Belgium(record, p);
    case kLambertMichigan:  // on an ellipsoid of the same shape at the height of the state
      record.MajorRadius *= p[6];
      return LambertTwoParallels(record, p);
    case kAlbers:
      return TwoParallels(record, PT_ALBERS, p);
    case kPseudoMercator:  // latitudes of the ellipsoid on a sphere
      record.Flattening = 0;
      return Mercator(record, p[1], 0, 1, p[2], p[3]);
    case kMercatorA:
    case kMercatorSphere:
      if (p[0] != 0) throw Failure("its natural origin is not on the equator");
      return Mercator(record, p[1], 0, p[2], p[3], p[4]);
    case kMercatorB:
      return Mercator(record, p[1], p[0], 1, p[2], p[3]);
    case kPolarStereographicA:
      return PolarStereographic(record, p[0], p[1], p[2], p[3], p[4]);
    case kPolarStereographicB:
    case kPolarStereographicC:
      return PolarByParallel(record, definition.method == kPolarStereographicC, p);
    case kHotineA:
    case kHotineB:
      return Hotine(system, definition.method == kHotineB, p);
    case kPolyconic:
      return Centred(record, PT_POLYCONIC, p);
    case kAzimuthalEqualAreaSphere:
      return OfSphere(record, PT_LAMBERTAZIMUTHAL, p);
    case kEquidistantCylindricalSphere:
    case kEquidistantCylindricalSphereOld:
      return OfSphere(record, PT_EQUICYLINDRICAL, p);
    default:
      break;
  }
  for (const Refusal& refusal : kRefusals) {
    if (refusal.method == definition.method) throw Failure(refusal.reason);
  }
  throw Failure("Orvex does not have the method " + std::string(MethodName(definition.method)));
}

SystemRecord Make(const CoordinateSystem& system) {
  if (system.axes == Axes::Height) throw Failure("it has heights");
  SystemRecord made;
  if (!system.IsProjected()) return made;
  const ReferenceDatum& datum = system.Datum();
  made.record.MajorRadius = datum.radius;
  made.record.Flattening = datum.flattening;
  Fill(made, system.Projection());
  if (system.axes != Axes::EastNorth) throw Failure("its axes do not run east and north");
  made.record.Lon0 = std::remainder(made.record.Lon0 + datum.longitude, 360);
  char message[256];
  if (ProjCheckParams(&made.record, message, false) != 0) throw Failure(message);
  return made;
}

}  // namespace

SystemRecord MakeSystemRecord(const CoordinateSystem& system) {
  try {
    return Make(system);
  } catch (const Failure& reason) {
    throw Failure(system.Label() + " \"" + std::string(system.name) + "\" cannot be represented: " + reason.what());
  }
}

std::string WhyNotRepresented(const CoordinateSystem& system) {
  try {
    Make(system);
    return "";
  } catch (const Failure& reason) {
    return reason.what();
  }
}

}  // namespace orvex::tool
