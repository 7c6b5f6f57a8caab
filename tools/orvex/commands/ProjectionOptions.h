// ProjectionOptions - naming a projection and its parameters on the command line.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <orvex/projection.h>
#include <CLI/CLI.hpp>

#include "Figure.h"
#include "Parameters.h"

namespace orvex::tool {

struct ProjectionOptions {
  std::string projection;             ///< display name
  std::string utm;                    ///< "33N"
  std::string mgrs;                   ///< digits of references for each coordinate; "": none are asked for
  std::string statePlane27;           ///< zone name
  std::string statePlane83;           ///< zone name
  int posc = 0;                       ///< POSC (EPSG) number of a state plane zone
  std::vector<std::string> settings;  ///< NAME=VALUE
  std::string ellipsoid;              ///< name or POSC number
  std::string prefix;                 ///< of the options' names: "", "from-" or "to-"
  std::string unit;                   ///< of the map coordinates; "": metres
  bool wrap = false;                  ///< wrap longitude differences into +-180 degrees

  bool Given() const;
};

/// Adds the options to a command, each name with the prefix ("from-" gives --from-proj).
void AddProjectionOptions(CLI::App& command, ProjectionOptions& options, const std::string& prefix = "");

/// Adds the flag that asks for stated instead of exact computation.
void AddStatedOption(CLI::App& command, bool& stated);

/// The datum of a side of a conversion, as far as a projection asks for it.
struct SideDatum {
  std::string option;  ///< how it was named: "--from-datum nad27"
  Figure figure;
};

/// The record that the options describe; without an ellipsoid that of the datum, without one WGS 84, for zones their
/// own. Throws Failure for what cannot be understood and for parameters that the projection does not use; says so when
/// the ellipsoid is not that of the datum.
PROJDATA MakeRecord(const ProjectionOptions& options, const std::optional<SideDatum>& datum = std::nullopt);

/// Display names in the order of ProjType.
std::vector<std::string> ProjectionNames();
std::vector<std::string> EllipsoidNames();
std::vector<std::string> ZoneNames();

/// An ellipsoid by name or POSC number; throws Failure for neither.
EllipsoidType ParseEllipsoid(const std::string& text);

}  // namespace orvex::tool
