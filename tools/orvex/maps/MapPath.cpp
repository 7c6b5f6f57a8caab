// MapPath - curves in the picture, point by point.
#include "maps/MapPath.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace orvex::tool {

namespace {

constexpr double kTolerance = 0.6;  // tenths of a pixel that a dropped point may lie off the line

double Turn(const Spot& a, const Spot& b) {
  return a.x * b.y - a.y * b.x;
}

void AppendNumber(std::string& out, long value) {
  char text[24];
  out.append(text, std::to_chars(text, text + sizeof text, value).ptr);
}

void AppendPair(std::string& out, long x, long y) {
  if (x >= 0 && out.back() >= '0' && out.back() <= '9') out += ' ';
  AppendNumber(out, x);
  if (y >= 0) out += ' ';
  AppendNumber(out, y);
}

}  // namespace

void BoxPen::Add(const Spot& spot) {
  least = {std::min(least.x, spot.x), std::min(least.y, spot.y)};
  most = {std::max(most.x, spot.x), std::max(most.y, spot.y)};
}

/// From the anchor a line may go on in all directions in which it passes every point since within the tolerance; a
/// point outside of these, or one that comes nearer again, makes the point before it the next anchor.
void PathPen::Add(const Spot& spot) {
  if (!m_open) {
    m_open = true;
    m_start = m_data.size();
    m_steps = 0;
    m_pending = false;
    Keep(spot);
    return;
  }
  double dx = spot.x - m_anchor.x, dy = spot.y - m_anchor.y, distance = Length(dx, dy);
  const Spot direction{dx, dy};
  const bool astray = m_wedge && (Turn(m_right, direction) < 0 || Turn(direction, m_left) < 0);
  if (m_pending && (astray || distance < m_farthest - kTolerance)) {
    Keep(m_last);
    dx = spot.x - m_anchor.x;
    dy = spot.y - m_anchor.y;
    distance = Length(dx, dy);
  }
  Narrow(spot, dx, dy, distance);
}

void PathPen::Narrow(const Spot& spot, double dx, double dy, double distance) {
  m_last = spot;
  m_pending = true;
  m_farthest = std::max(m_farthest, distance);
  if (distance <= kTolerance) return;  // any direction passes it
  const double sine = kTolerance / distance, cosine = std::sqrt(1 - sine * sine);
  const Spot right{dx * cosine + dy * sine, dy * cosine - dx * sine};
  const Spot left{dx * cosine - dy * sine, dy * cosine + dx * sine};
  if (!m_wedge || Turn(m_right, right) > 0) m_right = right;
  if (!m_wedge || Turn(left, m_left) > 0) m_left = left;
  m_wedge = true;
}

void PathPen::Keep(const Spot& spot) {
  const long x = std::lround(spot.x), y = std::lround(spot.y);
  if (m_data.size() == m_start) {
    m_data += 'M';
    AppendPair(m_data, x, y);
    m_data += 'l';
  } else if (x != m_x || y != m_y) {
    AppendPair(m_data, x - m_x, y - m_y);
    ++m_steps;
  }
  m_x = x;
  m_y = y;
  m_anchor = spot;
  m_pending = m_wedge = false;
  m_farthest = 0;
}

/// Pieces smaller than a tenth of a pixel are left out.
void PathPen::Finish(bool closed) {
  if (!m_open) return;
  if (m_pending) Keep(m_last);
  m_open = false;
  if (m_steps < (closed ? 2 : 1))
    m_data.resize(m_start);
  else if (closed)
    m_data += 'z';
}

}  // namespace orvex::tool
