// MapFurniture - lines and marks that explain a map: graticule, grid, zones, scale bar, Tissot's ellipses.
#include "maps/MapFurniture.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstdio>

#include "Failure.h"
#include "ProjectPoints.h"
#include "StatePlane.h"
#include "maps/MapText.h"

namespace orvex::tool {

namespace {

constexpr double kUtmHalf = 3, kUtmNorth = 84, kUtmSouth = -80;
constexpr double kSteadyScale = 1.1;    // most over least scale for which a scale bar means something
constexpr int kScaleSamples = 7;        // in each direction of the picture
constexpr double kBarPart = 0.2;        // of the width of the picture
constexpr double kMostGridLines = 500;  // in each direction

/// The largest of 1, 2 and 5 times powers of ten that is no larger.
double RoundDown(double value) {
  const double power = std::pow(10, std::floor(std::log10(value)));
  for (const double factor : {5.0, 2.0}) {
    if (value >= factor * power) return factor * power;
  }
  return power;
}

bool HasTransverseAxis(ProjType type) {
  return type == PT_UTM || type == PT_TRANSVERSEMERCATOR || type == PT_GAUSSKRUGER;
}

std::string PlainNumber(double value) {
  char text[40];
  std::snprintf(text, sizeof text, "%.10g", value == 0 ? 0 : value);
  return text;
}

/// Where a line across the picture crosses outlines: positions along it.
std::vector<double> CrossingsOf(const std::vector<Polyline>& outline, bool vertical, double at) {
  std::vector<double> crossings;
  for (const Polyline& piece : outline) {
    for (std::size_t i = 0; i < piece.size(); ++i) {
      const Spot a = piece[i], b = piece[(i + 1) % piece.size()];
      const double da = (vertical ? a.x : a.y) - at, db = (vertical ? b.x : b.y) - at;
      if ((da < 0) == (db < 0)) continue;
      const double t = da / (da - db);
      crossings.push_back(vertical ? a.y + t * (b.y - a.y) : a.x + t * (b.x - a.x));
    }
  }
  return crossings;
}

}  // namespace

ZoneLines LinesOfZone(const PROJDATA& record) {
  ZoneLines lines;
  const PROJDATA real = Expanded(record);
  const auto stretch = [&](double lon) {
    return record.bSouth ? Points{{lon, kUtmSouth}, {lon, 0}} : Points{{lon, 0}, {lon, kUtmNorth}};
  };
  if (record.Type == PT_UTM) {
    lines.borders = {stretch(real.Lon0 - kUtmHalf), stretch(real.Lon0 + kUtmHalf)};
    lines.axes = {stretch(real.Lon0)};
  } else if (IsStatePlane(record) && HasTransverseAxis(real.Type)) {
    lines.axes = {Meridian(real.Lon0)};
  } else if (IsStatePlane(record) && real.Type == PT_LAMBERT) {
    lines.axes = {Meridian(real.Lon0)};
    lines.borders = {Parallel(real.Lat1), Parallel(real.Lat2)};
  }
  return lines;
}

std::optional<Area> ZoneArea(const PROJDATA& record) {
  if (record.Type != PT_UTM) return std::nullopt;
  const double west = record.Lon0 - kUtmHalf, east = record.Lon0 + kUtmHalf;
  const double south = record.bSouth ? kUtmSouth : 0, north = record.bSouth ? 0 : kUtmNorth;
  return Area{{{west, south}, {east, south}, {east, north}, {west, north}, {west, south}}};
}

std::string ZoneNote(const PROJDATA& record) {
  const PROJDATA real = Expanded(record);
  const std::string meridian = "central meridian " + DegreeText(real.Lon0, true);
  if (record.Type == PT_UTM) {
    return "Zone " + std::to_string(record.Zone) + (record.bSouth ? "S" : "N") + ": " +
           DegreeText(real.Lon0 - kUtmHalf, true) + " to " + DegreeText(real.Lon0 + kUtmHalf, true) + ", " + meridian;
  }
  if (!IsStatePlane(record)) return "";
  if (HasTransverseAxis(real.Type)) return "C" + meridian.substr(1);
  if (real.Type == PT_LAMBERT) {
    return "C" + meridian.substr(1) + ", standard parallels " + DegreeText(real.Lat1, false) + " and " +
           DegreeText(real.Lat2, false);
  }
  return "";
}

std::optional<ScaleBar> MeasureScale(CProjector& projector, MapPainter& painter, const DistortionMeter& meter,
                                     const Frame& frame, const Spot& size, bool always) {
  double least = DBL_MAX, most = 0, middle = 0;
  for (int i = 0; i < kScaleSamples * kScaleSamples; ++i) {
    const int column = i % kScaleSamples, row = i / kScaleSamples;
    const double u = (column + 0.5) / kScaleSamples, v = (row + 0.5) / kScaleSamples;
    PROJPOINT place = frame.From({u * size.x, v * size.y});
    ProjectPoint(projector, Direction::Inverse, place);
    if (place.x == DBL_MAX || std::abs(place.y) > 90 || !painter.Locate(place)) continue;
    const auto distortion = meter.At(place);
    if (!distortion) continue;
    least = std::min(least, distortion->least);
    most = std::max(most, distortion->most);
    if (i == kScaleSamples * kScaleSamples / 2) middle = (distortion->least + distortion->most) / 2;
  }
  if (middle == 0 || (!always && most > kSteadyScale * least)) return std::nullopt;
  const double perMetre = frame.scale * middle * meter.Scale(), metres = RoundDown(kBarPart * size.x / perMetre);
  return ScaleBar{metres * perMetre, metres >= 1000 ? PlainNumber(metres / 1000) + " km" : PlainNumber(metres) + " m"};
}

double AddScaleBar(MapSvg& svg, const ScaleBar& bar, double left, double bottom) {
  constexpr double kHeight = 40, kSize = 105;
  char text[400];
  std::snprintf(text, sizeof text,
                "<g class=\"scale-bar\" stroke=\"#444\" stroke-width=\"6\"><rect x=\"%.0f\" y=\"%.0f\" width=\"%.0f\" "
                "height=\"%.0f\" fill=\"#444\"/><rect x=\"%.0f\" y=\"%.0f\" width=\"%.0f\" height=\"%.0f\" "
                "fill=\"#fff\"/></g>\n",
                left, bottom - 20 - kHeight, bar.length / 2, kHeight, left + bar.length / 2, bottom - 20 - kHeight,
                bar.length / 2, kHeight);
  svg.Add(text);
  const double end = left + bar.length + 60;
  svg.AddText({end, bottom - 20}, kSize, "class=\"scale\" fill=\"#444\"", bar.text);
  return end + TextWidth(bar.text, kSize) + 200;
}

ProjectedGrid DrawGrid(const std::vector<Polyline>& outline, const Frame& frame, double step) {
  BoxPen box;
  for (const Polyline& piece : outline) {
    for (const Spot& spot : piece) box.Add(spot);
  }
  const PROJPOINT low = frame.From({box.least.x, box.most.y}), high = frame.From({box.most.x, box.least.y});
  if ((high.x - low.x) / step > kMostGridLines || (high.y - low.y) / step > kMostGridLines) {
    throw Failure("--grid: the step gives more than 500 lines");
  }
  ProjectedGrid grid;
  PathPen pen;
  for (const double x : Multiples(step, low.x, high.x)) {
    const double at = frame.At({x, 0}).x;
    pen.Add({at, box.least.y});
    pen.Add({at, box.most.y});
    pen.Finish(false);
    const auto ends = CrossingsOf(outline, true, at);
    if (!ends.empty())
      grid.labels.push_back({PlainNumber(x), {at, *std::max_element(ends.begin(), ends.end())}, kAbove});
  }
  for (const double y : Multiples(step, low.y, high.y)) {
    const double at = frame.At({0, y}).y;
    pen.Add({box.least.x, at});
    pen.Add({box.most.x, at});
    pen.Finish(false);
    const auto ends = CrossingsOf(outline, false, at);
    if (!ends.empty())
      grid.labels.push_back({PlainNumber(y), {*std::min_element(ends.begin(), ends.end()), at}, kRight});
  }
  grid.lines = pen.Take();
  return grid;
}

void AddTissot(MapSvg& svg, MapPainter& painter, const DistortionMeter& meter, const MapArea& area, double step) {
  PathPen pen;
  DrawTissot(painter, meter, area, step, pen);
  svg.Add(
      "<g class=\"tissot\" clip-path=\"url(#frame)\"><path fill=\"#c0392b\" fill-opacity=\".28\" stroke=\"#9c2f23\" "
      "stroke-opacity=\".8\" stroke-width=\"6\" d=\"" +
      pen.Data() + "\"/></g>\n");
}

}  // namespace orvex::tool
