// ConvertCommand - orvex convert: map coordinates of one projection and datum to those of another, in one stream.
#include <memory>
#include <optional>

#include "Failure.h"
#include "ProjectPoints.h"
#include "commands/Commands.h"
#include "commands/DatumOptions.h"
#include "commands/ProjectionOptions.h"
#include "commands/SystemConversion.h"
#include "tables/PointTable.h"

namespace orvex::tool {

namespace {

struct Options {
  ProjectionOptions from, to;
  std::string fromSystem, toSystem;
  std::string fromDatum, toDatum, ini;
  TableOptions table;
};

std::optional<CProjector> MakeProjector(const ProjectionOptions& options) {
  if (!options.Given()) return std::nullopt;  // longitude and latitude
  PROJDATA record = MakeRecord(options);
  if (record.Type == PT_LATLONG) return std::nullopt;
  return std::optional<CProjector>(std::in_place, &record);
}

int Run(const Options& options) {
  if (!options.fromSystem.empty() || !options.toSystem.empty()) {
    return ConvertSystems({options.fromSystem, options.from, options.fromDatum, "from"},
                          {options.toSystem, options.to, options.toDatum, "to"}, options.ini, options.table);
  }
  if (options.fromDatum.empty() != options.toDatum.empty()) throw Failure("name both datums or none");
  std::optional<CProjector> from = MakeProjector(options.from), to = MakeProjector(options.to);
  std::optional<DatumConversion> datums;
  if (!options.fromDatum.empty()) datums.emplace(options.fromDatum, options.toDatum, options.ini);
  if (!from && !to && !datums) throw Failure("nothing to convert: name a projection or two datums");
  return ConvertTable(options.table, from ? Kind::Projected : Kind::Geographic, to ? Kind::Projected : Kind::Geographic,
                      [&](std::vector<PROJPOINT>& points) {
                        if (from) ProjectPoints(*from, Direction::Inverse, points);
                        if (datums) datums->Convert(points);
                        if (to) ProjectPoints(*to, Direction::Forward, points);
                      });
}

}  // namespace

void AddConvertCommand(CLI::App& app, int& status) {
  CLI::App* command = app.add_subcommand(
      "convert", "Convert between projections through datums; a side without projection is in degrees");
  const auto options = std::make_shared<Options>();
  command->add_option("--from", options->fromSystem, "Source system: EPSG code or name, see: orvex list crs TEXT");
  command->add_option("--to", options->toSystem, "Destination system");
  AddProjectionOptions(*command, options->from, "from-");
  AddProjectionOptions(*command, options->to, "to-");
  command->add_option("--from-datum", options->fromDatum, "Source datum: name, number or POSC code");
  command->add_option("--to-datum", options->toDatum, "Destination datum");
  command->add_option("--ini", options->ini, "INI file with custom datums");
  AddTableOptions(*command, options->table);
  command->callback([options, &status] { status = Run(*options); });
}

}  // namespace orvex::tool
