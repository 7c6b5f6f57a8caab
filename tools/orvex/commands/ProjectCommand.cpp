// ProjectCommand - orvex project: longitude and latitude to map coordinates and back.
#include <memory>

#include "Failure.h"
#include "MapSide.h"
#include "commands/ByPoint.h"
#include "commands/Commands.h"
#include "commands/ProjectionOptions.h"
#include "tables/PointTable.h"

namespace orvex::tool {

namespace {

struct Options {
  ProjectionOptions projection;
  TableOptions table;
  std::string fromUnit, toUnit;
  bool inverse = false, stated = false;
};

/// Longitude and latitude are degrees: only the map side has a unit.
std::string UnitOfMap(const Options& options) {
  const std::string& other = options.inverse ? options.toUnit : options.fromUnit;
  if (!other.empty()) {
    throw Failure(options.inverse ? "the results are degrees; the unit of the input is --from-unit"
                                  : "the input is degrees; the unit of the results is --to-unit");
  }
  return options.inverse ? options.fromUnit : options.toUnit;
}

int Run(Options& options) {
  options.projection.unit = UnitOfMap(options);
  if (IsByPoint(options.projection)) {
    return ProjectByPoint(options.projection, options.inverse, options.stated, options.table);
  }
  PROJDATA record = MakeRecord(options.projection);
  const MapSide side(record, options.projection.unit, options.stated);
  const ConverterFactory convert = [&] {
    return [own = side, inverse = options.inverse](std::vector<PROJPOINT>& points) mutable {
      inverse ? own.Unproject(points) : own.Project(points);
    };
  };
  // "Unprojected Lat/Long" stays in degrees on both sides.
  const Kind map = record.Type == PT_LATLONG ? Kind::Geographic : Kind::Projected;
  const int status = options.inverse ? ConvertTable(options.table, map, Kind::Geographic, convert)
                                     : ConvertTable(options.table, Kind::Geographic, map, convert);
  if (!options.table.quiet) side.Report();
  return status;
}

}  // namespace

void AddProjectCommand(CLI::App& app, int& status) {
  CLI::App* command = app.add_subcommand("project", "Project longitude and latitude, or convert map coordinates back");
  const auto options = std::make_shared<Options>();
  AddProjectionOptions(*command, options->projection);
  command->add_flag("-i,--inverse", options->inverse, "From map coordinates to longitude and latitude");
  command->add_option("--to-unit", options->toUnit, "Unit of the results, see: orvex list units (default m)");
  command->add_option("--from-unit", options->fromUnit, "Unit of the input, with --inverse (default m)");
  AddStatedOption(*command, options->stated);
  AddTableOptions(*command, options->table);
  command->callback([options, &status] { status = Run(*options); });
}

}  // namespace orvex::tool
