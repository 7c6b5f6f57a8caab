// NadconShift - bilinear interpolation between the nodes of a NADCON grid.
#pragma once

#include "points/PointLoop.h"

namespace orvex::detail {

class NadconFiles;

/// Values at the corners of a cell, arcseconds.
struct GridNodes {
  double southWest, southEast, northWest, northEast;
};

/// A cell, and the place of a point within it.
struct NadconCell {
  double fx, fy;
  GridNodes las, los;
};

/// Which points a grid holds: with those one spacing west and south of it that header words are read for, or those
/// between its nodes.
enum class NadconExtent { Stated, Nodes };

/// NadconFiles::Find; here so that sources of the point core need no more of the grid.
bool FindNadconCell(const NadconFiles& grid, NadconExtent extent, double x, double y, NadconCell& cell);

namespace ORVEX_LEVEL {

/// Shift in degrees by one of the two files.
template <class T>
ORVEX_INLINE T Interpolate(const NadconCell (&cells)[kLaneCount<T>], GridNodes NadconCell::*which, T fx, T fy) {
  const T a = Gather<T>([&](int i) { return (cells[i].*which).southWest; });
  const T b = Gather<T>([&](int i) { return (cells[i].*which).southEast; });
  const T c = Gather<T>([&](int i) { return (cells[i].*which).northWest; });
  const T d = Gather<T>([&](int i) { return (cells[i].*which).northEast; });
  return (a * (1 - fx) * (1 - fy) + b * fx * (1 - fy) + c * (1 - fx) * fy + d * fx * fy) / 3600;
}

/// Shifts of a point by both files, degrees. Points outside stay; answers which do not.
template <class T>
ORVEX_INLINE MaskOf<T> Interpolate(const NadconFiles& grid, NadconExtent extent, const Point<T>& p, T& las, T& los) {
  NadconCell cells[kLaneCount<T>];
  const T inside = Gather<T>([&](int i) {
    const bool found = FindNadconCell(grid, extent, Get(p.x, i), Get(p.y, i), cells[i]);
    if (!found) cells[i] = {};
    return found ? 1.0 : 0.0;
  });
  const T fx = Gather<T>([&](int i) { return cells[i].fx; }), fy = Gather<T>([&](int i) { return cells[i].fy; });
  las = Interpolate(cells, &NadconCell::las, fx, fy);
  los = Interpolate(cells, &NadconCell::los, fx, fy);
  return inside != T(0);
}

/// The .LAS value moves the longitude and the .LOS value the latitude: deliberate.
template <class T>
ORVEX_INLINE void Shift(const NadconFiles& grid, Point<T>& p) {
  T las, los;
  const MaskOf<T> moves = Interpolate(grid, NadconExtent::Stated, p, las, los);
  p.x = Select(moves, p.x + las, p.x);
  p.y = Select(moves, p.y + los, p.y);
}

/// As published: the .LAS file holds shifts of latitude, the .LOS file those of longitude, positive west. Answers which
/// points the grid holds.
template <class T>
ORVEX_INLINE MaskOf<T> ShiftExactly(const NadconFiles& grid, Point<T>& p) {
  T las, los;
  const MaskOf<T> moves = Interpolate(grid, NadconExtent::Nodes, p, las, los);
  p.x = Select(moves, p.x - los, p.x);
  p.y = Select(moves, p.y + las, p.y);
  return moves;
}

}  // namespace ORVEX_LEVEL

}  // namespace orvex::detail
