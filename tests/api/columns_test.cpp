// Coordinates in two columns: the same bits as points of the library's own record, whatever the number of points, where
// the columns stand, how the host's processor is set and how the handle computes.
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <vector>

#include <orvex/orvex_c.h>

#include "support/HostEnvironment.h"
#include "support/Projection.h"

namespace orvex::test {
namespace {

constexpr auto kNad27 = DT_NORTH_AMERICAN_DATUM_1927, kWgs84 = DT_WORLD_GEODETIC_SYSTEM_1984;

/// x and y of some points, each in memory that no double is aligned to.
class Columns {
 public:
  template <class Point>
  explicit Columns(const std::vector<Point>& points)
      : m_count(points.size()), m_bytes(2 * points.size() * sizeof(double) + 1) {
    for (std::size_t i = 0; i < m_count; ++i) {
      std::memcpy(m_bytes.data() + 1 + i * sizeof(double), &points[i].x, sizeof(double));
      std::memcpy(m_bytes.data() + 1 + (m_count + i) * sizeof(double), &points[i].y, sizeof(double));
    }
  }
  double* X() { return reinterpret_cast<double*>(m_bytes.data() + 1); }
  double* Y() { return reinterpret_cast<double*>(m_bytes.data() + 1 + m_count * sizeof(double)); }

  friend bool operator==(const Columns&, const Columns&) = default;  // bit for bit

