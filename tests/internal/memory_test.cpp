// Want of memory: whichever allocation fails, nothing but the library's exception comes out, with its own text, and
// nothing leaks.
#if !defined(_WIN32)

#include <gtest/gtest.h>
#include <sys/mman.h>

#include <cfloat>
#include <cstring>
#include <set>
#include <string>
#include <vector>

#include <orvex/grids.h>
#include <orvex/orvex.h>
#include <orvex/orvex_c.h>
#include <shr/exception.h>
#include <shr/image_registration.h>

#include "Faults.h"
#include "datum/grids/Ntv2.h"
#include "support/Errors.h"
#include "support/GridFiles.h"
#include "support/Log.h"

namespace orvex::test {
namespace {

// ---- what is tried; no operation allocates anything of its own ----

PROJDATA g_lambert{}, g_world{};
DATUMXFORM g_toWgs84{};
GEOREF g_controls{};
CPROJCHAIN g_chain;
std::string g_ini, g_grids;
DATUM2WGS84 g_step{};
GEOREFPOINT g_source[12], g_destination[12];
PROJPOINT g_box[] = {{170, -20}, {190, -20}, {190, 40}, {170, 40}, {170, -20}};

bool ORVEX_CALL TakeLine(void*, int, PROJPOINT*) {
  return true;
}
bool ORVEX_CALL TakeRings(void*, int, const int*, PROJPOINT*) {
  return true;
}

void Convert(DatumType from, DatumType to, double lon, double lat) {
  DATUMXFORM xform{};
  xform.SrcDatum = from;
  xform.DestDatum = to;
  DATUMPOINT point{lon, lat};
  CDatumTransform transform(&xform);
  transform.Convert(&point, 1);
}

void Fit(TransformMethod method) {
  GEOREF g = g_controls;
  g.Method = method;
  GEOREFPOINT point{1, 2};
  const CGeorefTransform transform(&g);
  CGeorefTransform copy(transform), shared;
  shared = copy;
  copy.Delete();
  if (shared.IsCreated()) shared.Forward(&point, 1);
}

bool Same(const GEOREF& a, const GEOREF& b) {
  return a.Method == b.Method && a.pSrc == b.pSrc && a.pDst == b.pDst && a.nControls == b.nControls;
}

void Resize() {
  GEOREF g{};
  if (!RefAllocControls(&g, 3)) return;
  std::copy_n(g_source, 3, g.pSrc);
  std::copy_n(g_destination, 3, g.pDst);
  g.Method = RM_POLYNOMIAL3;
  const GEOREF before = g;
  bool resized = false;
  try {
    resized = RefResize(&g, 100, 50, 300, 200);
  } catch (const shr::Exception&) {
    if (!Same(g, before)) std::abort();
    RefFreeControls(&g);
    throw;
  }
  if (!resized && !Same(g, before)) std::abort();
  RefFreeControls(&g);
}

struct Operation {
  const char* name;
  void (*run)();
  std::set<int> ids;  // messages that may come out
};

const std::set<int> kNone, kMemory{20201}, kHandle{20200, 20201};

const Operation kOperations[] = {
    // Exceptions that come in any case keep their number and their text.
    {"bad record",
     [] {
       PROJDATA record = g_lambert;
       record.Lat2 = record.Lat1;
       ProjCreateProjection(&record);
     },
     {20247}},
    {"bad record, copied exception",
     [] {
       PROJDATA record = g_lambert;
       record.Scale = -1;
       try {
         ProjCheckParams(&record, nullptr, true);
       } catch (const shr::Exception& caught) {
         shr::Exception copy(caught);
         copy = caught;
         throw shr::Exception(copy);
       }
     },
     {20231}},
    {"null points", [] { ProjForward(&g_lambert, nullptr, 1); }, {20200}},
    {"bad datum record",
     [] {
       DATUMXFORM xform{};
       xform.SrcDatum = DT_COUNT;
       DatCreateDatum(&xform);
     },
     {20260}},
    {"null line", [] { ProjLLPreclipPolyline(&g_world, nullptr, 2, nullptr, TakeLine); }, {20205}},
    {"missing NADCON grids", [] { Convert(DT_NAD_1927_CONUS_NADCON, DT_WORLD_GEODETIC_SYSTEM_1984, -100, 40); },
     kHandle},
    // Everything else runs through once there is memory enough.
    {"projection handle",
     [] {
       PROJPOINT point{-96, 40};
       void* const handle = ProjCreateProjection(&g_lambert);
       ProjForward(handle, &point, 1);
       ProjDeleteProjection(handle);
     },
     {20200}},
    {"projector",
     [] {
       const CProjector projector(&g_lambert);
       CProjector copy(projector), shared;
       shared = copy;
       copy.Create(&g_world);
     },
     kHandle},
    {"chain",
     [] {
       CPROJCHAIN copy(g_chain), assigned;
       assigned = copy;
     },
     kMemory},
    {"segment list",
     [] {
       CSEGLIST list;
       for (int i = 0; i < 40; ++i) list.Append(g_box[0], g_box[1], true, false);
       for (int i = 0; i < 20; ++i) list.Insert(3, g_box[1], g_box[2], false, true);
       CSEGLIST copy(list), assigned;
       assigned = copy;
     },
     kMemory},
    {"polyline", [] { ProjLLPreclipPolyline(&g_world, nullptr, 5, g_box, TakeLine); }, kMemory},
    {"polygon",
     [] {
       const int count = 5;
       ProjLLPreclipPolygon(&g_world, nullptr, 1, &count, g_box, TakeRings, TakeLine);
     },
     kMemory},
    {"datum, Bursa-Wolf", [] { Convert(DT_DHDN_BURSA_WOLF, DT_NORTH_AMERICAN_DATUM_1927, 9, 50); }, kHandle},
    {"datum, regression", [] { Convert(DT_EUROPEAN_1950_MRE, DT_WORLD_GEODETIC_SYSTEM_1984, 9, 50); }, kHandle},
    {"datum, NTv2",
     [] {
       Convert(DT_NAD_1927_CANADA_NTV2, DT_WORLD_GEODETIC_SYSTEM_1984, -95, 50);
       detail::SetNtv2Path(nullptr);
     },
     {20200, 20201, 20280}},
    {"grid directory",
     [] {
       if (!DatSetGridDirectory(g_grids.c_str())) return;
       char directory[400] = "another directory, long enough to be allocated";
       DatSetGridDirectory(directory);
       DatSetGridDirectory("short");
     },
     kNone},
    {"datum, NADCON",
     [] {
       if (!DatSetGridDirectory(g_grids.c_str())) return;
       try {
         Convert(DT_NAD_1927_CONUS_NADCON, DT_NORTH_AMERICAN_DATUM_1927, -100, 40);
       } catch (...) {
         DatSetGridDirectory(nullptr);
         throw;
       }
       DatSetGridDirectory(nullptr);
     },
     kHandle},
    {"copy of a datum transformation",
     [] {
       const CDatumTransform transform(&g_toWgs84);
       CDatumTransform copy(transform), shared;
       shared = copy;
       copy.Delete();
     },
     kHandle},
    {"copies that compute exactly",
     [] {
       CProjector projector(&g_world);
       projector.SetAccuracy(PA_EXACT);
       const CProjector projectorCopy(projector);
       CDatumTransform transform(&g_toWgs84);
       if (transform.IsCreated()) transform.SetAccuracy(PA_EXACT);
       const CDatumTransform transformCopy(transform);
       if (DatGetAccuracy(nullptr) != PA_STATED || ProjGetAccuracy(nullptr) != PA_STATED) std::abort();
     },
     kHandle},
    {"Helmert", [] { Fit(RM_HELMERT); }, kHandle},
    {"affine", [] { Fit(RM_AFFINEPOLYNOMIAL); }, kHandle},
    {"third order", [] { Fit(RM_POLYNOMIAL3); }, kHandle},
    {"thin plate", [] { Fit(RM_THINPLATE); }, kHandle},
    {"inverse distance", [] { Fit(RM_INVERSEDISTANCE); }, kHandle},
    {"resize", Resize, kHandle},
    {"registration",
     [] {
       shr::RPoints source, destination;
       for (int i = 0; i < 12; ++i) source.Append({g_source[i].x, g_source[i].y});
       for (int i = 0; i < 12; ++i) destination.Append({g_destination[i].x, g_destination[i].y});
       shr::RPoints copy(source);
       copy = destination;
       shr::CImageRegistration registration;
       registration.Calibrate(source, destination, shr::WM_MARCOV);
     },
     kMemory},
    {"custom datums",
     [] {
       const char* const ini = g_ini.c_str();
       char name[260];
       int index = 0;
       DATUM2WGS84 params;
       DatumMethod method;
       NDatSave(ini, "New", &g_step);
       NDatNumDatums(ini);
       NDatEnumDatumName(ini, name, 254);
       NDatExists(ini, "kept", &index);
       NDatGetDatumParams(ini, "kept", &params);
       NDatGetDatumMethod(ini, "kept", &method);
       NDatReversible(ini, "kept");
       NDatDelete(ini, "New");
     },
     kNone},
    {"plain C",
     [] {
       PROJDATA record = g_lambert;
       void *projection = nullptr, *datum = nullptr;
       char message[ORVEX_MESSAGE_SIZE];
       orvex_point point{-96, 40};
       orvex_create(reinterpret_cast<orvex_projection*>(&record), &projection, message);
       orvex_forward(projection, &point, 1, message);
       orvex_delete(projection);
       orvex_datum_create(DT_DHDN_BURSA_WOLF, DT_TOKYO, &datum, message);
       orvex_datum_convert(datum, &point, 1, message);
       orvex_datum_delete(datum);
     },
     kNone},
};

class Memory : public testing::Test {
 protected:
  Memory() {
    g_lambert.Type = PT_LAMBERT;
    g_lambert.Ellipsoid = ET_CLARKE_1866;
    g_lambert.Lat1 = 33, g_lambert.Lat2 = 45;
    g_lambert.Scale = g_lambert.K0 = 1;
    g_world.Type = PT_SINUSOIDAL;
    g_world.Ellipsoid = ET_WGS_84;
    g_world.Scale = g_world.K0 = 1;
    g_chain.Points.resize(5);
    g_chain.Counts.resize(7);
    g_toWgs84.DestDatum = DT_WORLD_GEODETIC_SYSTEM_1984;
    for (int i = 0; i < 12; ++i) {
      const double x = i * 7 % 12, y = i * 5 % 11;
      g_source[i] = {x, y};
      g_destination[i] = {100 + 3 * x + 0.1 * y + 0.01 * x * y, 50 - 2 * y};
    }
    g_controls.pSrc = g_source;
    g_controls.pDst = g_destination;
    g_controls.nControls = 12;
    g_step.Method = DM_BURSA;
    g_step.Ellipsoid = ET_WGS_84;
    g_ini = (m_directory / "host.ini").string();
    WriteFile(g_ini, kBefore);
    g_grids = m_directory.Path().string();
    const Ntv2SubGrid grid{"ONLY", "NONE", -110, 40, -90, 60, 5, [](double, double) { return std::pair(36.0, 0.0); }};
    m_grid = (m_directory / "NTV2_0.GSB").string();
    WriteFile(m_grid, Ntv2File({grid}));
  }
  ~Memory() override {
    detail::SetNtv2Path(nullptr);
    DatSetGridDirectory(nullptr);
  }

