// Projective - the transform of a plane seen from somewhere else, with eight parameters.
#pragma once

#include <array>
#include <vector>

#include <orvex/georef.h>

namespace orvex::tool {

/// Centred and scaled coordinates, so that those in the millions cost no digits.
struct Centring {
  GEOREFPOINT centre{0, 0};
  double scale = 1;

  static Centring Of(const std::vector<GEOREFPOINT>& points);
  GEOREFPOINT In(const GEOREFPOINT& p) const { return {(p.x - centre.x) * scale, (p.y - centre.y) * scale}; }
  GEOREFPOINT Out(const GEOREFPOINT& p) const { return {p.x / scale + centre.x, p.y / scale + centre.y}; }
};

/// Row by row: X = (h0 x + h1 y + h2) / w, Y = (h3 x + h4 y + h5) / w, w = h6 x + h7 y + h8.
using Homography = std::array<double, 9>;

/// X = (a0 + a1 x + a2 y) / w, Y = (b0 + b1 x + b2 y) / w, w = w0 + w1 x + w2 y.
struct ProjectiveCoefficients {
  std::array<double, 3> a, b, w;
};

class Projective {
 public:
  /// Least squares of the distances at the destination; starts from the direct linear transform of centred and scaled
  /// coordinates. Throws Failure where the points do not determine it.
  Projective(const std::vector<GEOREFPOINT>& source, const std::vector<GEOREFPOINT>& destination);

  /// DBL_MAX on the horizon of the other plane and beyond it.
  GEOREFPOINT Forward(const GEOREFPOINT& point) const;
  GEOREFPOINT Inverse(const GEOREFPOINT& point) const;

  /// For coordinates as they are; w0 is 1 unless the horizon passes through the origin.
  ProjectiveCoefficients Coefficients() const;

 private:
  Centring m_source, m_destination;
  Homography m_forward{}, m_inverse{};  // between the centred planes; w is positive at the controls
};

}  // namespace orvex::tool
