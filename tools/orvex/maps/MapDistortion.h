// MapDistortion - how a projection enlarges and bends what is small: scale, area and angles about a place.
#pragma once

#include <optional>
#include <string>

#include <orvex/projection.h>

#include "maps/MapPath.h"

namespace orvex::tool {

/// About a place: where a step to the east and a step to the north lead on the map, for each unit of length on the
/// globe, and the axes of the ellipse that a small circle becomes (Tissot's indicatrix).
struct Distortion {
  PROJPOINT east, north;
  double most, least;

  double Area() const { return most * least; }
  double Angle() const;  ///< largest change of an angle, degrees
};

/// Measures a projection by differences on the figure that it is computed on.
class DistortionMeter {
 public:
  DistortionMeter(CProjector& projector, const PROJDATA& record);

  /// Map units in a unit of length, apart from the distortion.
  double Scale() const { return m_scale; }
  /// Nothing where the projection does not plot the place and its neighbours.
  std::optional<Distortion> At(const PROJPOINT& place) const;

 private:
  CProjector& m_projector;
  double m_radius, m_e2, m_scale, m_lon0;
};

}  // namespace orvex::tool
