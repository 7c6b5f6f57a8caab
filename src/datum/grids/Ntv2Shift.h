// Ntv2Shift - bilinear interpolation between the nodes of an NTv2 grid, and the way back by iteration.
// Source: National Transformation Version 2, Developer's Guide (Geomatics Canada, Geodetic Survey Division).
#pragma once

#include "points/PointLoop.h"

namespace orvex::detail {

/// The factors by which points become radians and degrees again; limits of grids take the same way, so that a point on
/// an edge meets it exactly.
inline constexpr double kNtv2RadiansPerDegree = 0.017453292519943295, kNtv2DegreesPerRadian = 57.29577951308232;

/// Shifts at a node, arcseconds; positive west and north.
struct Ntv2Node {
  float north, west;
};

/// Rows of nodes run from east to west.
struct Ntv2Cell {
  double fx, fy;  ///< place of a point within it, from its south-east corner
  const Ntv2Node* south;
  const Ntv2Node* north;  ///< null: the point lies in no sub-grid
};

class Ntv2Grid;

/// A grid for the time of a call.
struct Ntv2Step {
  const Ntv2Grid* grid;
  mutable std::size_t hint = 0;  ///< the sub-grid of the point before; never changes a result
};

/// The cell that holds a point, radians, the longitude positive west.
Ntv2Cell FindNtv2Cell(const Ntv2Step& step, double west, double north);

namespace ORVEX_LEVEL {

template <class T>
struct Ntv2Position {
  T west, north;
};

/// Shifts in radians where a lane is wanted and in the grid; `found` says where.
template <class T>
ORVEX_INLINE Ntv2Position<T> ShiftAt(const Ntv2Step& step, const Ntv2Position<T>& p, MaskOf<T> wanted,
                                     MaskOf<T>& found) {
  constexpr double kRadiansPerSecond = kNtv2RadiansPerDegree / 3600;
  static constexpr Ntv2Node kNowhere[2] = {};
  Ntv2Cell cells[kLaneCount<T>];
  found = Gather<T>([&](int i) {
            Ntv2Cell cell{};
            if (Get(wanted, i)) cell = FindNtv2Cell(step, Get(p.west, i), Get(p.north, i));
            const bool holds = cell.north != nullptr;
            cells[i] = holds ? cell : Ntv2Cell{0, 0, kNowhere, kNowhere};
            return holds ? 1.0 : 0.0;
          }) != T(0);
  const T fx = Gather<T>([&](int i) { return cells[i].fx; }), fy = Gather<T>([&](int i) { return cells[i].fy; });
  const auto bilinear = [&](float Ntv2Node::*which) {
    const T a = Gather<T>([&](int i) { return cells[i].south[0].*which; });
    const T b = Gather<T>([&](int i) { return cells[i].south[1].*which; });
    const T c = Gather<T>([&](int i) { return cells[i].north[0].*which; });
    const T d = Gather<T>([&](int i) { return cells[i].north[1].*which; });
    return (a + (b - a) * fx + (c - a) * fy + (a - b - c + d) * fx * fy) * kRadiansPerSecond;
  };
  return {bilinear(&Ntv2Node::west), bilinear(&Ntv2Node::north)};
}

template <class T>
ORVEX_INLINE Ntv2Position<T> ToNtv2(const Point<T>& p) {
  return {-(p.x * kNtv2RadiansPerDegree), p.y * kNtv2RadiansPerDegree};
}
template <class T>
ORVEX_INLINE Point<T> FromNtv2(const Ntv2Position<T>& p) {
  return {-p.west * kNtv2DegreesPerRadian, p.north * kNtv2DegreesPerRadian};
}

/// A point outside the grid takes the way through radians as well. Answers which points are inside.
template <class T>
ORVEX_INLINE MaskOf<T> ShiftForward(const Ntv2Step& step, Point<T>& point) {
  const Ntv2Position<T> p = ToNtv2(point);
  MaskOf<T> found;
  const Ntv2Position<T> shift = ShiftAt(step, p, Yes<T>(), found);
  point = FromNtv2<T>({Select(found, p.west + shift.west, p.west), Select(found, p.north + shift.north, p.north)});
  return found;
}

/// Solves the forward relation by fixed-point iteration from the shift applied backwards once. One coordinate at rest
/// is enough to stop; an estimate that leaves the grid stands. Answers which points need no marking, with those that
/// lie inside the grid.
template <class T>
ORVEX_INLINE MaskOf<T> ShiftInverse(const Ntv2Step& step, Point<T>& point, MaskOf<T>& inside) {
  constexpr double kConverged = 1e-12;  // radians: 6 micrometres on the ground
  constexpr int kMaxRounds = 11;        // the last one marks the point, however small its correction was
  const Ntv2Position<T> target = ToNtv2(point);
  MaskOf<T> found;
  Ntv2Position<T> p = target, shift = ShiftAt(step, target, Yes<T>(), found);
  inside = found;
  Iteration<T> it(kMaxRounds - 1);
  it.Settle(!found);
  it.Step(p.west, target.west - shift.west);
  it.Step(p.north, target.north - shift.north);
  while (it.Goes()) {
    shift = ShiftAt(step, p, it.Running(), found);
    it.Settle(!found);
    const T west = target.west - (p.west + shift.west), north = target.north - (p.north + shift.north);
    it.Step(p.west, p.west + west);
    it.Step(p.north, p.north + north);
    it.Settle((Abs(west) <= T(kConverged)) | (Abs(north) <= T(kConverged)));
  }
  point = FromNtv2(p);
  return it.Settled();
}

}  // namespace ORVEX_LEVEL

}  // namespace orvex::detail
