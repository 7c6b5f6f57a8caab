// Hosts with several threads: what they may do at the same time gives what each of them gives alone. Also built with
// the thread sanitizer, which sees what comes out right by chance.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include <orvex/orvex.h>
#include <orvex/orvex_c.h>
#include <shr/exception.h>

#include "support/Forms.h"
#include "support/GridFiles.h"

namespace orvex::test {
namespace {

constexpr int kThreads = 4;
#if defined(__SANITIZE_THREAD__)
constexpr int kRounds = 5;
#else
constexpr int kRounds = 50;
#endif

/// Runs the work in several threads that start together; each gets its number. Answers how many said yes.
template <class Work>
int AtOnce(Work work) {
  std::atomic<int> waiting{kThreads}, good{0};
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&, i] {
      --waiting;
      while (waiting > 0) std::this_thread::yield();
      if (work(i)) ++good;
    });
  }
  for (std::thread& thread : threads) thread.join();
  return good;
}

/// Everything that a handle of a form gives, as bytes; made, chosen, copied and deleted on the way.
std::string Life(const ProjectionForm& form, ProjAccuracy accuracy) {
  PROJDATA record = form.MakeRecord();
  CProjector projector(&record);
  projector.SetAccuracy(accuracy);
  CProjector copy(projector);
  std::vector<PROJPOINT> points;
  for (int i = 0; i < 20; ++i) points.push_back(form.Place(i / 19.0, (i * 7 % 20) / 19.0));
  const bool inside = copy.LLInProjection(points.data());
  copy.Forward(points.data(), static_cast<int>(points.size()));
  copy.Inverse(points.data(), static_cast<int>(points.size()));
  return std::string(reinterpret_cast<const char*>(points.data()), points.size() * sizeof points[0]) +
         (inside ? '1' : '0');
}

TEST(Threads, HandlesOfTheirOwn) {
  std::vector<std::string> alone;
  for (const ProjectionForm& form : AllProjections()) {
    for (const ProjAccuracy accuracy : {PA_STATED, PA_EXACT}) alone.push_back(Life(form, accuracy));
  }
  const int good = AtOnce([&](int thread) {
    bool same = true;
    for (int round = 0; round < kRounds; ++round) {
      // Each begins elsewhere, so that modules see different records at the same time.
      const std::size_t count = alone.size();
      for (std::size_t k = 0; k < count; ++k) {
        const std::size_t i = (k + static_cast<std::size_t>(thread) * count / kThreads) % count;
        same = same && Life(AllProjections()[i / 2], i % 2 != 0 ? PA_EXACT : PA_STATED) == alone[i];
      }
    }
    return same;
  });
  EXPECT_EQ(good, kThreads);
}

TEST(Threads, CopiesOfOneObject) {
  PROJDATA record = Record(PT_UTM, "Lon0=15;bSouth=1");
  CProjector made(&record);
  made.SetAccuracy(PA_EXACT);
  const CProjector projector(made);
  DATUMXFORM xform{};
  xform.SrcDatum = DT_TOKYO;
  xform.DestDatum = DT_WORLD_GEODETIC_SYSTEM_1984;
  const CDatumTransform transform(&xform);
  const int good = AtOnce([&](int) {
    bool exact = true;
    for (int round = 0; round < 20 * kRounds; ++round) {
      CProjector copy(projector);
      CDatumTransform datum(transform);
      PROJPOINT p{15, -30};
      DATUMPOINT q{139, 35};
      exact = exact && copy.Accuracy() == PA_EXACT && copy.Forward(&p, 1) && p.x == 500000 && datum.Convert(&q, 1);
    }
    return exact;
  });
  EXPECT_EQ(good, kThreads);
}

TEST(Threads, FailuresShareTheirTexts) {
  shr::Exception shared;
  try {
    ProjForward(nullptr, nullptr, 0);
    PROJDATA bad = Record(PT_LAMBERT, "Lat1=30;Lat2=30");
    ProjCheckParams(&bad, nullptr, true);
  } catch (const shr::Exception& e) {
    shared = e;
  }
  ASSERT_EQ(shared.MessageId(), 20247);
  const int good = AtOnce([&shared](int) {
    int count = 0;
    for (int round = 0; round < 20 * kRounds; ++round) {
      const shr::Exception copy(shared);
      PROJDATA bad = Record(PT_LAMBERT, "Lat1=30;Lat2=30");
      try {
        ProjCreateProjection(&bad);
      } catch (const shr::Exception& e) {
        count += e.Message() == copy.Message() && !e.Message().empty();
      }
    }
    return count == 20 * kRounds;
  });
  EXPECT_EQ(good, kThreads);
}

