// ListCommand - orvex list: the catalogues as tables.
#include <algorithm>
#include <cstdio>
#include <memory>

#include <orvex/orvex.h>

#include "Failure.h"
#include "Units.h"
#include "commands/Commands.h"
#include "commands/DatumOptions.h"
#include "commands/Listing.h"
#include "commands/Names.h"
#include "commands/ProjectionOptions.h"
#include "commands/SystemCommands.h"
#include "systems/SystemTable.h"

namespace orvex::tool {

namespace {

struct Options {
  std::vector<std::string> words;
  std::string ini, projection;
  bool csv = false;
};

/// A code, or a dash for none; nothing in CSV.
std::string Code(const Options& options, int code) {
  if (code != 0) return std::to_string(code);
  return options.csv ? "" : "-";
}

std::string Number(const char* format, double value) {
  char text[40];
  std::snprintf(text, sizeof text, format, value);
  return text;
}

void ListProjections(const Options& options) {
  Listing list(options.csv, options.words, {{"NUMBER", 6}, {"MASK", 4}, {"NAME", 0}}, "projection");
  for (int type = 0; type < ProjNumProjections(); ++type) {
    char name[80], mask[8];
    std::snprintf(mask, sizeof mask, "0x%02X", ProjGetProjectionInfo(static_cast<ProjType>(type), name) & 0xFF);
    list.Add({std::to_string(type), mask, name});
  }
}

void ListEllipsoids(const Options& options) {
  Listing list(options.csv, options.words,
               {{"NUMBER", 6}, {"POSC", 6}, {"RADIUS (m)", 14}, {"1/FLATTENING", 14}, {"NAME", 0}}, "ellipsoid");
  for (int i = ET_USER_DEFINED + 1; i <= ET_BESSEL_NGO_1948; ++i) {
    const auto type = static_cast<EllipsoidType>(i);
    char name[80];
    double radius = 0, flattening = 0;
    int posc = 0;
    EllipsoidInfo(type, name, &radius, &flattening);
    EllipsoidToPOSCNumber(type, &posc);
    list.Add({std::to_string(i), Code(options, posc), Number("%.4f", radius),
              flattening != 0 ? Number("%.7f", 1 / flattening) : "sphere", name});
  }
}

void ListZones(const Options& options) {
  Listing list(options.csv, options.words, {{"NUMBER", 6}, {"USGS", 6}, {"1927", 6}, {"1983", 6}, {"NAME", 0}}, "zone");
  for (int i = 0; i < SZ_NONE; ++i) {
    const auto zone = static_cast<StateZoneType>(i);
    char name[80];
    int usgs = 0, posc27 = 0, posc83 = 0;
    ProjGetStateZoneInfo(zone, name, &usgs);
    ProjStateZoneToPOSCNumber(PT_STATEPLANE27, zone, &posc27);
    ProjStateZoneToPOSCNumber(PT_STATEPLANE83, zone, &posc83);
    list.Add({std::to_string(i), Code(options, usgs), Code(options, posc27), Code(options, posc83), name});
  }
}

void ListDatums(const Options& options) {
  static constexpr const char* kMethods[] = {"none", "NADCON",     "Bursa-Wolf", "Molodensky",
                                             "HARN", "regression", "NTv2"};
  const char* const file = options.ini.empty() ? nullptr : options.ini.c_str();
  const std::vector<std::string> names = DatumNames(options.ini);
  Listing list(options.csv, options.words,
               {{"NUMBER", 6}, {"POSC", 6}, {"METHOD", -10}, {"REVERSIBLE", -10}, {"NAME", -47}, {"AREA", 0}}, "datum");
  for (std::size_t i = 1; i < names.size(); ++i) {
    DatumMethod method{};
    int posc = 0;
    const bool known = NDatGetDatumMethod(file, names[i].c_str(), &method);
    if (i < static_cast<std::size_t>(DatNumDatums())) DatGetDatumPOSCNumber(static_cast<DatumType>(i), &posc);
    const std::string region(DatumRegion(static_cast<int>(i)));
    list.Add({std::to_string(i), Code(options, posc), known ? kMethods[method] : "unreadable",
              CanBeDestination(options.ini, names[i]) ? "yes" : "no", names[i],
              region.empty() && !options.csv ? "-" : region});
  }
}

void ListUnits(const Options& options) {
  Listing list(options.csv, options.words, {{"SYMBOL", -10}, {"METRES", 16}, {"NAME", 0}});
  for (const Unit& unit : Units()) list.Add({unit.symbol, Number("%.12g", unit.metres), unit.name});
}

/// Names, types and units of the parameters, the used ones marked and in display order first.
void ListParams(const Options& options) {
  const auto type = static_cast<ProjType>(FindName(ProjectionNames(), options.projection, "projection"));
  static constexpr const char* kTypes[] = {"number", "yes/no", "projection", "zone", "ellipsoid"};
  Listing list(options.csv, options.words, {{"USED", -4}, {"SHORT", -10}, {"TYPE", -10}, {"UNIT", -20}, {"NAME", 0}});
  const auto add = [&](const Parameter& parameter, const char* used) {
    list.Add({used, parameter.shortName, kTypes[parameter.type], parameter.unit.empty() ? "-" : parameter.unit,
              parameter.name});
  };
  for (int i = 0; i < ProjNumParams(type); ++i) {
    for (const Parameter& parameter : Parameters()) {
      if (parameter.id == ProjEnumParam(type, i)) add(parameter, "yes");
    }
  }
  for (const Parameter& parameter : Parameters()) {
    if (!ProjUsesParam(type, parameter.id)) add(parameter, "-");
  }
}

}  // namespace

void AddListCommand(CLI::App& app, int& status) {
  CLI::App* command = app.add_subcommand("list", "List what the library knows");
  command->require_subcommand(1);
  const auto options = std::make_shared<Options>();
  const auto add = [&](const char* name, const char* help, void (*run)(const Options&)) {
    CLI::App* list = command->add_subcommand(name, help);
    list->add_flag("--csv", options->csv, "Comma-separated, for other programs");
    list->callback([run, options, &status] {
      run(*options);
      status = kSuccess;
    });
    return list;
  };
  const auto addFiltered = [&](const char* name, const char* help, void (*run)(const Options&)) {
    CLI::App* list = add(name, help, run);
    list->add_option("TEXT", options->words, "Only rows that hold these words");
    return list;
  };
  addFiltered("projections", "The projections", ListProjections);
  addFiltered("ellipsoids", "The ellipsoids", ListEllipsoids);
  addFiltered("units", "The units of length", ListUnits);
  addFiltered("zones", "The US state plane zones", ListZones);
  AddIniOption(*addFiltered("datums", "The datums", ListDatums), options->ini);
  CLI::App* params = add("params", "The parameters of a projection", ListParams);
  params->add_option("TYPE", options->projection, "Projection by name")->required();
  params->add_option("TEXT", options->words, "Only rows that hold these words");
  AddListSystems(*command, status);
}

}  // namespace orvex::tool
