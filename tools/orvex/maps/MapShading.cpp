// MapShading - distortion as coloured bands over the map, with their legend.
#include "maps/MapShading.h"

#include <algorithm>
#include <array>
#include <cfloat>
#include <cmath>
#include <cstdio>
#include <initializer_list>
#include <limits>
#include <span>

#include "Failure.h"
#include "ProjectPoints.h"
#include "maps/MapText.h"

namespace orvex::tool {

namespace {

constexpr double kCell = 60;       // tenths of a pixel
constexpr double kSamePlace = 10;  // tenths of a pixel by which a place there and back may be off
constexpr int kGrowth = 4;         // cells by which values are continued beyond the map
constexpr std::size_t kMostLimits = 8, kFewLimits = 3;
constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();

// Limits to choose from, from coarse to fine: the first list of which enough lie within the values is taken.
const std::initializer_list<std::initializer_list<double>> kRatios = {
    {0.1, 0.2, 0.5, 1, 1.5, 2, 3, 5, 10, 20},
    {0.6, 0.7, 0.8, 0.9, 1, 1.1, 1.2, 1.3, 1.5, 2},
    {0.9, 0.95, 0.98, 0.99, 1, 1.01, 1.02, 1.05, 1.1, 1.2},
    {0.99, 0.995, 0.998, 0.999, 1, 1.001, 1.002, 1.005, 1.01, 1.02, 1.05},
    {0.999, 0.9995, 0.9998, 0.9999, 1, 1.0001, 1.0002, 1.0005, 1.001, 1.002, 1.005},
};
const std::initializer_list<std::initializer_list<double>> kAngles = {
    {5, 10, 20, 30, 45, 60, 90, 120}, {1, 2, 5, 10, 15, 20, 30}, {0.1, 0.2, 0.5, 1, 2, 5}};

constexpr std::array kWarm{"#fdf4e3", "#fae3c0", "#f5cb98", "#eeb072", "#e29154",
                           "#cf7140", "#b35231", "#8f3826", "#6b241c"};
constexpr std::array kCool{"#eaf1f6", "#d0e0ec", "#adc8dd", "#86abca", "#5f8bb2", "#406c97"};

/// The value of a spot of the picture, kUnknown where it shows no place.
double ValueAt(DistortionKind kind, const DistortionMeter& meter, CProjector& projector, MapPainter& painter,
               const Frame& frame, const Spot& spot) {
  PROJPOINT place = frame.From(spot);
  ProjectPoint(projector, Direction::Inverse, place);
  if (place.x == DBL_MAX || std::abs(place.y) > 90) return kUnknown;
  const auto again = painter.Locate(place);
  if (!again || std::hypot(again->x - spot.x, again->y - spot.y) > kSamePlace) return kUnknown;
  const auto distortion = meter.At(place);
  if (!distortion) return kUnknown;
  switch (kind) {
    case DistortionKind::OfScale:
      return distortion->most;
    case DistortionKind::OfArea:
      return distortion->Area();
    default:
      return distortion->Angle();
  }
}

/// Gives cells beside known ones the mean of these, so that bands run straight on to the edge of the map.
void Grow(Field2D& field) {
  const std::vector<double> old = field.values;
  const auto columns = static_cast<std::ptrdiff_t>(field.columns), rows = static_cast<std::ptrdiff_t>(field.rows);
  for (std::ptrdiff_t row = 0; row < rows; ++row) {
    for (std::ptrdiff_t column = 0; column < columns; ++column) {
      double& value = field.values[static_cast<std::size_t>(row * columns + column)];
      if (!std::isnan(value)) continue;
      double sum = 0;
      int count = 0;
      for (std::ptrdiff_t r = std::max<std::ptrdiff_t>(row - 1, 0); r <= std::min(row + 1, rows - 1); ++r) {
        for (std::ptrdiff_t c = std::max<std::ptrdiff_t>(column - 1, 0); c <= std::min(column + 1, columns - 1); ++c) {
          const double near = old[static_cast<std::size_t>(r * columns + c)];
          if (std::isnan(near)) continue;
          sum += near;
          ++count;
        }
      }
      if (count > 0) value = sum / count;
    }
  }
}

std::string LimitText(double limit, DistortionKind kind) {
  char text[40];
  std::snprintf(text, sizeof text, "%.6g%s", limit, kind == DistortionKind::OfAngle ? "\xC2\xB0" : "");
  return text;
}

}  // namespace

DistortionKind ParseDistortion(const std::string& text) {
  if (text == "scale") return DistortionKind::OfScale;
  if (text == "area") return DistortionKind::OfArea;
  if (text == "angle") return DistortionKind::OfAngle;
  throw Failure("--distortion takes scale, area or angle, not \"" + text + "\"");
}

MapShading::MapShading(DistortionKind kind, const DistortionMeter& meter, CProjector& projector, MapPainter& painter,
                       const Frame& frame, const Spot& size)
    : m_kind(kind),
      m_field{static_cast<std::size_t>(size.x / kCell) + 2,
              static_cast<std::size_t>(size.y / kCell) + 2,
              {0, 0},
              kCell,
              {}} {
  for (std::size_t row = 0; row < m_field.rows; ++row) {
    for (std::size_t column = 0; column < m_field.columns; ++column) {
      const Spot spot{static_cast<double>(column) * kCell, static_cast<double>(row) * kCell};
      m_field.values.push_back(ValueAt(kind, meter, projector, painter, frame, spot));
    }
  }
  ChooseLimits();
  for (int i = 0; i < kGrowth; ++i) Grow(m_field);
  for (double& value : m_field.values) {
    if (std::isnan(value)) value = 0;
  }
}

void MapShading::ChooseLimits() {
  std::vector<double> values;
  for (const double value : m_field.values) {
    if (!std::isnan(value)) values.push_back(value);
  }
  if (values.empty()) return;
  std::sort(values.begin(), values.end());
  m_least = values.front();
  m_most = values.back();
  for (const auto& list : m_kind == DistortionKind::OfAngle ? kAngles : kRatios) {
    m_limits.clear();
    for (const double limit : list) {
      if (limit > m_least && limit < m_most && m_limits.size() < kMostLimits) m_limits.push_back(limit);
    }
    if (m_limits.size() >= kFewLimits) return;
  }
  const bool constant = m_kind == DistortionKind::OfAngle ? m_most < 0.1 : m_most - m_least < 1e-4;
  if (constant) m_limits.clear();  // what is left is rounding
}

std::string MapShading::ColorOf(std::size_t band) const {
  std::size_t below = 0;  // bands below the true value
  if (m_kind != DistortionKind::OfAngle) {
    while (below < m_limits.size() && m_limits[below] <= 1) ++below;
    if (below == m_limits.size() && m_most <= 1) ++below;
  }
  if (band < below) return kCool[std::min(below - 1 - band, kCool.size() - 1)];
  return kWarm[std::min(band - below, kWarm.size() - 1)];
}

void MapShading::Paint(MapSvg& svg) const {
  svg.Add("<g class=\"distortion\" clip-path=\"url(#frame)\" fill-rule=\"evenodd\">\n<use href=\"#area\" fill=\"" +
          ColorOf(0) + "\"/>\n");
  for (std::size_t i = 0; i < m_limits.size(); ++i) {
    PathPen pen;
    TraceAbove(m_field, m_limits[i], pen);
    svg.Add("<path fill=\"" + ColorOf(i + 1) + "\" d=\"" + pen.Data() + "\"/>\n");
  }
  svg.Add("</g>\n");
}

void MapShading::PaintLegend(MapSvg& svg, double right, double bottom) const {
  constexpr double kWidth = 400, kHeight = 90, kSize = 100, kGap = 20;
  static constexpr std::array kTitles{"scale", "area scale", "angular distortion"};
  const std::string style = "fill=\"#444\" text-anchor=";
  const double bands = static_cast<double>(m_limits.size()) + 1, left = right - bands * kWidth;
  const double top = bottom - kHeight - kGap - kSize;
  char text[300];
  for (std::size_t i = 0; i <= m_limits.size(); ++i) {
    const double x = left + static_cast<double>(i) * kWidth;
    std::snprintf(text, sizeof text, "<rect x=\"%.0f\" y=\"%.0f\" width=\"%.0f\" height=\"%.0f\" fill=\"%s\"/>\n", x,
                  top, kWidth, kHeight, ColorOf(i).c_str());
    svg.Add(text);
    if (i > 0)
      svg.AddText({x, bottom}, kSize, "class=\"legend\" " + style + "\"middle\"", LimitText(m_limits[i - 1], m_kind));
  }
  std::snprintf(text, sizeof text,
                "<rect x=\"%.0f\" y=\"%.0f\" width=\"%.0f\" height=\"%.0f\" fill=\"none\" stroke=\"#7a8a94\" "
                "stroke-width=\"5\"/>\n",
                left, top, bands * kWidth, kHeight);
  svg.Add(text);
  std::string title = kTitles[static_cast<std::size_t>(m_kind)];
  if (m_limits.empty())
    title += " " + LimitText(m_kind == DistortionKind::OfAngle ? 0 : m_least, m_kind) + " everywhere";
  svg.AddText({left - 80, top + kHeight}, kSize, style + "\"end\"", title);
}

}  // namespace orvex::tool
