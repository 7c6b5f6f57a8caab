// RegressionArea - where the regression equations of a datum hold.
#pragma once

#include <optional>

#include <orvex/datum.h>

namespace orvex::tool {

/// A part of the globe, degrees; west may be below -180.
struct NamedBox {
  const char* name;
  double west, south, east, north;
};

/// The lands whose points the regression equations were fitted to; beyond them the polynomials run wild. Nothing for
/// datums of other methods.
std::optional<NamedBox> RegressionArea(DatumType datum);

}  // namespace orvex::tool
