// The NADCON step on synthetic grid pairs beside the test program, each with a name of its own so that tests may run at
// once.
#include "datum/grids/Nadcon.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <limits>

#include "platform/Platform.h"
#include "shr/exception.h"
#include "support/GridFiles.h"
#include "support/Log.h"

namespace orvex::detail {
namespace {

using namespace orvex::test;

constexpr NadconGrid kGrid{30, 25, -80, 20, 0.25};

// Bilinear in the indexes, so that interpolation must give it back between the nodes; exact in single precision.
double LasWord(double row, double column) {
  return 36 + row * 4.5 - column * 2.25 + row * column * 0.125;
}
double LosWord(double row, double column) {
  return -72 - row * 1.5 + column * 9 - row * column * 0.25;
}

class Nadcon : public testing::Test {
 protected:
  Nadcon() : m_region("test" + std::to_string(std::random_device{}())) {
    const std::string directory = platform::ExecutableDirectory();
    m_las = directory + m_region + ".LAS";
    m_los = directory + m_region + ".LOS";
  }
  ~Nadcon() override {
    std::filesystem::remove(m_las);
    std::filesystem::remove(m_los);
  }
  void Use(const std::string& las, const std::string& los) {
    WriteFile(m_las, las);
    WriteFile(m_los, los);
  }
  bool Convert(DATUMPOINT* pts, int n) { return ConvertNadcon(m_region.c_str(), pts, n); }
  DATUMPOINT Convert(DATUMPOINT p) {
    EXPECT_TRUE(Convert(&p, 1));
    return p;
  }

