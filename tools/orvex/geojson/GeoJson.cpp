// GeoJson - converts the coordinates of GeoJSON texts (RFC 7946) and keeps everything else.
#include "geojson/GeoJson.h"

#include <algorithm>
#include <atomic>
#include <cfloat>
#include <cmath>
#include <future>
#include <iostream>
#include <system_error>

#include "Failure.h"
#include "commands/Names.h"
#include "geojson/JsonNesting.h"
#include "geojson/WrittenJson.h"
#include "systems/FindSystem.h"
#include "tables/BlockConverter.h"
#include "tables/Files.h"

namespace orvex::tool {

namespace {

constexpr int kDegreeDecimals = 9, kLengthDecimals = 4;
constexpr int kMostDecimals = 15;  // to which a double is worth rounding
constexpr int kMostNesting = 100;
constexpr int kWgs84 = 4326;

std::string Written(const Json& value) {
  std::string text;
  WriteJson(text, value);
  return text;
}

/// How deep the arrays of positions of a type lie; -1 for types without coordinates of their own.
int DepthOf(const std::string& type) {
  static constexpr std::pair<const char*, int> kDepths[] = {
      {"Point", 0}, {"MultiPoint", 1}, {"LineString", 1}, {"MultiLineString", 2}, {"Polygon", 2}, {"MultiPolygon", 3}};
  for (const auto& [name, depth] : kDepths) {
    if (type == name) return depth;
  }
  return -1;
}

/// Runs through a text twice in the same order: to gather the positions, and to store the results.
class Walker {
 public:
  explicit Walker(int decimals) : m_unit(std::pow(10.0, std::min(decimals, kMostDecimals))) {}

  void Gather(const Json& object) {
    const std::string type = TypeOf(object);
    if (type == "FeatureCollection") {
      for (const Json& feature : Member(object, "features", type)) GatherFeature(feature);
    } else if (type == "Feature") {
      GatherFeature(object);
    } else {
      GatherGeometry(object);
    }
  }

  std::vector<PROJPOINT>& Points() { return m_points; }

  void Store(Json& object) {
    object.erase("crs");  // what the text was in before
    const std::string type = TypeOf(object);
    Bounds bounds;
    m_features = 0;
    if (type == "FeatureCollection") {
      for (Json& feature : object["features"]) bounds.Add(StoreFeature(feature));
      StoreBounds(object, bounds);
    } else if (type == "Feature") {
      StoreFeature(object);
    } else {
      StoreGeometry(object);
    }
  }

  std::size_t Unplottable() const { return m_unplottable; }
  /// A line for each geometry that is empty now, up to kMostComplaints of them.
  const std::vector<std::string>& Complaints() const { return m_complaints; }

 private:
  struct Bounds {
    double west = DBL_MAX, south = DBL_MAX, east = -DBL_MAX, north = -DBL_MAX;

    void Add(const Bounds& other) {
      west = std::min(west, other.west);
      south = std::min(south, other.south);
      east = std::max(east, other.east);
      north = std::max(north, other.north);
    }
  };

  [[noreturn]] void Refuse(const std::string& what) const { throw Failure(InFeature(what)); }

  std::string InFeature(const std::string& what) const {
    return m_features == 0 ? what : "feature " + std::to_string(m_features) + ": " + what;
  }

  std::string TypeOf(const Json& object) const {
    if (!object.is_object() || !object.contains("type") || !object["type"].is_string()) {
      Refuse("an object without \"type\"");
    }
    return object["type"].get<std::string>();
  }

  const Json& Member(const Json& object, const char* name, const std::string& type) const {
    if (!object.contains(name) || !object[name].is_array()) Refuse(type + " without \"" + name + "\"");
    return object[name];
  }

  void GatherFeature(const Json& feature) {
    ++m_features;
    if (TypeOf(feature) != "Feature") Refuse("not a Feature but \"" + TypeOf(feature) + "\"");
    if (!feature.contains("geometry")) Refuse("no geometry");
    if (!feature["geometry"].is_null()) GatherGeometry(feature["geometry"]);
  }

  void GatherGeometry(const Json& geometry, int nesting = 0) {
    const std::string type = TypeOf(geometry);
    if (nesting > kMostNesting) Refuse("collections too deep within each other");
    if (type == "GeometryCollection") {
      for (const Json& part : Member(geometry, "geometries", type)) GatherGeometry(part, nesting + 1);
      return;
    }
    const int depth = DepthOf(type);
    if (depth < 0) Refuse("no GeoJSON type: \"" + type + "\"");
    const Json& coordinates = Member(geometry, "coordinates", type);
    if (depth > 0 || !coordinates.empty()) GatherPositions(coordinates, depth);  // an empty Point is nowhere
  }

