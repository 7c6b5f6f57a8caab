// Figure - an ellipsoid as a side of a conversion knows it: by number, or by size and shape.
#pragma once

#include <string>

#include <orvex/projdata.h>

namespace orvex::tool {

struct Figure {
  EllipsoidType type = ET_WGS_84;  ///< ET_USER_DEFINED: as the two numbers say
  double radius = 0;               ///< semi-major axis, metres
  double flattening = 0;
};

Figure FigureOf(EllipsoidType type);
/// The ellipsoid of a record as it stands, before a handle has completed it.
Figure FigureOf(const PROJDATA& record);

/// Whether it makes no difference of a millimetre which of the two is meant (GRS 1980 and WGS 84).
bool SameFigure(const Figure& a, const Figure& b);

/// Name of the ellipsoid, or its numbers.
std::string FigureName(const Figure& figure);

}  // namespace orvex::tool
