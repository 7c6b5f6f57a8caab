// SystemTable - the coordinate systems of the EPSG Dataset: projected ones and geographic ones of two dimensions.
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

#include <orvex/projection.h>

namespace orvex::tool {

/// How the two axes run, whichever comes first in the registry. The tool always takes x before y.
enum class Axes : unsigned char { EastNorth, WestNorth, WestSouth, Height };

struct ReferenceDatum {
  int code;
  int frame;      ///< code of the datum that differs by nothing but the prime meridian, which is Greenwich there
  int catalogue;  ///< number in the library's catalogue of datums, 0 when it lacks the datum
  std::string_view name, ellipsoid;
  double radius;      ///< semi-major axis, metres
  double flattening;  ///< 0: sphere
  std::string_view meridian;
  double longitude;  ///< of the prime meridian, degrees east of Greenwich
};

/// Bounds of an area of use in degrees; west is greater than east where it crosses the 180th meridian.
struct Area {
  std::string_view name;
  double west, south, east, north;

  /// Whether a point (degrees, from Greenwich) lies in the area or within a margin of it, in degrees.
  bool Contains(const PROJPOINT& point, double margin = 0) const;
};

struct AxisUnit {
  std::string_view name;
  double factor;  ///< metres or degrees
};

/// A method with its parameters in the order of the registry: degrees, metres, plain numbers.
struct ProjectionDefinition {
  int method;
  std::array<double, 7> parameters;
};

struct CoordinateSystem {
  int code;
  std::string_view name;
  int base;  ///< code of the geographic system that a projected one is based on; its own for a geographic one
  short datumPlace, projectionPlace;
  unsigned char unitPlace;
  Axes axes;
  short areaPlace;
  bool deprecated;

  const ReferenceDatum& Datum() const;
  const AxisUnit& UnitOfAxes() const;
  const Area& AreaOfUse() const;
  constexpr bool IsProjected() const { return projectionPlace >= 0; }
  /// Of a projected system.
  const ProjectionDefinition& Projection() const;
  /// "EPSG:32039"
  std::string Label() const;
};

/// All systems by ascending code.
std::span<const CoordinateSystem> CoordinateSystems();

/// Where a datum of the library's catalogue is used, in words; "" for numbers that it has not.
std::string_view DatumRegion(int datum);

/// The registry's name of a method.
std::string_view MethodName(int method);

}  // namespace orvex::tool
