// What preclipping and the segment list write to the log.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "orvex/clip.h"
#include "shr/exception.h"
#include "support/Log.h"

namespace orvex::detail {
namespace {

/// The lines that a call logs, without those that only tell of its entry.
template <class Call>
std::vector<std::string> Logged(Call call) {
  const std::string file = testing::TempDir() + std::to_string(std::random_device{}()) + ".log";
  std::remove(file.c_str());
  LogSetup(true, file.c_str());
  EXPECT_FALSE(call());
  LogSetup(false, nullptr);
  std::ifstream log(file, std::ios::binary);
  std::vector<std::string> lines;
  for (std::string line; std::getline(log, line);) {
    EXPECT_EQ(line.back(), '\r');
    line.pop_back();
    if (line.find("hProj=") == std::string::npos) lines.push_back(line);
  }
  log.close();
  std::remove(file.c_str());
  return lines;
}

bool ORVEX_CALL Refuse(void*, int, PROJPOINT*) {
  return false;
}

/// Answers the user's flag.
bool ORVEX_CALL Fill(void* user, int, const int*, PROJPOINT*) {
  return *static_cast<const bool*>(user);
}

TEST(PreclipLog, NamesEveryFailure) {
  using Lines = std::vector<std::string>;
  PROJDATA ortho{}, world{};
  ortho.Type = PT_ORTHOGRAPHIC;
  world.Type = PT_SINUSOIDAL;
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const PROJPOINT inside[]{{0, 0}, {1, 1}}, broken[]{{0, 0}, {nan, 1}}, moved[]{{185, 0}, {190, 0}};
  const int two = 2, one = 1;
  bool yes = true, no = false;
  const auto line = [](PROJDATA& rec, const PROJPOINT* pts) {
    return Logged([&] { return ProjLLPreclipPolyline(&rec, nullptr, 2, pts, Refuse); });
  };
  const auto polygon = [](PROJDATA& rec, const int& count, const PROJPOINT* pts, bool& fill) {
    return Logged([&] { return ProjLLPreclipPolygon(&rec, &fill, 1, &count, pts, Fill, Refuse); });
  };
  const auto joint = [](const char* ends) { return std::string("Follow clip edge ") + ends; };
  EXPECT_EQ(line(ortho, inside), (Lines{"Callback returned error in LocalPreclipPolyline!",
                                        "ProjLLPreclipPolyline: Failed clipping polyline!"}));
  EXPECT_EQ(line(ortho, broken), (Lines{"ClipLineSegment failed!", "Clipping failed in LocalPreclipPolyline!",
                                        "ProjLLPreclipPolyline: Failed clipping polyline!"}));
  EXPECT_EQ(line(world, moved), (Lines{"Callback returned error in LocalPreclipPolyline!",
                                       "ProjLLPreclipPolyline: Failed clipping moved polyline!"}));
  EXPECT_EQ(polygon(ortho, one, inside, yes), (Lines{"CSEGLIST::AppendMultiple was called with less than 2 points!",
                                                     "AppendMultiple call failed in LocalPreclipPolygon!",
                                                     "ProjLLPreclipPolygon: Failed clipping polygon!"}));
  EXPECT_EQ(polygon(ortho, two, broken, yes),
            (Lines{"ClipLineSegment failed!", "ClipToProjection call failed in LocalPreclipPolygon!",
                   "ProjLLPreclipPolygon: Failed clipping polygon!"}));
  EXPECT_EQ(polygon(ortho, two, inside, no),
            (Lines{joint("x1=1.000000 x2=0.000000 y1=1.000000 y2=0.000000"),
                   "Fill callback failed in LocalPreclipPolygon!", "ProjLLPreclipPolygon: Failed clipping polygon!"}));
  EXPECT_EQ(polygon(world, two, moved, yes),
            (Lines{joint("x1=-170.000000 x2=-175.000000 y1=0.000000 y2=0.000000"),
                   "Failed clipping outline of polygon!", "ProjLLPreclipPolygon: Failed clipping moved polygon!"}));
  EXPECT_EQ(Logged([&]() -> bool {
              EXPECT_THROW(ProjLLPreclipPolygon(&ortho, &yes, 0, &two, inside, Fill, Refuse), shr::Exception);
              return false;
            }),
            Lines{"Invalid parameter to ProjLLPreclipPolygon!"});
  CSEGLIST list;
  EXPECT_EQ(Logged([&] { return list.Insert(1, {}); }), Lines{"CSEGLIST::Insert index=1 out of range!"});
  EXPECT_EQ(Logged([&] { return list.AppendMultiple(1, inside, true); }),
            Lines{"CSEGLIST::AppendMultiple was called with less than 2 points!"});
}

// Every joint of the ring is reported, also where the outline goes on, and every point found on the edge.
TEST(PreclipLog, FollowsTheClipEdge) {
  PROJDATA ortho{};
  ortho.Type = PT_ORTHOGRAPHIC;
  const PROJPOINT box[]{{60, -7}, {120, -7}, {120, 7}, {60, 7}, {60, -7}};
  const int five = 5;
  bool no = false;
  const auto lines = Logged([&] { return ProjLLPreclipPolygon(&ortho, &no, 1, &five, box, Fill, nullptr); });
  const std::vector<std::string> expected{"Follow clip edge x1=90.000000 x2=90.000000 y1=-7.000000 y2=7.000000",
                                          "Gen point x=90.000000 y=-5.000000",
                                          "Gen point x=90.000000 y=-3.000000",
                                          "Gen point x=90.000000 y=-1.000000",
                                          "Gen point x=90.000000 y=1.000000",
                                          "Gen point x=90.000000 y=3.000000",
                                          "Follow clip edge x1=60.000000 x2=60.000000 y1=7.000000 y2=7.000000",
                                          "Follow clip edge x1=60.000000 x2=60.000000 y1=-7.000000 y2=-7.000000",
                                          "Fill callback failed in LocalPreclipPolygon!",
                                          "ProjLLPreclipPolygon: Failed clipping polygon!"};
  EXPECT_EQ(lines, expected);
}

}  // namespace
}  // namespace orvex::detail
