// RegressionArea - where the regression equations of a datum hold.
#include "RegressionArea.h"

namespace orvex::tool {

std::optional<NamedBox> RegressionArea(DatumType datum) {
  switch (datum) {
    case DT_AUSTRALIAN_GEODETIC_1966_MRE:
    case DT_AUSTRALIAN_GEODETIC_1984_MRE:
      return NamedBox{"Australia", 112, -44, 155, -9};
    case DT_CAMPO_INCHAUSEPE_ARGENTINA_MRE:
      return NamedBox{"Argentina", -74, -50, -53, -21};
    case DT_CORREGO_ALEGRE_BRAZIL_MRE:
      return NamedBox{"Brazil", -75, -34, -34, 6};
    case DT_EUROPEAN_1950_MRE:
      return NamedBox{"western Europe", -10, 34, 32, 72};
    case DT_NAD_1927_CONUS_MRE:
      return NamedBox{"the conterminous United States", -125, 24, -66, 50};
    case DT_NAD_1927_CANADA_MRE:
      return NamedBox{"Canada", -142, 41, -52, 75};
    case DT_SOUTH_AMERICAN_1969_MRE:
      return NamedBox{"South America", -82, -50, -34, 13};
    default:
      return std::nullopt;
  }
}

}  // namespace orvex::tool
