// ByPoint - projections that each point chooses by itself.
#include "commands/ByPoint.h"

#include <cfloat>

#include "Failure.h"
#include "Units.h"
#include "commands/Names.h"
#include "zones/Mgrs.h"

namespace orvex::tool {

namespace {

bool IsAuto(const std::string& text) {
  return Lower(text) == "auto";
}

/// The record with the figure of the earth for the zones of UTM.
PROJDATA Figure(const ProjectionOptions& options, const std::optional<SideDatum>& datum) {
  ProjectionOptions any = options;
  any.utm = "31N";
  any.mgrs.clear();
  const PROJDATA record = MakeRecord(any, datum);
  PROJDATA figure{};
  figure.Ellipsoid = record.Ellipsoid;
  figure.MajorRadius = record.MajorRadius;
  figure.Flattening = record.Flattening;
  return figure;
}

std::shared_ptr<const ZoneGrid> MakeGrid(const ProjectionOptions& options, const std::optional<SideDatum>& datum) {
  const int named = !options.projection.empty() + !options.utm.empty() + !options.statePlane27.empty() +
                    !options.statePlane83.empty() + (options.posc != 0) + !options.mgrs.empty();
  if (named != 1) throw Failure("name one projection: by name, UTM zone, state plane zone, POSC number or --mgrs");
  if (!options.unit.empty() && !options.mgrs.empty()) throw Failure("references of the MGRS are in metres");
  if (!options.settings.empty()) throw Failure("zones by point take no --set");
  if (!options.mgrs.empty() || IsAuto(options.utm)) return MakeUtmGrid(Figure(options, datum));
  if (!options.ellipsoid.empty()) throw Failure("state plane zones have their own ellipsoid; leave --ellipsoid out");
  return MakeStatePlaneGrid(IsAuto(options.statePlane27) ? PT_STATEPLANE27 : PT_STATEPLANE83);
}

int MgrsDigits(const std::string& text) {
  if (text.empty()) return -1;
  const int digits = ParseInteger(text, "digits of MGRS references");
  if (digits >= 0 && digits <= kMostMgrsDigits) return digits;
  throw Failure("references have at most " + std::to_string(kMostMgrsDigits) + " digits for each coordinate, not " +
                text);
}

}  // namespace

bool IsByPoint(const ProjectionOptions& options) {
  return !options.mgrs.empty() || IsAuto(options.utm) || IsAuto(options.statePlane27) || IsAuto(options.statePlane83);
}

PointGrid::PointGrid(const ProjectionOptions& options, const std::optional<SideDatum>& datum, bool stated)
    : m_mgrsDigits(MgrsDigits(options.mgrs)),
      m_metres(MetresIn(options.unit)),
      m_projector(MakeGrid(options, datum), stated) {}

LabelColumn PointGrid::Column() const {
  if (m_mgrsDigits >= 0) {
    return {Label::Alone, "mgrs", [](const std::string& text) { return ParseMgrs(text).has_value(); }};
  }
  return {Label::Beside, "zone",
          [grid = m_projector.SharedGrid()](const std::string& text) { return grid->Parse(text).has_value(); }};
}

void PointGrid::Forward(std::vector<PROJPOINT>& points, std::vector<std::string>& labels) {
  const std::vector<PROJPOINT> places = points;
  m_projector.Forward(points, labels);
  if (m_mgrsDigits < 0) {
    FromMetres(points, m_metres);
    return;
  }
  for (std::size_t i = 0; i < points.size(); ++i) {
    const bool plottable = points[i].x != DBL_MAX && points[i].y != DBL_MAX;
    labels[i] = plottable ? FormatMgrs({UtmZoneAt(places[i]), points[i]}, places[i].y, m_mgrsDigits) : "";
    if (labels[i].empty()) points[i] = {DBL_MAX, DBL_MAX};
  }
}

void PointGrid::Inverse(std::vector<PROJPOINT>& points, const std::vector<std::string>& labels) {
  if (m_mgrsDigits < 0) {
    ToMetres(points, m_metres);
    m_projector.Inverse(points, labels);
    return;
  }
  std::vector<std::string> zones(labels.size());
  for (std::size_t i = 0; i < labels.size(); ++i) {
    const std::optional<GridPlace> place = ParseMgrs(labels[i]);
    if (!place) continue;
    points[i] = place->point;
    zones[i] = UtmZoneLabel(place->zone);
  }
  m_projector.Inverse(points, zones);
}

int ProjectByPoint(const ProjectionOptions& options, bool inverse, bool stated, const TableOptions& table) {
  const PointGrid grid(options, std::nullopt, stated);
  TableOptions labelled = table;
  (inverse ? labelled.labelIn : labelled.labelOut) = grid.Column();
  const Kind from = inverse ? Kind::Projected : Kind::Geographic, to = inverse ? Kind::Geographic : Kind::Projected;
  return ConvertLabelledTable(labelled, from, to, [&] {
    return LabelConverter(
        [own = grid, inverse](std::vector<PROJPOINT>& points, std::vector<std::string>& labels) mutable {
          inverse ? own.Inverse(points, labels) : own.Forward(points, labels);
        });
  });
}

}  // namespace orvex::tool
