// SystemConversion - orvex convert where a side is a registered coordinate system or has zones by point.
#include "commands/SystemConversion.h"

#include <cfloat>
#include <cmath>
#include <optional>

#include <orvex/orvex.h>

#include "AreaWatch.h"
#include "Failure.h"
#include "MapSide.h"
#include "commands/ByPoint.h"
#include "commands/DatumOptions.h"
#include "systems/FindSystem.h"
#include "systems/SystemConverter.h"

namespace orvex::tool {

namespace {

/// The step of a datum of the catalogue or of one's own; nothing for those without parameters.
std::optional<DATUM2WGS84> DatumStep(const std::string& ini, const std::string& name) {
  DATUM2WGS84 step{};
  if (!NDatGetDatumParams(ini.empty() ? nullptr : ini.c_str(), name.c_str(), &step)) return std::nullopt;
  return step;
}

/// One side of the conversion: its coordinates, and the datum that they are on.
class Side {
 public:
  Side(const SideOptions& options, const SystemConversionOptions& conversion) : m_name(options.name) {
    if (!options.system.empty()) {
      m_system.emplace(FindSystem(options.system), conversion.stated);
      if (options.projection.Given() || !options.projection.settings.empty() || !options.projection.ellipsoid.empty() ||
          !options.projection.unit.empty()) {
        throw Failure("--" + m_name + " names a whole coordinate system; leave the other --" + m_name +
                      "- options of its projection out");
      }
    } else if (options.projection.Given()) {
      std::optional<SideDatum> datum;
      if (!options.datum.empty())
        datum = SideDatum{"--" + m_name + "-datum " + options.datum, DatumFigure(options.datum, conversion.ini)};
      if (IsByPoint(options.projection)) {
        m_grid.emplace(options.projection, datum, conversion.stated);
      } else if (const PROJDATA record = MakeRecord(options.projection, datum); record.Type != PT_LATLONG) {
        m_projector.emplace(record, options.projection.unit, conversion.stated);
      }
    }
    ChooseDatum(options.datum, conversion.ini);
  }

  Kind KindOfCoordinates() const {
    return HasProjection() || (m_system && m_system->System().IsProjected()) ? Kind::Projected : Kind::Geographic;
  }

  void ToGeographic(std::vector<PROJPOINT>& points, const std::vector<std::string>& labels) {
    if (m_grid) m_grid->Inverse(points, labels);
    if (m_system) m_system->ToGeographic(points);
    if (m_projector) m_projector->Unproject(points);
  }

  void FromGeographic(std::vector<PROJPOINT>& points, std::vector<std::string>& labels) {
    if (m_grid) m_grid->Forward(points, labels);
    if (m_system) m_system->FromGeographic(points);
    if (m_projector) m_projector->Project(points);
  }

  /// Between longitudes from Greenwich, as a system gives them, and those that the catalogue's datum counts.
  void CountFromMeridian(std::vector<PROJPOINT>& points, double sign) const {
    if (!m_system || m_meridian == 0) return;
    for (PROJPOINT& point : points) {
      if (point.x != DBL_MAX) point.x = std::remainder(point.x + sign * m_meridian, 360);
    }
  }

  /// Neither a datum nor a system that has one.
  bool HasNoDatum() const { return !m_system && m_datum.empty(); }
  bool HasProjection() const { return m_projector || m_grid; }
  LabelColumn Column() const { return m_grid ? m_grid->Column() : LabelColumn{}; }
  const std::string& Datum() const { return m_datum; }

  bool SharesDatum(const Side& other) const {
    if (HasNoDatum() || other.HasNoDatum()) return true;
    if (m_system && other.m_system && !m_chosen && !other.m_chosen) {
      return m_system->System().Datum().frame == other.m_system->System().Datum().frame;
    }
    return !m_datum.empty() && m_datum == other.m_datum;
  }

  void RequireDatum() const {
    if (!m_datum.empty()) return;
    const CoordinateSystem& system = m_system->System();
    throw Failure("the catalogue of datums lacks \"" + std::string(system.Datum().name) + "\", the datum of " +
                  system.Label() +
                  ": it cannot be changed for another one. Systems on the same datum can be converted; --" + m_name +
                  "-datum names a datum of the catalogue to be taken for it");
  }

  int Code() const { return m_system ? m_system->System().code : 0; }

  void Warn() const {
    if (m_projector) m_projector->Report();
    if (m_system && m_system->Outside() > 0) {
      WarnOfPointsOutside(m_system->Outside(), "the area of " + m_system->System().Label() + " (" +
                                                   std::string(m_system->System().AreaOfUse().name) + ")");
    }
  }

