// Fit - a transform fitted to control points, with its residuals and its way back.
#include "georef/Fit.h"

#include <algorithm>
#include <cfloat>
#include <climits>
#include <cmath>

#include "Failure.h"
#include "commands/Names.h"

namespace orvex::tool {

namespace {

const FitMethod kMethods[] = {
    {"helmert", "Helmert", RM_HELMERT, 2},
    {"affine", "Affine Polynomial", RM_AFFINEPOLYNOMIAL, 3},
    {"projective", "Projective", std::nullopt, 4},
    {"poly1", "1st Order Polynomial", RM_POLYNOMIAL1, 4},
    {"poly2", "2nd Order Polynomial", RM_POLYNOMIAL2, 6},
    {"poly3", "3rd Order Polynomial", RM_POLYNOMIAL3, 10},
    {"tps", "Thin Plate Spline", RM_THINPLATE, 3},
    {"natural", "Natural Cubic Spline", RM_NATURALCUBIC, 3},
    {"marcov", "Marcov Spline", RM_MARCOV, 3},
    {"exponential", "Exponential Spline", RM_EXPONENTIAL, 3},
    {"rational", "Rational Quadratic Spline", RM_RATIONALQUADRATIC, 3},
    {"idw", "Inverse Distance Squared", RM_INVERSEDISTANCE, 3},
};

/// A record that borrows the arrays.
GEOREF Record(TransformMethod method, std::vector<GEOREFPOINT>& source, std::vector<GEOREFPOINT>& destination) {
  if (source.size() > INT_MAX) throw Failure("too many control points");
  GEOREF record{};
  record.Method = method;
  record.nControls = static_cast<int>(source.size());
  record.pSrc = source.data();
  record.pDst = destination.data();
  return record;
}

void EraseAt(std::vector<GEOREFPOINT>& points, std::size_t index) {
  points.erase(points.begin() + static_cast<std::ptrdiff_t>(index));
}

}  // namespace

double RootMeanSquare(const std::vector<double>& errors) {
  double squares = 0;
  for (const double error : errors) squares += error * error;
  return std::sqrt(squares / static_cast<double>(errors.size()));
}

const FitMethod& FindFitMethod(const std::string& text) {
  std::vector<std::string> names;
  for (const FitMethod& method : kMethods) names.emplace_back(method.shortName);
  for (const FitMethod& method : kMethods) names.emplace_back(method.name);
  return kMethods[FindName(names, text, "method") % std::size(kMethods)];
}

std::string FitMethodNames() {
  std::string list;
  for (const FitMethod& method : kMethods) list += std::string(list.empty() ? "" : ", ") + method.shortName;
  return list;
}

Fit::Fit(const FitMethod& method, const Controls& controls, bool flipY)
    : m_method(method), m_controls(controls), m_flipY(flipY), m_source(controls.source) {
  Flip(m_source);
  const std::string name = method.name, count = std::to_string(m_source.size());
  if (Count() < method.leastControls) {
    throw Failure(name + " needs at least " + std::to_string(method.leastControls) + " control points, not " + count);
  }
  if (method.IsProjective()) {
    m_projective.emplace(m_source, m_controls.destination);
    return;
  }
  std::vector<GEOREFPOINT> destination = m_controls.destination;
  const GEOREF record = Record(*method.method, m_source, destination);
  if (m_library.Create(&record)) return;
  throw Failure("the " + count + " control points do not determine the transform: " + name + " needs at least " +
                std::to_string(method.leastControls) + Conditions());
}

std::string Fit::Conditions() const {
  switch (*m_method.method) {
    case RM_HELMERT:
      return " in different places";
    case RM_AFFINEPOLYNOMIAL:
      return " that are not on one line";
    case RM_POLYNOMIAL1:
    case RM_POLYNOMIAL2:
    case RM_POLYNOMIAL3:
      return " that are not on one line or on one curve of its order";
    default:
      return ", not on one line and no two sources in (nearly) the same place";
  }
}

void Fit::Flip(std::vector<GEOREFPOINT>& points) const {
  if (!m_flipY) return;
  for (GEOREFPOINT& p : points) {
    if (p.y != DBL_MAX) p.y = -p.y;
  }
}

void Fit::Transform(std::vector<GEOREFPOINT>& points) {
  if (m_projective) {
    for (GEOREFPOINT& p : points) p = m_projective->Forward(p);
  } else if (!points.empty() && !m_library.Forward(points.data(), static_cast<int>(points.size()))) {
    throw Failure("the transform failed");
  }
}

void Fit::TransformBack(std::vector<GEOREFPOINT>& points) {
  if (m_projective) {
    for (GEOREFPOINT& p : points) p = m_projective->Inverse(p);
    return;
  }
  if (!m_backwards) {
    const TransformMethod line = m_method.method == RM_HELMERT ? RM_HELMERT : RM_AFFINEPOLYNOMIAL;
    m_backwards.emplace([this](std::vector<GEOREFPOINT>& some) { Transform(some); }, line, m_source,
                        m_controls.destination);
  }
  for (GEOREFPOINT& p : points) {
    if (p.x != DBL_MAX && p.y != DBL_MAX) p = m_backwards->Find(p).value_or(GEOREFPOINT{DBL_MAX, DBL_MAX});
  }
}

void Fit::Forward(std::vector<GEOREFPOINT>& points) {
  Flip(points);
  Transform(points);
}

void Fit::Inverse(std::vector<GEOREFPOINT>& points) {
  TransformBack(points);
  Flip(points);
}

void Fit::CheckInverse() {
  constexpr double kNear = 1e-6;  // of the distance between the farthest controls
  std::vector<GEOREFPOINT> places = m_controls.source;
  Forward(places);
  Inverse(places);
  double extent = 0;
  for (const GEOREFPOINT& p : m_source) {
    extent = std::max(extent, std::hypot(p.x - m_source[0].x, p.y - m_source[0].y));
  }
  for (std::size_t i = 0; i < places.size(); ++i) {
    const GEOREFPOINT& from = m_controls.source[i];
    if (std::hypot(places[i].x - from.x, places[i].y - from.y) <= kNear * extent) continue;
    throw Failure(std::string(m_method.name) + " cannot be turned round here: at control point " +
                  std::to_string(m_controls.numbers[i]) +
                  " it folds the plane, so that several places have the same image; "
                  "look for a misread control, or take a method that bends less");
  }
}

std::vector<double> Fit::Errors() {
  std::vector<GEOREFPOINT> images = m_controls.source;
  Forward(images);
  std::vector<double> errors;
  for (std::size_t i = 0; i < images.size(); ++i) {
    const GEOREFPOINT& to = m_controls.destination[i];
    errors.push_back(std::hypot(images[i].x - to.x, images[i].y - to.y));
  }
  return errors;
}

std::vector<std::optional<double>> Fit::ErrorsLeftOut() {
  std::vector<std::optional<double>> errors(m_source.size());
  for (std::size_t i = 0; i < errors.size(); ++i) {
    Controls others{m_controls.source, m_controls.destination, {}, {}};
    EraseAt(others.source, i);
    EraseAt(others.destination, i);
    std::vector<GEOREFPOINT> image{m_controls.source[i]};
    try {
      Fit(m_method, others, m_flipY).Forward(image);
    } catch (const Failure&) {
      continue;  // they determine no transform
    }
    if (image[0].x == DBL_MAX || image[0].y == DBL_MAX) continue;
    errors[i] = std::hypot(image[0].x - m_controls.destination[i].x, image[0].y - m_controls.destination[i].y);
  }
  return errors;
}

std::array<double, 6> Fit::Coefficients() {
  if (m_method.method == RM_AFFINEPOLYNOMIAL) {
    std::vector<GEOREFPOINT> destination = m_controls.destination;
    GEOREF record = Record(RM_AFFINEPOLYNOMIAL, m_source, destination);
    if (!RefControlsToCoeff(&record)) throw Failure("the coefficients cannot be computed");
    const double sign = m_flipY ? -1 : 1;
    return {record.Coeff[0], record.Coeff[1], record.Coeff[2] * sign,
            record.Coeff[3], record.Coeff[4], record.Coeff[5] * sign};
  }
  constexpr double kSpan = 1048576;  // a power of two: the division is exact and the images' rounding shrinks by it
  std::vector<GEOREFPOINT> corners{{0, 0}, {kSpan, 0}, {0, kSpan}};
  Forward(corners);
  return {corners[0].x, (corners[1].x - corners[0].x) / kSpan, (corners[2].x - corners[0].x) / kSpan,
          corners[0].y, (corners[1].y - corners[0].y) / kSpan, (corners[2].y - corners[0].y) / kSpan};
}

ProjectiveCoefficients Fit::PerspectiveCoefficients() const {
  ProjectiveCoefficients c = m_projective->Coefficients();
  if (m_flipY) {
    for (auto* const part : {&c.a, &c.b, &c.w}) (*part)[2] = -(*part)[2];
  }
  return c;
}

bool Fit::IsMirrored() {
  if (m_method.method != RM_HELMERT) return false;
  return RootMeanSquare(Fit(m_method, m_controls, !m_flipY).Errors()) * 10 < RootMeanSquare(Errors());
}

}  // namespace orvex::tool
