// Units - lengths in other units than the library's metres.
#include "Units.h"

#include <cfloat>

#include <iterator>
#include <vector>

#include "commands/Names.h"

namespace orvex::tool {

namespace {

constexpr double kFoot = 0.3048;                // since 1959
constexpr double kUsFoot = 1200.0 / 3937;       // US survey foot
constexpr double kClarkeFoot = 0.3047972654;    // EPSG unit 9005
constexpr double kIndianFoot = 12 / 39.370142;  // EPSG unit 9080
constexpr double kSearsFoot = 12 / 39.370147;   // EPSG unit 9041
constexpr double kGermanMetre = 1.0000135965;   // EPSG unit 9031, legal metre of 1893

constexpr Unit kUnits[] = {{"m", "metre", 1},
                           {"km", "kilometre", 1000},
                           {"dm", "decimetre", 0.1},
                           {"cm", "centimetre", 0.01},
                           {"mm", "millimetre", 0.001},
                           {"ft", "foot", kFoot},
                           {"us-ft", "US survey foot", kUsFoot},
                           {"in", "inch", kFoot / 12},
                           {"us-in", "US survey inch", kUsFoot / 12},
                           {"yd", "yard", 3 * kFoot},
                           {"us-yd", "US survey yard", 3 * kUsFoot},
                           {"ch", "chain", 66 * kFoot},
                           {"us-ch", "US survey chain", 66 * kUsFoot},
                           {"link", "link", 0.66 * kFoot},
                           {"us-link", "US survey link", 0.66 * kUsFoot},
                           {"fath", "fathom", 6 * kFoot},
                           {"mi", "mile", 5280 * kFoot},
                           {"us-mi", "US survey mile", 5280 * kUsFoot},
                           {"nmi", "nautical mile", 1852},
                           {"ft-clarke", "Clarke's foot", kClarkeFoot},
                           {"ind-ft", "Indian foot", kIndianFoot},
                           {"ft-sears", "British foot (Sears 1922)", kSearsFoot},
                           {"m-german", "German legal metre", kGermanMetre}};

/// What people type besides, and the symbol that it means.
constexpr const char* kAliases[][2] = {{"meter", "m"},
                                       {"metres", "m"},
                                       {"meters", "m"},
                                       {"kilometer", "km"},
                                       {"kmi", "nmi"},
                                       {"feet", "ft"},
                                       {"ift", "ft"},
                                       {"intl foot", "ft"},
                                       {"international foot", "ft"},
                                       {"usft", "us-ft"},
                                       {"ftus", "us-ft"},
                                       {"us foot", "us-ft"},
                                       {"us survey feet", "us-ft"},
                                       {"survey foot", "us-ft"},
                                       {"miles", "mi"}};

/// Marked points stay marked.
template <class Change>
void ChangeLive(std::vector<PROJPOINT>& points, Change change) {
  for (PROJPOINT& p : points) {
    if (p.x != DBL_MAX && p.y != DBL_MAX) p = {change(p.x), change(p.y)};
  }
}

}  // namespace

std::span<const Unit> Units() {
  return kUnits;
}

const Unit& FindUnit(const std::string& text) {
  std::string wanted = text;
  for (const auto& [alias, symbol] : kAliases) {
    if (Lower(text) == alias) wanted = symbol;
  }
  std::vector<std::string> names;
  for (const Unit& unit : kUnits) names.emplace_back(unit.symbol);
  for (const Unit& unit : kUnits) names.emplace_back(unit.name);
  return kUnits[FindName(names, wanted, "unit") % std::size(kUnits)];
}

double MetresIn(const std::string& unit) {
  return unit.empty() ? 1 : FindUnit(unit).metres;
}

void FromMetres(std::vector<PROJPOINT>& points, double metresInUnit) {
  if (metresInUnit != 1) ChangeLive(points, [=](double length) { return length / metresInUnit; });
}

void ToMetres(std::vector<PROJPOINT>& points, double metresInUnit) {
  if (metresInUnit != 1) ChangeLive(points, [=](double length) { return length * metresInUnit; });
}

}  // namespace orvex::tool
