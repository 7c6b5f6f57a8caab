// Catalogue - the library's tables as one JSON text, which the package reads once.
#include <cstdio>
#include <optional>

#include <orvex/orvex.h>

#include "Call.h"
#include "Parameters.h"
#include "RegressionArea.h"
#include "Units.h"

namespace orvex::web {

namespace {

constexpr int kNameSize = 260;  // more than any name of the library needs

/// Writes objects and arrays; the caller sees to their nesting.
class Json {
 public:
  Json& Open(char bracket) {
    Separate();
    m_text += bracket;
    m_fresh = true;
    return *this;
  }
  Json& Close(char bracket) {
    m_text += bracket;
    m_fresh = false;
    return *this;
  }
  Json& Key(const char* key) {
    String(key);
    m_text += ':';
    m_fresh = true;
    return *this;
  }
  /// Names of the library are ASCII without backslashes.
  Json& String(std::string_view value) {
    Separate();
    m_text += '"';
    for (const char c : value) m_text.append(c == '"' ? "\\\"" : std::string(1, c));
    m_text += '"';
    return *this;
  }
  Json& Number(double value) {
    Separate();
    char text[40];
    std::snprintf(text, sizeof text, "%.17g", value);
    m_text += text;
    return *this;
  }
  Json& Bool(bool value) { return Word(value ? "true" : "false"); }
  Json& Code(std::optional<int> code) { return code ? Number(*code) : Word("null"); }
  std::string Take() { return std::move(m_text); }

 private:
  Json& Word(const char* word) {
    Separate();
    m_text += word;
    return *this;
  }
  void Separate() {
    if (!m_fresh) m_text += ',';
    m_fresh = false;
  }

  std::string m_text;
  bool m_fresh = true;
};

/// The code that a function of the form (what..., int*) writes, if it does.
template <class Function, class... What>
std::optional<int> CodeOf(Function function, What... what) {
  int code = 0;
  if (!function(what..., &code)) return std::nullopt;
  return code;
}

void AddParameters(Json& json) {
  json.Key("parameters").Open('[');
  for (const tool::Parameter& parameter : tool::Parameters()) {
    json.Open('{').Key("id").Number(parameter.id).Key("key").String(parameter.shortName);
    json.Key("name").String(parameter.name).Key("unit").String(parameter.unit);
    json.Key("type").Number(parameter.type).Close('}');
  }
  json.Close(']');
}

void AddProjections(Json& json) {
  json.Key("projections").Open('[');
  for (int id = 0; id < ProjNumProjections(); ++id) {
    const auto type = static_cast<ProjType>(id);
    char name[kNameSize];
    ProjGetProjectionInfo(type, name);
    json.Open('{').Key("id").Number(id).Key("name").String(name).Key("sphere").Bool(tool::IsOfTheSphere(type));
    json.Key("parameters").Open('[');
    for (int i = 0; i < ProjNumParams(type); ++i) json.Number(ProjEnumParam(type, i));
    json.Close(']').Close('}');
  }
  json.Close(']');
}

void AddEllipsoids(Json& json) {
  json.Key("ellipsoids").Open('[');
  for (int id = 1; id <= ET_BESSEL_NGO_1948; ++id) {
    const auto type = static_cast<EllipsoidType>(id);
    char name[kNameSize];
    double radius = 0, flattening = 0;
    EllipsoidInfo(type, name, &radius, &flattening);
    json.Open('{').Key("id").Number(id).Key("name").String(name).Key("radius").Number(radius);
    json.Key("flattening").Number(flattening).Key("code").Code(CodeOf(EllipsoidToPOSCNumber, type)).Close('}');
  }
  json.Close(']');
}

void AddDatums(Json& json) {
  json.Key("datums").Open('[');
  for (int id = 1; id < DatNumDatums(); ++id) {
    const auto datum = static_cast<DatumType>(id);
    char name[kNameSize];
    DatumMethod method{};
    DatGetDatumName(datum, name);
    DatGetDatumMethod(datum, &method);
    json.Open('{').Key("id").Number(id).Key("name").String(name).Key("method").Number(method);
    json.Key("reversible").Bool(DatReversible(datum) || method == DM_NTV2);
    json.Key("code").Code(CodeOf(DatGetDatumPOSCNumber, datum));
    DATUM2WGS84 p{};
    if (DatGetDatumParams(datum, &p)) {
      json.Key("ellipsoid").Number(p.Ellipsoid).Key("values").Open('[');
      for (const double value : {p.dx, p.dy, p.dz, p.rx, p.ry, p.rz, p.k, p.PMShift}) json.Number(value);
      json.Close(']');
    }
    if (const auto area = tool::RegressionArea(datum)) {
      json.Key("area")
          .Open('[')
          .Number(area->west)
          .Number(area->south)
          .Number(area->east)
          .Number(area->north)
          .Close(']');
    }
    json.Close('}');
  }
  json.Close(']');
}

void AddUnits(Json& json) {
  json.Key("units").Open('[');
  for (const tool::Unit& unit : tool::Units()) {
    json.Open('{').Key("symbol").String(unit.symbol).Key("name").String(unit.name);
    json.Key("metres").Number(unit.metres).Close('}');
  }
  json.Close(']');
}

bool ZoneExists(ProjType set, int zone) {
  PROJDATA record{};
  record.Type = set;
  record.Zone = zone;
  ProjGetStateZoneParams(&record);
  return record.Zone == zone;
}

void AddZones(Json& json, const char* key, ProjType set) {
  json.Key(key).Open('[');
  for (int id = 0; id < SZ_NONE; ++id) {
    if (!ZoneExists(set, id)) continue;
    const auto zone = static_cast<StateZoneType>(id);
    char name[kNameSize];
    int usgs = 0;
    ProjGetStateZoneInfo(zone, name, &usgs);
    json.Open('{').Key("id").Number(id).Key("name").String(name).Key("usgs").Number(usgs);
    json.Key("code").Code(CodeOf(ProjStateZoneToPOSCNumber, set, zone)).Close('}');
  }
  json.Close(']');
}

void AddGeorefMethods(Json& json) {
  json.Key("georefMethods").Open('[');
  for (int method = 0; method < RM_NONE; ++method) json.String(RefMethodName(static_cast<TransformMethod>(method)));
  json.Close(']');
}

}  // namespace
}  // namespace orvex::web

using namespace orvex::web;

ORVEX_WEB const char* ow_catalogue() {
  return Guarded<const char*>(nullptr, [] {
    Json json;
    json.Open('{').Key("version").String(ORVEX_VERSION);
    AddParameters(json);
    AddProjections(json);
    AddEllipsoids(json);
    AddDatums(json);
    AddUnits(json);
    AddZones(json, "zones1927", orvex::PT_STATEPLANE27);
    AddZones(json, "zones1983", orvex::PT_STATEPLANE83);
    AddGeorefMethods(json);
    json.Close('}');
    return Answer(json.Take());
  });
}