// Grids are read by the first that wants one, and read anew when the directory changes under them. A point is shifted
// by one of the two grids, or the call says that there is none.
TEST(Threads, GridsThatChange) {
  const TemporaryDirectory first, second;
  for (const TemporaryDirectory* directory : {&first, &second}) {
    const double seconds = directory == &first ? 36 : 72;
    const Ntv2SubGrid grid{"ONLY", "NONE", -110, 40,
                           -90,    60,     5,    [=](double, double) { return std::pair(seconds, 0.0); }};
    WriteFile(*directory / "NTV2_0.GSB", Ntv2File({grid}));
    for (const char* name : {"conus.LAS", "conus.LOS"}) {
      WriteFile(*directory / name, NadconFile({30, 25, -104, 38, 0.25}, [=](int, int) { return seconds; }));
    }
  }
  DatSetGridDirectory(first.Path().string().c_str());
  const int good = AtOnce([&](int thread) {
    if (thread == 0) {
      for (int round = 0; round < 20 * kRounds; ++round) {
        DatSetGridDirectory((round % 2 != 0 ? first : second).Path().string().c_str());
        std::this_thread::yield();
      }
      return true;
    }
    bool right = true;
    for (int round = 0; round < 20 * kRounds; ++round) {
      DATUMXFORM xform{};
      xform.SrcDatum = thread == 1 ? DT_NAD_1927_CONUS_NADCON : DT_NAD_1927_CANADA_NTV2;
      xform.DestDatum = DT_WORLD_GEODETIC_SYSTEM_1984;
      CDatumTransform transform(&xform);
      DATUMPOINT p{-100.1, 40.1};
      transform.Convert(&p, 1);
      const double shift = p.y - 40.1;
      right = right && (std::abs(shift - 0.01) < 1e-6 || std::abs(shift - 0.02) < 1e-6);
    }
    return right;
  });
  EXPECT_EQ(good, kThreads);
  DatSetGridDirectory(nullptr);
}

// Everything that needs no handle, and handles of fits, all at once.
TEST(Threads, TheRest) {
  const TemporaryDirectory directory;
  const std::string ini = (directory / "host.ini").string();
  DATUM2WGS84 step{};
  step.Method = DM_MOLODENSKY;
  step.Ellipsoid = ET_WGS_84;
  step.dx = 1.5;
  ASSERT_TRUE(NDatSave(ini.c_str(), "Kept", &step));
  const int good = AtOnce([&ini](int thread) {
    bool right = true;
    for (int round = 0; round < kRounds; ++round) {
      GEOREFPOINT source[] = {{0, 0}, {1, 0}, {0, 1}, {1, 1}}, destination[] = {{5, 5}, {7, 5}, {5, 9}, {7, 9}};
      GEOREF record{};
      record.Method = thread % 2 == 0 ? RM_THINPLATE : RM_AFFINEPOLYNOMIAL;
      record.pSrc = source, record.pDst = destination, record.nControls = 4;
      CGeorefTransform fit(&record);
      GEOREFPOINT image{0.5, 0.5};
      right = right && fit.Forward(&image, 1) && std::abs(image.x - 6) < 1e-9 && std::abs(image.y - 7) < 1e-9;
      DATUM2WGS84 read{};
      right = right && NDatGetDatumParams(ini.c_str(), "kept", &read) && read.dx == 1.5;
      char text[260];
      double degrees = 0;
      DegreesToLatLon(text, -12.5 - thread, 3 | LLF_MINUSSIGN, 'd', '\'', '"');
      right = right && LatLonToDegrees(text, &degrees, 'd') && degrees == -12.5 - thread;
      char message[ORVEX_MESSAGE_SIZE];
      void* datum = nullptr;
      right = right && orvex_datum_create(DT_TOKYO, DT_COUNT, &datum, message) != 0 && message[0] != '\0';
      EllipsoidType ellipsoid{};
      right = right && EllipsoidFromName(&ellipsoid, "wgs 84") && ellipsoid == ET_WGS_84;
    }
    return right;
  });
  EXPECT_EQ(good, kThreads);
}

}  // namespace
}  // namespace orvex::test
