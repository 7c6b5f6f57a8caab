// Fit - a transform fitted to control points, with its residuals and its way back.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include <orvex/georef.h>

#include "georef/InverseSearch.h"
#include "georef/Projective.h"
#include "tables/Controls.h"

namespace orvex::tool {

struct FitMethod {
  const char *shortName, *name;
  std::optional<TransformMethod> method;  ///< of the library; the tool's own is the projective one
  int leastControls;

  /// A warp passes through every control: how well it tells a place it does not know is seen without that place.
  bool IsWarp() const { return method && *method >= RM_THINPLATE; }
  bool IsProjective() const { return !method; }
  /// True when the transform is a plane map with six coefficients.
  bool IsAffine() const { return method == RM_AFFINEPOLYNOMIAL || method == RM_HELMERT; }
};

/// By short or full name; throws Failure when there is none.
const FitMethod& FindFitMethod(const std::string& text);
/// "helmert, affine, ...".
std::string FitMethodNames();

double RootMeanSquare(const std::vector<double>& errors);

/// A fitted transform together with what it was fitted to. With `flipY` the sign of the source's y is changed before
/// anything else, so that it can be told apart from the user's own coordinates. For a thread of its own.
class Fit {
 public:
  /// Throws Failure when the controls do not determine the transform.
  Fit(const FitMethod& method, const Controls& controls, bool flipY);
  Fit(const Fit&) = delete;
  Fit& operator=(const Fit&) = delete;

  const FitMethod& How() const { return m_method; }
  const Controls& ControlPoints() const { return m_controls; }
  int Count() const { return static_cast<int>(m_source.size()); }

  void Forward(std::vector<GEOREFPOINT>& points);
  /// Back to the source; DBL_MAX where there is no way back. Throws Failure when the transform has none at all.
  void Inverse(std::vector<GEOREFPOINT>& points);
  /// Throws Failure unless every control's image leads back to it.
  void CheckInverse();

  /// Distances from the destinations.
  std::vector<double> Errors();
  /// Distances by which the fit to the others misses each control; nothing where the others do not determine one.
  std::vector<std::optional<double>> ErrorsLeftOut();

  /// Of an affine transform: X = c[0] + x*c[1] + y*c[2], Y = c[3] + x*c[4] + y*c[5].
  std::array<double, 6> Coefficients();
  /// Of the projective transform.
  ProjectiveCoefficients PerspectiveCoefficients() const;

  /// A similarity cannot mirror: whether the other sign of y fits very much better.
  bool IsMirrored();

 private:
  /// Without the change of sign.
  void Transform(std::vector<GEOREFPOINT>& points);
  void TransformBack(std::vector<GEOREFPOINT>& points);
  void Flip(std::vector<GEOREFPOINT>& points) const;
  std::string Conditions() const;

  const FitMethod& m_method;
  const Controls& m_controls;
  bool m_flipY;
  std::vector<GEOREFPOINT> m_source;  // of the controls, with the sign changed
  CGeorefTransform m_library;
  std::optional<Projective> m_projective;    // instead of the library's
  std::optional<InverseSearch> m_backwards;  // once it is asked for
};

}  // namespace orvex::tool
