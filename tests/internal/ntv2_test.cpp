// The NTv2 step on synthetic grids: interpolation, choice of sub-grid, inverse iteration, damaged files, loading.
#include "datum/grids/Ntv2.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cfloat>
#include <cstring>
#include <limits>
#include <sstream>
#include <thread>

#include "datum/grids/Ntv2Grid.h"
#include "shr/exception.h"
#include "support/GridFiles.h"

namespace orvex::detail {
namespace {

using namespace orvex::test;

ShiftField Constant(double seconds) {
  return [seconds](double, double) { return std::pair(seconds, seconds); };
}

// Bilinear everywhere, so that interpolation must give it back between the nodes. At the nodes of the half-degree grid
// below every value is exact in single precision.
std::pair<double, double> Bilinear(double lon, double lat) {
  return {4 + (lon + 100) * 0.5 - (lat - 50) * 0.25 + (lon + 100) * (lat - 50) * 0.125,
          -8 + (lon + 100) * 0.25 + (lat - 50) * 1.5 - (lon + 100) * (lat - 50) * 0.0625};
}

const Ntv2SubGrid kWhole{"WHOLE", "NONE", -104, 48, -96, 54, 0.5, Bilinear};

// The step run on a grid given as bytes; back to the default grid file afterwards.
class Ntv2Step : public testing::Test {
 protected:
  ~Ntv2Step() override { SetNtv2Path(nullptr); }
  void Use(const std::string& bytes) {
    WriteFile(m_path, bytes);
    SetNtv2Path(m_path.string().c_str());
  }
  static DATUMPOINT Convert(DATUMPOINT p, Ntv2Direction direction = Ntv2Direction::Forward) {
    EXPECT_EQ(ConvertNtv2(&p, 1, direction), 0);
    return p;
  }
  static Ntv2Status ReadBytes(const std::string& bytes, Ntv2Grid& grid) {
    std::istringstream in(bytes);
    return grid.Read(in);
  }