  void WriteNadconGrids() {
    const NadconGrid grid{273, 121, -131, 20, 0.25};
    for (const char* name : {"conus.LAS", "conus.LOS"}) {
      WriteFile(m_directory / name, NadconFile(grid, [](int, int) { return 36.0; }));
    }
  }

  static constexpr const char* kBefore =
      "[X]\nx=1\n[Custom Datums]\nKept=molodensky,0,WGS 84,1,0,0,1,2,3,\nSecond=none,\n[Y]\ny=2\n";
  TemporaryDirectory m_directory;
  std::string m_grid;
};

TEST_F(Memory, OnlyTheLibrarysExceptionComesOut) {
  WriteNadconGrids();
  for (const Operation& operation : kOperations) {
    for (const bool forGood : {false, true}) {
      long k = 0;
      bool happened = true;
      while (happened && ++k < 2000) {
        detail::SetNtv2Path(m_grid.c_str());
        WriteFile(g_ini, kBefore);  // what changed lately is not kept in memory
        char text[256] = "";
        int id = 0;
        bool foreign = false;
        long live = 0;
        {
          const FailingAllocations failing(k, forGood);
          try {
            operation.run();
          } catch (const shr::Exception& e) {
            id = e.MessageId();
            std::strncpy(text, e.Message().c_str(), sizeof text - 1);
            foreign = e.Module() != "Orvex" || e.Source().empty();
          } catch (...) {
            foreign = true;
          }
          happened = failing.Happened();
          live = failing.Live();
        }
        ASSERT_FALSE(foreign) << operation.name << ", allocation " << k << ", for good " << forGood;
        EXPECT_EQ(live, 0) << operation.name << ", allocation " << k << ", for good " << forGood;
        if (id == 0) continue;
        char expected[detail::kMessageCapacity] = "";
        EXPECT_TRUE(operation.ids.count(id) == 1 && detail::LoadMessageText(id, expected))
            << operation.name << ", allocation " << k << ": " << id;
        EXPECT_STREQ(text, expected) << operation.name << ", allocation " << k;
      }
      EXPECT_LT(k, 2000) << operation.name;
      EXPECT_GT(k, 1) << operation.name << " allocates nothing";
    }
  }
}

/// Message and line of what an operation throws when its allocation number k fails.
std::string Thrown(long k, void (*run)()) {
  int id = 0, line = 0;
  {
    const FailingAllocations failing(k, false);
    try {
      run();
    } catch (const shr::Exception& e) {
      id = e.MessageId();
      line = e.Line();
    }
  }
  return std::to_string(id) + ":" + std::to_string(line);
}

TEST_F(Memory, HandlesAndListsReportTheirPlace) {
  const auto create = [] { CProjector projector(&g_lambert); };
  EXPECT_EQ(Thrown(1, create), "20200:553");  // the handle's block
  EXPECT_EQ(Thrown(2, create), "20201:604");  // what shares it
  EXPECT_EQ(Thrown(3, create), "0:0");
  const auto datum = [] { CDatumTransform transform(&g_toWgs84); };
  EXPECT_EQ(Thrown(1, datum), "0:0");  // a datum handle without room is null
  EXPECT_EQ(Thrown(2, datum), "20201:450");
  const auto fit = [] { CGeorefTransform transform(&g_controls); };
  EXPECT_EQ(Thrown(1, fit), "20200:284");
  EXPECT_EQ(Thrown(2, fit), "20200:294");
  EXPECT_EQ(Thrown(3, fit), "20200:294");
  EXPECT_EQ(Thrown(4, fit), "20200:304");
  EXPECT_EQ(Thrown(5, fit), "20201:320");
  char message[ORVEX_MESSAGE_SIZE];
  void* handle = nullptr;
  const FailingAllocations failing(1, true);
  EXPECT_EQ(orvex_datum_create(1, 2, &handle, message), 20201);
  EXPECT_EQ(message, std::string_view("Out of global memory"));
}

TEST_F(Memory, SegmentListsThatCannotGrowAreEmptied) {
  const std::string log = (m_directory / "test.log").string();
  static CSEGLIST* list = nullptr;
  CSEGLIST used;
  list = &used;
  const auto append = [] { list->Append(g_box[0], g_box[1], true, true); };
  const auto insert = [] { list->Insert(1, g_box[0], g_box[1], true, true); };
  detail::LogSetup(true, log.c_str());
  EXPECT_EQ(Thrown(1, append), "20201:286");
  EXPECT_TRUE(used.Count() == 0 && used.Capacity() == 0);
  for (int i = 0; i < 16; ++i) append();
  EXPECT_EQ(Thrown(1, [] { CSEGLIST copy(*list); }), "20201:238");
  EXPECT_EQ(used.Count(), 16);
  EXPECT_EQ(Thrown(1, append), "20201:302");
  EXPECT_TRUE(used.Count() == 0 && used.Capacity() == 0);
  for (int i = 0; i < 16; ++i) append();
  EXPECT_EQ(Thrown(1, insert), "20201:427");
  EXPECT_TRUE(used.Count() == 0 && used.Capacity() == 0);
  EXPECT_EQ(Thrown(0, append), "0:0");  // and can be filled again
  detail::LogSetup(false, nullptr);
  EXPECT_EQ(ReadWholeFile(log),
            "CSEGLIST::Append out of memory for 1st item!\r\nCSEGLIST::Append out of memory for realloc!\r\n");
}

// What NDatSave and NDatDelete answer is what has become of the file.
TEST_F(Memory, ASaveThatFailsHasStoredNothing) {
  const auto run = [](bool save, long k) {
    WriteFile(g_ini, kBefore);
    bool answer = false, happened = false;
    {
      const FailingAllocations failing(k, false);
      answer = save ? NDatSave(g_ini.c_str(), "New", &g_step) : NDatDelete(g_ini.c_str(), "Second");
      happened = failing.Happened();
    }
    EXPECT_EQ(answer, ReadWholeFile(g_ini) != kBefore) << "allocation " << k;
    return happened;
  };
  for (const bool save : {true, false}) {
    long k = 1;
    while (run(save, k)) ++k;
    EXPECT_GT(k, 10);
    EXPECT_NE(ReadWholeFile(g_ini), kBefore);
  }
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(m_directory.Path()), {}), 2) << "files left behind";
}

