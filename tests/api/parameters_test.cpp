// Parameter catalogue and projection chain.
#include <gtest/gtest.h>

#include <cstring>
#include <type_traits>
#include <vector>

#include <orvex/orvex.h>

namespace orvex {
namespace {

// Hosts take addresses of functions and write `CProjector p = &record;`.
static_assert(std::is_same_v<decltype(&ProjGetParam), bool(ORVEX_CALL*)(PROJDATA*, int, void*)>);
static_assert(std::is_same_v<decltype(&ProjSetParam), bool(ORVEX_CALL*)(PROJDATA*, int, void*)>);
static_assert(std::is_convertible_v<PROJDATA*, CProjector>);
static_assert(std::is_convertible_v<const DATUMXFORM*, CDatumTransform>);
static_assert(std::is_convertible_v<const GEOREF*, CGeorefTransform>);

// Every projection lists as many parameters as it says, each known and each reported as used, and none twice.
TEST(Parameters, ListsAgreeWithEachOther) {
  for (int t = 0; t < ProjNumProjections(); ++t) {
    const auto type = static_cast<ProjType>(t);
    const int count = ProjNumParams(type);
    ASSERT_GE(count, 0) << t;
    int used = 0;
    for (int id = 1; id <= 23; ++id) used += ProjUsesParam(type, id) ? 1 : 0;
    EXPECT_EQ(used, count) << t;
    for (int i = 0; i < count; ++i) {
      const int id = ProjEnumParam(type, i);
      EXPECT_TRUE(ProjParamInfo(id, nullptr, nullptr, nullptr, nullptr)) << id;
      EXPECT_TRUE(ProjUsesParam(type, id)) << t << " " << id;
    }
    EXPECT_EQ(ProjEnumParam(type, count), 0);
    EXPECT_EQ(ProjEnumParam(type, -1), 0);
    EXPECT_TRUE(ProjUsesParam(type, 0));  // kept: the closing 0 is compared as well
  }
  for (const int t : {-1, 29, 999}) {
    const auto type = static_cast<ProjType>(t);
    EXPECT_EQ(ProjNumParams(type), -1);
    EXPECT_EQ(ProjEnumParam(type, 0), 0);
    EXPECT_FALSE(ProjUsesParam(type, 0));
  }
}

TEST(Parameters, DisplayOrder) {
  const struct {
    std::vector<int> ids;
    std::vector<ProjType> types;
  } rows[] = {
      {{}, {PT_LATLONG}},
      {{2, 15}, {PT_STATEPLANE27, PT_STATEPLANE83}},
      {{20, 2, 3, 4}, {PT_ROBINSON}},
      {{20, 2, 3, 4, 6},
       {PT_ECKERT4, PT_ECKERT6, PT_MILLER, PT_MOLLWEIDE, PT_ROBINSONSTERLING, PT_SINUSOIDAL, PT_VANDERGRINTEN}},
      {{20, 2, 3, 4, 5, 6}, {PT_CASSINI}},
      {{20, 2, 3, 4, 6, 5}, {PT_MERCATOR, PT_ORTHOGRAPHIC, PT_POLYCONIC}},
      {{20, 2, 3, 4, 6, 7}, {PT_BONNE, PT_EQUICYLINDRICAL, PT_LAMBERTAZIMUTHAL, PT_GNOMONIC, PT_AZIMUTHALEQUI}},
      {{20, 2, 3, 4, 6, 5, 7, 8}, {PT_ALBERS, PT_LAMBERT, PT_EQUICONIC}},
      {{20, 2, 3, 4, 13, 6, 5}, {PT_GAUSSKRUGER, PT_STEREOGRAPHIC, PT_TRANSVERSEMERCATOR}},
      {{20, 2, 13, 6, 5, 14}, {PT_UTM}},
      {{20, 2, 3, 4, 10, 7, 11, 8, 13}, {PT_OBLIQUEMERCATOR}},
      {{20, 2, 3, 4, 13, 16, 6, 17, 5, 7, 10, 8, 11, 18, 19}, {PT_HOTINE}},
  };
  int seen = 0;
  for (const auto& row : rows) {
    for (const ProjType type : row.types) {
      std::vector<int> ids;
      for (int i = 0; i < ProjNumParams(type); ++i) ids.push_back(ProjEnumParam(type, i));
      EXPECT_EQ(ids, row.ids) << type;
      ++seen;
    }
  }
  EXPECT_EQ(seen, ProjNumProjections());
}

// Each value goes where its field is, and nowhere else: written by id, read through the record.
TEST(Parameters, ValuesReachTheirFields) {
  PROJDATA rec{};
  int zone = 77, ellipsoid = 15, projection = PT_HOTINE;
  bool yes = true;
  for (int id = 1; id <= 22; ++id) {
    char name[80];
    ProjDataType type = PDT_DOUBLE;
    int offset = 0, size = 0;
    ASSERT_TRUE(ProjParamInfo(id, name, &type, &offset, &size));
    double number = id + 0.5;
    void* value = type == PDT_DOUBLE      ? static_cast<void*>(&number)
                  : type == PDT_BOOL      ? static_cast<void*>(&yes)
                  : type == PDT_STATEZONE ? static_cast<void*>(&zone)
                  : type == PDT_ELLIPSOID ? static_cast<void*>(&ellipsoid)
                                          : static_cast<void*>(&projection);
    EXPECT_TRUE(ProjSetParam(&rec, id, value));
    unsigned char back[8];
    EXPECT_TRUE(ProjGetParam(&rec, id, back));
    EXPECT_EQ(std::memcmp(back, value, static_cast<std::size_t>(size)), 0) << name;
    EXPECT_EQ(std::memcmp(reinterpret_cast<const char*>(&rec) + offset, value, static_cast<std::size_t>(size)), 0)
        << name;
  }
  EXPECT_TRUE(rec.Type == PT_HOTINE && rec.Scale == 2.5 && rec.xOrg == 3.5 && rec.yOrg == 4.5 && rec.Lat0 == 5.5);
  EXPECT_TRUE(rec.Lon0 == 6.5 && rec.Lat1 == 7.5 && rec.Lat2 == 8.5 && rec.Lat3 == 9.5 && rec.Lon1 == 10.5);
  EXPECT_TRUE(rec.Lon2 == 11.5 && rec.Lon3 == 12.5 && rec.K0 == 13.5 && rec.bSouth && rec.Zone == zone);
  EXPECT_TRUE(rec.bUseAlpha && rec.Alpha == 17.5 && rec.bRotate && rec.bUOffset && rec.Ellipsoid == ET_CLARKE_1866);
  EXPECT_TRUE(rec.MajorRadius == 21.5 && rec.Flattening == 22.5 && rec.iResult == 0 && !rec.bWrapLon);
}

TEST(Parameters, UnknownIdsAndNullPointers) {
  PROJDATA rec{};
  double value = 1;
  for (const int id : {-1, 0, 23}) {
    EXPECT_FALSE(ProjParamInfo(id, nullptr, nullptr, nullptr, nullptr)) << id;
    EXPECT_FALSE(ProjGetParam(&rec, id, &value)) << id;
    EXPECT_FALSE(ProjSetParam(&rec, id, &value)) << id;
  }
  EXPECT_FALSE(ProjGetParam(nullptr, 2, &value) || ProjGetParam(&rec, 2, nullptr));
  EXPECT_FALSE(ProjSetParam(nullptr, 2, &value) || ProjSetParam(&rec, 2, nullptr));
  EXPECT_EQ(value, 1);
}

TEST(ProjectionChain, CopiesAreDeep) {
  CPROJCHAIN chain;
  EXPECT_TRUE(chain.Points.empty() && chain.iValue == 0 && chain.Counts.empty());
  chain.Points = {{1, 2}, {3, 4}};
  chain.iValue = 5;
  chain.Counts = {2};
  CPROJCHAIN copy(chain), assigned;
  assigned = chain;
  chain = *&chain;
  chain.Points[1].y = 40;
  chain.Counts.clear();
  for (const CPROJCHAIN* c : {&copy, &assigned}) {
    EXPECT_TRUE(c->Points.size() == 2 && c->Points[1].y == 4 && c->iValue == 5 && c->Counts.size() == 1);
  }
  EXPECT_EQ(chain.Points[1].y, 40);
}

}  // namespace
}  // namespace orvex
