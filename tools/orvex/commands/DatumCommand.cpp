// DatumCommand - orvex datum: positions from one datum to another, and the custom datums of an INI file.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iterator>
#include <memory>
#include <optional>

#include <orvex/orvex.h>

#include "Failure.h"
#include "commands/Commands.h"
#include "commands/DatumOptions.h"
#include "commands/Names.h"
#include "commands/ProjectionOptions.h"
#include "tables/PointTable.h"

namespace orvex::tool {

namespace {

struct ConvertOptions {
  std::string from, to, ini;
  bool stated = false;
  TableOptions table;
};

int Convert(const ConvertOptions& options) {
  if (options.from.empty() || options.to.empty()) throw Failure("datum needs --from and --to (or add, remove, show)");
  const DatumConversion conversion(options.from, options.to, options.ini, options.stated);
  const int status =
      ConvertTable(options.table, Kind::Geographic, Kind::Geographic, ConverterFactory([&] {
                     return [own = conversion](std::vector<PROJPOINT>& points) mutable { own.Convert(points); };
                   }));
  if (!options.table.quiet) conversion.Report();
  return status;
}

struct NumberOption {
  const char* name;
  const char* help;
};
constexpr NumberOption kNumbers[] = {{"--pm", "Prime meridian, degrees east of Greenwich"},
                                     {"--dx", "Shift along X, metres"},
                                     {"--dy", "Shift along Y, metres"},
                                     {"--dz", "Shift along Z, metres"},
                                     {"--rx", "Rotation about X, arcseconds (bursa)"},
                                     {"--ry", "Rotation about Y, arcseconds (bursa)"},
                                     {"--rz", "Rotation about Z, arcseconds (bursa)"},
                                     {"--k", "Scale correction, parts per million (bursa)"},
                                     {"--radius", "Semi-major axis in metres, instead of --ellipsoid"},
                                     {"--flattening", "Flattening, with --radius"}};

struct StoreOptions {
  std::string name, ini, method = "molodensky", ellipsoid = "WGS 84";
  double values[std::size(kNumbers)]{};  // PMShift, dx, dy, dz, rx, ry, rz, k, MajorRadius, Flattening
  bool inverse = false;
};

const std::vector<std::string> kMethodNames{"none", "nadcon", "bursa", "molodensky", "harn", "mre", "ntv2"};

std::string MethodName(DatumMethod method) {
  const auto index = static_cast<std::size_t>(method);
  return index < kMethodNames.size() ? kMethodNames[index] : "unknown";
}

void RequireFinite(const StoreOptions& o) {
  for (std::size_t i = 0; i < std::size(kNumbers); ++i) {
    if (!std::isfinite(o.values[i])) throw Failure(std::string(kNumbers[i].name) + " is not a finite number");
  }
}

/// The one of the datums that a name means, if it means one.
std::optional<std::size_t> KnownDatum(const std::string& name, const std::vector<std::string>& names) {
  try {
    return FindDatum(name, names);
  } catch (const Failure&) {
    return std::nullopt;
  }
}

/// Under a name that already means something a custom datum would never be found.
void RefuseTakenName(const std::string& name) {
  if (name.find_first_not_of("0123456789 ") == std::string::npos) {
    throw Failure("\"" + name + "\" cannot name a datum: numbers are those of the list and POSC codes");
  }
  const std::vector<std::string> names = DatumNames("");
  const std::optional<std::size_t> taken = KnownDatum(name, names);
  if (!taken) return;
  throw Failure("\"" + name + "\" is a built-in datum" + (names[*taken] == name ? "" : ": " + names[*taken]));
}

int Add(const StoreOptions& o) {
  RequireFinite(o);
  RefuseTakenName(o.name);
  DATUM2WGS84 params{};
  params.Method = static_cast<DatumMethod>(FindName(kMethodNames, o.method, "method"));
  if (params.Method != DM_NOXFORM && params.Method != DM_BURSA && params.Method != DM_MOLODENSKY) {
    throw Failure("a custom datum's method is none, molodensky or bursa");
  }
  params.bInverse = o.inverse;
  if (params.Method != DM_BURSA && std::any_of(o.values + 4, o.values + 8, [](double v) { return v != 0; })) {
    throw Failure("rotations and scale belong to --method bursa");
  }
  if (o.values[9] != 0 && o.values[8] == 0) throw Failure("--flattening needs --radius as well");
  params.Ellipsoid = o.values[8] != 0 ? ET_USER_DEFINED : ParseEllipsoid(o.ellipsoid);
  params.PMShift = o.values[0];
  params.dx = o.values[1];
  params.dy = o.values[2];
  params.dz = o.values[3];
  params.rx = o.values[4];
  params.ry = o.values[5];
  params.rz = o.values[6];
  params.k = o.values[7];
  params.MajorRadius = o.values[8];
  params.Flattening = o.values[9];
  DATUMXFORM check{};  // the checks of a conversion from this datum
  check.DestDatum = DT_WORLD_GEODETIC_SYSTEM_1984;
  check.Step1 = params;
  char message[256];
  if (DatCheckParams(&check, message, false) != 0) throw Failure(message);
  if (!NDatSave(o.ini.c_str(), o.name.c_str(), &params)) throw Failure("cannot store \"" + o.name + "\" in " + o.ini);
  return kSuccess;
}

int Remove(const StoreOptions& o) {
  if (NDatIsBuiltIn(nullptr, o.name.c_str(), nullptr)) throw Failure("\"" + o.name + "\" is a built-in datum");
  if (!NDatExists(o.ini.c_str(), o.name.c_str(), nullptr)) {
    throw Failure("there is no datum \"" + o.name + "\" in " + o.ini);
  }
  if (!NDatDelete(o.ini.c_str(), o.name.c_str())) throw Failure("cannot write " + o.ini);
  if (NDatExists(o.ini.c_str(), o.name.c_str(), nullptr)) {
    throw Failure("the only custom datum of a file cannot be removed: \"" + o.name +
                  "\" stays; delete its line by hand");
  }
  return kSuccess;
}

int Show(const StoreOptions& o) {
  const char* const ini = o.ini.empty() ? nullptr : o.ini.c_str();
  const std::vector<std::string> names = DatumNames(o.ini);
  const std::size_t index = FindDatum(o.name, names);
  const std::string& name = names[index];
  DatumMethod method{};
  if (!NDatGetDatumMethod(ini, name.c_str(), &method)) throw Failure("the entry of \"" + name + "\" cannot be read");
  std::printf("name        %s\nnumber      %zu%s\nmethod      %s\nreversible  %s\n", name.c_str(), index,
              index >= static_cast<std::size_t>(DatNumDatums()) ? " (custom)" : "", MethodName(method).c_str(),
              CanBeDestination(o.ini, name) ? "yes" : "no");
  DATUM2WGS84 params{};
  if ((method != DM_BURSA && method != DM_MOLODENSKY) || !NDatGetDatumParams(ini, name.c_str(), &params))
    return kSuccess;
  char ellipsoid[80] = "";
  EllipsoidInfo(params.Ellipsoid, ellipsoid, nullptr, nullptr);
  std::printf(
      "direction   %s\nellipsoid   %s (a = %.10g m, f = %.17g)\nmeridian    %.14g degrees\nshift       %.10g %.10g "
      "%.10g m\n",
      params.bInverse ? "from WGS 84" : "to WGS 84", ellipsoid, +params.MajorRadius, +params.Flattening,
      +params.PMShift, +params.dx, +params.dy, +params.dz);
  if (method == DM_BURSA) {
    std::printf("rotation    %.10g %.10g %.10g arcseconds\nscale       %.10g ppm\n", +params.rx, +params.ry, +params.rz,
                +params.k);
  }
  return kSuccess;
}

}  // namespace

void AddDatumCommand(CLI::App& app, int& status) {
  CLI::App* command = app.add_subcommand("datum", "Convert positions between datums; keep custom datums");
  command->require_subcommand(0, 1);
  const auto options = std::make_shared<ConvertOptions>();
  command->add_option("--from", options->from, "Source datum: name, number or POSC code");
  command->add_option("--to", options->to, "Destination datum");
  AddIniOption(*command, options->ini);
  AddGridsOption(*command);
  AddStatedOption(*command, options->stated);
  AddTableOptions(*command, options->table);

  const auto store = std::make_shared<StoreOptions>();
  CLI::App* add = command->add_subcommand("add", "Store a custom datum in an INI file, replacing one of the same name");
  CLI::App* remove = command->add_subcommand("remove", "Remove a custom datum from an INI file");
  CLI::App* show = command->add_subcommand("show", "Show a datum's parameters");
  for (CLI::App* action : {add, remove, show}) {
    action->add_option("NAME", store->name, "Name of the datum")->required();
    CLI::Option* ini = AddIniOption(*action, store->ini, action == add);
    if (action != show) ini->required();
  }
  add->add_option("--method", store->method, "none, molodensky (default) or bursa");
  CLI::Option* ellipsoid =
      add->add_option("--ellipsoid", store->ellipsoid, "Ellipsoid by name or POSC number (default WGS 84)");
  add->add_flag("--from-wgs84", store->inverse, "The parameters lead from WGS 84 to the datum");
  for (std::size_t i = 0; i < std::size(kNumbers); ++i)
    add->add_option(kNumbers[i].name, store->values[i], kNumbers[i].help);
  add->get_option("--radius")->excludes(ellipsoid);

  add->callback([store, &status] { status = Add(*store); });
  remove->callback([store, &status] { status = Remove(*store); });
  show->callback([store, &status] { status = Show(*store); });
  command->callback([command, options, &status] {
    if (command->get_subcommands().empty()) status = Convert(*options);
  });
}

}  // namespace orvex::tool
