// The catalogue of built-in datums: a sample against print, every number there and back, and what is refused.
#include <gtest/gtest.h>

#include <cstring>
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

// Origin: NIMA TR8350.2 (third edition, 2000), appendices B and C; codes: EPSG datum codes.
TEST(DatumCatalogue, SampleAgainstPrint) {
  const struct {
    int number;
    const char* name;
    int posc;
    int ellipsoid;
    double radius, dx, dy, dz;
  } rows[] = {
      {1, "North American Datum 1983", 6269, 3, 6378137, 0, 0, 0},
      {2, "North American Datum 1927", 6267, 15, 6378206.4, -8, 160, 176},
      {3, "World Geodetic System 1984", 6326, 47, 6378137, 0, 0, 0},
      {5, "European 1950 - Mean", 6230, 34, 6378388, -87, -98, -121},
      {49, "Cape", 6222, 16, 6378249.145, -136, -108, -292},
      {81, "Geodetic Datum 1949 - New Zealand", 6272, 34, 6378388, 84, -22, 209},
      {157, "Ord. Surv. of Gr. Br. 1936", 0, 5, 6377563.396, 375, -111, 431},
      {205, "Tokyo - Japan", 0, 12, 6377397.155, -148, 507, 685},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.number);
    EXPECT_EQ(NameOf(row.number), row.name);
    int posc = -1;
    EXPECT_EQ(DatGetDatumPOSCNumber(Number(row.number), &posc), row.posc != 0);
    EXPECT_EQ(posc, row.posc != 0 ? row.posc : -1);
    DATUM2WGS84 step{};
    std::memset(step.Reserved, 7, sizeof step.Reserved);
    step.bInverse = true;
    ASSERT_TRUE(DatGetDatumParams(Number(row.number), &step));
    EXPECT_EQ(DatumMethod{step.Method}, DM_MOLODENSKY);
    EXPECT_FALSE(step.bInverse);
    EXPECT_EQ(int{step.Ellipsoid}, row.ellipsoid);
    EXPECT_EQ(double{step.MajorRadius}, row.radius);
    EXPECT_EQ(double{step.Flattening}, EllipsoidFlattening(step.Ellipsoid));
    EXPECT_EQ(double{step.dx}, row.dx);
    EXPECT_EQ(double{step.dy}, row.dy);
    EXPECT_EQ(double{step.dz}, row.dz);
    EXPECT_EQ(step.rx + step.ry + step.rz + step.k + step.PMShift, 0);
    EXPECT_EQ(step.Reserved[63], 7) << "reserved bytes stay";
  }
}

TEST(DatumCatalogue, SevenParametersAndMeridian) {
  DATUM2WGS84 step{};
  ASSERT_TRUE(DatGetDatumParams(Number(217), &step));  // EPSG 1673 less digits: DHDN to WGS 84
  EXPECT_EQ(DatumMethod{step.Method}, DM_BURSA);
  EXPECT_EQ(double{step.dx}, 582);
  EXPECT_EQ(double{step.rx}, 1.04);
  EXPECT_EQ(double{step.rz}, -3.08);
  EXPECT_EQ(double{step.k}, 8.3);
  ASSERT_TRUE(DatGetDatumParams(Number(147), &step));
  EXPECT_EQ(double{step.PMShift}, 2.33722916666667) << "Paris, IGN: 2 deg 20' 14.025\"";
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
  EXPECT_EQ(methods[DM_MRE], 8);
  EXPECT_EQ(methods[DM_NADCON], 2);
  EXPECT_EQ(methods[DM_NTV2], 1);
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
  EXPECT_FALSE(DatGetDatumFromPOSCNumber(&found, 0));
  EXPECT_FALSE(DatGetDatumFromPOSCNumber(&found, 1));
  EXPECT_EQ(found, 77) << "untouched when nothing is found";
  EXPECT_TRUE(DatGetDatumFromName(&found, "uSER dEFINED"));
  EXPECT_EQ(found, 0);
  EXPECT_FALSE(DatGetDatumFromName(nullptr, "Cape"));
  EXPECT_FALSE(DatGetDatumFromName(&found, nullptr));
  EXPECT_FALSE(DatGetDatumFromPOSCNumber(nullptr, 6326));
  EXPECT_FALSE(DatGetDatumMethod(Number(3), nullptr));
  EXPECT_FALSE(DatGetDatumParams(Number(3), nullptr));
  EXPECT_TRUE(DatGetDatumPOSCNumber(Number(3), nullptr));
  DatGetDatumName(Number(3), nullptr);
}

}  // namespace
}  // namespace orvex
