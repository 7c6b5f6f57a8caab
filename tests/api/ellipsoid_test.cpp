// Ellipsoid catalogue: the numbers against their defining publications, then the lookups and their asymmetries.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <string>

#include <orvex/orvex.h>

#include "support/Projection.h"

namespace orvex {
namespace {

constexpr EllipsoidType kUntouched = static_cast<EllipsoidType>(-7);

EllipsoidType Type(int value) {
  return static_cast<EllipsoidType>(value);
}

// Defining constants: NIMA TR8350.2 (WGS 84, WGS 72, Clarke, Bessel, International, Airy), Moritz (GRS 80), Snyder 1987
// (others).
TEST(Ellipsoid, DefiningConstants) {
  const struct {
    EllipsoidType type;
    double a, inverseFlattening, tolerance;
  } rows[] = {
      {ET_WGS_84, 6378137, 298.257223563, 1e-6},
      {ET_GRS_1980_IUGG_1980, 6378137, 298.257222101, 1e-6},
      {ET_WGS_72, 6378135, 298.26, 1e-9},
      {ET_CLARKE_1866, 6378206.4, 294.9786982, 5e-8},
      {ET_BESSEL_1841, 6377397.155, 299.1528128, 5e-8},
      {ET_INTERNATIONAL_1924, 6378388, 297, 1e-9},
      {ET_AIRY_1830, 6377563.396, 299.3249646, 5e-8},
      {ET_KRASSOVSKY_1942, 6378245, 298.3, 1e-9},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(EllipsoidRadius(row.type), row.a);
    EXPECT_NEAR(1 / EllipsoidFlattening(row.type), row.inverseFlattening, row.tolerance) << row.type;
  }
  // Clarke 1866 enlarged by 800 US survey feet, the same shape (published radius to the millimetre).
  EXPECT_NEAR(EllipsoidRadius(ET_STATE_PLANE_1927_MICHIGAN), EllipsoidRadius(ET_CLARKE_1866) + 800 * 1200.0 / 3937,
              2e-1);
  EXPECT_EQ(EllipsoidFlattening(ET_STATE_PLANE_1927_MICHIGAN), EllipsoidFlattening(ET_CLARKE_1866));
}

TEST(Ellipsoid, EveryRowToTheLastBit) {
  const test::CsvFile csv("ellipsoids.csv");
  EXPECT_EQ(csv.Rows(), 56U);
  for (std::size_t row = 1; row < csv.Rows(); ++row) {  // the first is the user's
    const EllipsoidType type = Type(std::stoi(csv.Text(row, "number")));
    char name[64];
    double a = 0, f = 0;
    int posc = 0;
    ASSERT_TRUE(EllipsoidInfo(type, name, &a, &f));
    std::replace(name, name + std::string(name).size(), ',', ';');
    EXPECT_EQ(name, csv.Text(row, "name"));
    EXPECT_EQ(a, csv.Number(row, "radius")) << name;
    EXPECT_EQ(f, csv.Number(row, "flattening")) << name;
    EllipsoidToPOSCNumber(type, &posc);
    EXPECT_EQ(posc, std::stoi(csv.Text(row, "posc"))) << name;
  }
}

TEST(Ellipsoid, EveryNameAndCodeFindsItsRow) {
  for (int i = 1; i <= ET_BESSEL_NGO_1948; ++i) {
    char name[80];
    double a = 0, f = -1;
    ASSERT_TRUE(EllipsoidInfo(Type(i), name, &a, &f));
    EXPECT_EQ(a, EllipsoidRadius(Type(i)));
    EXPECT_EQ(f, EllipsoidFlattening(Type(i)));
    for (char& c : name) c = static_cast<char>(i % 2 != 0 ? std::tolower(c) : std::toupper(c));
    EllipsoidType found = kUntouched;
    EXPECT_TRUE(EllipsoidFromName(&found, name));
    EXPECT_EQ(found, i) << name;
    int posc = 0;
    if (!EllipsoidToPOSCNumber(Type(i), &posc)) continue;
    EXPECT_TRUE(EllipsoidToPOSCNumber(Type(i), nullptr));
    EXPECT_TRUE(EllipsoidFromPOSCNumber(posc, &found));
    EXPECT_TRUE(EllipsoidFromPOSCNumber(posc, nullptr));
    EXPECT_EQ(found, i) << posc;
  }
}

TEST(Ellipsoid, UserDefinedAndOutsideTheTable) {
  char name[80] = "x";
  double a = 5, f = 6;
  int posc = 7;
  for (const int type : {-1, 56}) {
    EXPECT_FALSE(EllipsoidInfo(Type(type), name, &a, &f));
    EXPECT_STREQ(name, "x");
  }
  EXPECT_FALSE(EllipsoidInfo(ET_USER_DEFINED, name, &a, &f));
  EXPECT_FALSE(EllipsoidInfo(ET_USER_DEFINED, nullptr, nullptr, nullptr));
  EXPECT_STREQ(name, "user-defined");
  for (const int type : {-1, 0, 56}) {
    EXPECT_EQ(EllipsoidRadius(Type(type)), 1.0);
    EXPECT_EQ(EllipsoidFlattening(Type(type)), 0.0);
    EXPECT_FALSE(EllipsoidToPOSCNumber(Type(type), &posc));
  }
  EXPECT_FALSE(EllipsoidToPOSCNumber(ET_MERIT_1983, &posc));
  EXPECT_TRUE(a == 5 && f == 6 && posc == 7);
}

TEST(Ellipsoid, NamesThatAreAlmostRight) {
  EllipsoidType type = kUntouched;
  EXPECT_TRUE(EllipsoidFromName(&type, "uSER dEFINED"));
  EXPECT_EQ(type, ET_USER_DEFINED);
  for (const char* name : {"user-defined", "WGS 8", "WGS 84 ", ""}) {
    type = kUntouched;
    EXPECT_FALSE(EllipsoidFromName(&type, name)) << name;
    EXPECT_EQ(type, ET_USER_DEFINED);
  }
  type = kUntouched;
  EXPECT_FALSE(EllipsoidFromName(&type, nullptr));
  EXPECT_FALSE(EllipsoidFromName(nullptr, "WGS 84"));
  EXPECT_EQ(type, kUntouched);
}

// Codes of variants that the table does not carry give the nearest ellipsoid, but say so.
TEST(Ellipsoid, NearestEllipsoidOfUnknownCodes) {
  const struct {
    int posc;
    bool exact;
    EllipsoidType type;
  } rows[] = {{7010, true, ET_CLARKE_1880_MOD},
              {7011, false, ET_CLARKE_1880_MOD},
              {7014, false, ET_CLARKE_1880_MOD},
              {7034, false, ET_CLARKE_1880_MOD},
              {7015, true, ET_EVEREST_1830},
              {7016, false, ET_EVEREST_1830},
              {7018, false, ET_EVEREST_1830},
              {7033, false, kUntouched},
              {7036, false, kUntouched},
              {0, false, kUntouched},
              {-1, false, kUntouched}};
  for (const auto& row : rows) {
    EllipsoidType type = kUntouched;
    EXPECT_EQ(EllipsoidFromPOSCNumber(row.posc, &type), row.exact) << row.posc;
    EXPECT_EQ(type, row.type) << row.posc;
    EXPECT_EQ(EllipsoidFromPOSCNumber(row.posc, nullptr), row.exact) << row.posc;
  }
}

}  // namespace
}  // namespace orvex
