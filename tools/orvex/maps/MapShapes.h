// MapShapes - areas and lines in longitude and latitude: reading, joining the short way round.
#pragma once

#include <span>
#include <string>
#include <vector>

#include <orvex/projection.h>

#include "maps/MapPlaces.h"

namespace orvex::tool {

/// Neighbouring points are at most half a turn of longitude apart.
using Points = std::vector<PROJPOINT>;

/// Degrees; east may exceed 180 or west be below -180, never by more than a turn.
struct Bounds {
  double west, south, east, north;
};

/// Rings that bound an area by the even-odd rule; each ends where it starts, or a full turn away when it winds round a
/// pole, which it then takes in.
using Area = std::vector<Points>;

/// How a feature wants to be drawn; what is empty is drawn as usual.
struct FeatureStyle {
  std::string fill, fillOpacity, stroke, strokeOpacity, strokeWidth;

  bool Empty() const { return (fill + fillOpacity + stroke + strokeOpacity + strokeWidth).empty(); }
};

struct Feature {
  std::vector<Area> areas;
  std::vector<Points> lines;
  std::vector<Place> places;
  FeatureStyle style;
};
using Shapes = std::vector<Feature>;

/// The compiled-in outlines of the world, as blocks of the file format.
std::span<const char* const> WorldOutlines();

/// The same, finer: one ring each in the form that scripts/make-outlines writes.
std::span<const char* const> FineOutlines();

/// The world's land for small areas.
Shapes ReadFineOutlines();

/// Reads blocks "ring N", "line N" and "arc N" (joined by great circles) of N lines "longitude latitude"; an empty name
/// stands for the world outlines. A ring inside another one becomes a hole of it. Throws Failure with file and line
/// number for what cannot be read.
Shapes ReadShapes(const std::string& file);

/// Adds the great circle from the last point to another one; throws Failure when that is opposite to it.
void AddGreatCircle(Points& points, const PROJPOINT& to);

/// Adds a point the short way round from the last one; nothing when it is the same.
void AddPoint(Points& points, PROJPOINT p);

Bounds BoundsOf(const Points& points);
bool WindsRoundPole(const Points& ring);
/// Whether a place lies in an area.
bool Holds(const Area& area, const PROJPOINT& p);

/// Sorts rings into areas: those that lie inside another one are its holes, those inside a hole areas again.
std::vector<Area> Nested(std::vector<Points> rings);

}  // namespace orvex::tool