  void GatherPositions(const Json& value, int depth) {
    if (!value.is_array()) Refuse("coordinates that are no array");
    if (depth > 0) {
      for (const Json& part : value) GatherPositions(part, depth - 1);
      return;
    }
    if (value.size() < 2 || !IsNumber(value[0]) || !IsNumber(value[1])) {
      Refuse("a position is no pair of numbers: " + Written(value).substr(0, 40));
    }
    m_points.push_back({NumberOf(value[0]), NumberOf(value[1])});
  }

  Bounds StoreFeature(Json& feature) {
    ++m_features;
    feature.erase("crs");
    const Bounds bounds = feature["geometry"].is_null() ? Bounds{} : StoreGeometry(feature["geometry"]);
    StoreBounds(feature, bounds);
    return bounds;
  }

  Bounds StoreGeometry(Json& geometry) {
    Bounds bounds;
    if (geometry["type"] == "GeometryCollection") {
      for (Json& part : geometry["geometries"]) bounds.Add(StoreGeometry(part));
    } else {
      Json& coordinates = geometry["coordinates"];
      const std::size_t unplottable = m_unplottable;
      m_firstLost.clear();
      const int depth = DepthOf(geometry["type"]);
      if (depth > 0 || !coordinates.empty()) StorePositions(coordinates, depth, bounds);
      if (m_unplottable > unplottable) {
        Complain(m_unplottable - unplottable);
        coordinates = Json::array();
        bounds = {};
      }
    }
    StoreBounds(geometry, bounds);
    return bounds;
  }

  void Complain(std::size_t count) {
    if (m_complaints.size() >= kMostComplaints) return;
    const std::string more = count == 1 ? " has" : " and " + std::to_string(count - 1) + " more have";
    m_complaints.push_back(InFeature(m_firstLost + more + " no place in the result; the geometry is empty now"));
  }

  void StorePositions(Json& value, int depth, Bounds& bounds) {
    if (depth > 0) {
      for (Json& part : value) StorePositions(part, depth - 1, bounds);
      return;
    }
    const PROJPOINT point = m_points[m_next++];
    if (point.x == DBL_MAX || point.y == DBL_MAX) {
      ++m_unplottable;
      if (m_firstLost.empty()) m_firstLost = Written(value);
      return;
    }
    value[0] = Rounded(point.x);
    value[1] = Rounded(point.y);
    bounds.Add({value[0], value[1], value[0], value[1]});
  }

  /// Bounds that an object had are made anew; heights in them stay.
  void StoreBounds(Json& object, const Bounds& bounds) const {
    const auto box = object.find("bbox");
    if (box == object.end()) return;
    if (!box->is_array() || box->size() < 4 || bounds.west > bounds.east) {
      object.erase(box);
      return;
    }
    const std::size_t dimensions = box->size() / 2;
    (*box)[0] = bounds.west;
    (*box)[1] = bounds.south;
    (*box)[dimensions] = bounds.east;
    (*box)[dimensions + 1] = bounds.north;
  }

  double Rounded(double value) const {
    const double rounded = std::round(value * m_unit) / m_unit;
    return std::isfinite(rounded) ? rounded + 0.0 : value;  // no negative zero
  }

