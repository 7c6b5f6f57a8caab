// Thresholds of the stated computation: what a value just within does and one just beyond does not.
#include <gtest/gtest.h>

#include <cmath>
#include <iomanip>
#include <sstream>

#include <orvex/orvex.h>

#include "support/Projection.h"

namespace orvex::test {
namespace {

constexpr double kDegreesPerRadian = 1 / kRadiansPerDegree;
constexpr double kWithin = 0.97, kBeyond = 1.03;  // of a threshold

PROJDATA Sphere(ProjType type) {
  PROJDATA record{};
  record.Type = type;
  record.Ellipsoid = ET_USER_DEFINED;
  record.MajorRadius = 6371000;
  record.Scale = record.K0 = 1;
  return record;
}

bool Same(const PROJPOINT& a, const PROJPOINT& b) {
  return a.x == b.x && a.y == b.y;
}

PROJPOINT ForwardOf(PROJDATA record, double lon, double lat) {
  CProjector projector(&record);
  return Forward(projector, lon, lat);
}
PROJPOINT InverseOf(PROJDATA record, double x, double y) {
  CProjector projector(&record);
  return Inverse(projector, x, y);
}

struct Edge {
  ProjType type;
  const char* field;
  double threshold, towards;  // a bad value beyond
  int id;
};

// Each value is good on this side of its threshold, and refused on the other.
TEST(Thresholds, RecordsAreGoodUpToTheirLimits) {
  const Edge edges[] = {
      {PT_ALBERS, "Lat2", 30.001, 30, 20245},
      {PT_ALBERS, "Lat2", 29.999, 30, 20245},
      {PT_ALBERS, "Lat2", -29.999, -30, 20245},
      {PT_ALBERS, "Lat2", -30.001, -30, 20245},
      {PT_EQUICONIC, "Lat2", 30.001, 30, 20256},
      {PT_EQUICONIC, "Lat2", -30.001, -30, 20256},
      {PT_LAMBERT, "Lat2", 30.1, 30, 20247},
      {PT_LAMBERT, "Lat2", 29.9, 30, 20247},
      {PT_MERCATOR, "Lat0", 89.99, 90, 20251},
      {PT_MERCATOR, "Lat0", -90.01, -90, 20251},
      {PT_OBLIQUEMERCATOR, "Lat2", 30.001, 30, 20253},
      {PT_OBLIQUEMERCATOR, "Lat1", 0.001, 0, 20254},
      {PT_OBLIQUEMERCATOR, "Lat1", 89.999, 90, 20255},
      {PT_MILLER, "Lon0", 360, 361, 20235},
      {PT_MILLER, "Lon0", -360, -361, 20235},
      {PT_MILLER, "Lat0", 360, 361, 20239},
      {PT_MILLER, "Scale", 0, -1e-300, 20231},
      {PT_MILLER, "K0", 0, -1e-300, 20232},
      {PT_MILLER, "xOrg", 1.7014117331926443e38, 1.8e38, 20233},
      {PT_MILLER, "yOrg", -1.7014117331926443e38, -1.8e38, 20234},
  };
  for (const Edge& edge : edges) {
    const auto answer = [&](double value) {
      std::ostringstream parameters;
      parameters << "Lat1=30;Lat2=45;" << edge.field << '=' << std::setprecision(17) << value;
      PROJDATA record = Record(edge.type, parameters.str());
      try {
        return ProjCheckParams(&record, nullptr, true);
      } catch (const shr::Exception& e) {
        return e.MessageId();
      }
    };
    const double slack = (edge.threshold - edge.towards) * 1e-3;
    EXPECT_EQ(answer(edge.threshold + slack), 0) << edge.id << " at " << edge.threshold;
    EXPECT_EQ(answer(edge.threshold - slack), edge.id) << edge.id << " beyond " << edge.threshold;
  }
}

TEST(Thresholds, AnAzimuthalCentreNearAPoleIsThePole) {
  constexpr double kAspect = 1e-5;  // degrees
  PROJDATA record = Sphere(PT_AZIMUTHALEQUI);
  for (const double pole : {90.0, -90.0}) {
    record.Lat1 = pole;
    const PROJPOINT polar = ForwardOf(record, 10, 20);
    record.Lat1 = std::copysign(90 - kWithin * kAspect, pole);
    EXPECT_TRUE(Same(ForwardOf(record, 10, 20), polar));
    record.Lat1 = std::copysign(90 - kBeyond * kAspect, pole);
    EXPECT_FALSE(Same(ForwardOf(record, 10, 20), polar));
  }
}

TEST(Thresholds, TheCentreOfAnAzimuthalMapHasAnExtent) {
  const double axis = std::acos(1 - 1e-9) * kDegreesPerRadian;  // degrees of arc
  PROJDATA record = Sphere(PT_AZIMUTHALEQUI);
  record.Lat1 = 40;
  EXPECT_TRUE(Unplottable(ForwardOf(record, 0, 40 + kWithin * axis)));
  EXPECT_FALSE(Unplottable(ForwardOf(record, 0, 40 + kBeyond * axis)));
  constexpr double kCentreRadius = 1e-8;  // map units
  EXPECT_TRUE(Unplottable(InverseOf(record, kWithin * kCentreRadius, 0)));
  EXPECT_FALSE(Unplottable(InverseOf(record, kBeyond * kCentreRadius, 0)));
}

}  // namespace
}  // namespace orvex::test
