// MapGeoJson - shapes and points from GeoJSON (RFC 7946), with the colours that their properties name.
#include "maps/MapGeoJson.h"

#include <cmath>
#include <string>

#include <nlohmann/json.hpp>

#include "Failure.h"
#include "commands/Names.h"
#include "geojson/JsonNesting.h"
#include "tables/Coordinate.h"
#include "tables/Files.h"

namespace orvex::tool {

namespace {

using Json = nlohmann::json;

constexpr int kDeepest = 8;  // collections in collections

class GeoJsonReader {
 public:
  explicit GeoJsonReader(const std::string& file) : m_file(file) {}

  Shapes Read() {
    const std::string text = ReadAll(m_file);
    Json json;
    try {
      RefuseDeepNesting(text);
      json = Json::parse(text);
    } catch (const Json::exception& e) {
      throw Failure(m_file + ": " + e.what());
    } catch (const Failure& e) {
      throw Failure(m_file + ": " + e.what());
    }
    ReadObject(json);
    return std::move(m_shapes);
  }

 private:
  [[noreturn]] void Fail(const std::string& what) const {
    throw Failure(m_file + ": " + (m_feature > 0 ? "feature " + std::to_string(m_feature) + ": " : "") + what);
  }

  const Json& Member(const Json& object, const char* name) const {
    if (!object.is_object() || !object.contains(name)) Fail(std::string("expected an object with \"") + name + "\"");
    return object[name];
  }

  const Json& Elements(const Json& array) const {
    if (!array.is_array()) Fail("expected an array");
    return array;
  }

  std::string TypeOf(const Json& object) const {
    const Json& type = Member(object, "type");
    if (!type.is_string()) Fail("\"type\" is no text");
    return type.get<std::string>();
  }

  void ReadObject(const Json& object) {
    const std::string type = TypeOf(object);
    if (type == "FeatureCollection") {
      for (const Json& feature : Elements(Member(object, "features"))) ReadFeature(feature);
    } else if (type == "Feature") {
      ReadFeature(object);
    } else {
      m_shapes.emplace_back();
      ReadGeometry(object);
    }
  }

  void ReadFeature(const Json& feature) {
    ++m_feature;
    if (TypeOf(feature) != "Feature") Fail("expected a feature");
    m_shapes.emplace_back();
    m_name = m_color = "";
    if (feature.contains("properties") && feature["properties"].is_object()) ReadProperties(feature["properties"]);
    const Json& geometry = Member(feature, "geometry");
    if (!geometry.is_null()) ReadGeometry(geometry);
  }

  void ReadProperties(const Json& properties) {
    const auto text = [&](const char* name) -> std::string {
      if (!properties.contains(name)) return "";
      const Json& value = properties[name];
      return value.is_string() ? value.get<std::string>() : value.is_number() ? value.dump() : "";
    };
    FeatureStyle& style = m_shapes.back().style;
    style = {text("fill"), text("fill-opacity"), text("stroke"), text("stroke-opacity"), ""};
    const std::string width = text("stroke-width");
    if (!width.empty()) {
      const auto pixels = ParseNumber(width);
      if (!pixels || *pixels < 0 || *pixels > 1000) Fail("\"stroke-width\" is no number of pixels");
      style.strokeWidth = std::to_string(std::lround(*pixels * 10));
    }
    m_name = text("name").empty() ? text("title") : text("name");
    m_color = text("marker-color");
  }

  void ReadGeometry(const Json& geometry, int depth = 0) {
    const std::string type = TypeOf(geometry);
    if (type == "GeometryCollection") {
      if (depth == kDeepest) Fail("collections of geometries are nested too deeply");
      for (const Json& part : Elements(Member(geometry, "geometries"))) ReadGeometry(part, depth + 1);
      return;
    }
    const Json& coordinates = Elements(Member(geometry, "coordinates"));
    Feature& feature = m_shapes.back();
    if (type == "Point") {
      feature.places.push_back({ReadPosition(coordinates), m_name, m_color});
    } else if (type == "MultiPoint") {
      for (const Json& position : coordinates) feature.places.push_back({ReadPosition(position), m_name, m_color});
    } else if (type == "LineString") {
      AddLine(coordinates);
    } else if (type == "MultiLineString") {
      for (const Json& line : coordinates) AddLine(line);
    } else if (type == "Polygon") {
      AddArea(coordinates);
    } else if (type == "MultiPolygon") {
      for (const Json& polygon : coordinates) AddArea(polygon);
    } else {
      Fail("there is no geometry \"" + type + "\"");
    }
  }

  PROJPOINT ReadPosition(const Json& position) const {
    if (!position.is_array() || position.size() < 2 || !position[0].is_number() || !position[1].is_number()) {
      Fail("a position is no pair of numbers");
    }
    const double lon = position[0].get<double>(), lat = position[1].get<double>();
    if (!(std::abs(lon) <= 360) || !(std::abs(lat) <= 90)) Fail("a position is no longitude and latitude");
    return {lon, lat};
  }

  Points ReadPoints(const Json& positions) const {
    Points points;
    for (const Json& position : Elements(positions)) AddPoint(points, ReadPosition(position));
    return points;
  }

  void AddLine(const Json& positions) {
    Points points = ReadPoints(positions);
    if (points.size() >= 2) m_shapes.back().lines.push_back(std::move(points));
  }

  void AddArea(const Json& rings) {
    Area area;
    for (const Json& ring : Elements(rings)) {
      Points points = ReadPoints(ring);
      if (points.size() < 3) continue;
      AddPoint(points, points.front());
      area.push_back(std::move(points));
    }
    if (!area.empty()) m_shapes.back().areas.push_back(std::move(area));
  }

  std::string m_file, m_name, m_color;
  int m_feature = 0;
  Shapes m_shapes;
};

}  // namespace

bool IsGeoJson(const std::string& file) {
  const std::string name = Lower(file);
  return name.ends_with(".json") || name.ends_with(".geojson");
}

Shapes ReadGeoJson(const std::string& file) {
  return GeoJsonReader(file).Read();
}

}  // namespace orvex::tool
