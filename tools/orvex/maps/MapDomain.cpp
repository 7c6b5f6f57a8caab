// MapDomain - a part of the globe with one closed edge: which places it holds, where lines cross its edge, and the edge
// itself as a curve.
#include "maps/MapDomain.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace orvex::tool {

namespace {

constexpr double kLongestChord = 2.5;  // degrees; an edge then lies within 0.02 degrees of its chords

/// The value a whole number of turns away that lies from `west` on.
double InTurn(double lon, double west) {
  return lon - 360 * std::floor((lon - west) / 360);
}

PROJPOINT Between(const PROJPOINT& a, const PROJPOINT& b, double t) {
  return {a.x + t * (b.x - a.x), a.y + t * (b.y - a.y)};
}

/// Into how many chords of the sphere an edge is divided.
int Chords(const PROJPOINT& a, const PROJPOINT& b) {
  return std::max(1, static_cast<int>(std::ceil(std::max(std::abs(b.x - a.x), std::abs(b.y - a.y)) / kLongestChord)));
}

/// Longitude in the turn of a box, on its edge where rounding has put it just beside.
double InBox(double lon, const Bounds& box) {
  const double x = InTurn(lon, box.west);
  if (x <= box.east) return x;
  return x - box.east < box.west + 360 - x ? box.east : box.west;
}

/// Of the plane of a turned meridian; on its side to the east.
Vector NormalOf(double lon) {
  return {-std::sin(lon * kRadians), std::cos(lon * kRadians), 0};
}

/// Walks along a step whose possible crossings are known. What counts is on which side the middle lies between two of
/// them, so that rounding can at most move a crossing, never lose one.
template <class At, class Holds, class Cross>
void Walk(Roots& roots, bool& inside, const At& at, const Holds& holds, const Cross& cross) {
  double from = 0;
  for (const double to : roots.Sorted()) {
    if (to - from <= 0) continue;
    if (holds(at((from + to) / 2)) != inside) {
      cross(at(from));
      inside = !inside;
    }
    from = to;
  }
}

}  // namespace

std::span<const double> Roots::Sorted() {
  std::sort(m_at.begin(), m_at.begin() + static_cast<std::ptrdiff_t>(m_count));
  m_at[m_count] = 1;
  return {m_at.data(), m_count + 1};
}

double Roots::First() const {
  double first = 1;
  for (std::size_t i = 0; i < m_count; ++i) first = std::min(first, m_at[i]);
  return first;
}

PROJPOINT Perimeter::At(double position) const {
  double s = std::fmod(position, Length());
  if (s < 0) s += Length();
  if (s <= Width()) return {m_box.west + s, m_box.south};
  s -= Width();
  if (s <= Height()) return {m_box.east, m_box.south + s};
  s -= Height();
  if (s <= Width()) return {m_box.east - s, m_box.north};
  return {m_box.west, m_box.north - (s - Width())};
}

double Perimeter::Of(double x, double y) const {
  x = std::clamp(x, m_box.west, m_box.east);
  y = std::clamp(y, m_box.south, m_box.north);
  const std::array<double, 4> distance{y - m_box.south, m_box.east - x, m_box.north - y, x - m_box.west};
  switch (std::min_element(distance.begin(), distance.end()) - distance.begin()) {
    case 0:
      return x - m_box.west;
    case 1:
      return Width() + (y - m_box.south);
    case 2:
      return Width() + Height() + (m_box.east - x);
    default:
      return 2 * Width() + Height() + (m_box.north - y);
  }
}

Box::Box(const Bounds& bounds) : m_edge(bounds) {}

bool Box::Holds(const PROJPOINT& p) const {
  const Bounds& b = m_edge.Box();
  return p.y >= b.south && p.y <= b.north && InTurn(p.x, b.west) <= b.east;
}

void Box::FindRoots(const PROJPOINT& a, const PROJPOINT& b, Roots& roots) const {
  const Bounds& box = m_edge.Box();
  if (a.x != b.x) {
    const double least = std::min(a.x, b.x), most = std::max(a.x, b.x);
    for (const double side : {box.west, box.east}) {
      for (double x = InTurn(side, least); x <= most; x += 360) roots.Add((x - a.x) / (b.x - a.x));
    }
  }
  if (a.y != b.y) {
    for (const double side : {box.south, box.north}) roots.Add((side - a.y) / (b.y - a.y));
  }
}

void Box::Follow(const PROJPOINT& a, const PROJPOINT& b, bool& inside, std::vector<Crossing>& crossings) const {
  Roots roots;
  FindRoots(a, b, roots);
  Walk(
      roots, inside, [&](double t) { return Between(a, b, t); }, [&](const PROJPOINT& p) { return Holds(p); },
      [&](const PROJPOINT& p) {
        const double position = NearestPosition(p);
        PROJPOINT edge = m_edge.At(position);
        edge.x += 360 * std::round((p.x - edge.x) / 360);
        crossings.push_back({edge, position});
      });
}

bool Box::StartsInside(const PROJPOINT& a, const PROJPOINT& b) const {
  Roots roots;
  FindRoots(a, b, roots);
  return Holds(Between(a, b, roots.First() / 2));
}

double Box::NearestPosition(const PROJPOINT& p) const {
  return m_edge.Of(InBox(p.x, m_edge.Box()), p.y);
}

