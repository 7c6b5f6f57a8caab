// Conversion - the contract of the projection modules: what one call of a module gets.
#pragma once

#include "orvex/projdata.h"
#include "points/PointView.h"

namespace orvex::detail {

/// What the driver does to the points around a module's formula: degrees to radians, false origin and scale forward;
/// scale, false origin, radians to degrees back; with all its screening and normalising.
struct DriverSteps {
  double xOrg, yOrg, scale;
  double lon0 = 0;  ///< exact computation: degrees from which the module counts longitudes; the record's Lon0 is then 0
};

/// One call of a module. Points are converted in place.
struct Conversion {
  PROJDATA* work;            ///< the driver's private record, its angles in radians; null: the call answers false
  PointView points;          ///< null: the call asserts
  int count;                 ///< below 1: the call asserts
  const DriverSteps* steps;  ///< null: radians on the geographic side, unscaled about the natural origin on the other
  bool exact = false;        ///< exact computation, which needs steps
};

/// Forward or inverse of a module. False only when the whole call fails; a point that cannot be plotted is marked and
/// sets the record's result to 1.
using ConvertFunction = bool(const Conversion& call);

/// Whether a record, as a module gets it for exact computation, has an exact form: whether its parameters define a map.
using ExactFormTest = bool(const PROJDATA& work);

}  // namespace orvex::detail
