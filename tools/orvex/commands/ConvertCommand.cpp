// ConvertCommand - orvex convert: map coordinates of one projection and datum to those of another, in one stream.
#include <memory>
#include <optional>

#include "Failure.h"
#include "ProjectPoints.h"
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
  TableOptions table;
};

/// One side: longitude and latitude without projector.
struct Side {
  std::optional<CProjector> projector;
  Figure figure;  ///< of the projection
};

Side MakeSide(const ProjectionOptions& options, const std::optional<SideDatum>& datum) {
  if (!options.Given()) return {};
  PROJDATA record = MakeRecord(options, datum);
  if (record.Type == PT_LATLONG) return {};
  return {std::optional<CProjector>(std::in_place, &record), FigureOf(record)};
}

std::optional<SideDatum> MakeSideDatum(const char* option, const std::string& datum, const std::string& ini) {
  if (datum.empty()) return std::nullopt;
  return SideDatum{option + (" " + datum), DatumFigure(datum, ini)};
}

/// Between two ellipsoids there is always a change of datum, by 200 m in North America.
void CompareSides(const Side& from, const Side& to) {
  if (!from.projector || !to.projector || SameFigure(from.figure, to.figure)) return;
  if (from.figure.flattening == 0 || to.figure.flattening == 0) return;  // a sphere is chosen knowingly
  Warn("the sides stand on different ellipsoids (" + FigureName(from.figure) + ", " + FigureName(to.figure) +
       "); without --from-datum and --to-datum positions are not shifted");
}

/// The conversion; every copy has library handles of its own.
struct Steps {
  std::optional<CProjector> from;
  std::optional<DatumConversion> datums;
  std::optional<CProjector> to;

  void operator()(std::vector<PROJPOINT>& points) {
    if (from) ProjectPoints(*from, Direction::Inverse, points);
    if (datums) datums->Convert(points);
    if (to) ProjectPoints(*to, Direction::Forward, points);
  }
};

int Run(const Options& options) {
  if (!options.fromSystem.empty() || !options.toSystem.empty() || IsByPoint(options.from) || IsByPoint(options.to)) {
    return ConvertSystems({options.fromSystem, options.from, options.fromDatum, "from"},
                          {options.toSystem, options.to, options.toDatum, "to"}, options.ini, options.table);
  }
  if (options.fromDatum.empty() != options.toDatum.empty()) throw Failure("name both datums or none");
  const Side fromSide = MakeSide(options.from, MakeSideDatum("--from-datum", options.fromDatum, options.ini));
  const Side toSide = MakeSide(options.to, MakeSideDatum("--to-datum", options.toDatum, options.ini));
  const std::optional<CProjector>&from = fromSide.projector, &to = toSide.projector;
  std::optional<DatumConversion> datums;
  if (!options.fromDatum.empty()) {
    datums.emplace(options.fromDatum, options.toDatum, options.ini);
  } else {
    CompareSides(fromSide, toSide);
  }
  if (!from && !to && !datums) throw Failure("nothing to convert: name a projection or two datums");
  return ConvertTable(options.table, from ? Kind::Projected : Kind::Geographic, to ? Kind::Projected : Kind::Geographic,
                      ConverterFactory([&] {
                        return Steps{from, datums, to};
                      }));
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
