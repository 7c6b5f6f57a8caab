// Azimuthal modules through the projection table: what the public calls do not show.
#include <gtest/gtest.h>

#include <shr/exception.h>

#include "projections/Module.h"
#include "support/Projection.h"

namespace orvex::test {

namespace {

using detail::FindRow;

struct Case {
  ProjType type;
  const char* centre;  // on the equator at the prime meridian for the domain tests below
  double edgeDegrees;  // arc to the edge of the domain; above 180: there is none
  bool emptyObjectHasOffsets;
  const char* source;
  int forwardLines[2], inverseLines[2];  // null points, bad count
};

// clang-format off
constexpr Case kCases[] = {
    {PT_STEREOGRAPHIC,    "Lat0=0;Lat1=50",  90, true,  "PrjPolar",   {197, 199}, {645, 647}},
    {PT_ORTHOGRAPHIC,     "Lat0=0;Lat1=50",  90, true,  "PrjOrtho",   {199, 201}, {310, 312}},
    {PT_GNOMONIC,         "Lat0=50;Lat1=0",  60, true,  "PrjGnom",    {207, 209}, {329, 331}},
    {PT_LAMBERTAZIMUTHAL, "Lat0=50;Lat1=0", 181, false, "PrjLamAEA",  {189, 191}, {343, 345}},
    {PT_AZIMUTHALEQUI,    "Lat0=50;Lat1=0", 170, false, "PrjAzimuth", {207, 209}, {344, 346}},
};
// clang-format on

TEST(AzimuthalModules, DomainIsACapAboutTheCentre) {
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.source);
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
    SCOPED_TRACE(c.source);
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

TEST(AzimuthalModules, BadArgumentsAreReportedWithTheirPlace) {
  for (const Case& c : kCases) {
    PROJDATA work = Record(c.type, c.centre);
    PROJPOINT p{0, 0};
    const auto lineOf = [&](detail::ConvertOperation convert, PROJPOINT* pts, int nPts) {
      try {
        convert(&work, pts, nPts);
      } catch (const shr::Exception& e) {
        EXPECT_EQ(e.Source(), c.source);
        return e.Line();
      }
      return 0;
    };
    for (const bool forward : {true, false}) {
      const auto convert = forward ? FindRow(c.type)->forward : FindRow(c.type)->inverse;
      const auto& lines = forward ? c.forwardLines : c.inverseLines;
      EXPECT_FALSE(convert(nullptr, nullptr, 0));
      EXPECT_EQ(lineOf(convert, nullptr, 1), lines[0]) << c.source;
      EXPECT_EQ(lineOf(convert, &p, 0), lines[1]) << c.source;
    }
  }
}

// The two modules whose centre is Lat0 have always left it in Lat1, Stereographic its meridian in Lon1 as well.
TEST(AzimuthalModules, CentreIsLeftInTheWorkingRecord) {
  for (const ProjType type : {PT_STEREOGRAPHIC, PT_ORTHOGRAPHIC}) {
    for (const bool forward : {true, false}) {
      PROJDATA work = Record(type, "R=1;K0=1;Lat0=0.5;Lon0=0.25;Lat1=7;Lon1=7");
      PROJPOINT p{0.25, 0.5};
      EXPECT_TRUE((forward ? FindRow(type)->forward : FindRow(type)->inverse)(&work, &p, 1));
      EXPECT_EQ(double{work.Lat1}, 0.5);
      EXPECT_EQ(double{work.Lon1}, type == PT_STEREOGRAPHIC ? 0.25 : 7);
    }
  }
}

}  // namespace

}  // namespace orvex::test