// Parts of a NADCON grid are allocated on the way; what fails then leaves every point as it was given.
TEST_F(Memory, ADatumConversionThatThrowsConvertsNothing) {
  WriteNadconGrids();
  ASSERT_TRUE(DatSetGridDirectory(m_directory.Path().string().c_str()));
  DATUMXFORM xform{};
  xform.SrcDatum = DT_NAD_1927_CONUS_NADCON;
  xform.DestDatum = DT_NORTH_AMERICAN_DATUM_1927;
  CDatumTransform transform(&xform);
  const std::vector<DATUMPOINT> given{{-100, 21}, {260, 135}, {-100, 40}, {-100, 49}};  // in three parts
  long k = 0;
  for (bool happened = true; happened;) {
    std::vector<DATUMPOINT> points = given;
    int id = 0;
    {
      const FailingAllocations failing(++k, false);
      try {
        transform.Convert(points.data(), 4);
      } catch (const shr::Exception& e) {
        id = e.MessageId();
      }
      happened = failing.Happened();
    }
    EXPECT_EQ(id, happened ? 20201 : 0) << "allocation " << k;
    EXPECT_EQ(std::memcmp(points.data(), given.data(), given.size() * sizeof given[0]) == 0, happened) << k;
  }
  EXPECT_GT(k, 10);
}

