// The engine's lines in the debug log, and the banners of attach and detach.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <orvex/projection.h>
#include <orvex/zones.h>
#include <shr/exception.h>

#include "platform/Platform.h"
#include "support/Log.h"

namespace orvex {
namespace {

std::string TakeFile(const std::string& name) {
  std::stringstream stream;
  stream << std::ifstream(name, std::ios::binary).rdbuf();
  std::remove(name.c_str());
  return stream.str();
}

void ReplaceAll(std::string& text, const std::string& from, const std::string& to) {
  for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
}

/// Log text of what `action` does, without carriage returns; the addresses that it names are replaced by their names.
template <class Action>
std::string LogOf(Action action) {
  const std::string file = testing::TempDir() + std::to_string(std::random_device{}()) + ".log";
  std::remove(file.c_str());
  detail::LogSetup(true, file.c_str());
  std::vector<std::pair<const void*, std::string>> names;
  action(names);
  detail::LogSetup(false, nullptr);
  std::string text = TakeFile(file);
  std::erase(text, '\r');
  names.emplace_back(nullptr, "null");
  for (const auto& [address, name] : names) {
    char digits[32];
    std::snprintf(digits, sizeof digits, "%p", address);
    ReplaceAll(text, digits, name);
  }
  return text;
}

/// The dump of the record below but for what creation completes.
std::string Dump(const std::string& pointer, const std::string& scaleToYOrg, const std::string& k0,
                 const std::string& ellipsoid) {
  return "  PROJDATA (Pointer=" + pointer + ")\n    Type:            4 (Universal Transverse Mercator (UTM))\n" +
         scaleToYOrg +
         "    Lat0:            0.000000\n    Lon0:            15.000000\n    Lat1:            1.000000\n"
         "    Lat2:            2.000000\n    Lat3:            3.000000\n    Lon1:            4.000000\n"
         "    Lon2:            5.000000\n    Lon3:            6.000000\n    K0:              " +
         k0 +
         "\n    bSouth:          true\n    Zone:            33 (Georgia West)\n    bUseAlpha:       false\n"
         "    Alpha:           7.500000\n    bRotate:         true\n    bUOffset:        false\n" +
         ellipsoid + "    iResult:         0\n";
}

TEST(EngineLog, SessionWithOneHandle) {
  PROJDATA d{};
  d.Type = PT_UTM;
  d.bSouth = d.bRotate = true;
  d.Zone = 33;
  d.Ellipsoid = ET_WGS_84;
  d.Lon0 = 15, d.Lat1 = 1, d.Lat2 = 2, d.Lat3 = 3, d.Lon1 = 4, d.Lon2 = 5, d.Lon3 = 6, d.Alpha = 7.5;
  PROJDATA info;
  PROJPOINT points[] = {{15, -1}, {NAN, 0}};
  const std::string text = LogOf([&](auto& names) {
    void* const handle = ProjCreateProjection(&d);
    names = {{&d, "REC"}, {&info, "INFO"}, {handle, "H"}, {points, "PTS"}};
    ProjForward(handle, points, 2);
    ProjInverse(handle, points, 1);
    ProjInverse(nullptr, points, 1);
    ProjGetHandleInfo(handle, &info);
    ProjGetStateZoneParams(&d);
    ProjDeleteProjection(handle);
    ProjCreateProjection(nullptr);
  });
  EXPECT_EQ(
      text,
      "ProjCreateProjection(pProjData=REC)\nProjCheckParams called with:\n" +
          Dump("REC", "    Scale:           0.000000\n    xOrg:            0.000000\n    yOrg:            0.000000\n",
               "0.000000",
               "    Ellipsoid:       47 (WGS 84)\n    MajorRadius:     0.000000\n    Flattening:      0.000000\n") +
          "Warning:  Scale was zero.  Setting to one.\n" +
          Dump("H",
               "    Scale:           1.000000\n    xOrg:            500000.000000\n    yOrg:            "
               "10000000.000000\n",
               "0.999600",
               "    Ellipsoid:       47 (WGS 84)\n    MajorRadius:     6378137.000000\n    Flattening:      "
               "0.003353\n") +
          "ProjCreateProjection:  Returning HPROJ of H\n"
          "ProjForward(hProj=H, pPts=PTS, nPts=2)\n  One or more unplottable points generated.\n"
          "ProjInverse(hProj=H, pPts=PTS, nPts=1)\n"
          "ProjInverse(hProj=null, pPts=PTS, nPts=1)\nNULL hProj pointer!\n"
          "ProjGetHandleInfo(hProj=H, pProjData=INFO)\nProjGetStateZoneParams(pData=REC)\n"
          "ProjDeleteProjection(hProj=H)\nProjCreateProjection(pProjData=null)\n");
}

TEST(EngineLog, UnknownNamesAndImpossibleEllipsoids) {
  PROJDATA d{};
  d.Type = PT_UNDEFINED;  // passes every check
  d.Zone = -1;
  d.K0 = 1;
  const std::string text = LogOf([&](auto&) {
    EXPECT_THROW(ProjCreateProjection(&d), shr::Exception);
    d.MajorRadius = 1, d.Flattening = 1;
    EXPECT_THROW(ProjCreateProjection(&d), shr::Exception);
    d.Ellipsoid = static_cast<EllipsoidType>(56);
    EXPECT_THROW(ProjCreateProjection(&d), shr::Exception);
  });
  for (const char* piece :
       {"    Type:            999 (UNKNOWN)\n", "    Zone:            -1 (UNKNOWN)\n",
        "    Ellipsoid:       0 (UNKNOWN)\n", "    Ellipsoid:       56 (UNKNOWN)\n",
        "0\nHave user-defined ellipsoid.\nBad ellipsoid radius!\n",
        "0\nHave user-defined ellipsoid.\nBad ellipsoid flattening!\n", "0\nBad ellipsoid type!\n"}) {
    EXPECT_NE(text.find(piece), std::string::npos) << piece;
  }
}

TEST(EngineLog, EveryWrapperThatLetsGoSaysSo) {
  PROJDATA d{};
  const std::string text = LogOf([&](auto&) {
    CProjector a(&d), b;
    b = a;
    b.Delete();
  });
  const std::size_t at = text.find("HPROJ of ") + 9;
  const std::string handle = text.substr(at, text.find('\n', at) - at), line = "ProjDeleteProjection(hProj=";
  EXPECT_EQ(text.substr(at), handle + "\n" + line + handle + ")\n" + line + "null)\n" + line + handle + ")\n");
}

#ifndef _WIN32
TEST(AttachDetach, BannersFrameTheLog) {
  const std::string log = testing::TempDir() + "talven.log";
  std::remove(log.c_str());
  const std::string run = "cd '" + testing::TempDir() + "' && %s " ORVEX_TEST_RUNNER " '" +
                          platform::ExecutableDirectory() + "orvex_internal_tests' --gtest_list_tests > /dev/null";
  const auto with = [&run](const std::string& environment) {
    return std::string(run).replace(run.find("%s"), 2, environment);
  };
  ASSERT_EQ(std::system(with("env -u TALVENLOG").c_str()), 0);
  EXPECT_FALSE(std::ifstream(log));
  ASSERT_EQ(std::system(with("TALVENLOG=").c_str()), 0);  // that it is set is enough
  std::string text = TakeFile(log);
  for (std::size_t at = text.find(" at "); at != std::string::npos; at = text.find(" at ", at + 1)) {
    text.erase(at + 4, std::string("Thu Jan  1 00:00:00 1970").size());
  }
  const std::string rule = std::string(74, '-') + "\r\n";
  EXPECT_EQ(text, "\r\n" + rule + "TALVEN.DLL log output started at \r\n" + rule + rule +
                      "TALVEN.DLL log output ended at \r\n" + rule + "\r\n");
}
#endif

}  // namespace
}  // namespace orvex