  std::string m_region, m_las, m_los;
  const std::string m_goodLas = NadconFile(kGrid, LasWord), m_goodLos = NadconFile(kGrid, LosWord);
};

// The .LAS file moves the longitude and the .LOS file the latitude, both added. Expected: the field at the fractional
// indexes. Column 0 holds the dummy words, here on the same plane, so points west of XMIN follow the field as well, but
// with an index truncated towards zero: fx is negative there and the cell is that of column 0.
TEST_F(Nadcon, interpolatesUpToTheStatedEdges) {
  Use(m_goodLas, m_goodLos);
  struct Row {
    double column, row;
    bool moves;
  };
  const Row rows[] = {
      {1, 1, true},    {7.25, 3.5, true}, {12.75, 24.875, true}, {29.9375, 24, true},  // inside
      {30, 5, false},  {5, 25, false},    {31, 5, false},                              // last column, last row
      {0.5, 2, true},  {-0.75, 2, true},  {-1, 2, false},        {-1.5, 2, false},     // dummy words
      {40, 40, false},
  };
  for (const Row& row : rows) {
    const DATUMPOINT p{kGrid.xMin + (row.column - 1) * kGrid.spacing, kGrid.yMin + (row.row - 1) * kGrid.spacing};
    const DATUMPOINT q = Convert(p);
    EXPECT_NEAR(q.x, p.x + (row.moves ? LasWord(row.row, row.column) / 3600 : 0), 1e-12)
        << row.column << ", " << row.row;
    EXPECT_NEAR(q.y, p.y + (row.moves ? LosWord(row.row, row.column) / 3600 : 0), 1e-12)
        << row.column << ", " << row.row;
  }
  // Half a spacing south of row 1 the index is 0: the southern nodes are words 25 and 26 of the header record, which
  // are 0.
  const DATUMPOINT south = Convert({kGrid.xMin + 24.5 * kGrid.spacing, kGrid.yMin - 0.5 * kGrid.spacing});
  EXPECT_NEAR(south.x, kGrid.xMin + 24.5 * kGrid.spacing + LasWord(1, 25.5) / 2 / 3600, 1e-12);
  DATUMPOINT marked[] = {{DBL_MAX, 21}, {-79, DBL_MAX}, {std::nan(""), 21}};
  EXPECT_TRUE(Convert(marked, 3));
  EXPECT_TRUE(marked[0].y == 21 && marked[1].x == -79 && marked[2].y == 21);
}

// Points far apart share buffered blocks of the files (4096 words each, so every sixth row has a seam): each must get
// the field, whatever came before it.
TEST_F(Nadcon, manyPointsOfOneCallAreAllShifted) {
  const NadconGrid large{700, 300, -130, 20, 0.125};
  Use(NadconFile(large, LasWord), NadconFile(large, LosWord));
  std::mt19937 random(3);
  std::uniform_real_distribution<double> column(1, 700), row(1, 300);
  std::vector<DATUMPOINT> indexes, points;
  for (int i = 0; i < 100000; ++i) {
    indexes.push_back({column(random), row(random)});
    points.push_back({large.xMin + (indexes.back().x - 1) * 0.125, large.yMin + (indexes.back().y - 1) * 0.125});
  }
  std::vector<DATUMPOINT> moved = points;
  ASSERT_TRUE(Convert(moved.data(), static_cast<int>(moved.size())));
  for (std::size_t i = 0; i < points.size(); ++i) {
    ASSERT_NEAR(moved[i].x, points[i].x + LasWord(indexes[i].y, indexes[i].x) / 3600, 1e-11) << i;
    ASSERT_NEAR(moved[i].y, points[i].y + LosWord(indexes[i].y, indexes[i].x) / 3600, 1e-11) << i;
  }
}

TEST_F(Nadcon, keepsNothingBetweenCalls) {
  Use(m_goodLas, m_goodLos);
  const DATUMPOINT p{-78, 22}, before = Convert(p);
  Use(m_goodLos, m_goodLas);
  const DATUMPOINT after = Convert(p);
  EXPECT_NEAR(after.x - p.x, before.y - p.y, 1e-12);
  EXPECT_NE(after.x, before.x);
}

TEST_F(Nadcon, aMissingFileAssertsAndTracesBothPaths) {
  TemporaryDirectory directory;
  const std::string log = (directory / "log.txt").string();
  WriteFile(m_las, m_goodLas);
  LogSetup(true, log.c_str());
  DATUMPOINT p{-78, 22};
  try {
    Convert(&p, 1);
    ADD_FAILURE() << "no exception";
  } catch (const shr::Exception& e) {
    EXPECT_EQ(e.MessageId(), 20200);
    EXPECT_EQ(e.Source(), "DtmNadcon");
  }
  LogSetup(false, nullptr);
  EXPECT_EQ(ReadWholeFile(log),
            "CTRACE:  ----------------NADCON--------------\r\n"
            "CTRACE:  Failed opening grid files (" +
                m_las + " and " + m_los + ")\r\n");
}

// A point either moves as with the whole file or stays: it stays exactly when one of its nodes is cut off.
TEST_F(Nadcon, truncatedFilesLeaveUncoveredPoints) {
  for (std::size_t length = 0; length <= m_goodLos.size(); length += length < 200 ? 7 : 61) {
    for (const bool cutLas : {true, false}) {
      Use(cutLas ? m_goodLas.substr(0, length) : m_goodLas, cutLas ? m_goodLos : m_goodLos.substr(0, length));
      for (const int row : {1, 8, 20}) {
        const DATUMPOINT p{kGrid.xMin + 9.5 * kGrid.spacing, kGrid.yMin + (row - 0.5) * kGrid.spacing};  // column 10.5
        const std::size_t needed = 4 * (31 * (static_cast<std::size_t>(row) + 1) + 12);
        const DATUMPOINT q = Convert(p);
        const bool moves = length >= needed;
        ASSERT_NEAR(q.x, p.x + (moves ? LasWord(row + 0.5, 10.5) / 3600 : 0), 1e-12) << length << ", row " << row;
        ASSERT_NEAR(q.y, p.y + (moves ? LosWord(row + 0.5, 10.5) / 3600 : 0), 1e-12) << length << ", row " << row;
      }
    }
  }
}

TEST_F(Nadcon, hostileHeadersMoveNothing) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const auto integer = [](std::int32_t n) { return ByteWriter().Int(n).Bytes(); };
  const auto single = [](double x) { return ByteWriter().Float(x).Bytes(); };
  struct Row {
    std::size_t at;
    std::string bytes;
  };
  const Row rows[] = {
      {64, integer(0)},          {64, integer(-1)},   {64, integer(std::numeric_limits<std::int32_t>::min())},
      {64, integer(0x7FFFFFFF)},  // the second row lies far behind the end
      {68, integer(0)},          {68, integer(-30)},  {76, single(nan)},
      {80, single(0)},           {80, single(nan)},   {80, single(-0.25)},
      {80, single(1e-38)},       {84, single(1e38)},  {84, single(nan)},
      {88, single(0)},           {88, single(-0.25)},
  };
  for (const Row& row : rows) {
    std::string las = m_goodLas;
    las.replace(row.at, row.bytes.size(), row.bytes);
    Use(las, m_goodLos);
    const DATUMPOINT q = Convert({-78, 22});
    EXPECT_TRUE(q.x == -78 && q.y == 22) << "byte " << row.at << ": " << q.x << ", " << q.y;
  }
  for (const std::size_t at : {64U, 68U}) {  // no columns or no rows: not even where indexes are truncated to 0
    std::string las = m_goodLas;
    las.replace(at, 4, integer(0));
    Use(las, m_goodLos);
    const DATUMPOINT q = Convert({-80.3125, 19.6875});
    EXPECT_TRUE(q.x == -80.3125 && q.y == 19.6875) << "byte " << at << ": " << q.x << ", " << q.y;
  }
  std::mt19937 random(5);
  for (int i = 0; i < 300; ++i) {
    Use(Damaged(m_goodLas, random), Damaged(m_goodLos, random));
    DATUMPOINT points[] = {{-80.2, 19.9}, {-78, 22}, {-75, 25}, {DBL_MAX, DBL_MAX}, {1e300, -1e300}};
    ASSERT_TRUE(Convert(points, 5));
    ASSERT_EQ(points[3].x, DBL_MAX);
  }
}

// The one test that uses the names of the published pairs: the driver gives each datum its own, and their failure is
// the conversion's.
TEST(NadconDriver, eachDatumHasItsPair) {
  struct Files {
    std::vector<std::filesystem::path> paths;
    ~Files() {
      for (const auto& path : paths) std::filesystem::remove(path);
    }
  } files;
  const auto write = [&](const char* name, double seconds) {
    files.paths.emplace_back(platform::ExecutableDirectory() + name);
    WriteFile(files.paths.back(), NadconFile(kGrid, [seconds](int, int) { return seconds; }));
  };
  write("conus.LAS", 36);
  write("conus.LOS", 72);
  write("prvi.LAS", -36);
  write("prvi.LOS", -72);
  const auto convert = [](DatumType datum, ProjAccuracy accuracy = PA_STATED, DATUMPOINT p = {282, 22}) {  // 78 west
    DATUMXFORM xform{};
    xform.SrcDatum = datum;
    xform.DestDatum = DT_WORLD_GEODETIC_SYSTEM_1984;
    CDatumTransform transform(&xform);
    EXPECT_TRUE(transform.SetAccuracy(accuracy) && transform.Convert(&p, 1));
    return std::pair(p, transform.HadUnplottables());
  };
  // The second step's Molodensky formula with shifts of 0 leaves some 1e-11 degrees.
  const DATUMPOINT conus = convert(DT_NAD_1927_CONUS_NADCON).first;
  EXPECT_NEAR(conus.x, 282.01, 1e-9);
  EXPECT_NEAR(conus.y, 22.02, 1e-9);
  const DATUMPOINT prvi = convert(DT_NAD_1927_PUERTO_RICO_AND_VIRGIN_ISLANDS_NADCON).first;
  EXPECT_NEAR(prvi.x, 281.99, 1e-9);
  EXPECT_NEAR(prvi.y, 21.98, 1e-9);
  // Exact: latitudes by the one file, longitudes, which are published west-positive, by the other; no shift from the
  // dummy words in the spacing west of the first column, and what lies outside is passed on and reported.
  const auto [exact, reported] = convert(DT_NAD_1927_CONUS_NADCON, PA_EXACT);
  EXPECT_NEAR(exact.x, 281.98, 1e-9);
  EXPECT_NEAR(exact.y, 22.01, 1e-9);
  EXPECT_FALSE(reported);
  for (const DATUMPOINT& outside : {DATUMPOINT{-78, 40}, {-80.125, 22}, {-78, 19.875}, {-72.625, 22}}) {
    const auto [same, missed] = convert(DT_NAD_1927_CONUS_NADCON, PA_EXACT, outside);
    EXPECT_NEAR(same.x, outside.x, 1e-9);
    EXPECT_NEAR(same.y, outside.y, 1e-9);
    EXPECT_TRUE(missed) << outside.x << ", " << outside.y;
  }
  std::filesystem::remove(files.paths[1]);
  EXPECT_THROW(convert(DT_NAD_1927_CONUS_NADCON), shr::Exception);
}

}  // namespace
}  // namespace orvex::detail
