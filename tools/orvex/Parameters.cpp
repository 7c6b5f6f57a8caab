// Parameters - the parameters of projections with short names and units.
#include "Parameters.h"

namespace orvex::tool {

namespace {

struct Spelling {
  int id;
  const char* shortName;
  const char* unit;
};

constexpr Spelling kSpellings[] = {{2, "scale", ""},
                                   {3, "x0", "map units"},
                                   {4, "y0", "map units"},
                                   {5, "lat0", "degrees"},
                                   {6, "lon0", "degrees"},
                                   {7, "lat1", "degrees"},
                                   {8, "lat2", "degrees"},
                                   {9, "lat3", "degrees"},
                                   {10, "lon1", "degrees"},
                                   {11, "lon2", "degrees"},
                                   {12, "lon3", "degrees"},
                                   {13, "k0", ""},
                                   {14, "south", "yes/no"},
                                   {15, "zone", "zone name"},
                                   {16, "usealpha", "yes/no"},
                                   {17, "alpha", "degrees"},
                                   {18, "rotate", "yes/no"},
                                   {19, "uoffset", "yes/no"},
                                   {20, "ellipsoid", "name or POSC number"},
                                   {21, "radius", "metres"},
                                   {22, "flattening", ""}};

}  // namespace

const std::vector<Parameter>& Parameters() {
  static const std::vector<Parameter> parameters = [] {
    std::vector<Parameter> all;
    for (const Spelling& spelling : kSpellings) {
      char name[80];
      Parameter parameter{spelling.id, PDT_DOUBLE, "", spelling.shortName, spelling.unit};
      ProjParamInfo(spelling.id, name, &parameter.type, nullptr, nullptr);
      parameter.name = name;
      all.push_back(parameter);
    }
    return all;
  }();
  return parameters;
}

bool IsOfTheSphere(ProjType type) {
  switch (type) {
    case PT_MILLER:
    case PT_ORTHOGRAPHIC:
    case PT_MOLLWEIDE:
    case PT_EQUICYLINDRICAL:
    case PT_ROBINSON:
    case PT_VANDERGRINTEN:
    case PT_CASSINI:
    case PT_LAMBERTAZIMUTHAL:
    case PT_ROBINSONSTERLING:
    case PT_ECKERT4:
    case PT_ECKERT6:
    case PT_EQUICONIC:
    case PT_GNOMONIC:
    case PT_AZIMUTHALEQUI:
      return true;
    default:
      return false;
  }
}

}  // namespace orvex::tool
