// PrjTMerc - Transverse Mercator and Gauss-Kruger, sphere and ellipsoid.
// Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987), p. 48-65; the equations stand with the
// shared formulas in projections/TransverseMercator.h. Flattening 0 selects the closed forms on the sphere. Round trip
// on WGS 84: below 1 mm within 3 degrees of the central meridian, see docs/accuracy.md.
#include "projections/Modules.h"
#include "projections/TransverseMercator.h"

namespace orvex::detail::ORVEX_LEVEL::PrjTMerc {

namespace {

constexpr Site kForwardSite{"PrjTMerc", 220, 222};
constexpr Site kInverseSite{"PrjTMerc", 449, 451};

}  // namespace

bool Forward(const Conversion& call) {
  return TransverseForward<TMGuards::General>(call, kForwardSite);
}

bool Inverse(const Conversion& call) {
  return TransverseInverse<TMGuards::General>(call, kInverseSite);
}

bool HasExactForm(const PROJDATA& work) {
  return HasExactTransverseForm(work);
}

}  // namespace orvex::detail::ORVEX_LEVEL::PrjTMerc