 private:
  std::size_t m_count;
  std::vector<unsigned char> m_bytes;
};

/// Places in the form's box, among them what no projection plots and what needs a second look.
std::vector<PROJPOINT> Places(const ProjectionForm& form, int count) {
  std::vector<PROJPOINT> places;
  for (int i = 0; i < count; ++i) {
    places.push_back(form.Place(std::fmod(0.137 * i, 1), std::fmod(0.0711 * i, 1)));
  }
  const double odd[] = {std::numeric_limits<double>::quiet_NaN(), DBL_MAX, 95, -0.0, 725, 1e300};
  for (std::size_t i = 0; i < std::size(odd); ++i) {
    if (11 * i < places.size()) places[11 * i].x = odd[i];
    if (13 * i + 5 < places.size()) places[13 * i + 5].y = odd[i];
  }
  return places;
}

TEST(Columns, ProjectLikePoints) {
  for (const ProjectionForm& form : AllProjections()) {
    for (const ProjAccuracy accuracy : {PA_STATED, PA_EXACT}) {
      PROJDATA record = form.MakeRecord();
      CProjector projector(&record);
      ASSERT_TRUE(projector.SetAccuracy(accuracy));
      for (const int count : {1, 2, 7, 8, 16, 33, 100}) {
        std::vector<PROJPOINT> points = Places(form, count);
        Columns given(points), image(std::vector<PROJPOINT>(points.size()));
        const Columns asGiven = given;
        EXPECT_TRUE(projector.Forward(points.data(), count));
        const int result = projector.Result();
        EXPECT_TRUE(projector.ForwardColumns(given.X(), given.Y(), image.X(), image.Y(), count));
        EXPECT_EQ(projector.Result(), result);
        EXPECT_TRUE(image == Columns(points)) << form.type << " " << form.form << ": " << count;
        EXPECT_TRUE(given == asGiven);
        EXPECT_TRUE(projector.Inverse(points.data(), count));
        EXPECT_TRUE(projector.InverseColumns(image.X(), image.Y(), image.X(), image.Y(), count));
        EXPECT_TRUE(image == Columns(points)) << form.type << " " << form.form << " back: " << count;
      }
    }
  }
}

// Both results may lie where the other coordinate was given.
TEST(Columns, MayChangePlaces) {
  PROJDATA record = Record(PT_MERCATOR, "Lon0=10");
  CProjector projector(&record);
  std::vector<PROJPOINT> points;
  for (int i = 0; i < 21; ++i) points.push_back({10.0 + i, 50.0 - i});
  points[9].y = 90;  // cannot be plotted
  Columns columns(points);
  EXPECT_TRUE(projector.ForwardColumns(columns.X(), columns.Y(), columns.Y(), columns.X(), 21));
  EXPECT_TRUE(projector.Forward(points.data(), 21));
  for (PROJPOINT& p : points) p = {p.y, p.x};
  EXPECT_TRUE(columns == Columns(points));
}

TEST(Columns, ShiftLikePoints) {
  DATUMXFORM xform{};
  xform.SrcDatum = kNad27;
  for (const DatumType destination : {kWgs84, kNad27}) {
    xform.DestDatum = destination;
    CDatumTransform transform(&xform);
    for (const ProjAccuracy accuracy : {PA_STATED, PA_EXACT}) {
      ASSERT_TRUE(transform.SetAccuracy(accuracy));
      std::vector<DATUMPOINT> points;
      for (int i = 0; i < 37; ++i) points.push_back({-120.0 + i, 30.0 + i / 2.0});
      points[3].y = 91;
      points[20].x = DBL_MAX;
      Columns given(points), shifted(std::vector<DATUMPOINT>(points.size()));
      EXPECT_TRUE(transform.Convert(points.data(), 37));
      const bool unplottables = transform.HadUnplottables();
      EXPECT_TRUE(transform.ConvertColumns(given.X(), given.Y(), shifted.X(), shifted.Y(), 37));
      EXPECT_TRUE(shifted == Columns(points));
      EXPECT_EQ(transform.HadUnplottables(), unplottables);
    }
  }
}

#if defined(__x86_64__)
// Each stage is a pass of its own there, and looks for faults point by point.
TEST(Columns, HostsWithTraps) {
  HostEnvironment host = HostEnvironment::Now();
  const HostEnvironment usual = host;
  host.mxcsr &= ~(0x0200u | 0x0400u | 0x0080u);  // zero divisors, overflow, invalid operations
  for (const ProjectionForm& form : AllProjections()) {
    PROJDATA record = form.MakeRecord();
    CProjector projector(&record);
    std::vector<PROJPOINT> points = Places(form, 40);
    Columns given(points), image(std::vector<PROJPOINT>(points.size()));
    host.Set();
    const bool done = projector.Forward(points.data(), 40);
    const bool doneInColumns = projector.ForwardColumns(given.X(), given.Y(), image.X(), image.Y(), 40);
    const bool back = projector.Inverse(points.data(), 40);
    const bool backInColumns = projector.InverseColumns(image.X(), image.Y(), image.X(), image.Y(), 40);
    usual.Set();
    EXPECT_EQ(done, doneInColumns);
    EXPECT_EQ(back, backInColumns);
    EXPECT_TRUE(image == Columns(points)) << form.type << " " << form.form;
  }
}
#endif

TEST(Columns, RefuseWhatIsMissing) {
  PROJDATA record = Record(PT_MERCATOR, "Lon0=10");
  CProjector projector(&record);
  double x[] = {11}, y[] = {50};
  EXPECT_THROW(projector.ForwardColumns(nullptr, y, x, y, 1), shr::Exception);
  EXPECT_THROW(projector.InverseColumns(x, nullptr, x, y, 1), shr::Exception);
  EXPECT_THROW(projector.ForwardColumns(x, y, x, nullptr, 1), shr::Exception);
  EXPECT_THROW(projector.ForwardColumns(x, y, x, y, 0), shr::Exception);
  EXPECT_FALSE(ProjForwardColumns(nullptr, x, y, x, y, 1));
  EXPECT_THROW(DatConvertColumns(&record, x, y, nullptr, y, 1), shr::Exception);
  EXPECT_FALSE(DatConvertColumns(nullptr, x, y, x, y, 1));
  EXPECT_EQ(x[0], 11);
  EXPECT_EQ(y[0], 50);
}

TEST(Columns, FromOtherLanguages) {
  PROJDATA record = Record(PT_MERCATOR, "Lon0=10");
  void* projection = ProjCreateProjection(&record);
  const double lon[] = {11, 11, 12}, lat[] = {50, 91, 52};
  double x[3], y[3];
  char message[ORVEX_MESSAGE_SIZE];
  ASSERT_EQ(orvex_set_accuracy(projection, PA_EXACT), ORVEX_OK);
  EXPECT_EQ(orvex_forward_columns(projection, lon, lat, x, y, 3, message), ORVEX_UNPLOTTABLE);
  EXPECT_EQ(x[1], DBL_MAX);
  EXPECT_EQ(orvex_inverse_columns(projection, x + 2, y + 2, x, y, 1, message), ORVEX_OK);
  EXPECT_NEAR(x[0], 12, 1e-13);
  EXPECT_NEAR(y[0], 52, 1e-13);
  EXPECT_EQ(orvex_forward_columns(projection, lon, lat, x, nullptr, 3, message), ORVEX_BAD_ARGUMENT);
  EXPECT_EQ(orvex_inverse_columns(nullptr, x, y, x, y, 3, nullptr), ORVEX_BAD_ARGUMENT);
  orvex_delete(projection);

  void* datum = nullptr;
  ASSERT_EQ(orvex_datum_create(kNad27, kWgs84, &datum, message), ORVEX_OK);
  DATUMPOINT point{lon[0], lat[0]};
  EXPECT_EQ(orvex_datum_convert_columns(datum, lon, lat, x, y, 1, message), ORVEX_OK);
  EXPECT_TRUE(DatConvertDatum(datum, &point, 1));
  EXPECT_EQ(x[0], double(point.x));
  EXPECT_EQ(y[0], double(point.y));
  EXPECT_EQ(orvex_datum_convert_columns(datum, lon, lat, x, y, 0, message), ORVEX_BAD_ARGUMENT);
  orvex_datum_delete(datum);
}

}  // namespace
}  // namespace orvex::test
