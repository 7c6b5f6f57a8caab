// SystemCommands - orvex list crs, orvex show.
#include "commands/SystemCommands.h"

#include <cstdio>
#include <memory>

#include <orvex/orvex.h>

#include "Failure.h"
#include "commands/DatumOptions.h"
#include "commands/Listing.h"
#include "commands/ProjectionOptions.h"
#include "systems/FindSystem.h"
#include "systems/SystemRecord.h"
#include "tables/Coordinate.h"

namespace orvex::tool {

namespace {

struct ListOptions {
  std::vector<std::string> words;
  std::string at;
  bool csv = false;
};

/// "13.4,52.5": longitude and latitude.
PROJPOINT ParsePlace(const std::string& text) {
  const std::size_t comma = text.find(',');
  if (comma != std::string::npos) {
    const std::optional<double> x = ParseLongitude(text.substr(0, comma)), y = ParseLatitude(text.substr(comma + 1));
    if (x && y) return {*x, *y};
  }
  throw Failure("\"" + text + "\" is not a place: longitude,latitude");
}

int List(const ListOptions& options) {
  std::string text;
  for (const std::string& word : options.words) text += word + " ";
  std::optional<PROJPOINT> place;
  if (!options.at.empty()) place = ParsePlace(options.at);
  const auto systems = SearchSystems(text, place);
  if (systems.empty()) throw Failure("no coordinate system has all of these words in its name or area");
  std::vector<Column> columns{{"CODE", 6}, {"STATE", -10}, {"UNIT", -16}, {"NAME", 0}};
  if (options.csv) columns.push_back({"AREA", 0});
  Listing list(options.csv, {}, columns);
  for (const CoordinateSystem* system : systems) {
    const char* const state = !WhyNotRepresented(*system).empty() ? "refused"
                              : system->deprecated                ? "deprecated"
                              : options.csv                       ? ""
                                                                  : "-";
    std::vector<std::string> cells{std::to_string(system->code), state, std::string(system->UnitOfAxes().name),
                                   std::string(system->name)};
    if (options.csv) cells.emplace_back(system->AreaOfUse().name);
    list.Add(cells);
  }
  return kSuccess;
}

double AsDouble(PROJDATA record, int id) {
  double value = 0;
  ProjGetParam(&record, id, &value);
  return value;
}

/// The record as options of orvex project would set it, without what is 0 (a scale of 0 counts as 1).
void ShowRecord(const SystemRecord& made) {
  PROJDATA record = made.record;
  char name[80];
  ProjGetProjectionInfo(record.Type, name);
  std::printf("record      %s\n", name);
  for (const Parameter& parameter : Parameters()) {
    if (!ProjUsesParam(record.Type, parameter.id) || parameter.type == PDT_ELLIPSOID) continue;
    if (parameter.type == PDT_DOUBLE) {
      const double value = AsDouble(record, parameter.id);
      if (value != 0) std::printf("            %s = %.15g\n", parameter.shortName.c_str(), value);
    } else if (parameter.type == PDT_BOOL) {
      bool value = false;
      ProjGetParam(&record, parameter.id, &value);
      std::printf("            %s = %s\n", parameter.shortName.c_str(), value ? "yes" : "no");
    }
  }
  std::printf("            radius = %.12g, flattening = %.17g\n", +record.MajorRadius, +record.Flattening);
  if (made.turn) {
    std::printf("            then turned by %.15g degrees and moved by %.15g, %.15g\n", made.turn->degrees,
                made.turn->x0, made.turn->y0);
  }
}

void ShowDatum(const ReferenceDatum& datum) {
  std::printf("datum       %s (EPSG %d)\n", datum.name.data(), datum.code);
  if (datum.catalogue == 0) {
    std::printf("catalogue   lacks this datum: no change to another one\n");
  } else {
    std::printf("catalogue   %d %s\n", datum.catalogue,
                DatumNames("")[static_cast<std::size_t>(datum.catalogue)].c_str());
  }
  std::printf("ellipsoid   %s (a = %.12g m, 1/f = %.12g)\n", datum.ellipsoid.data(), datum.radius,
              datum.flattening == 0 ? 0 : 1 / datum.flattening);
  std::printf("meridian    %s (%.12g degrees east of Greenwich)\n", datum.meridian.data(), datum.longitude);
}

int Show(const std::string& text) {
  const CoordinateSystem& system = FindSystem(text);
  std::printf("name        %s\ncode        %s%s\nkind        %s\n", system.name.data(), system.Label().c_str(),
              system.deprecated ? " (deprecated)" : "", system.IsProjected() ? "projected" : "geographic");
  const std::string reason = WhyNotRepresented(system);
  if (system.IsProjected()) {
    std::printf("base        EPSG:%d\nmethod      %s\n", system.base, MethodName(system.Projection().method).data());
    if (reason.empty()) ShowRecord(MakeSystemRecord(system));
  }
  if (!reason.empty()) std::printf("refused     %s\n", reason.c_str());
  ShowDatum(system.Datum());
  const AxisUnit& unit = system.UnitOfAxes();
  std::printf("unit        %s (%.16g %s)\n", unit.name.data(), unit.factor, system.IsProjected() ? "m" : "degrees");
  const Area& area = system.AreaOfUse();
  std::printf("area        %s\n            longitude %.7g to %.7g, latitude %.7g to %.7g\n", area.name.data(),
              area.west, area.east, area.south, area.north);
  return kSuccess;
}

}  // namespace

void AddListSystems(CLI::App& list, int& status) {
  CLI::App* command =
      list.add_subcommand("crs", "The registered coordinate systems whose name or area holds all words");
  const auto options = std::make_shared<ListOptions>();
  command->add_option("TEXT", options->words, "Words of the name, the code or the area");
  command->add_option("--at", options->at, "Only those in whose area a place lies: LON,LAT");
  command->add_flag("--csv", options->csv, "Comma-separated, with the areas, for other programs");
  command->callback([options, &status] { status = List(*options); });
}

void AddShowCommand(CLI::App& app, int& status) {
  CLI::App* command = app.add_subcommand("show", "Explain a registered coordinate system");
  const auto text = std::make_shared<std::vector<std::string>>();
  command->add_option("CRS", *text, "Code (EPSG:32039) or name")->required();
  command->callback([text, &status] {
    std::string name;
    for (const std::string& word : *text) name += (name.empty() ? "" : " ") + word;
    status = Show(name);
  });
}

}  // namespace orvex::tool
