// The datum driver's lines in the debug log, and the grid calls it makes.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <random>
#include <sstream>
#include <string>

#include <orvex/datum.h>

#include "support/Log.h"

namespace orvex {
namespace {

/// Log text of what `action` does, without carriage returns, addresses taken out.
template <class Action>
std::string LogOf(Action action) {
  const std::string file = testing::TempDir() + std::to_string(std::random_device{}()) + ".log";
  std::remove(file.c_str());
  detail::LogSetup(true, file.c_str());
  action();
  detail::LogSetup(false, nullptr);
  std::stringstream stream;
  stream << std::ifstream(file, std::ios::binary).rdbuf();
  std::remove(file.c_str());
  std::string text = stream.str();
  std::erase(text, '\r');
  for (const std::string key : {"Pointer=", "pDatumData=", "hDatum=", "pPts="}) {
    for (std::size_t at = text.find(key); at != std::string::npos; at = text.find(key, at)) {
      at += key.size();
      text.erase(at, text.find_first_of(",)", at + (text.compare(at, 5, "(nil)") == 0 ? 5 : 0)) - at);
    }
  }
  return text;
}

TEST(DatumLog, DumpOfEveryKindOfStep) {
  DATUMXFORM xform{};
  xform.DestDatum = DT_WORLD_GEODETIC_SYSTEM_1984;
  xform.Step1.Method = DM_BURSA;
  xform.Step1.Ellipsoid = ET_WGS_72;
  xform.Step1.dz = 4.5;
  xform.Step1.k = 0.219;
  DATUMPOINT p{4, 55};
  const std::string created = LogOf([&] { DatDeleteDatum(DatCreateDatum(&xform)); });
  EXPECT_EQ(created,
            "DatCreateDatum(pDatumData=)\n"
            "DATUMXFORM (Pointer=)\n  SrcDatum:     0\n  DestDatum:    3\n"
            "Step1:\n  DATUM2WGS84 (Pointer=)\n    Method:          2 (DM_BURSA)\n    bInverse:        false\n"
            "    PMShift:         0.000000\n    dx:              0.000000\n    dy:              0.000000\n"
            "    dz:              4.500000\n    rx:              0.000000\n    ry:              0.000000\n"
            "    rz:              0.000000\n    k:               0.219000\n    Ellipsoid:       46 (WGS 72"
            "    MajorRadius:     0.000000\n    Flattening:      0.000000\n"
            "Step2:\n  DATUM2WGS84 (Pointer=)\n    Method:          0 (DM_NOXFORM)\n    bInverse:        false\n"
            "    PMShift:         0.000000\n    Ellipsoid:       0 (UNKNOWN    MajorRadius:     0.000000\n"
            "    Flattening:      0.000000\n  bUnplottable: false\nDatDeleteDatum(hDatum=)\n");
  const std::string converted = LogOf([&] { DatConvertDatum(&xform, &p, 1); });
  EXPECT_EQ(
      converted.rfind("DatConvertDatum(hDatum=, pPts=, nPts=1)\nInitiating transform.\nDATUMXFORM (Pointer=)\n", 0),
      0U);
  EXPECT_NE(
      converted.find(
          "Step2:\n  DATUM2WGS84 (Pointer=)\n    Method:          3 (DM_MOLODENSKY)\n    bInverse:        true\n"),
      std::string::npos)
      << "the working copy shows the destination's row, run backwards";
  xform.Step1.Method = static_cast<DatumMethod>(9);
  EXPECT_NE(LogOf([&] { EXPECT_ANY_THROW(DatCreateDatum(&xform)); }).find("    Method:          9 (*UNKNOWN*)\n"),
            std::string::npos)
      << "the dump comes before the checks";
}

TEST(DatumLog, EveryWrapperThatLetsGoSaysSo) {
  DATUMXFORM xform{};
  const std::string text = LogOf([&] {
    CDatumTransform a(&xform), b;
    b = a;
    b.Delete();
  });
  EXPECT_EQ(text.substr(text.find("  bUnplottable")),
            "  bUnplottable: false\nDatDeleteDatum(hDatum=)\nDatDeleteDatum(hDatum=)\nDatDeleteDatum(hDatum=)\n");
  xform.SrcDatum = xform.DestDatum = DT_WORLD_GEODETIC_SYSTEM_1984;
  DATUMPOINT p{4, 55};
  EXPECT_EQ(LogOf([&] { DatConvertDatum(&xform, &p, 1); }), "DatConvertDatum(hDatum=, pPts=, nPts=1)\n");
}

}  // namespace
}  // namespace orvex