  double m_unit;
  std::vector<PROJPOINT> m_points;
  std::size_t m_next = 0, m_unplottable = 0, m_features = 0;
  std::string m_firstLost;  ///< position of this geometry that could not be converted
  std::vector<std::string> m_complaints;
};

/// The text as it is written: a collection with a line for each of its features.
std::string Dump(const Json& root) {
  if (root["type"] != "FeatureCollection") return Written(root) + "\n";
  std::string text = "{";
  for (const auto& [name, value] : root.items()) {
    text += (text.size() == 1 ? "\n" : ",\n") + Written(name) + ": ";
    if (name != "features") {
      WriteJson(text, value);
      continue;
    }
    text += "[";
    for (const Json& feature : value) {
      text += text.back() == '[' ? "\n" : ",\n";
      WriteJson(text, feature);
    }
    text += "\n]";
  }
  return text + "\n}\n";
}

/// The code that a text says it is in by the member "crs", 0 when it has none that is known.
int StatedCode(const Json& root) {
  const Json::json_pointer place("/crs/properties/name");
  if (!root.contains(place) || !root[place].is_string()) return 0;
  const std::string name = root[place];
  const std::size_t colon = name.rfind(':');
  const std::string code = colon == std::string::npos ? "" : name.substr(colon + 1);
  if (code == "CRS84") return kWgs84;
  const bool digits = !code.empty() && code.size() < 7 && code.find_first_not_of("0123456789") == std::string::npos;
  return digits ? ParseInteger(code, "code") : 0;
}

/// A text that says what it is in is believed.
void CompareSystems(const Json& root, int source, Kind from) {
  const int stated = StatedCode(root);
  if (stated == 0 || stated == source) return;
  const std::string label = "EPSG:" + std::to_string(stated);
  if (source != 0) throw Failure("it says that it is in " + label + ", not in EPSG:" + std::to_string(source));
  const CoordinateSystem* const system = FindCode(stated);
  if (system != nullptr && system->IsProjected() && from == Kind::Geographic) {
    throw Failure("it says that it is in " + label + ", not in longitude and latitude; say: orvex convert --from " +
                  label);
  }
}

Json SystemMember(int code) {
  return {{"type", "name"}, {"properties", {{"name", "urn:ogc:def:crs:EPSG::" + std::to_string(code)}}}};
}

/// The text with that member second, behind the type.
Json WithSystem(const Json& root, int code) {
  Json result = {{"type", root["type"]}, {"crs", SystemMember(code)}};
  for (const auto& [name, value] : root.items()) {
    if (name != "type") result[name] = value;
  }
  return result;
}

/// Converts the points in parts, each thread with a converter of its own.
void ConvertPoints(std::vector<PROJPOINT>& points, const ConverterFactory& makeConverter, int threads) {
  constexpr std::size_t kPart = 1 << 14;
  std::atomic<std::size_t> next = 0;
  const auto work = [&](const Converter& convert) {
    std::vector<PROJPOINT> part;
    for (std::size_t begin; (begin = next.fetch_add(kPart)) < points.size();) {
      const auto first = points.begin() + static_cast<std::ptrdiff_t>(begin);
      const auto count = static_cast<std::ptrdiff_t>(std::min(kPart, points.size() - begin));
      part.assign(first, first + count);
      convert(part);
      std::copy(part.begin(), part.end(), first);
    }
  };
  std::vector<std::future<void>> helpers;
  try {
    for (std::size_t i = 1; i < static_cast<std::size_t>(threads) && i * kPart < points.size(); ++i) {
      helpers.push_back(std::async(std::launch::async, work, makeConverter()));
    }
  } catch (const std::system_error&) {
    // The system gives no more threads: those that there are do it.
  }
  work(makeConverter());
  for (std::future<void>& helper : helpers) helper.get();
}

void RefuseTableOptions(const TableOptions& options) {
  if (options.keep || options.format.dms || !options.delimiter.empty() || !options.xColumn.empty() ||
      !options.yColumn.empty() || !options.order.empty() || options.decimalComma) {
    throw Failure(
        "--keep, --dms, --delimiter, --decimal-comma, --order, --x and --y belong to tables; the input is GeoJSON");
  }
}

}  // namespace

bool IsGeoJsonName(const std::string& file) {
  const std::string lower = Lower(file);
  return lower.ends_with(".geojson") || lower.ends_with(".json");
}

int ConvertGeoJson(const TableOptions& options, Kind from, Kind to, const ConverterFactory& makeConverter) {
  RefuseTableOptions(options);
  RefuseSameFile(options.file, options.output);
  const int usual = to == Kind::Geographic ? kDegreeDecimals : kLengthDecimals;
  Walker walker(options.format.decimals < 0 ? usual : options.format.decimals);
  const std::string text = ReadAll(options.file);
  Json root;
  try {
    RefuseDeepNesting(text);
    root = ParseJson(text);
    walker.Gather(root);
    CompareSystems(root, options.sourceCode, from);
  } catch (const Json::exception& e) {
    throw Failure(DisplayName(options.file) + " is no JSON: " + e.what());
  } catch (const Failure& e) {
    throw Failure(DisplayName(options.file) + ": " + e.what());
  }
  const std::size_t count = walker.Points().size();
  ConvertPoints(walker.Points(), makeConverter, ThreadCount(options));
  walker.Store(root);
  const bool said = options.resultCode != 0 && options.resultCode != kWgs84;
  OutputFile output(options.output);
  output.Write(Dump(said ? WithSystem(root, options.resultCode) : root));
  output.Commit();
  if (walker.Unplottable() == 0) return kSuccess;
  if (!options.quiet) {
    const std::string name = "orvex: " + DisplayName(options.file) + ": ";
    for (const std::string& complaint : walker.Complaints()) std::cerr << name << complaint << "\n";
    std::cerr << "orvex: points converted: " << count - walker.Unplottable()
              << ", unplottable: " << walker.Unplottable() << "\n";
  }
  return kSomePointsFailed;
}

}  // namespace orvex::tool
