// ProjectionOptions - naming a projection and its parameters on the command line.
#include "commands/ProjectionOptions.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <set>

#include <orvex/orvex.h>
#include <shr/exception.h>

#include "Failure.h"
#include "StatePlane.h"
#include "commands/Names.h"
#include "tables/Coordinate.h"

namespace orvex::tool {

namespace {

constexpr int kScaleId = 2, kScaleFactorId = 13, kEllipsoidId = 20, kRadiusId = 21, kFlatteningId = 22;

bool ParseBool(const std::string& text) {
  const std::string lower = Lower(text);
  for (const char* yes : {"1", "true", "yes", "on"}) {
    if (lower == yes) return true;
  }
  for (const char* no : {"0", "false", "no", "off"}) {
    if (lower == no) return false;
  }
  throw Failure("\"" + text + "\" is neither yes nor no");
}

bool UsesParameter(ProjType type, int id) {
  if (id == kRadiusId || id == kFlatteningId) id = kEllipsoidId;  // offered with a user-defined ellipsoid
  return ProjUsesParam(type, id);
}

std::string UsedParameters(ProjType type) {
  std::string list;
  for (int i = 0; i < ProjNumParams(type); ++i) {
    const int id = ProjEnumParam(type, i);
    for (const Parameter& parameter : Parameters()) {
      if (parameter.id == id) list += (list.empty() ? "" : ", ") + parameter.shortName;
    }
  }
  return list.empty() ? "none" : list;
}

const Parameter& FindParameter(ProjType type, const std::string& name) {
  const std::string wanted = Lower(name);
  std::vector<std::string> names;
  for (const Parameter& parameter : Parameters()) names.push_back(parameter.shortName);
  for (const Parameter& parameter : Parameters()) names.push_back(parameter.name);
  const std::size_t found = FindName(names, wanted, "parameter") % Parameters().size();
  const Parameter& parameter = Parameters()[found];
  if (!UsesParameter(type, parameter.id)) {
    throw Failure(ProjectionNames()[static_cast<std::size_t>(type)] + " does not use " + parameter.shortName +
                  "; it uses: " + UsedParameters(type));
  }
  return parameter;
}

template <class Value>
void Store(PROJDATA& record, const Parameter& parameter, Value value) {
  ProjSetParam(&record, parameter.id, &value);
}

std::optional<double> ReadParameterAngle(const Parameter& parameter, const std::string& text) {
  const std::optional<Angle> angle = ReadAngle(text, Blanks::Allowed);
  if (!angle) return std::nullopt;
  const bool isLatitude = parameter.shortName.starts_with("lat"), isLongitude = parameter.shortName.starts_with("lon");
  if ((isLatitude || isLongitude) && IsOtherAxis(angle->hemisphere, isLatitude)) {
    throw Failure(parameter.shortName + "=" + text + " has the letter of a " + (isLatitude ? "longitude" : "latitude"));
  }
  if (isLatitude && std::abs(angle->degrees) > 90)
    throw Failure(parameter.shortName + "=" + text + " lies beyond the pole");
  return angle->degrees;
}

/// Stores one NAME=VALUE and answers the parameter's id.
int Set(PROJDATA& record, const std::string& setting) {
  const std::size_t equals = setting.find('=');
  if (equals == std::string::npos) throw Failure("\"" + setting + "\" is not of the form NAME=VALUE");
  const std::string name = setting.substr(0, equals), text = setting.substr(equals + 1);
  const Parameter& parameter = FindParameter(record.Type, name);
  switch (parameter.type) {
    case PDT_DOUBLE: {
      const auto value = parameter.unit == "degrees" ? ReadParameterAngle(parameter, text) : ParseNumber(text);
      if (!value) throw Failure("cannot read the value of " + setting);
      if (*value == 0 && (parameter.id == kScaleId || parameter.id == kScaleFactorId)) {
        throw Failure(setting + " would shrink the map to a point; leave it out for the usual one");
      }
      if (parameter.id == kRadiusId) record.Ellipsoid = ET_USER_DEFINED;
      Store(record, parameter, *value);
      break;
    }
    case PDT_BOOL:
      Store(record, parameter, ParseBool(text));
      break;
    case PDT_STATEZONE:
      Store(record, parameter, static_cast<StateZoneType>(FindName(ZoneNames(), text, "zone")));
      break;
    case PDT_ELLIPSOID:
      Store(record, parameter, ParseEllipsoid(text));
      break;
    case PDT_PROJTYPE:
      break;
  }
  return parameter.id;
}

/// How the zone was named, when a zone stands for its parameters.
std::string ZoneOption(const ProjectionOptions& o) {
  const std::string dashes = "--" + o.prefix;
  if (!o.utm.empty()) return dashes + "utm " + o.utm;
  if (!o.statePlane27.empty()) return dashes + "stateplane27 " + o.statePlane27;
  if (!o.statePlane83.empty()) return dashes + "stateplane83 " + o.statePlane83;
  return o.posc != 0 ? dashes + "posc " + std::to_string(o.posc) : "";
}

/// Takes note of what is set, and refuses what contradicts it.
class Settings {
 public:
  explicit Settings(const ProjectionOptions& options) : m_dashes("--" + options.prefix), m_zone(ZoneOption(options)) {
    if (!options.ellipsoid.empty()) m_ellipsoid = m_dashes + "ellipsoid";
  }

