// Figure - an ellipsoid as a side of a conversion knows it.
#include "Figure.h"

#include <cmath>
#include <cstdio>

namespace orvex::tool {

Figure FigureOf(EllipsoidType type) {
  return {type, EllipsoidRadius(type), EllipsoidFlattening(type)};
}

Figure FigureOf(const PROJDATA& record) {
  if (record.Ellipsoid != ET_USER_DEFINED) return FigureOf(record.Ellipsoid);
  return {ET_USER_DEFINED, record.MajorRadius, record.Flattening};
}

bool SameFigure(const Figure& a, const Figure& b) {
  // GRS 1980 and WGS 84 differ by 1.6e-11 in f, 0.1 mm at the poles; the next pair of the catalogue by far more.
  constexpr double kRadius = 1e-3, kFlattening = 1e-10;
  return std::abs(a.radius - b.radius) < kRadius && std::abs(a.flattening - b.flattening) < kFlattening;
}

std::string FigureName(const Figure& figure) {
  char text[160];
  if (figure.type != ET_USER_DEFINED) {
    EllipsoidInfo(figure.type, text, nullptr, nullptr);
  } else {
    std::snprintf(text, sizeof text, "a = %.10g m, f = %.10g", figure.radius, figure.flattening);
  }
  return text;
}

}  // namespace orvex::tool
