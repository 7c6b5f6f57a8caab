// SystemConverter - coordinates of a registered system to longitude and latitude on its datum and back.
#include "systems/SystemConverter.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <numbers>

#include "ProjectPoints.h"

namespace orvex::tool {

namespace {

constexpr double kMargin = 1;  // degrees

bool IsPlottable(const PROJPOINT& point) {
  return point.x != DBL_MAX && point.y != DBL_MAX;
}

/// Applies a function to every point that is not marked.
template <class Function>
void ForEach(std::vector<PROJPOINT>& points, Function function) {
  for (PROJPOINT& point : points) {
    if (IsPlottable(point)) function(point);
  }
}

PROJPOINT Rotated(const PROJPOINT& point, double degrees) {
  const double angle = degrees * std::numbers::pi / 180, s = std::sin(angle), c = std::cos(angle);
  return {point.x * c + point.y * s, point.y * c - point.x * s};
}

double WithinHalfTurn(double longitude) {
  return std::abs(longitude) <= 180 ? longitude : std::remainder(longitude, 360);
}

}  // namespace

SystemConverter::SystemConverter(const CoordinateSystem& system, bool stated) : m_system(&system) {
  const SystemRecord made = MakeSystemRecord(system);
  m_turn = made.turn;
  if (system.IsProjected()) m_projector.emplace(MakeProjector(made.record, stated));
}

void SystemConverter::ToGeographic(std::vector<PROJPOINT>& points) {
  const double unit = m_system->UnitOfAxes().factor;
  if (m_projector) {
    ForEach(points, [&](PROJPOINT& point) { point = {point.x * unit, point.y * unit}; });
    if (m_turn) {
      ForEach(points, [&](PROJPOINT& point) {
        point = Rotated({point.x - m_turn->x0, point.y - m_turn->y0}, -m_turn->degrees);
      });
    }
    ProjectPoints(*m_projector, Direction::Inverse, points);
  } else {
    const double meridian = m_system->Datum().longitude;
    ForEach(points, [&](PROJPOINT& point) { point = {WithinHalfTurn(point.x * unit + meridian), point.y * unit}; });
  }
  CountOutside(points);
}

void SystemConverter::FromGeographic(std::vector<PROJPOINT>& points) {
  CountOutside(points);
  const double unit = m_system->UnitOfAxes().factor;
  if (m_projector) {
    ProjectPoints(*m_projector, Direction::Forward, points);
    if (m_turn) {
      ForEach(points, [&](PROJPOINT& point) {
        point = Rotated(point, m_turn->degrees);
        point = {point.x + m_turn->x0, point.y + m_turn->y0};
      });
    }
    ForEach(points, [&](PROJPOINT& point) { point = {point.x / unit, point.y / unit}; });
  } else {
    const double meridian = m_system->Datum().longitude;
    ForEach(points, [&](PROJPOINT& point) { point = {WithinHalfTurn(point.x - meridian) / unit, point.y / unit}; });
  }
}

void SystemConverter::CountOutside(const std::vector<PROJPOINT>& points) {
  const Area& area = m_system->AreaOfUse();
  *m_outside += static_cast<std::size_t>(std::ranges::count_if(
      points, [&](const PROJPOINT& point) { return IsPlottable(point) && !area.Contains(point, kMargin); }));
}

}  // namespace orvex::tool
