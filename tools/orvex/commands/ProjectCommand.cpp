// ProjectCommand - orvex project: longitude and latitude to map coordinates and back.
#include <memory>

#include "ProjectPoints.h"
#include "commands/ByPoint.h"
#include "commands/Commands.h"
#include "commands/ProjectionOptions.h"
#include "tables/PointTable.h"

namespace orvex::tool {

namespace {

struct Options {
  ProjectionOptions projection;
  TableOptions table;
  bool inverse = false;
};

int Run(const Options& options) {
  if (IsByPoint(options.projection)) return ProjectByPoint(options.projection, options.inverse, options.table);
  PROJDATA record = MakeRecord(options.projection);
  const CProjector projector(&record);
  const Direction direction = options.inverse ? Direction::Inverse : Direction::Forward;
  const ConverterFactory convert = [&] {
    return
        [own = projector, direction](std::vector<PROJPOINT>& points) mutable { ProjectPoints(own, direction, points); };
  };
  // "Unprojected Lat/Long" stays in degrees on both sides.
  const Kind map = record.Type == PT_LATLONG ? Kind::Geographic : Kind::Projected;
  return options.inverse ? ConvertTable(options.table, map, Kind::Geographic, convert)
                         : ConvertTable(options.table, Kind::Geographic, map, convert);
}

}  // namespace

void AddProjectCommand(CLI::App& app, int& status) {
  CLI::App* command = app.add_subcommand("project", "Project longitude and latitude, or convert map coordinates back");
  const auto options = std::make_shared<Options>();
  AddProjectionOptions(*command, options->projection);
  command->add_flag("-i,--inverse", options->inverse, "From map coordinates to longitude and latitude");
  AddTableOptions(*command, options->table);
  command->callback([options, &status] { status = Run(*options); });
}

}  // namespace orvex::tool
