// Azimuthal modules through the projection table: what the public calls do not show.
#include <gtest/gtest.h>

#include <shr/exception.h>

#include "ModuleCall.h"
#include "projections/ProjectionTable.h"
#include "support/Projection.h"

namespace orvex::test {

namespace {

using detail::FindRow;

struct Case {
  ProjType type;
  const char* centre;  // on the equator at the prime meridian for the domain tests below
  double edgeDegrees;  // arc to the edge of the domain; above 180: there is none
  bool emptyObjectHasOffsets;
};

// clang-format off
constexpr Case kCases[] = {
    {PT_STEREOGRAPHIC,    "Lat0=0;Lat1=50",  90, true },
    {PT_ORTHOGRAPHIC,     "Lat0=0;Lat1=50",  90, true },
    {PT_GNOMONIC,         "Lat0=50;Lat1=0",  60, true },
    {PT_LAMBERTAZIMUTHAL, "Lat0=50;Lat1=0", 181, false},
    {PT_AZIMUTHALEQUI,    "Lat0=50;Lat1=0", 170, false},
};
// clang-format on

TEST(AzimuthalModules, DomainIsACapAboutTheCentre) {
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.type);
    const PROJDATA rec = Record(c.type, c.centre);
    const auto inside = [&](PROJPOINT p) { return FindRow(c.type)->inDomain(&rec, &p); };
    EXPECT_TRUE(inside({0, 0}));
    EXPECT_TRUE(inside({std::min(c.edgeDegrees, 180.0), 0}));  // the edge itself
    EXPECT_EQ(inside({c.edgeDegrees + 1e-7, 0}), c.edgeDegrees > 180);
    EXPECT_EQ(inside({-180, 0}), c.edgeDegrees > 180);
    EXPECT_FALSE(FindRow(c.type)->inDomain(nullptr, nullptr));
  }
}

TEST(AzimuthalModules, NothingIsOffset) {
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.type);
    const PROJDATA rec = Record(c.type, c.centre);
    const PROJPOINT far[] = {{-200, 0}, {200, 0}};
    double dx = 7, dy = 7;
    EXPECT_FALSE(FindRow(c.type)->offsetSplit(&rec, far, 0, &dx, &dy));
    EXPECT_EQ(dx, c.emptyObjectHasOffsets ? 0 : 7);
    EXPECT_FALSE(FindRow(c.type)->offsetSplit(&rec, far, 2, &dx, &dy));
    EXPECT_EQ(dx, 0);
    EXPECT_EQ(dy, 0);
  }
}

// The two modules whose centre is Lat0 have always left it in Lat1, Stereographic its meridian in Lon1 as well.
TEST(AzimuthalModules, CentreIsLeftInTheWorkingRecord) {
  for (const ProjType type : {PT_STEREOGRAPHIC, PT_ORTHOGRAPHIC}) {
    for (const auto& convert : {FindRow(type)->forward, FindRow(type)->inverse}) {
      PROJDATA work = Record(type, "R=1;K0=1;Lat0=0.5;Lon0=0.25;Lat1=7;Lon1=7");
      PROJPOINT p{0.25, 0.5};
      EXPECT_TRUE(convert(Call(&work, &p, 1)));
      EXPECT_EQ(double{work.Lat1}, 0.5);
      EXPECT_EQ(double{work.Lon1}, type == PT_STEREOGRAPHIC ? 0.25 : 7);
    }
  }
}

}  // namespace

}  // namespace orvex::test
