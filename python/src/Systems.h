// Systems - registered coordinate systems, from the table of the command-line host.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace orvex::python {

/// Bounds of an area of use in degrees; west is greater than east where it crosses the 180th meridian.
struct SystemArea {
  std::string name;
  double west, south, east, north;
};

struct System {
  int code;
  std::string name;
  std::string record;                          ///< bytes of the projection; longitudes from Greenwich. "": geographic
  std::optional<std::array<double, 6>> plane;  ///< what is done to the map's coordinates afterwards
  double unit;                                 ///< metres or degrees
  double meridian;                             ///< of a geographic system: degrees east of Greenwich
  int frame;                                   ///< equal for datums that differ by the prime meridian alone
  std::string datum;                           ///< the registry's name
  int catalogue;                               ///< number of the datum in the library's catalogue, 0 when it lacks it
  SystemArea area;
  bool deprecated;
};

/// By code ("EPSG:32039", "32039") or name. Throws tool::Failure when there is none, or the library cannot represent
/// it.
System FindSystem(const std::string& text);

struct SystemRow {
  int code;
  std::string name;
  bool projected;
  std::string area;
  bool deprecated;
};

/// The systems that hold every word of a text in their code, name or area.
std::vector<SystemRow> SearchSystems(const std::string& text);

}  // namespace orvex::python
