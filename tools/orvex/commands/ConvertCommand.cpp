// ConvertCommand - orvex convert: map coordinates of one projection and datum to those of another, in one stream.
#include <memory>
#include <optional>

#include "Failure.h"
#include "MapSide.h"
#include "commands/ByPoint.h"
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
  bool stated = false;
  TableOptions table;
};

/// One side: longitude and latitude without map.
struct Side {
  std::optional<MapSide> map;
  Figure figure;  ///< of the projection
};

Side MakeSide(const ProjectionOptions& options, const std::optional<SideDatum>& datum, bool stated) {
  Side side;
  if (options.Given()) {
    const PROJDATA record = MakeRecord(options, datum);
    side.figure = FigureOf(record);
    if (record.Type != PT_LATLONG) side.map.emplace(record, options.unit, stated);
  }
  if (!side.map && !options.unit.empty()) {
    throw Failure("longitude and latitude are degrees; --" + options.prefix + "unit needs a projection");
  }
  return side;
}

std::optional<SideDatum> MakeSideDatum(const char* option, const std::string& datum, const std::string& ini) {
  if (datum.empty()) return std::nullopt;
  return SideDatum{option + (" " + datum), DatumFigure(datum, ini)};
}

/// Between two ellipsoids there is always a change of datum, by 200 m in North America.
void CompareSides(const Side& from, const Side& to) {
  if (!from.map || !to.map || SameFigure(from.figure, to.figure)) return;
  if (from.figure.flattening == 0 || to.figure.flattening == 0) return;  // a sphere is chosen knowingly
  Warn("the sides stand on different ellipsoids (" + FigureName(from.figure) + ", " + FigureName(to.figure) +
       "); without --from-datum and --to-datum positions are not shifted");
}

/// The conversion; every copy has library handles of its own.
struct Steps {
  std::optional<MapSide> from;
  std::optional<DatumConversion> datums;
  std::optional<MapSide> to;

  void operator()(std::vector<PROJPOINT>& points) {
    if (from) from->Unproject(points);
    if (datums) datums->Convert(points);
    if (to) to->Project(points);
  }

  void Report() const {
    if (from) from->Report();
    if (datums) datums->Report();
    if (to) to->Report();
  }
};

int Run(const Options& options) {
  if (!options.fromSystem.empty() || !options.toSystem.empty() || IsByPoint(options.from) || IsByPoint(options.to)) {
    return ConvertSystems({options.fromSystem, options.from, options.fromDatum, "from"},
                          {options.toSystem, options.to, options.toDatum, "to"}, {options.ini, options.stated},
                          options.table);
  }
  if (options.fromDatum.empty() != options.toDatum.empty()) throw Failure("name both datums or none");
  const auto fromDatum = MakeSideDatum("--from-datum", options.fromDatum, options.ini);
  const auto toDatum = MakeSideDatum("--to-datum", options.toDatum, options.ini);
  const Side from = MakeSide(options.from, fromDatum, options.stated),
             to = MakeSide(options.to, toDatum, options.stated);
  std::optional<DatumConversion> datums;
  if (!options.fromDatum.empty()) {
    datums.emplace(options.fromDatum, options.toDatum, options.ini, options.stated);
  } else {
    CompareSides(from, to);
  }
  if (!from.map && !to.map && !datums) throw Failure("nothing to convert: name a projection or two datums");
  const Steps steps{from.map, datums, to.map};
  const int status = ConvertTable(options.table, from.map ? Kind::Projected : Kind::Geographic,
                                  to.map ? Kind::Projected : Kind::Geographic, [&] { return Steps(steps); });
  if (!options.table.quiet) steps.Report();
  return status;
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
  command->add_option("--from-unit", options->from.unit, "Unit of the input, see: orvex list units (default m)");
  command->add_option("--to-unit", options->to.unit, "Unit of the results (default m)");
  command->add_option("--from-datum", options->fromDatum, "Source datum: name, number or POSC code");
  command->add_option("--to-datum", options->toDatum, "Destination datum");
  AddIniOption(*command, options->ini);
  AddGridsOption(*command);
  AddStatedOption(*command, options->stated);
  AddTableOptions(*command, options->table);
  command->callback([options, &status] { status = Run(*options); });
}

}  // namespace orvex::tool