  void RefuseUnfit(const Format& format) const {
    if (format.dms && m_system && !m_system->System().IsProjected() && m_system->System().UnitOfAxes().factor != 1) {
      throw Failure(m_system->System().Label() + " has no degrees but the unit " +
                    std::string(m_system->System().UnitOfAxes().name) + "; leave --dms out");
    }
  }

  void SayDeprecated() const {
    if (m_system && m_system->System().deprecated) {
      tool::Warn(m_system->System().Label() + " \"" + std::string(m_system->System().name) + "\" is deprecated");
    }
  }

 private:
  void ChooseDatum(const std::string& text, const std::string& ini) {
    const std::vector<std::string> names = DatumNames(ini);
    m_chosen = !text.empty();
    if (m_chosen) m_datum = names[FindDatum(text, names)];
    if (!m_chosen && m_system) m_datum = names[static_cast<std::size_t>(m_system->System().Datum().catalogue)];
    if (!m_chosen && m_system && m_system->System().Datum().catalogue == 0) m_datum.clear();
    if (m_datum.empty()) return;
    const std::optional<DATUM2WGS84> step = DatumStep(ini, m_datum);
    if (!step) return;
    m_meridian = step->PMShift;
    if (m_chosen && m_system && std::abs(step->MajorRadius - m_system->System().Datum().radius) > 1 &&
        (step->Method == DM_BURSA || step->Method == DM_MOLODENSKY)) {
      throw Failure("--" + m_name + "-datum contradicts --" + m_name + ": " + m_datum + " has another ellipsoid than " +
                    m_system->System().Label());
    }
  }

  std::string m_name;
  std::optional<SystemConverter> m_system;
  std::optional<MapSide> m_projector;
  std::optional<PointGrid> m_grid;
  std::string m_datum;    // in the catalogue or the INI file
  bool m_chosen = false;  // by the user, not by the system
  double m_meridian = 0;  // that the catalogue's datum counts longitudes from
};

/// The conversion; every copy has library handles of its own.
struct Steps {
  Side source;
  std::optional<DatumConversion> datums;
  Side destination;

  void operator()(std::vector<PROJPOINT>& points, std::vector<std::string>& labels) {
    source.ToGeographic(points, labels);
    if (datums) {
      source.CountFromMeridian(points, -1);
      datums->Convert(points);
      destination.CountFromMeridian(points, 1);
    }
    destination.FromGeographic(points, labels);
  }
};

/// The same for tables without labels.
struct Unlabelled {
  Steps steps;
  void operator()(std::vector<PROJPOINT>& points) {
    std::vector<std::string> none;
    steps(points, none);
  }
};

/// A projection says nothing about its datum, so that a system on the other side has nothing to go by.
void RequireDatums(const Side& one, const Side& other, const std::string& otherName) {
  if (one.HasNoDatum() || !other.HasNoDatum() || !other.HasProjection()) return;
  throw Failure("name the datum of the other side with --" + otherName + "-datum, or a whole system with --" +
                otherName);
}

}  // namespace

int ConvertSystems(const SideOptions& from, const SideOptions& to, const SystemConversionOptions& conversion,
                   const TableOptions& table) {
  Side source(from, conversion), destination(to, conversion);
  RequireDatums(source, destination, to.name);
  RequireDatums(destination, source, from.name);
  destination.RefuseUnfit(table.format);
  std::optional<DatumConversion> datums;
  if (!source.SharesDatum(destination)) {
    source.RequireDatum();
    destination.RequireDatum();
    datums.emplace(source.Datum(), destination.Datum(), conversion.ini, conversion.stated);
  }
  if (!table.quiet) {
    for (const Side* side : {&source, &destination}) side->SayDeprecated();
  }
  TableOptions options = table;
  options.sourceCode = source.Code();
  options.resultCode = destination.Code();
  options.labelIn = source.Column();
  options.labelOut = destination.Column();
  const Steps steps{source, datums, destination};
  const Kind kinds[] = {source.KindOfCoordinates(), destination.KindOfCoordinates()};
  const bool labelled = options.labelIn.use != Label::None || options.labelOut.use != Label::None;
  const int status = labelled ? ConvertLabelledTable(options, kinds[0], kinds[1], [&] { return LabelConverter(steps); })
                              : ConvertTable(options, kinds[0], kinds[1],
                                             ConverterFactory([&] { return Converter(Unlabelled{steps}); }));
  if (!table.quiet) {
    for (const Side* side : {&source, &destination}) side->Warn();
    if (datums) datums->Report();
  }
  return status;
}

}  // namespace orvex::tool
