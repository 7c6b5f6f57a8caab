// Forms - records from short texts, and one record for every projection that draws in each of its forms. Free of the
// test framework, so that the benchmarks share it.
#pragma once

#include <span>
#include <string_view>

#include <orvex/orvex.h>

namespace orvex::test {

/// A zero-filled record with the fields named in `parameters` set: "Lat0=40;Lon0=-96;Ellipsoid=15". Field names as in
/// PROJDATA; besides R or a (radius, user-defined ellipsoid), f and e2 (flattening, eccentricity squared), wrap
/// (bWrapLon). Without an ellipsoid the record has WGS 84. Throws std::invalid_argument for a name it does not know.
PROJDATA Record(ProjType type, std::string_view parameters);

/// One projection in one form.
struct ProjectionForm {
  ProjType type;
  const char* form;
  const char* parameters;           ///< for Record
  double west, east, south, north;  ///< where it is used, degrees; a place may still lie outside the domain
  double roundTripDeg;              ///< how far the inverse of the forward may lie from the place, degrees of arc

  PROJDATA MakeRecord() const { return Record(type, parameters); }
  /// The place at fractions (0 to 1) of the box.
  PROJPOINT Place(double u, double v) const { return {west + u * (east - west), south + v * (north - south)}; }
};

/// Every projection but the unprojected one, in every form and aspect that has formulas of its own.
std::span<const ProjectionForm> AllProjections();

}  // namespace orvex::test
