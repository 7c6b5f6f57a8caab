// Helpers of the projection tests: golden files, single points, numerical derivatives.
#pragma once

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <string>
#include <vector>

#include <orvex/orvex.h>
#include <shr/exception.h>

#include "support/Forms.h"

namespace orvex::test {

inline constexpr double kRadiansPerDegree = 3.14159265358979323846 / 180;

/// The type with a display name; fails the test when there is none.
ProjType TypeOf(const std::string& displayName);

/// Rows of a CSV file below tests/golden: comment lines (#) skipped, fields by the names of the header line.
class CsvFile {
 public:
  explicit CsvFile(const std::string& name);
  std::size_t Rows() const { return m_rows.size(); }
  const std::string& Text(std::size_t row, const std::string& column) const;
  double Number(std::size_t row, const std::string& column) const { return std::stod(Text(row, column)); }

 private:
  std::vector<std::string> m_columns;
  std::vector<std::vector<std::string>> m_rows;
};

/// Checks every row of a golden file in both directions. Columns: projection (display name), parameters, lon, lat, x,
/// y, tol_xy (map units; empty: forward not checked), tol_deg (degrees of arc; empty: inverse not checked), origin.
/// The way of computing and, where named, the one projection to look at are the caller's.
void CheckGolden(const std::string& file, ProjAccuracy accuracy = PA_STATED, const std::string& projection = {});

/// A projector that computes exactly; fails the test where the choice is not taken.
CProjector ExactProjector(PROJDATA record);

/// Single points through a projector; an exception fails as usual.
PROJPOINT Forward(CProjector& projector, double lon, double lat);
PROJPOINT Inverse(CProjector& projector, double x, double y);

inline bool Unplottable(const PROJPOINT& p) {
  return p.x == DBL_MAX && p.y == DBL_MAX;
}

/// Derivatives of x and y by longitude and latitude, map units per radian, by a fourth-order central difference.
struct Jacobian {
  double xLon, yLon, xLat, yLat;
  /// Area scale on a sphere of the given radius: 1 where areas are kept.
  double AreaScale(double lat, double radius) const {
    return (xLon * yLat - xLat * yLon) / (radius * radius * std::cos(lat * kRadiansPerDegree));
  }
};
Jacobian JacobianAt(CProjector& projector, double lon, double lat, double stepDeg = 0.01);

/// Local scales along parallel and meridian on an ellipsoid, the cosine of the angle between them on the map, and the
/// area scale. A conformal map has h = k and cosine 0; an equal-area map has area 1.
struct LocalScale {
  double k, h, cosine, area;
};
LocalScale ScaleAt(CProjector& projector, double lon, double lat, double stepDeg = 0.01);

/// Distance in degrees of arc between two positions, correct near poles and across the antimeridian.
double ArcDegrees(const PROJPOINT& a, const PROJPOINT& b);

}  // namespace orvex::test