  TemporaryDirectory m_directory;
  std::filesystem::path m_path = m_directory / "grid.gsb";
};

TEST_F(Ntv2Step, interpolatesInEitherByteOrderAndInverts) {
  for (const bool bigEndian : {false, true}) {
    Use(Ntv2File({kWhole}, bigEndian));
    std::mt19937 random(7);
    std::uniform_real_distribution<double> lon(-103.99, -96.01), lat(48.01, 53.99);
    for (int i = 0; i < 500; ++i) {
      const DATUMPOINT p{lon(random), lat(random)}, q = Convert(p);
      const auto [north, west] = Bilinear(p.x, p.y);
      ASSERT_NEAR(q.x, p.x - west / 3600, 1e-12);  // degrees: a few units in the last place of a longitude
      ASSERT_NEAR(q.y, p.y + north / 3600, 1e-12);
      // One coordinate at rest ends the iteration: the other is then a further factor of the field's slope (1e-4) away,
      // from a step that can be as large as the first correction.
      const DATUMPOINT back = Convert(q, Ntv2Direction::Inverse);
      ASSERT_NEAR(back.x, p.x, 2e-11);
      ASSERT_NEAR(back.y, p.y, 2e-11);
    }
  }
}

// Two rows of two nodes, no END record, and limits that need every bit of their doubles.
TEST_F(Ntv2Step, takesTheSmallestGridAndNoEndRecord) {
  for (const bool bigEndian : {false, true}) {
    std::string bytes = Ntv2File({{"CELL", "NONE", -80.123456789, 45.1, -79.123456789, 46.1, 1,
                                   [](double lon, double) { return std::pair(100 * (lon + 80), 0.0); }}},
                                 bigEndian);
    bytes.resize(bytes.size() - 16);
    Use(bytes);
    EXPECT_NEAR((Convert({-79.6, 45.5}).y - 45.5) * 3600, 40, 1e-4);  // the nodes are in single precision
  }
}

// West to east: A, B side by side; CHILD in A, GRANDCHILD in CHILD but before it in the file, its north edge on
// CHILD's. Every sub-grid shifts by a constant of its own, so that the shift names the sub-grid.
TEST_F(Ntv2Step, takesTheDensestSubGridAndGivesEdgesToOne) {
  Use(Ntv2File({{"GRANDCH", "CHILD", -79.9, 45.8, -79.7, 46.1, 0.1, Constant(4)},
                {"A", "NONE", -80.3, 45.1, -79.1, 46.7, 0.2, Constant(1)},
                {"CHILD", "A", -80.1, 45.5, -79.5, 46.1, 0.1, Constant(3)},
                {"B", "NONE", -79.1, 45.1, -78.1, 46.7, 0.2, Constant(2)}}));
  struct Row {
    double lon, lat, seconds;
  };
  const Row rows[] = {
      {-80.2, 45.2, 1}, {-78.5, 45.2, 2}, {-80.0, 45.6, 3}, {-79.8, 45.9, 4},  // inside
      {-79.2, 45.1, 1},                                                        // south edge: its own
      {-79.1, 45.6, 1},                                                        // A's east edge is B's closing west edge
      {-78.1, 45.6, 2},                                                        // east edge: its own
      {-80.3, 46.0, 1}, {-80.0, 46.7, 1}, {-80.3, 46.7, 1},                    // closing edges, no neighbour
      {-79.6, 46.1, 3},                                                        // closing edge of a child
      {-79.7, 45.9, 4}, {-79.9, 45.9, 4}, {-79.8, 46.1, 4}, {-79.8, 45.8, 4},  // a grandchild's edges
      {-80.1, 45.5, 3}, {-80.4, 46.0, 0}, {-79.2, 46.8, 0}, {-78.0, 45.2, 0},  // corner; outside
  };
  for (const Row& row : rows) {
    const DATUMPOINT q = Convert({row.lon, row.lat});
    EXPECT_NEAR((q.y - row.lat) * 3600, row.seconds, 1e-9) << row.lon << ", " << row.lat;
    EXPECT_NEAR((row.lon - q.x) * 3600, row.seconds, 1e-9) << row.lon << ", " << row.lat;
  }
}

// Remembering the last sub-grid must not change a result, siblings that overlap and children that stick out included.
TEST_F(Ntv2Step, resultsDoNotDependOnTheOrderOfPoints) {
  std::mt19937 random(11);
  std::uniform_int_distribution<int> position(0, 16), size(1, 8), parent(-1, 10);
  std::uniform_real_distribution<double> coordinate(-1, 25);
  for (int round = 0; round < 50; ++round) {
    std::vector<Ntv2SubGrid> grids;
    for (int i = 0; i < 12; ++i) {
      const double west = position(random), south = position(random);
      const int above = std::min(parent(random), i - 1);
      grids.push_back({"G" + std::to_string(i), above < 0 ? "NONE" : "G" + std::to_string(above), west, south,
                       west + size(random), south + size(random), 1, Constant(i)});
    }
    Ntv2Grid grid;
    ASSERT_EQ(ReadBytes(Ntv2File(grids), grid), Ntv2Status::Ok);
    Ntv2Grid::Hint kept = 0;
    for (int i = 0; i < 2000; ++i) {
      const Ntv2Grid::Position p{-coordinate(random) / 57.29577951308232, coordinate(random) / 57.29577951308232};
      Ntv2Grid::Hint fresh = static_cast<Ntv2Grid::Hint>(-1);
      Ntv2Grid::Position a{}, b{};
      ASSERT_EQ(grid.ShiftAt(p, kept, a), grid.ShiftAt(p, fresh, b));
      ASSERT_TRUE(a.west == b.west && a.north == b.north);
    }
  }
}

// The index answers as a search from the first rectangle to the last, whatever way they lie, edges and corners
// included.
TEST(SubGridIndex, findsWhatASearchInOrderFinds) {
  std::mt19937 random(12);
  for (int round = 0; round < 300; ++round) {
    const int size = 1 + round % 40, last = 1 + round % 13;
    std::uniform_int_distribution<int> place(0, last), twice(-1, 2 * last + 3);
    std::vector<SubGridLimits> limits;
    for (int i = 0; i < size; ++i) {
      const int a = place(random), b = place(random), c = place(random), d = place(random);
      limits.push_back({std::min(a, b) + 0.0, std::max(a, b) + 1.0, std::min(c, d) + 0.0, std::max(c, d) + 1.0});
    }
    const SubGridIndex index(limits);
    for (int i = 0; i < 500; ++i) {
      const double x = twice(random) / 2.0, y = twice(random) / 2.0;
      std::uint32_t inside = SubGridIndex::kNone, closing = SubGridIndex::kNone;
      for (std::uint32_t k = static_cast<std::uint32_t>(size); k-- > 0;) {
        const SubGridLimits& g = limits[k];
        if (y < g.south || y > g.north || x < g.east || x > g.west) continue;
        closing = k;
        if (y < g.north && x < g.west) inside = k;
      }
      ASSERT_EQ(index.First(x, y), inside != SubGridIndex::kNone ? inside : closing) << round << ": " << x << ", " << y;
    }
    EXPECT_EQ(index.First(std::nan(""), 0.5), SubGridIndex::kNone);
    EXPECT_EQ(index.First(0.5, std::nan("")), SubGridIndex::kNone);
  }
}

TEST_F(Ntv2Step, inverseEndsAsStated) {
  // Shift north = latitude - 10 degrees, so the iteration swings between 10 degrees and the target for ever; east it
  // never rests either. The eleventh round marks the point and leaves its neighbours alone.
  Use(Ntv2File({{"SWING", "NONE", 0, 0, 20, 20, 1,
                 [](double lon, double lat) { return std::pair((lat - 10) * 3600, (10 - lon) * 3600); }}}));
  DATUMPOINT points[] = {{50, 50}, {12, 13}, {DBL_MAX, 13}, {10, 10}};
  ASSERT_EQ(ConvertNtv2(points, 4, Ntv2Direction::Inverse), 0);
  EXPECT_TRUE(points[1].x == DBL_MAX && points[1].y == DBL_MAX);
  EXPECT_NEAR(points[0].x, 50, 1e-13);
  EXPECT_EQ(points[2].y, 13);
  EXPECT_NEAR(points[3].y, 10, 1e-13);
  // A shift of slope q around 10 degrees: the correction of round k is q^(k+1) degrees for a target one degree away. It
  // falls to 1e-12 radians in round 10 for q = 7/64, in round 11 for q = 1/8: too late.
  for (const auto& [q, marked] : {std::pair(7.0 / 64, false), std::pair(1.0 / 8, true)}) {
    Use(Ntv2File({{"SLOPE", "NONE", 0, 0, 20, 20, 1, [q = q](double lon, double lat) {
                     return std::pair(q * (lat - 10) * 3600, q * (10 - lon) * 3600);
                   }}}));
    const DATUMPOINT p = Convert({11, 11}, Ntv2Direction::Inverse);
    EXPECT_EQ(p.x == DBL_MAX && p.y == DBL_MAX, marked) << q;
    EXPECT_TRUE(marked || std::fabs(p.y - 10 - 1 / (1 + q)) < 1e-10) << q;
  }
  // The first estimate leaves the grid: it stands. (Target 0.0005 degrees north of the southern edge, shift 3.6
  // seconds.)
  Use(Ntv2File({{"FLAT", "NONE", 0, 0, 20, 20, 1, Constant(3.6)}}));
  const DATUMPOINT outside = Convert({10, 0.0005}, Ntv2Direction::Inverse);
  EXPECT_NEAR(outside.x, 10.001, 1e-9);  // 3.6 is not exact in single precision
  EXPECT_NEAR(outside.y, -0.0005, 1e-9);
  // No shift in latitude: that coordinate rests at once and the round's correction is applied, once. With shift west
  // s(x) = x/100 (degrees) the estimate goes x + x/100, then + x/10000.
  Use(Ntv2File({{"EAST", "NONE", -20, 0, 20, 20, 1, [](double lon, double) { return std::pair(0.0, lon * 36); }}}));
  EXPECT_NEAR(Convert({10, 10}, Ntv2Direction::Inverse).x, 10.101, 1e-12);
}

TEST_F(Ntv2Step, refusesWhatContradictsItself) {
  const std::string good = Ntv2File(
      {{"A", "NONE", -80, 45, -78, 47, 0.5, Constant(1)}, {"B", "A", -79.5, 45.5, -79, 46, 0.25, Constant(2)}});
  constexpr std::size_t kHeader = 176, kNodesA = 25 * 16, kB = 2 * kHeader + kNodesA;
  const auto value = [](std::size_t header, std::size_t record) { return header + 16 * record + 8; };
  const auto integer = [](std::int32_t n) { return ByteWriter().Int(n).Bytes(); };
  const auto real = [](double x) { return ByteWriter().Double(x).Bytes(); };
  const auto single = [](double x) { return ByteWriter().Float(x).Bytes(); };
  const double nan = std::numeric_limits<double>::quiet_NaN(), inf = std::numeric_limits<double>::infinity();
  struct Row {
    const char* what;
    std::size_t at;
    std::string bytes;
    int code;
  };
  const Row rows[] = {
      {"NUM_OREC", value(0, 0), integer(12), 6},
      {"NUM_SREC", value(0, 1), integer(10), 6},
      {"unit", value(0, 3), "MINUTES ", 6},
      {"no sub-grid", value(0, 2), integer(0), 7},
      {"negative number of sub-grids", value(0, 2), integer(-1), 7},
      {"more sub-grids than the file holds", value(0, 2), integer(3), 7},
      {"huge number of sub-grids", value(0, 2), integer(0x7FFFFFFF), 7},
      {"unknown parent", value(kB, 1), "NOBODY  ", 7},
      {"its own parent", value(kB, 1), "B       ", 7},
      {"parents in a circle", value(kHeader, 1), "B       ", 7},
      {"same name twice", value(kB, 0), "A       ", 7},
      {"latitudes exchanged", value(kHeader, 4), real(50 * 3600), 7},
      {"infinite limit", value(kHeader, 5), real(inf), 7},
      {"NaN limit", value(kHeader, 6), real(nan), 7},
      {"limits far apart", value(kHeader, 7), real(1e308), 7},
      {"zero spacing", value(kHeader, 8), real(0), 7},
      {"tiny spacing", value(kHeader, 8), real(5e-324), 7},
      {"negative spacing", value(kHeader, 9), real(-1800), 7},
      {"NaN spacing", value(kHeader, 9), real(nan), 7},
      {"spacing wider than the grid", value(kHeader, 8), real(1e9), 7},
      {"count", value(kHeader, 10), integer(26), 7},
      {"huge count", value(kHeader, 10), integer(0x7FFFFFFF), 7},
      {"NaN shift", 2 * kHeader + 5 * 16, single(nan), 7},
      {"infinite shift", kB + kHeader + 4, single(-inf), 7},
  };
  for (const Row& row : rows) {
    std::string bytes = good;
    bytes.replace(row.at, row.bytes.size(), row.bytes);
    Ntv2Grid grid;
    EXPECT_EQ(static_cast<int>(ReadBytes(bytes, grid)), row.code) << row.what;
    EXPECT_EQ(grid.SubGridCount(), 0u) << row.what;
  }
  std::vector<Ntv2SubGrid> chain;  // each in the one before; points go down level by level
  for (int i = 0; i < 101; ++i) {
    chain.push_back({"L" + std::to_string(i), i == 0 ? "NONE" : chain.back().name, -81, 45, -80, 46, 1, Constant(1)});
    Ntv2Grid grid;
    if (i < 99) continue;
    EXPECT_EQ(ReadBytes(Ntv2File(chain), grid), i == 99 ? Ntv2Status::Ok : Ntv2Status::Corrupt) << i;
  }
  // Cut anywhere before the END record: refused; without it or with junk behind: accepted.
  for (std::size_t length = 0; length <= good.size() - 16; ++length) {
    Ntv2Grid grid;
    const auto status = ReadBytes(good.substr(0, length), grid);
    const bool whole = length == good.size() - 16;
    ASSERT_EQ(status, whole              ? Ntv2Status::Ok
                      : length < kHeader ? Ntv2Status::BadHeader
                                         : Ntv2Status::Corrupt)
        << length;
  }
}

TEST_F(Ntv2Step, survivesRandomDamage) {
  const std::string good[] = {Ntv2File({kWhole}), Ntv2File({kWhole}, true),
                              Ntv2File({{"B", "A", -79.5, 45.5, -79, 46, 0.25, Constant(2)},
                                        {"A", "NONE", -80, 45, -78, 47, 0.5, Constant(1)}})};
  std::mt19937 random(1);
  std::uniform_real_distribution<double> west(78 / 57.3, 104 / 57.3), north(45 / 57.3, 54 / 57.3);
  int loaded = 0;
  for (int i = 0; i < 20000; ++i) {
    Ntv2Grid grid;
    const Ntv2Status status = ReadBytes(Damaged(good[i % 3], random), grid);
    ASSERT_TRUE(status == Ntv2Status::Ok || status == Ntv2Status::BadHeader || status == Ntv2Status::Corrupt);
    if (status != Ntv2Status::Ok) continue;
    ++loaded;
    for (Ntv2Grid::Hint j = 0, hint = 0; j < 20; ++j) {
      Ntv2Grid::Position shift{};
      if (grid.ShiftAt({west(random), north(random)}, hint, shift)) {
        ASSERT_TRUE(std::isfinite(shift.west) && std::isfinite(shift.north));
      }
    }
  }
  EXPECT_GT(loaded, 1000);  // the damage must reach beyond the headers
}

TEST_F(Ntv2Step, loadsOnceAndTriesAgainAfterFailure) {
  SetNtv2Path(m_path.string().c_str());
  DATUMPOINT p{-100, 50};
  EXPECT_EQ(ConvertNtv2(&p, 1, Ntv2Direction::Forward), 5);
  WriteFile(m_path, "rubbish");
  EXPECT_EQ(ConvertNtv2(&p, 1, Ntv2Direction::Forward), 6);
  WriteFile(m_path, Ntv2File({kWhole}).substr(0, 1000));
  EXPECT_EQ(ConvertNtv2(&p, 1, Ntv2Direction::Forward), 7);
  EXPECT_TRUE(p.x == -100 && p.y == 50);
  WriteFile(m_path, Ntv2File({kWhole}));
  EXPECT_NEAR(Convert({-100, 50}).y, 50 + 4.0 / 3600, 1e-12);
  std::filesystem::remove(m_path);
  EXPECT_NEAR(Convert({-100, 50}).y, 50 + 4.0 / 3600, 1e-12);  // kept
}

TEST_F(Ntv2Step, threadsMayMakeTheFirstCall) {
  WriteFile(m_path, Ntv2File({kWhole}));
  for (int round = 0; round < 20; ++round) {
    SetNtv2Path(m_path.string().c_str());
    std::atomic<int> good{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
      threads.emplace_back([&good] {
        DATUMPOINT p{-100, 50};
        if (ConvertNtv2(&p, 1, Ntv2Direction::Forward) == 0 && p.y > 50) ++good;
      });
    }
    for (std::thread& thread : threads) thread.join();
    ASSERT_EQ(good, 4);
  }
}

TEST_F(Ntv2Step, theDriverConvertsBothWaysAndNamesWhatIsWrong) {
  DATUMXFORM xform{};
  xform.SrcDatum = DT_NAD_1927_CANADA_NTV2;
  xform.DestDatum = DT_WORLD_GEODETIC_SYSTEM_1984;
  CDatumTransform there(&xform);
  std::swap(xform.SrcDatum, xform.DestDatum);
  CDatumTransform back(&xform);
  Use(Ntv2File({kWhole}));
  DATUMPOINT points[] = {{260.25, 50.5}, {0, 0}};  // 260.25 is 99.75 west
  const auto [north, west] = Bilinear(-99.75, 50.5);
  ASSERT_TRUE(there.Convert(points, 2));
  EXPECT_NEAR(points[0].x, 260.25 - west / 3600,
              1e-10);  // the second step's Molodensky formula leaves some 1e-11 degrees
  EXPECT_NEAR(points[0].y, 50.5 + north / 3600, 1e-10);
  EXPECT_NEAR(points[1].y, 0, 1e-10);  // outside the grid
  ASSERT_TRUE(back.Convert(points, 2));
  EXPECT_NEAR(points[0].x, 260.25, 1e-10);
  EXPECT_NEAR(points[0].y, 50.5, 1e-10);
  const auto failure = [&](CDatumTransform& transform) {
    try {
      return transform.Convert(points, 2) ? 0 : 1;
    } catch (const shr::Exception& e) {
      return e.MessageId();
    }
  };
  Use("rubbish");
  EXPECT_EQ(failure(there), 20281);
  SetNtv2Path((m_directory / "missing.gsb").string().c_str());
  EXPECT_EQ(failure(back), 20280);
}

}  // namespace
}  // namespace orvex::detail
