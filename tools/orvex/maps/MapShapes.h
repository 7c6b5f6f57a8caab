// MapShapes - rings and lines in longitude and latitude: reading, joining the short way round, cutting to a box.
#pragma once

#include <span>
#include <string>
#include <vector>

#include <orvex/projection.h>

namespace orvex::tool {

using Points = std::vector<PROJPOINT>;

/// Degrees; east may exceed 180 or west be below -180, never by more than a turn.
struct Bounds {
  double west, south, east, north;
};

/// A ring or line, neighbouring points less than half a turn apart; a ring ends where it starts, or a full turn away
/// when it winds round a pole.
struct Shape {
  bool ring;
  Points points;
};

/// The compiled-in outlines of the world, as blocks of the file format.
std::span<const char* const> WorldOutlines();

/// Reads blocks "ring N" and "line N" of N lines "longitude latitude"; an empty name stands for the world outlines.
/// Throws Failure with file and line number for what cannot be read.
std::vector<Shape> ReadShapes(const std::string& file);

Bounds BoundsOf(const Points& points);
Points Moved(Points points, double dx);

/// A ring that winds round a pole, opened where it crosses the meridian and closed along that pole.
bool WindsRoundPole(const Shape& shape);
Points CloseAlongPole(const Points& ring, double meridian);

/// What of a ring lies in the box (pieces stay joined along its edges); empty when nothing does.
Points CutRing(Points ring, const Bounds& box);
/// What of a line lies in the box.
std::vector<Points> CutLine(const Points& line, const Bounds& box);

/// The same shape with no step longer than `step` degrees in either coordinate.
Points Densified(const Points& points, double step);

}  // namespace orvex::tool
