// DatumOptions - naming a datum on the command line.
#include "commands/DatumOptions.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

#include <orvex/grids.h>
#include <shr/exception.h>

#include "Failure.h"
#include "commands/Names.h"
#include "tables/Files.h"

namespace orvex::tool {

namespace {

const char* IniOrNull(const std::string& ini) {
  return ini.empty() ? nullptr : ini.c_str();
}

/// Fills one side of the record: a number for a built-in datum, the parameters for a custom one. Answers the name.
std::string Choose(const std::string& text, const std::string& ini, DatumType& datum, DATUM2WGS84& step) {
  const std::vector<std::string> names = DatumNames(ini);
  const std::size_t index = FindDatum(text, names);
  if (index == 0) throw Failure("\"" + text + "\" names no datum; store your own with: orvex datum add");
  datum = static_cast<DatumType>(index);
  if (index < static_cast<std::size_t>(DatNumDatums())) return names[index];
  datum = DT_USER_DEFINED;
  if (!NDatGetDatumParams(IniOrNull(ini), names[index].c_str(), &step)) {
    throw Failure("the entry of the custom datum \"" + names[index] + "\" cannot be read");
  }
  return names[index];
}

constexpr const char* kNadconSource = "DtmNadcon";
constexpr int kNoNtv2Grid = 20280;

/// As --grids or the environment names it.
std::string& GridDirectory() {
  static std::string directory;
  return directory;
}

void UseGrids(const std::string& directory) {
  GridDirectory() = directory;
  DatSetGridDirectory(directory.c_str());
}

/// Names of the grid files of a datum, "" for other datums.
std::string GridFiles(DatumType datum) {
  switch (datum) {
    case DT_NAD_1927_CONUS_NADCON:
      return "conus.las and conus.los";
    case DT_NAD_1927_PUERTO_RICO_AND_VIRGIN_ISLANDS_NADCON:
      return "prvi.las and prvi.los";
    case DT_NAD_1927_CANADA_NTV2:
      return "NTV2_0.GSB";
    default:
      return "";
  }
}

std::string PlacesOfGrids() {
  const std::string& named = GridDirectory();
  return (named.empty() ? " beside the program" : " in " + named + " or beside the program") +
         std::string("; name their directory with --grids or ORVEX_GRIDS");
}

/// The datums without parameters, and one of the catalogue that stands on the same ellipsoid.
DatumType WithParameters(DatumType datum) {
  switch (datum) {
    case DT_AUSTRALIAN_GEODETIC_1966_MRE:
      return DT_AUSTRALIAN_GEODETIC_1966;
    case DT_AUSTRALIAN_GEODETIC_1984_MRE:
      return DT_AUSTRALIAN_GEODETIC_1984;
    case DT_CAMPO_INCHAUSEPE_ARGENTINA_MRE:
      return DT_CAMPO_INCHAUSEPE_ARGENTINA;
    case DT_CORREGO_ALEGRE_BRAZIL_MRE:
      return DT_CORREGO_ALEGRE_BRAZIL;
    case DT_EUROPEAN_1950_MRE:
      return DT_EUROPEAN_1950_MEAN;
    case DT_SOUTH_AMERICAN_1969_MRE:
      return DT_SOUTH_AMERICAN_1969;
    case DT_NAD_1927_CONUS_MRE:
    case DT_NAD_1927_CANADA_MRE:
    case DT_NAD_1927_CONUS_NADCON:
    case DT_NAD_1927_PUERTO_RICO_AND_VIRGIN_ISLANDS_NADCON:
    case DT_NAD_1927_CANADA_NTV2:
      return DT_NORTH_AMERICAN_DATUM_1927;
    default:
      return datum;
  }
}

}  // namespace

std::vector<std::string> DatumNames(const std::string& ini) {
  std::vector<std::string> names;
  char name[260];
  for (int i = 0; NDatEnumDatumName(IniOrNull(ini), name, i); ++i) names.emplace_back(name);
  return names;
}

bool CanBeDestination(const std::string& ini, const std::string& name) {
  DatumMethod method{};
  return NDatReversible(IniOrNull(ini), name.c_str()) ||
         (NDatGetDatumMethod(IniOrNull(ini), name.c_str(), &method) && method == DM_NTV2);
}

std::size_t FindDatum(const std::string& text, const std::vector<std::string>& names) {
  if (text.empty() || text.find_first_not_of("0123456789") != std::string::npos) return FindName(names, text, "datum");
  const int number = ParseInteger(text, "datum");
  DatumType datum{};
  if (DatGetDatumFromPOSCNumber(&datum, number)) return static_cast<std::size_t>(datum);
  const auto index = static_cast<std::size_t>(number);
  if (index < names.size() && (index == 0 || !names[index].empty())) return index;
  throw Failure("no datum has the number or POSC code " + text);
}

void AddGridsOption(CLI::App& command) {
  command.add_option_function<std::string>(
      "--grids", UseGrids,
      "Directory of grid files (NADCON, NTv2), before that of the program; else the environment's ORVEX_GRIDS");
}

CLI::Option* AddIniOption(CLI::App& command, std::string& ini, bool canBeNew) {
  const auto readable = [canBeNew](const std::string& file) -> std::string {
    std::error_code ignored;
    const auto status = std::filesystem::status(file, ignored);
    const bool there = std::filesystem::exists(status);
    if (file.empty() || (canBeNew && !there)) return "";
    if (there && !is_regular_file(status) && !is_directory(status)) return file + " is no file";  // a pipe would block
    try {
      OpenInput(file);
      return "";
    } catch (const Failure& reason) {
      return reason.what();
    }
  };
  return command.add_option("--ini", ini, "INI file with custom datums")->check(CLI::Validator(readable, ""));
}

Figure DatumFigure(const std::string& text, const std::string& ini) {
  DatumType datum{};
  DATUM2WGS84 params{};
  Choose(text, ini, datum, params);
  if (datum != DT_USER_DEFINED && !DatGetDatumParams(WithParameters(datum), &params)) {
    throw Failure("the ellipsoid of \"" + text + "\" is not known");
  }
  if (params.Ellipsoid != ET_USER_DEFINED) return FigureOf(params.Ellipsoid);
  return {ET_USER_DEFINED, params.MajorRadius, params.Flattening};
}

DatumConversion::DatumConversion(const std::string& from, const std::string& to, const std::string& ini, bool stated) {
  const char* const grids = std::getenv("ORVEX_GRIDS");
  if (GridDirectory().empty() && grids != nullptr) UseGrids(grids);
  DATUMXFORM xform{};
  DatumType source{}, destination{};
  DATUM2WGS84 step1{}, step2{};
  Choose(from, ini, source, step1);
  const std::string toName = Choose(to, ini, destination, step2);
  if (!CanBeDestination(ini, toName)) throw Failure("\"" + toName + "\" can only be converted from, not to");
  step2.bInverse = !step2.bInverse;  // a custom datum is stored as it leads to WGS 84
  xform.SrcDatum = source;
  xform.DestDatum = destination;
  xform.Step1 = step1;
  xform.Step2 = step2;
  m_transform.Create(&xform);
  if (!stated && !m_transform.SetAccuracy(PA_EXACT)) {
    Warn("the datums have no exact conversion; computed as with --stated");
  }
  if (source == destination && source != DT_USER_DEFINED) return;  // the points stay as they are
  m_gridFiles = GridFiles(source).empty() ? GridFiles(destination) : GridFiles(source);
  m_source = WatchDatum(source);
  m_destination = WatchDatum(destination);
}

void DatumConversion::Report() const {
  if (m_source) m_source->Report();
  if (m_destination) m_destination->Report();
}

void DatumConversion::Convert(std::vector<PROJPOINT>& points) {
  static_assert(sizeof(DATUMPOINT) == sizeof(PROJPOINT));
  try {
    if (m_source) m_source->Watch(points);
    if (!m_transform.Convert(reinterpret_cast<DATUMPOINT*>(points.data()), static_cast<int>(points.size()))) {
      throw Failure("the datum conversion failed");
    }
    if (m_destination) m_destination->Watch(points);
  } catch (const shr::Exception& e) {
    if (e.Source() != kNadconSource && e.MessageId() != kNoNtv2Grid) throw;
    throw Failure("cannot open " + m_gridFiles + PlacesOfGrids());
  }
}

}  // namespace orvex::tool
