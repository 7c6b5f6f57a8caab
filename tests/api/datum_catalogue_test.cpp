// The catalogue of built-in datums: every row against print, every number there and back, and what is refused.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <utility>

#include <orvex/orvex.h>

#include "support/Projection.h"

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

TEST(DatumCatalogue, EveryRowAgainstPrint) {
  const std::map<std::string, DatumMethod> methods{{"Molodensky", DM_MOLODENSKY},
                                                   {"Bursa-Wolf", DM_BURSA},
                                                   {"MRE", DM_MRE},
                                                   {"NADCON", DM_NADCON},
                                                   {"NTv2", DM_NTV2}};
  const test::CsvFile csv("datum_table.csv");
  EXPECT_EQ(csv.Rows(), 253U);
  for (std::size_t row = 0; row < csv.Rows(); ++row) {
    const auto integer = [&](const char* column) { return std::stoi(csv.Text(row, column)); };
    const DatumType datum = Number(integer("number"));
    std::string name = csv.Text(row, "name");
    std::replace(name.begin(), name.end(), ';', ',');
    SCOPED_TRACE(name);
    EXPECT_EQ(NameOf(datum), name);
    int posc = 0;
    EXPECT_EQ(DatGetDatumPOSCNumber(datum, &posc), integer("posc") != 0);
    EXPECT_EQ(posc, integer("posc"));
    DatumMethod method{};
    EXPECT_TRUE(DatGetDatumMethod(datum, &method) && method == methods.at(csv.Text(row, "method")));
    DATUM2WGS84 step{};
    step.Reserved[63] = 7;
    step.bInverse = true;
    if (!DatGetDatumParams(datum, &step)) continue;  // no parameters: the method's files or equations
    EXPECT_TRUE(step.Method == method && !step.bInverse && step.Ellipsoid == integer("ellipsoid"));
    EXPECT_TRUE(step.MajorRadius == EllipsoidRadius(step.Ellipsoid) &&
                step.Flattening == EllipsoidFlattening(step.Ellipsoid));
    // The plus makes copies: the record is packed.
    const std::pair<const char*, double> parameters[] = {{"dx", +step.dx}, {"dy", +step.dy},           {"dz", +step.dz},
                                                         {"rx", +step.rx}, {"ry", +step.ry},           {"rz", +step.rz},
                                                         {"k", +step.k},   {"pm_shift", +step.PMShift}};
    for (const auto& [column, value] : parameters) EXPECT_EQ(value, csv.Number(row, column)) << column;
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