  void Add(int id) {
    const Parameter& parameter = *std::find_if(Parameters().begin(), Parameters().end(),
                                               [id](const Parameter& known) { return known.id == id; });
    if (!m_ids.insert(id).second) throw Failure(parameter.shortName + " is set twice");
    if (id == kEllipsoidId || id == kRadiusId) {
      const std::string option = m_dashes + "set " + parameter.shortName;
      if (!m_ellipsoid.empty())
        throw Failure(m_ellipsoid + " and " + option + " both choose the ellipsoid; leave one out");
      m_ellipsoid = option;
    } else if (!m_zone.empty() && id != kScaleId && id != kFlatteningId) {
      throw Failure(m_zone + " has its own " + parameter.shortName + "; for another one name the projection with " +
                    m_dashes + "proj");
    }
  }

  bool HasFlattening() const { return m_ids.contains(kFlatteningId); }
  bool HasEllipsoid() const { return !m_ellipsoid.empty(); }

 private:
  std::string m_dashes, m_zone, m_ellipsoid;  // the latter: by what they were chosen
  std::set<int> m_ids;
};

void ChooseUtm(PROJDATA& record, const std::string& text) {
  int zone = 0;
  bool south = false;
  const std::size_t digits = std::min(text.find_first_not_of("0123456789"), text.size());
  const std::string letter = Lower(text.substr(digits));
  if (digits < 1 || digits > 2 || (!letter.empty() && letter != "n" && letter != "s") ||
      !ProjUTMZoneNameToNumber(text.c_str(), &zone, &south) ||
      zone != ParseInteger(text.substr(0, digits), "UTM zone")) {
    throw Failure("\"" + text + "\" is not a UTM zone: a number from 1 to 60 and N or S");
  }
  record.Type = PT_UTM;
  record.Zone = zone;
  record.bSouth = south;
  record.Lon0 = ProjUTMZoneNumberToLon(zone);
}

void ChooseZone(PROJDATA& record, ProjType type, StateZoneType zone) {
  record.Type = type;
  record.Zone = zone;
  record.Ellipsoid = type == PT_STATEPLANE27 ? ET_CLARKE_1866 : ET_GRS_1980_IUGG_1980;
}

void ChooseProjection(PROJDATA& record, const ProjectionOptions& o) {
  const int choices =
      !o.projection.empty() + !o.utm.empty() + !o.statePlane27.empty() + !o.statePlane83.empty() + (o.posc != 0);
  if (choices != 1) throw Failure("name one projection: by name, UTM zone, state plane zone or POSC number");
  if (!o.projection.empty()) {
    record.Type = static_cast<ProjType>(FindName(ProjectionNames(), o.projection, "projection"));
    if (IsStatePlane(record)) ChooseZone(record, record.Type, SZ_NONE);
  } else if (!o.utm.empty()) {
    ChooseUtm(record, o.utm);
  } else if (o.posc != 0) {
    ProjType type{};
    StateZoneType zone{};
    if (!ProjGetStateZoneFromPOSCNumber(o.posc, &type, &zone)) {
      throw Failure("no state plane zone has the POSC number " + std::to_string(o.posc));
    }
    ChooseZone(record, type, zone);
  } else {
    const ProjType type = o.statePlane27.empty() ? PT_STATEPLANE83 : PT_STATEPLANE27;
    const std::string& name = o.statePlane27.empty() ? o.statePlane83 : o.statePlane27;
    ChooseZone(record, type, static_cast<StateZoneType>(FindName(ZoneNames(), name, "zone")));
  }
}

void StoreFigure(PROJDATA& record, const Figure& figure) {
  record.Ellipsoid = figure.type;
  if (figure.type != ET_USER_DEFINED) return;
  record.MajorRadius = figure.radius;
  record.Flattening = figure.flattening;
}

void WarnOfSphere(const PROJDATA& record) {
  const Figure figure = FigureOf(record);
  if (!IsOfTheSphere(record.Type) || figure.flattening == 0) return;
  char radius[40];
  std::snprintf(radius, sizeof radius, "%.10g", figure.radius);
  Warn(ProjectionNames()[static_cast<std::size_t>(record.Type)] + " is a projection of the sphere: of the ellipsoid (" +
       FigureName(figure) + ") it takes the radius " + radius + " m and not the flattening");
}

/// The systems of 1927 are in US survey feet in the EPSG registry, those of 1983 that have a number here in metres.
void WarnOfFeet(const PROJDATA& record, const ProjectionOptions& options) {
  if (record.Type != PT_STATEPLANE27) return;
  Warn("the system of the POSC (EPSG) number " + std::to_string(options.posc) +
       " is in US survey feet, the coordinates here are metres; for feet say --" +
       (options.prefix.empty() ? "to-unit us-ft (--from-unit with --inverse)" : options.prefix + "unit us-ft") +
       ", or m to say that metres are meant");
}

/// Settings that cure a failed check, by the number of its message.
struct Cure {
  int message;
  const char* settings;  ///< each a NAME=VALUE
};

constexpr Cure kCures[] = {{20231, "scale=1"},
                           {20232, "k0=0.9996"},
                           {20233, "x0=500000"},
                           {20234, "y0=0"},
                           {20235, "lon0=9"},
                           {20236, "lon1=-40.6"},
                           {20237, "lon2=139.8"},
                           {20238, "lon3=0"},
                           {20239, "lat0=45"},
                           {20240, "lat1=33"},
                           {20241, "lat2=45"},
                           {20242, "lat3=0"},
                           {20243, "alpha=30"},
                           {20244, "lat1=40"},
                           {20245, "lat1=29.5 lat2=45.5"},
                           {20246, "alpha=30"},
                           {20247, "lat1=33 lat2=45"},
                           {20248, "ellipsoid=7030"},
                           {20249, "radius=6371000"},
                           {20250, "flattening=0.00335"},
                           {20251, "lat0=0"},
                           {20252, "zone=\"Texas Central\""},
                           {20253, "lat1=40.6 lon1=-73.8 lat2=35.5 lon2=139.8"},
                           {20254, "lat1=40.6"},
                           {20255, "lat2=35.5"},
                           {20256, "lat1=29.5 lat2=45.5"}};

/// The options of a cure: " --set lat1=33 --set lat2=45".
std::string CureOptions(const char* settings, const std::string& prefix) {
  std::string options;
  bool quoted = false, fresh = true;
  for (const char* at = settings; *at != '\0'; ++at) {
    if (fresh) options += " --" + prefix + "set ";
    if (*at == '"') quoted = !quoted;
    fresh = *at == ' ' && !quoted;
    if (!fresh) options += *at;
  }
  return options;
}

/// Makes the projection once, so that a check that fails can be explained.
void Check(PROJDATA record, const std::string& prefix) {
  try {
    const CProjector projector(&record);
  } catch (const shr::Exception& e) {
    const auto* const cure = std::find_if(std::begin(kCures), std::end(kCures),
                                          [&](const Cure& known) { return known.message == e.MessageId(); });
    if (cure == std::end(kCures)) throw;
    throw Failure(e.what() + (", for example:" + CureOptions(cure->settings, prefix)));
  }
}

/// Positions of a datum stand on its ellipsoid; on another one they lie up to hundreds of metres off.
void CompareFigures(const PROJDATA& record, const SideDatum& datum) {
  const Figure figure = FigureOf(record);
  if (figure.flattening == 0 || SameFigure(figure, datum.figure)) return;  // a sphere is chosen knowingly
  Warn((IsStatePlane(record) ? "the zone's ellipsoid (" : "the projection's ellipsoid (") + FigureName(figure) +
       ") is not that of " + datum.option + " (" + FigureName(datum.figure) + ")");
}

}  // namespace

bool ProjectionOptions::Given() const {
  return !projection.empty() || !utm.empty() || !statePlane27.empty() || !statePlane83.empty() || posc != 0 ||
         !mgrs.empty();
}

void AddProjectionOptions(CLI::App& command, ProjectionOptions& options, const std::string& prefix) {
  const std::string dashes = "--" + prefix;
  options.prefix = prefix;
  command.add_option(dashes + "proj", options.projection, "Projection by name, see: orvex list projections");
  command.add_option(dashes + "utm", options.utm, "UTM zone, for example 33N; auto: by point, with a zone column");
  command.add_flag(
      dashes + "mgrs{5}", options.mgrs,
      "MGRS references, by point; --" + prefix + "mgrs=N: N digits for each coordinate (default 5: metres)");
  command.add_option(dashes + "stateplane27", options.statePlane27, "State plane zone of 1927 by name, or auto");
  command.add_option(dashes + "stateplane83", options.statePlane83, "State plane zone of 1983 by name, or auto");
  command.add_option(dashes + "posc", options.posc, "State plane zone by POSC (EPSG) number, for example 26939");
  command.add_option(dashes + "set", options.settings, "Parameter as NAME=VALUE, see: orvex list params TYPE")
      ->allow_extra_args(false);
  command.add_option(dashes + "ellipsoid", options.ellipsoid, "Ellipsoid by name or POSC number (default WGS 84)");
  command.add_flag(dashes + "wrap", options.wrap, "Wrap longitude differences into +-180 degrees (world projections)");
}

void AddStatedOption(CLI::App& command, bool& stated) {
  command.add_flag("--stated", stated,
                   "Compute as hosts of the library get it unless they ask for exact computation (docs/accuracy.md)");
}

EllipsoidType ParseEllipsoid(const std::string& text) {
  if (!text.empty() && text.find_first_not_of("0123456789") == std::string::npos) {
    EllipsoidType type{};
    if (EllipsoidFromPOSCNumber(ParseInteger(text, "ellipsoid"), &type)) return type;
    throw Failure("no ellipsoid has the POSC number " + text);
  }
  return static_cast<EllipsoidType>(FindName(EllipsoidNames(), text, "ellipsoid"));
}

PROJDATA MakeRecord(const ProjectionOptions& options, const std::optional<SideDatum>& datum) {
  PROJDATA record{};
  StoreFigure(record, datum ? datum->figure : FigureOf(ET_WGS_84));
  ChooseProjection(record, options);
  record.bWrapLon = options.wrap;
  if (!options.ellipsoid.empty()) Set(record, "ellipsoid=" + options.ellipsoid);
  Settings settings(options);
  for (const std::string& setting : options.settings) settings.Add(Set(record, setting));
  if (settings.HasFlattening() && record.Ellipsoid != ET_USER_DEFINED) {
    throw Failure("flattening needs radius set as well");
  }
  if (IsStatePlane(record) && record.Zone == SZ_NONE)
    throw Failure("name the zone, for example --set zone=\"Texas Central\"");
  Check(record, options.prefix);
  if (settings.HasEllipsoid()) WarnOfSphere(record);
  if (options.posc != 0 && options.unit.empty()) WarnOfFeet(record, options);
  if (datum) CompareFigures(record, *datum);
  return record;
}

std::vector<std::string> ProjectionNames() {
  std::vector<std::string> names;
  for (int type = 0; type < ProjNumProjections(); ++type) {
    char name[80];
    ProjGetProjectionInfo(static_cast<ProjType>(type), name);
    names.emplace_back(name);
  }
  return names;
}

std::vector<std::string> EllipsoidNames() {
  std::vector<std::string> names;
  for (int type = ET_USER_DEFINED; type <= ET_BESSEL_NGO_1948; ++type) {
    char name[80];
    EllipsoidInfo(static_cast<EllipsoidType>(type), name, nullptr, nullptr);
    names.emplace_back(name);
  }
  return names;
}

std::vector<std::string> ZoneNames() {
  std::vector<std::string> names;
  for (int zone = 0; zone < SZ_NONE; ++zone) {
    char name[80];
    ProjGetStateZoneInfo(static_cast<StateZoneType>(zone), name, nullptr);
    names.emplace_back(name);
  }
  return names;
}

}  // namespace orvex::tool