TEST_F(Memory, ExceptionsShareAReserve) {
  shr::Exception held[40];
  int withText = 0;
  {
    const FailingAllocations failing(1, true);
    for (shr::Exception& e : held) {
      try {
        detail::ThrowError("PrjTMerc", 220, 20280);
      } catch (const shr::Exception& thrown) {
        e = thrown;
      }
    }
  }
  for (const shr::Exception& e : held) {
    EXPECT_TRUE(e.MessageId() == 20280 && e.Line() == 220);
    withText += e.Source() == "PrjTMerc" && e.Message().starts_with("Unable to open NTV2");
  }
  EXPECT_GE(withText, 8);  // the rest has its number only
  for (shr::Exception& e : held) e = shr::Exception();
  const FailingAllocations failing(1, true);
  const shr::Exception again(20201, 1, "Orvex", "Orvex", "Out of global memory");
  EXPECT_STREQ(again.what(), "Out of global memory");
}

// Copies of one object may be made by two threads at a time, so its record is only read.
TEST_F(Memory, CopyingAProjectorOnlyReadsIt) {
  constexpr std::size_t kPage = 4096;
  void* const page = mmap(nullptr, kPage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  ASSERT_NE(page, MAP_FAILED);
  PROJDATA utm{}, copied{};
  utm.Type = PT_UTM;
  utm.Ellipsoid = ET_WGS_84;
  utm.bSouth = true;
  {
    AnswerNextAllocation(sizeof(PROJDATA), page);
    const CProjector original(&utm);
    ASSERT_EQ(mprotect(page, kPage, PROT_READ), 0);
    CProjector copy(original);  // a write ends the test here
    ASSERT_TRUE(copy.GetInfo(&copied));
    copy.Delete();
  }
  EXPECT_TRUE(copied.Type == PT_UTM && copied.yOrg == 1e7 && copied.MajorRadius == 6378137.0);
  AnswerNextAllocation(0, nullptr);
  munmap(page, kPage);
}

}  // namespace
}  // namespace orvex::test

#endif
