// MapGraticule - meridians, parallels and Tissot's ellipses at the multiples of a step.
#include "maps/MapGraticule.h"

#include <cmath>
#include <numbers>

#include "maps/Sphere.h"

namespace orvex::tool {

namespace {

constexpr double kTissotPart = 0.25;  // radius of a circle, of the step

}  // namespace

std::vector<double> Multiples(double step, double least, double most) {
  std::vector<double> values;
  for (double k = std::ceil(least / step); k * step <= most; ++k) values.push_back(k * step);
  return values;
}

std::vector<double> Meridians(double step) {
  std::vector<double> values = Multiples(step, -180, 180);
  if (values.size() > 1 && values.front() == -180 && values.back() == 180) values.pop_back();
  return values;
}

std::vector<double> Parallels(double step) {
  std::vector<double> values = Multiples(step, -90, 90);
  std::erase_if(values, [](double lat) { return std::abs(lat) == 90; });
  return values;
}

Points Meridian(double lon) {
  return {{lon, -90}, {lon, 0}, {lon, 90}};
}

Points Parallel(double lat) {
  return {{-180, lat}, {-90, lat}, {0, lat}, {90, lat}, {180, lat}};
}

void DrawTissot(MapPainter& painter, const DistortionMeter& meter, const MapArea& area, double step, Pen& pen) {
  const double radius = kTissotPart * step * kRadians * area.radius * painter.CurrentFrame().scale;
  constexpr int kCorners = 72;
  for (const double lat : Parallels(step)) {
    for (const double lon : Meridians(step)) {
      const auto spot = painter.Locate({lon, lat});
      const auto d = spot ? meter.At({lon, lat}) : std::nullopt;
      if (!d) continue;
      for (int i = 0; i <= kCorners; ++i) {
        const double u = radius * std::cos(i * 2 * std::numbers::pi / kCorners);
        const double v = radius * std::sin(i * 2 * std::numbers::pi / kCorners);
        pen.Add({spot->x + u * d->east.x + v * d->north.x, spot->y - u * d->east.y - v * d->north.y});
      }
      pen.Finish(true);
    }
  }
}

}  // namespace orvex::tool
