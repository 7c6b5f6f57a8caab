// Catalogue - the library's tables as rows of plain values, and datums by their parameters.
#include "Catalogue.h"

#include <cmath>

#include <orvex/orvex.h>

#include "Failure.h"

namespace orvex::python {

namespace {

constexpr int kNameSize = 260;  // more than any name of the library needs
constexpr int kLastEllipsoid = ET_BESSEL_NGO_1948;
constexpr int kLastParameter = 22;

/// The code that a function of the form (what..., int*) writes, if it does.
template <class Function, class... What>
std::optional<int> Code(Function function, What... what) {
  int code = 0;
  if (!function(what..., &code)) return std::nullopt;
  return code;
}

/// The fields are copied: a reference to one of a packed record may be a misaligned one.
DatumParameters Values(const DATUM2WGS84& step) {
  return {int{step.Method},  int{step.Ellipsoid},
          +step.PMShift,     +step.dx,
          +step.dy,          +step.dz,
          +step.rx,          +step.ry,
          +step.rz,          +step.k,
          +step.MajorRadius, +step.Flattening};
}

}  // namespace

std::vector<ProjectionRow> Projections() {
  std::vector<ProjectionRow> rows;
  for (int number = 0; number < ProjNumProjections(); ++number) {
    char name[kNameSize];
    const unsigned mask = ProjGetProjectionInfo(static_cast<ProjType>(number), name);
    rows.emplace_back(number, name, mask);
  }
  return rows;
}

std::vector<EllipsoidRow> Ellipsoids() {
  std::vector<EllipsoidRow> rows;
  for (int number = 1; number <= kLastEllipsoid; ++number) {
    const auto type = static_cast<EllipsoidType>(number);
    char name[kNameSize];
    double radius = 0, flattening = 0;
    EllipsoidInfo(type, name, &radius, &flattening);
    rows.emplace_back(number, name, radius, flattening, Code(EllipsoidToPOSCNumber, type));
  }
  return rows;
}

std::vector<DatumRow> Datums() {
  std::vector<DatumRow> rows;
  for (int number = 1; number < DatNumDatums(); ++number) {
    const auto datum = static_cast<DatumType>(number);
    char name[kNameSize];
    DatumMethod method{};
    DatGetDatumName(datum, name);
    DatGetDatumMethod(datum, &method);
    rows.emplace_back(number, name, method, DatReversible(datum) || method == DM_NTV2,
                      Code(DatGetDatumPOSCNumber, datum));
  }
  return rows;
}

std::vector<ZoneRow> Zones() {
  std::vector<ZoneRow> rows;
  for (int number = 0; number < SZ_NONE; ++number) {
    const auto zone = static_cast<StateZoneType>(number);
    char name[kNameSize];
    int usgs = 0;
    ProjGetStateZoneInfo(zone, name, &usgs);
    rows.emplace_back(number, name, usgs, Code(ProjStateZoneToPOSCNumber, PT_STATEPLANE27, zone),
                      Code(ProjStateZoneToPOSCNumber, PT_STATEPLANE83, zone));
  }
  return rows;
}

bool ZoneExists(int type, int zone) {
  PROJDATA record{};
  record.Type = static_cast<ProjType>(type);
  record.Zone = zone;
  ProjGetStateZoneParams(&record);
  return record.Zone == zone;
}

std::vector<ParameterRow> Parameters() {
  std::vector<ParameterRow> rows;
  for (int id = 1; id <= kLastParameter; ++id) {
    char name[kNameSize];
    ProjDataType type{};
    ProjParamInfo(id, name, &type, nullptr, nullptr);
    rows.emplace_back(id, name, type);
  }
  return rows;
}

std::vector<int> UsedParameters(int projection) {
  const auto type = static_cast<ProjType>(projection);
  std::vector<int> ids;
  for (int i = 0; i < ProjNumParams(type); ++i) ids.push_back(ProjEnumParam(type, i));
  return ids;
}

std::vector<std::string> GeorefMethods() {
  std::vector<std::string> names;
  for (int method = 0; method < RM_NONE; ++method)
    names.emplace_back(RefMethodName(static_cast<TransformMethod>(method)));
  return names;
}

std::optional<DatumParameters> ParametersOf(int datum) {
  DATUM2WGS84 step{};
  if (!DatGetDatumParams(static_cast<DatumType>(datum), &step)) return std::nullopt;
  return Values(step);
}

DATUM2WGS84 StepOf(const DatumParameters& parameters, bool inverse) {
  DATUM2WGS84 step{};
  int method = 0, ellipsoid = 0;
  double shift[3], rotation[3], meridian = 0, scale = 0, radius = 0, flattening = 0;
  std::tie(method, ellipsoid, meridian, shift[0], shift[1], shift[2], rotation[0], rotation[1], rotation[2], scale,
           radius, flattening) = parameters;
  step.Method = static_cast<DatumMethod>(method);
  step.bInverse = inverse;
  step.Ellipsoid = static_cast<EllipsoidType>(ellipsoid);
  step.PMShift = meridian;
  step.dx = shift[0], step.dy = shift[1], step.dz = shift[2];
  step.rx = rotation[0], step.ry = rotation[1], step.rz = rotation[2];
  step.k = scale;
  step.MajorRadius = radius;
  step.Flattening = flattening;
  return step;
}

std::vector<std::string> StoredDatums(const std::string& ini) {
  std::vector<std::string> names;
  char name[kNameSize];
  for (int i = DatNumDatums(); NDatEnumDatumName(ini.c_str(), name, i); ++i) names.emplace_back(name);
  return names;
}

std::optional<DatumParameters> StoredDatum(const std::string& ini, const std::string& name) {
  DATUM2WGS84 step{};
  if (!NDatGetDatumParams(ini.c_str(), name.c_str(), &step)) return std::nullopt;
  return Values(step);
}

bool StoreDatum(const std::string& ini, const std::string& name, const DatumParameters& parameters) {
  const DATUM2WGS84 step = StepOf(parameters, false);
  return NDatSave(ini.c_str(), name.c_str(), &step);
}

double ParseAngle(const std::string& text) {
  double degrees = 0;
  const bool whole = text.find('\0') == std::string::npos && LatLonToDegrees(text.c_str(), &degrees, 0);
  if (!whole || !std::isfinite(degrees)) throw tool::Failure("\"" + text + "\" is not an angle");
  return degrees;
}

std::string FormatAngle(double degrees, int format, char degree, char minute, char second) {
  char text[kNameSize];
  if (!DegreesToLatLon(text, degrees, format, degree, minute, second))
    throw tool::Failure("two ways to write the sign");
  return text;
}

}  // namespace orvex::python
