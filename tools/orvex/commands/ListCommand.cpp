// ListCommand - orvex list: the catalogues as tables.
#include <cstdio>
#include <memory>

#include <orvex/orvex.h>

#include "Failure.h"
#include "commands/Commands.h"
#include "commands/DatumOptions.h"
#include "commands/Names.h"
#include "commands/ProjectionOptions.h"
#include "commands/SystemCommands.h"

namespace orvex::tool {

namespace {

/// A code, or a dash for none.
std::string Code(int code) {
  return code != 0 ? std::to_string(code) : "-";
}

void ListProjections() {
  std::printf("%6s  %4s  %s\n", "NUMBER", "MASK", "NAME");
  for (int type = 0; type < ProjNumProjections(); ++type) {
    char name[80];
    const unsigned mask = ProjGetProjectionInfo(static_cast<ProjType>(type), name);
    std::printf("%6d  0x%02X  %s\n", type, mask, name);
  }
}

void ListEllipsoids() {
  std::printf("%6s  %6s  %14s  %14s  %s\n", "NUMBER", "POSC", "RADIUS (m)", "1/FLATTENING", "NAME");
  for (int i = ET_USER_DEFINED + 1; i <= ET_BESSEL_NGO_1948; ++i) {
    const auto type = static_cast<EllipsoidType>(i);
    char name[80];
    double radius = 0, flattening = 0;
    int posc = 0;
    EllipsoidInfo(type, name, &radius, &flattening);
    EllipsoidToPOSCNumber(type, &posc);
    char inverse[40] = "sphere";
    if (flattening != 0) std::snprintf(inverse, sizeof inverse, "%.7f", 1 / flattening);
    std::printf("%6d  %6s  %14.4f  %14s  %s\n", i, Code(posc).c_str(), radius, inverse, name);
  }
}

void ListZones() {
  std::printf("%6s  %6s  %6s  %6s  %s\n", "NUMBER", "USGS", "1927", "1983", "NAME");
  for (int i = 0; i < SZ_NONE; ++i) {
    const auto zone = static_cast<StateZoneType>(i);
    char name[80];
    int usgs = 0, posc27 = 0, posc83 = 0;
    ProjGetStateZoneInfo(zone, name, &usgs);
    ProjStateZoneToPOSCNumber(PT_STATEPLANE27, zone, &posc27);
    ProjStateZoneToPOSCNumber(PT_STATEPLANE83, zone, &posc83);
    std::printf("%6d  %6s  %6s  %6s  %s\n", i, Code(usgs).c_str(), Code(posc27).c_str(), Code(posc83).c_str(), name);
  }
}

void ListDatums(const std::string& ini) {
  static constexpr const char* kMethods[] = {"none", "NADCON",     "Bursa-Wolf", "Molodensky",
                                             "HARN", "regression", "NTv2"};
  const char* const file = ini.empty() ? nullptr : ini.c_str();
  const std::vector<std::string> names = DatumNames(ini);
  std::printf("%6s  %6s  %-10s  %-10s  %s\n", "NUMBER", "POSC", "METHOD", "REVERSIBLE", "NAME");
  for (std::size_t i = 1; i < names.size(); ++i) {
    DatumMethod method{};
    int posc = 0;
    const bool known = NDatGetDatumMethod(file, names[i].c_str(), &method);
    if (i < static_cast<std::size_t>(DatNumDatums())) DatGetDatumPOSCNumber(static_cast<DatumType>(i), &posc);
    std::printf("%6zu  %6s  %-10s  %-10s  %s\n", i, Code(posc).c_str(), known ? kMethods[method] : "unreadable",
                CanBeDestination(ini, names[i]) ? "yes" : "no", names[i].c_str());
  }
}

/// Names, types and units of the parameters, the used ones marked and in display order first.
void ListParams(const std::string& projection) {
  const auto type = static_cast<ProjType>(FindName(ProjectionNames(), projection, "projection"));
  static constexpr const char* kTypes[] = {"number", "yes/no", "projection", "zone", "ellipsoid"};
  const auto print = [](const Parameter& parameter, const char* used) {
    std::printf("%-4s  %-10s  %-10s  %-20s  %s\n", used, parameter.shortName.c_str(), kTypes[parameter.type],
                parameter.unit.empty() ? "-" : parameter.unit.c_str(), parameter.name.c_str());
  };
  std::printf("%-4s  %-10s  %-10s  %-20s  %s\n", "USED", "SHORT", "TYPE", "UNIT", "NAME");
  for (int i = 0; i < ProjNumParams(type); ++i) {
    for (const Parameter& parameter : Parameters()) {
      if (parameter.id == ProjEnumParam(type, i)) print(parameter, "yes");
    }
  }
  for (const Parameter& parameter : Parameters()) {
    if (!ProjUsesParam(type, parameter.id)) print(parameter, "-");
  }
}

}  // namespace

void AddListCommand(CLI::App& app, int& status) {
  CLI::App* command = app.add_subcommand("list", "List what the library knows");
  command->require_subcommand(1);
  const auto add = [&](const char* name, const char* help, void (*run)()) {
    command->add_subcommand(name, help)->callback([run, &status] {
      run();
      status = kSuccess;
    });
  };
  add("projections", "The projections", ListProjections);
  add("ellipsoids", "The ellipsoids", ListEllipsoids);
  add("zones", "The US state plane zones", ListZones);

  const auto text = std::make_shared<std::string>();
  CLI::App* datums = command->add_subcommand("datums", "The datums");
  datums->add_option("--ini", *text, "INI file with custom datums");
  datums->callback([text] { ListDatums(*text); });
  CLI::App* params = command->add_subcommand("params", "The parameters of a projection");
  params->add_option("TYPE", *text, "Projection by name")->required();
  params->callback([text] { ListParams(*text); });
  AddListSystems(*command, status);
}

}  // namespace orvex::tool