PROJPOINT Box::Brought(const PROJPOINT& p) const {
  return {InBox(p.x, m_edge.Box()), p.y};
}

void TurnedDomain::Follow(const PROJPOINT& a, const PROJPOINT& b, bool& inside,
                          std::vector<Crossing>& crossings) const {
  const int n = Chords(a, b);
  Vector from = m_aspect.To(a);
  for (int k = 1; k <= n; ++k) {
    const PROJPOINT end = k == n ? b : Between(a, b, double(k) / n);
    const Vector to = m_aspect.To(end);
    FollowChord(from, to, end.x, inside, crossings);
    from = to;
  }
}

/// A part of an edge; `lon` is a longitude near it, in the turn of its line.
void TurnedDomain::FollowChord(const Vector& a, const Vector& b, double lon, bool& inside,
                               std::vector<Crossing>& crossings) const {
  Roots roots;
  FindRoots(a, b, roots);
  Walk(
      roots, inside, [&](double t) { return tool::Between(a, b, t); }, [&](const Vector& v) { return Holds(v); },
      [&](const Vector& v) {
        const double position = PositionOf(v);
        PROJPOINT edge = EdgeAt(position);
        edge.x += 360 * std::round((lon - edge.x) / 360);
        crossings.push_back({edge, position});
      });
}

bool TurnedDomain::StartsInside(const PROJPOINT& a, const PROJPOINT& b) const {
  const Vector u = m_aspect.To(a), v = m_aspect.To(Between(a, b, 1.0 / Chords(a, b)));
  Roots roots;
  FindRoots(u, v, roots);
  return Holds(tool::Between(u, v, roots.First() / 2));
}

PROJPOINT TurnedDomain::Brought(const PROJPOINT& p) const {
  return {std::remainder(p.x, 360), p.y};
}

void TurnedDomain::AddParallel(const Vector& a, const Vector& b, double sine, Roots& roots) {
  // (a + t d).z = sine |a + t d|, squared
  const Vector d{b.x - a.x, b.y - a.y, b.z - a.z};
  const double s2 = sine * sine;
  const double A = d.z * d.z - s2 * Dot(d, d), B = a.z * d.z - s2 * Dot(a, d), C = a.z * a.z - s2 * Dot(a, a);
  const double discriminant = B * B - A * C;
  if (discriminant < 0) return;
  const double q = -(B + std::copysign(std::sqrt(discriminant), B));
  if (A != 0) roots.Add(q / A);
  if (q != 0) roots.Add(C / q);
}

Cap::Cap(const PROJPOINT& centre, double arc)
    : TurnedDomain(Aspect::AboutPole(centre)), m_arc(arc), m_cosArc(std::cos(arc * kRadians)) {}

bool Cap::Holds(const Vector& v) const {
  return v.z >= m_cosArc * std::sqrt(Dot(v, v));
}

double Cap::PositionOf(const Vector& v) const {
  return InTurn(std::atan2(v.y, v.x) / kRadians, 0);
}

void Cap::FindRoots(const Vector& a, const Vector& b, Roots& roots) const {
  AddParallel(a, b, m_cosArc, roots);
}

TurnedBox::TurnedBox(const Aspect& aspect, const Bounds& bounds)
    : TurnedDomain(aspect),
      m_edge(bounds),
      m_sines{std::sin(bounds.south * kRadians), std::sin(bounds.north * kRadians)},
      m_normals{NormalOf(bounds.west), NormalOf(bounds.east)} {}

/// Which of both sides of the edge a vector is on is clear from the planes and cones of its sides unless it lies next
/// to one of them; the angles themselves cost five times as much.
bool TurnedBox::Holds(const Vector& v) const {
  constexpr double kNext = 1e-9;  // of the length
  const double length = std::sqrt(Dot(v, v)), next = kNext * length;
  const double aboveSouth = v.z - m_sines[0] * length, belowNorth = m_sines[1] * length - v.z;
  const double eastOfWest = Dot(v, m_normals[0]), westOfEast = -Dot(v, m_normals[1]);
  if (aboveSouth < -next || belowNorth < -next) return false;
  if (std::abs(eastOfWest) > next && std::abs(westOfEast) > next && aboveSouth > next && belowNorth > next) {
    const bool wide = m_edge.Box().east - m_edge.Box().west > 180;
    return wide ? eastOfWest > 0 || westOfEast > 0 : eastOfWest > 0 && westOfEast > 0;
  }
  const PROJPOINT p = PlaceOf(v);
  const Bounds& b = m_edge.Box();
  return p.x >= b.west && p.x <= b.east && p.y >= b.south && p.y <= b.north;
}

double TurnedBox::PositionOf(const Vector& v) const {
  const PROJPOINT p = PlaceOf(v);
  return m_edge.Of(InBox(p.x, m_edge.Box()), p.y);
}

PROJPOINT TurnedBox::EdgeAt(double position) const {
  const PROJPOINT p = m_edge.At(position);
  return Turned().From(p.x, p.y);
}

void TurnedBox::FindRoots(const Vector& a, const Vector& b, Roots& roots) const {
  for (const double sine : m_sines) AddParallel(a, b, sine, roots);
  for (const Vector& normal : m_normals) {
    const double da = Dot(a, normal), db = Dot(b, normal);
    if (da != db) roots.Add(da / (da - db));
  }
}

}  // namespace orvex::tool
