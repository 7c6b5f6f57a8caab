// SystemTable - the rows that scripts/make-systems wrote.
#include "systems/SystemTable.h"

#include <algorithm>

namespace orvex::tool {

namespace {

using enum Axes;

struct Method {
  int code;
  std::string_view name;
};

#define ORVEX_DATUM(...) {__VA_ARGS__},
#define ORVEX_AREA(...) {__VA_ARGS__},
#define ORVEX_UNIT(...) {__VA_ARGS__},
#define ORVEX_METHOD(...) {__VA_ARGS__},
#define ORVEX_PROJECTION(...) {__VA_ARGS__},
#define ORVEX_SYSTEM(...) {__VA_ARGS__},
#define ORVEX_REGION(...) {__VA_ARGS__},

constexpr ReferenceDatum kDatums[] = {
#include "systems/table/Datums.def"
};
constexpr Area kAreas[] = {
#include "systems/table/Areas.def"
};
constexpr AxisUnit kUnits[] = {
#include "systems/table/Units.def"
};
constexpr Method kMethods[] = {
#include "systems/table/Methods.def"
};
constexpr ProjectionDefinition kProjections[] = {
#include "systems/table/Projections.def"
};
constexpr CoordinateSystem kSystems[] = {
#include "systems/table/Systems.def"
};

struct Region {
  int datum;
  std::string_view name;
};
constexpr Region kRegions[] = {
#include "systems/table/Regions.def"
};

constexpr bool PlacesExist(const CoordinateSystem& system) {
  const auto within = [](int place, std::size_t size) { return static_cast<std::size_t>(place) < size; };
  return within(system.datumPlace, std::size(kDatums)) && within(system.areaPlace, std::size(kAreas)) &&
         within(system.unitPlace, std::size(kUnits)) &&
         (!system.IsProjected() || within(system.projectionPlace, std::size(kProjections)));
}

constexpr auto kCode = [](const auto& row) { return row.code; };
static_assert(std::ranges::is_sorted(kSystems, {}, kCode) && std::ranges::is_sorted(kMethods, {}, kCode));
static_assert(std::ranges::adjacent_find(kSystems, {}, kCode) == std::end(kSystems));
static_assert(std::ranges::all_of(kSystems, PlacesExist));

}  // namespace

const ReferenceDatum& CoordinateSystem::Datum() const {
  return kDatums[datumPlace];
}

const AxisUnit& CoordinateSystem::UnitOfAxes() const {
  return kUnits[unitPlace];
}

const Area& CoordinateSystem::AreaOfUse() const {
  return kAreas[areaPlace];
}

const ProjectionDefinition& CoordinateSystem::Projection() const {
  return kProjections[projectionPlace];
}

std::string CoordinateSystem::Label() const {
  return "EPSG:" + std::to_string(code);
}

std::span<const CoordinateSystem> CoordinateSystems() {
  return kSystems;
}

std::string_view MethodName(int method) {
  const auto* const row = std::ranges::lower_bound(kMethods, method, {}, kCode);
  return row != std::end(kMethods) && row->code == method ? row->name : "";
}

std::string_view DatumRegion(int datum) {
  const auto* const found = std::ranges::find(kRegions, datum, &Region::datum);
  return found == std::end(kRegions) ? std::string_view() : found->name;
}

}  // namespace orvex::tool
