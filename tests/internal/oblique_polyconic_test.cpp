// The projection table's operations of Cassini, Polyconic, Bonne, Hotine and Oblique Mercator, called as the engine
// calls them.
#include <array>

#include "projections/ProjectionTable.h"
#include "support/Projection.h"

#include <shr/exception.h>

namespace orvex::test {
namespace {

using detail::FindRow;

TEST(ObliquePolyconicTable, Domains) {
  struct Row {
    ProjType type;
    const char* parameters;
    double lon, lat;
    bool inside;
  };
  constexpr const char* kCassini = "Lat0=30;Lon0=10";
  constexpr const char* kHotine = "bUseAlpha=1;Lat0=-20;Lon0=44;Alpha=19";
  constexpr const char* kNorthSouth = "R=1;Lat1=50;Lon1=20;Lat2=-50;Lon2=20";  // along the meridian 20
  constexpr const char* kEquator = "R=1;Lat0=0;Lat1=0;Lon1=20;Lat2=0;Lon2=80";
  for (const Row& row : {
           Row{PT_CASSINI, kCassini, 10, -59.999, true}, Row{PT_CASSINI, kCassini, 10, -60.001, false},
           Row{PT_CASSINI, kCassini, 190, 60.001, true}, Row{PT_CASSINI, kCassini, 190, 59.999, false},
           Row{PT_POLYCONIC, "Lon0=-50", 129.999, 80, true}, Row{PT_POLYCONIC, "Lon0=-50", 130, 80, false},
           Row{PT_BONNE, "Lat1=40;Lon0=30", -150, 0, false}, Row{PT_BONNE, "Lat1=40;Lon0=30", -149.999, 0, true},
           Row{PT_HOTINE, kEquator, -131, 44.999, true}, Row{PT_HOTINE, kEquator, 300, -45.001, false},
           Row{PT_HOTINE, kHotine, 44, -20, true}, Row{PT_HOTINE, kHotine, 44 + 360, -20, true},
           Row{PT_HOTINE, kHotine, 44 + 90, -20, false},
           Row{PT_HOTINE, "bUseAlpha=1;Lat0=90;Alpha=19", 0, 89, false},  // no line, no domain
           Row{PT_OBLIQUEMERCATOR, kNorthSouth, 64.999, 0, true},
           Row{PT_OBLIQUEMERCATOR, kNorthSouth, -25.001, 0, false},
           Row{PT_OBLIQUEMERCATOR, kNorthSouth, 200 + 44.999, 0, true},  // the line goes round the globe
       }) {
    PROJDATA rec = Record(row.type, row.parameters);
    if (rec.Ellipsoid != ET_USER_DEFINED) rec.MajorRadius = 6378137, rec.Flattening = 1 / 298.257223563;
    rec.K0 = 1;
    const PROJPOINT p{row.lon, row.lat};
    EXPECT_EQ(FindRow(row.type)->inDomain(&rec, &p), row.inside) << row.parameters << ' ' << row.lon << ' ' << row.lat;
    EXPECT_FALSE(FindRow(row.type)->inDomain(&rec, nullptr));
    EXPECT_FALSE(FindRow(row.type)->inDomain(nullptr, &p));
  }
}

TEST(ObliquePolyconicTable, Offsets) {
  const std::array<PROJPOINT, 2> objects[]{{{{-200, 0}, {10, 0}}}, {{{10, 0}, {185, 0}}}, {{{-170, 0}, {170, 0}}}};
  for (const ProjType type : {PT_CASSINI, PT_HOTINE, PT_OBLIQUEMERCATOR, PT_POLYCONIC, PT_BONNE}) {
    const PROJDATA rec = Record(type, "Lat1=40");
    const bool splits = type == PT_POLYCONIC || type == PT_BONNE;
    const double expected[]{splits ? 360.0 : 0, splits ? -360.0 : 0, 0};
    for (std::size_t i = 0; i < 3; ++i) {
      double dx = 5, dy = 5;
      EXPECT_EQ(FindRow(type)->offsetSplit(&rec, objects[i].data(), 2, &dx, &dy), expected[i] != 0);
      EXPECT_TRUE(dx == expected[i] && dy == 0) << type << ' ' << i;
      EXPECT_FALSE(FindRow(type)->offsetSplit(&rec, objects[i].data(), 0, &dx, &dy));
      EXPECT_FALSE(FindRow(type)->offsetSplit(nullptr, objects[i].data(), 2, &dx, &dy));
    }
  }
}

}  // namespace
}  // namespace orvex::test
