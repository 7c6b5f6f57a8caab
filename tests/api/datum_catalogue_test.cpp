// The catalogue of built-in datums: a sample against print, every number there and back, and what is refused.
#include <gtest/gtest.h>

#include <map>
#include <string>

#include <orvex/orvex.h>

namespace orvex {
namespace {

std::string NameOf(int number) {
  char name[58];
  DatGetDatumName(static_cast<DatumType>(number), name);
  return name;
}

DatumType Number(int number) {
  return static_cast<DatumType>(number);
}

// Origin: NIMA TR8350.2 (third edition, 2000), appendices B and C; EPSG for the codes and the seven parameters; IGN for
// Paris, 2 deg 20' 14.025".
TEST(DatumCatalogue, SampleAgainstPrint) {
  const struct {
    int number, posc;
    const char* name;
    DatumMethod method;
    int ellipsoid;
    double radius, dx, dy, dz, rz, k, pmShift;
  } rows[] = {
      {2, 6267, "North American Datum 1927", DM_MOLODENSKY, 15, 6378206.4, -8, 160, 176, 0, 0, 0},
      {3, 6326, "World Geodetic System 1984", DM_MOLODENSKY, 47, 6378137, 0, 0, 0, 0, 0, 0},
      {5, 6230, "European 1950 - Mean", DM_MOLODENSKY, 34, 6378388, -87, -98, -121, 0, 0, 0},
      {81, 6272, "Geodetic Datum 1949 - New Zealand", DM_MOLODENSKY, 34, 6378388, 84, -22, 209, 0, 0, 0},
      {147, 6275, "NTF France - Paris Meridian", DM_MOLODENSKY, 34, 6378388, -83, -96, -113, 0, 0, 2.33722916666667},
      {205, 0, "Tokyo - Japan", DM_MOLODENSKY, 12, 6377397.155, -148, 507, 685, 0, 0, 0},
      {217, 0, "DHDN (Bursa-Wolf)", DM_BURSA, 14, 6377397.155, 582, 105, 414, -3.08, 8.3, 0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(NameOf(row.number), row.name);
    int posc = 0;
    EXPECT_EQ(DatGetDatumPOSCNumber(Number(row.number), &posc), row.posc != 0);
    EXPECT_EQ(posc, row.posc);
    DATUM2WGS84 step{};
    step.Reserved[63] = 7;
    step.bInverse = true;
    ASSERT_TRUE(DatGetDatumParams(Number(row.number), &step));
    EXPECT_TRUE(step.Method == row.method && !step.bInverse && step.Ellipsoid == row.ellipsoid);
    EXPECT_TRUE(step.MajorRadius == row.radius && step.Flattening == EllipsoidFlattening(step.Ellipsoid));
    EXPECT_TRUE(step.dx == row.dx && step.dy == row.dy && step.dz == row.dz && step.PMShift == row.pmShift);
    EXPECT_TRUE(step.rz == row.rz && step.k == row.k);
    EXPECT_EQ(step.Reserved[63], 7) << "reserved bytes stay";
  }
}

TEST(DatumCatalogue, EveryNumberThereAndBack) {
  ASSERT_EQ(DatNumDatums(), 254);
  std::map<DatumMethod, int> methods;
  for (int number = 1; number < 254; ++number) {
    SCOPED_TRACE(number);
    std::string name = NameOf(number);
    for (char& c : name) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    DatumType found = Number(-5);
    ASSERT_TRUE(DatGetDatumFromName(&found, name.c_str()));
    EXPECT_EQ(found, number) << "names are unique, letter case does not count";
    DatumMethod method{};
    ASSERT_TRUE(DatGetDatumMethod(Number(number), &method));
    ++methods[method];
    const bool parametric = method == DM_BURSA || method == DM_MOLODENSKY;
    EXPECT_EQ(DatReversible(Number(number)), parametric);
    DATUM2WGS84 step{};
    EXPECT_EQ(DatGetDatumParams(Number(number), &step), parametric || method == DM_NTV2);
    int posc = 0;
    if (!DatGetDatumPOSCNumber(Number(number), &posc)) continue;
    ASSERT_TRUE(DatGetDatumFromPOSCNumber(&found, posc));
    int again = 0;
    EXPECT_TRUE(DatGetDatumPOSCNumber(found, &again) && again == posc);
    EXPECT_EQ(found, posc == 6267 ? 2 : number) << "four datums share 6267, the first of the table answers";
  }
  EXPECT_TRUE(methods[DM_MRE] == 8 && methods[DM_NADCON] == 2 && methods[DM_NTV2] == 1);
}

TEST(DatumCatalogue, WhatIsRefused) {
  DATUM2WGS84 step{};
  DatumMethod method{};
  DatumType found = Number(77);
  for (const int number : {0, 254, 255, -1, INT32_MIN, INT32_MAX}) {
    SCOPED_TRACE(number);
    EXPECT_EQ(NameOf(number), number == 0 ? "User Defined" : "");
    EXPECT_FALSE(DatGetDatumMethod(Number(number), &method));
    EXPECT_FALSE(DatGetDatumParams(Number(number), &step));
    EXPECT_FALSE(DatGetDatumPOSCNumber(Number(number), nullptr));
    EXPECT_FALSE(DatReversible(Number(number)));
  }
  for (const char* name : {"", "User", "User Defined ", "World Geodetic System 1985"}) {
    EXPECT_FALSE(DatGetDatumFromName(&found, name)) << name;
  }
  EXPECT_FALSE(DatGetDatumFromPOSCNumber(&found, 0) || DatGetDatumFromPOSCNumber(&found, 1));
  EXPECT_EQ(found, 77) << "untouched when nothing is found";
  EXPECT_TRUE(DatGetDatumFromName(&found, "uSER dEFINED"));
  EXPECT_EQ(found, 0);
  EXPECT_FALSE(DatGetDatumFromName(nullptr, "Cape") || DatGetDatumFromName(&found, nullptr));
  EXPECT_FALSE(DatGetDatumFromPOSCNumber(nullptr, 6326) || DatGetDatumMethod(Number(3), nullptr));
  EXPECT_FALSE(DatGetDatumParams(Number(3), nullptr));
  EXPECT_TRUE(DatGetDatumPOSCNumber(Number(3), nullptr));
  DatGetDatumName(Number(3), nullptr);
}

}  // namespace
}  // namespace orvex
