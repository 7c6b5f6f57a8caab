// Georeferencing: agreement with 50-digit arithmetic, properties of the transforms, the record's bookkeeping, refusals.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <random>

#include <orvex/georef.h>
#include <shr/exception.h>
#include <shr/image_registration.h>

#include "support/Projection.h"

namespace orvex::test {
namespace {

using Handle = std::unique_ptr<void, decltype(&RefDeleteSystem)>;
using Map = std::function<GEOREFPOINT(double, double)>;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TransformMethod Method(int m) {
  return static_cast<TransformMethod>(m);
}

// A record over the given points, which it does not own.
struct Controls {
  std::vector<GEOREFPOINT> src, dst;

  GEOREF Record(TransformMethod method) {
    GEOREF g{};
    g.Method = method;
    g.pSrc = src.data();
    g.pDst = dst.data();
    g.nControls = static_cast<int>(src.size());
    return g;
  }
  Handle Create(int method) {
    const GEOREF g = Record(Method(method));
    return Handle(RefCreateSystem(&g), RefDeleteSystem);
  }
  static Controls Random(unsigned seed, int n, double x0, double y0, double size, const Map& map) {
    std::mt19937_64 engine(seed);
    std::uniform_real_distribution<double> part(0, size);
    Controls c;
    for (int i = 0; i < n; ++i) {
      const double x = x0 + part(engine), y = y0 + part(engine);
      c.src.push_back({x, y});
      c.dst.push_back(map(x, y));
    }
    return c;
  }
  static Controls FromCsv(const std::string& file) {
    const CsvFile csv(file);
    Controls c;
    for (std::size_t i = 0; i < csv.Rows(); ++i) {
      c.src.push_back({csv.Number(i, "x"), csv.Number(i, "y")});
      c.dst.push_back({csv.Number(i, "easting"), csv.Number(i, "northing")});
    }
    return c;
  }
};

GEOREFPOINT Image(const Handle& h, double x, double y) {
  GEOREFPOINT p{x, y};
  EXPECT_TRUE(RefForward(h.get(), &p, 1));
  return p;
}

double Distance(const GEOREFPOINT& a, const GEOREFPOINT& b) {
  return std::hypot(a.x - b.x, a.y - b.y);
}

// A bumpy map with an offset, for the warps.
GEOREFPOINT Bumpy(double x, double y) {
  return {4e5 + 2 * x + 0.1 * y + 40 * std::sin(x / 300), 5e6 - 1.9 * y + 0.2 * x + 30 * std::cos((x + y) / 400)};
}

// Tolerance: 1e-11 of the size of the destination set, or of the distance from it; coordinates of 6e6 are rounded to
// 1e-12 of that.
TEST(Georef, AgreesWithHighPrecisionLeastSquaresAndInterpolation) {
  const CsvFile csv("georef.csv");
  std::map<std::string, Controls> sets{{"map", Controls::FromCsv("../../examples/georef/controls.csv")},
                                       {"far", Controls::FromCsv("georef_controls.csv")}};
  for (std::size_t row = 0; row < csv.Rows(); ++row) {
    Controls& set = sets.at(csv.Text(row, "set"));
    const Handle h = set.Create(static_cast<int>(csv.Number(row, "method")));
    ASSERT_NE(h, nullptr) << row;
    const GEOREFPOINT p = Image(h, csv.Number(row, "x"), csv.Number(row, "y"));
    const GEOREFPOINT expected{csv.Number(row, "easting"), csv.Number(row, "northing")};
    const double size = Distance(set.dst[0], set.dst.back()) + Distance(set.dst[0], expected);
    EXPECT_LE(Distance(p, expected), 1e-11 * size) << csv.Text(row, "set") << " method " << csv.Text(row, "method");
  }
}

// Offsets of 5e6 leave 9 digits of the destination to rounding of 1e-9; the maps are recovered in and outside the
// controls.
TEST(Georef, RecoversMapsOfItsOwnFamily) {
  constexpr double kX = 5e6, kY = -5e6;
  const auto family = [](double bilinear, double second, double third) -> Map {
    return [=](double x, double y) {
      const double u = (x - kX) / 1000, v = (y - kY) / 1000;
      return GEOREFPOINT{
          kX + 900 * u - 410 * v + bilinear * u * v + second * (u * u - 2 * v * v) + third * u * v * v,
          kY + 410 * u + 900 * v - bilinear * u * v + second * (v * v + u * v) + third * (u * u * u - v * v * v)};
    };
  };
  const Map maps[] = {family(0, 0, 0), family(0, 0, 0), family(30, 0, 0), family(30, 20, 0), family(30, 20, 11)};
  for (int method = 0; method < 5; ++method) {
    constexpr int kLeast[] = {2, 3, 4, 6, 10};
    for (const int n : {kLeast[method], 25}) {
      const Handle h = Controls::Random(3, n, kX, kY, 1000, maps[method]).Create(method);
      ASSERT_NE(h, nullptr) << method;
      for (const GEOREFPOINT p : {GEOREFPOINT{kX + 432.5, kY + 91.25}, {kX + 1300, kY - 250}}) {
        EXPECT_LE(Distance(Image(h, p.x, p.y), maps[method](p.x, p.y)), 1e-9 * 5e6) << method << " with " << n;
      }
    }
    EXPECT_EQ(Controls::Random(3, kLeast[method] - 1, kX, kY, 1000, maps[method]).Create(method), nullptr) << method;
  }
}

TEST(Georef, WarpsPassThroughEveryControlAndStaySmoothFarOutside) {
  Controls bumpy = Controls::Random(11, 200, 100, 700, 3000, Bumpy);
  const Map affine = [](double x, double y) { return GEOREFPOINT{1e5 + 2 * x - 3 * y, 5e6 + 0.5 * x + y}; };
  Controls straight = Controls::Random(12, 40, 100, 700, 3000, affine);
  for (int method = RM_THINPLATE; method <= RM_INVERSEDISTANCE; ++method) {
    SCOPED_TRACE(method);
    for (int n = 3; n < 12; ++n) EXPECT_NE(Controls::Random(1, n, 0, 0, 3000, Bumpy).Create(method), nullptr) << n;
    const Handle h = bumpy.Create(method);
    double total, each[200];
    ASSERT_TRUE(RefComputeError(h.get(), &total, each));
    EXPECT_LE(*std::max_element(each, each + 200), 1e-7);
    // Just beside a control the image moves by as little: no jump at it.
    const GEOREFPOINT s = bumpy.src[7];
    EXPECT_LE(Distance(Image(h, s.x + 1e-6, s.y), bumpy.dst[7]), 1e-4);
    for (const double r : {3e4, 1e7, 1e12}) {  // the slope changes slowly: far outside a warp nears an affine map
      const auto at = [&](double k) { return Image(h, 1.5 * r * k, r * k); };
      const GEOREFPOINT a = at(1), b = at(1.001), c = at(1.002);
      EXPECT_LE(std::hypot(a.x - 2 * b.x + c.x, a.y - 2 * b.y + c.y), 2e-6 * r + 1e-7) << r;
    }
    EXPECT_LT(std::fabs(Image(h, 1e200, -3e200).x), 1e202);
    const Handle plane = straight.Create(method);
    // The destinations are rounded to 1e-9; two boxes away that has grown with the distance in spacings, twice for r^3.
    for (const GEOREFPOINT p : {straight.src[3], {1234.5, 2345.25}, {-6e3, 7e3}}) {
      EXPECT_LE(Distance(Image(plane, p.x, p.y), affine(p.x, p.y)), 5e-8) << p.x;
    }
  }
}

TEST(Georef, ReportsResidualsInDestinationUnits) {
  Controls c{{{0, 0}, {10, 5}, {20, 0}}, {{3, 4}, {10, 5}, {20, -12}}};
  GEOREF g = c.Record(RM_AFFINECOEFFICIENTS);
  g.Coeff[1] = g.Coeff[5] = 1;  // the identity
  const Handle h(RefCreateSystem(&g), RefDeleteSystem);
  double total = 0, each[3] = {};
  EXPECT_TRUE(RefComputeError(h.get(), &total, each));
  EXPECT_EQ(each[0], 5);
  EXPECT_EQ(each[1], 0);
  EXPECT_EQ(each[2], 12);
  EXPECT_NEAR(total, std::sqrt(169.0 / 3), 1e-14);
  EXPECT_TRUE(RefComputeError(h.get(), nullptr, nullptr));
  EXPECT_FALSE(RefComputeError(nullptr, &total, each));
  g.nControls = 0;
  EXPECT_FALSE(RefComputeError(Handle(RefCreateSystem(&g), RefDeleteSystem).get(), &total, each));
}

TEST(Georef, CoefficientsAndControlsFollowEachOther) {
  // X = 500 + 2 x + 0.5 y, Y = 900 + 0.25 x - 3 y, by corners of an 8 x 4 raster.
  GEOREF g{};
  g.Method = RM_AFFINECOEFFICIENTS;
  const double coefficients[] = {500, 2, 0.5, 900, 0.25, -3};
  for (int i = 0; i < 6; ++i) g.Coeff[i] = coefficients[i];
  EXPECT_FALSE(RefCoeffToControls(&g, 0, 4) || RefControlsToCoeff(&g));
  EXPECT_EQ(g.nControls, 0);
  ASSERT_TRUE(RefCoeffToControls(&g, 8, 4));
  ASSERT_EQ(g.nControls, 4);
  const GEOREFPOINT src[] = {{0, 0}, {8, 0}, {8, 4}, {0, 4}}, dst[] = {{500, 900}, {516, 902}, {518, 890}, {502, 888}};
  EXPECT_EQ(std::memcmp(g.pSrc, src, sizeof src), 0);
  EXPECT_EQ(std::memcmp(g.pDst, dst, sizeof dst), 0);

  g.Method = RM_POLYNOMIAL2;  // the fit is affine, whatever the record's method
  for (int i = 0; i < 6; ++i) g.Coeff[i] = 0;
  GEOREF few = g;
  few.nControls = 2;
  EXPECT_FALSE(RefControlsToCoeff(&few));
  EXPECT_EQ(few.Method, RM_POLYNOMIAL2);
  // A slope of 1e310 is none that can be stored.
  Controls steep{{{0, 0}, {1e-300, 0}, {0, 1e-300}}, {{0, 0}, {1e10, 0}, {0, 1e10}}};
  GEOREF flat = steep.Record(RM_AFFINEPOLYNOMIAL);
  EXPECT_FALSE(RefControlsToCoeff(&flat));
  EXPECT_TRUE(flat.Method == RM_AFFINEPOLYNOMIAL && flat.Coeff[1] == 0);
  ASSERT_TRUE(RefControlsToCoeff(&g));
  EXPECT_EQ(g.Method, RM_AFFINECOEFFICIENTS);
  for (int i = 0; i < 6; ++i) EXPECT_NEAR(g.Coeff[i], coefficients[i], 1e-12 * 900) << i;

  // Twice as wide and three times as high: the same ground, so steps of a half and a third. From a fitted record as
  // well.
  const double resized[] = {500, 1, 0.5 / 3, 900, 0.125, -1};
  for (const TransformMethod method : {RM_AFFINECOEFFICIENTS, RM_HELMERT}) {
    GEOREF h = g;
    RefAllocControls(&h, 4);
    std::memcpy(h.pSrc, src, sizeof src);
    std::memcpy(h.pDst, dst, sizeof dst);
    h.Method = method;
    GEOREF before = h;
    EXPECT_FALSE(RefResize(&h, 8, 0, 16, 12));
    EXPECT_EQ(std::memcmp(&h, &before, sizeof h), 0);
    ASSERT_TRUE(RefResize(&h, 8, 4, 16, 12));
    EXPECT_EQ(h.Method, RM_AFFINECOEFFICIENTS);
    ASSERT_EQ(h.nControls, 4);
    EXPECT_EQ(h.pSrc[2].x, 16);
    EXPECT_LE(Distance(h.pDst[2], dst[2]), 1e-12 * 900);
    for (int i = 0; i < 6; ++i) EXPECT_NEAR(h.Coeff[i], resized[i], 1e-12 * 900) << i;
    RefFreeControls(&h);
    EXPECT_TRUE(h.pSrc == nullptr && h.pDst == nullptr && h.nControls == 0);
  }
  RefFreeControls(&g);
}

TEST(Georef, HandleKeepsACopyOfTheRecord) {
  Controls c = Controls::Random(5, 6, 0, 0, 100, Bumpy);
  const Handle h = c.Create(RM_THINPLATE);
  const GEOREFPOINT first = c.src[0], image = Image(h, 50, 50);
  c.src.assign(6, {0, 0});
  GEOREF info{};
  ASSERT_TRUE(RefGetHandleInfo(h.get(), &info));
  EXPECT_TRUE(info.Method == RM_THINPLATE && info.nControls == 6 && info.pSrc != c.src.data());
  EXPECT_EQ(info.pSrc[0].x, first.x);
  EXPECT_EQ(Image(h, 50, 50).x, image.x);
  EXPECT_STREQ(RefMethodName(RM_MARCOV), "Marcov Spline");
  EXPECT_TRUE(RefMethodName(RM_NONE) == nullptr && RefMethodName(Method(-1)) == nullptr);
}

TEST(Georef, WrapperSharesByAssignmentAndFitsAnewByCopy) {
  Controls c = Controls::Random(6, 12, 0, 0, 1000, Bumpy);
  const GEOREF g = c.Record(RM_THINPLATE);
  const auto sourceArray = [](const CGeorefTransform& t) {
    GEOREF info{};
    return t.GetInfo(&info) ? info.pSrc : nullptr;
  };
  CGeorefTransform shared;
  EXPECT_FALSE(shared.IsCreated() || CGeorefTransform(shared).IsCreated());
  {
    CGeorefTransform owner(&g);
    const CGeorefTransform copy(owner);
    EXPECT_TRUE(copy.IsCreated());
    EXPECT_NE(sourceArray(copy), sourceArray(owner));
    shared = owner;
    EXPECT_EQ(sourceArray(shared), sourceArray(owner));
    owner.Delete();
    EXPECT_FALSE(owner.IsCreated());
  }
  double total = 1;
  EXPECT_TRUE(shared.ComputeError(&total, nullptr));
  EXPECT_LE(total, 1e-8);
  // A record that came from the object itself, whose arrays go away with the old handle.
  GEOREF own{};
  ASSERT_TRUE(shared.GetInfo(&own));
  own.Method = RM_POLYNOMIAL2;
  EXPECT_TRUE(shared.Create(&own));
  GEOREFPOINT p{500, 500};
  EXPECT_TRUE(shared.Forward(&p, 1));
  EXPECT_LE(Distance(p, Bumpy(500, 500)), 50);
  const GEOREF none = c.Record(RM_NONE);
  EXPECT_FALSE(shared.Create(&none));
  EXPECT_FALSE(shared.Forward(&p, 1));
}

TEST(Georef, NullsAndImpossibleArguments) {
  GEOREF g{};
  GEOREFPOINT p{1, 2};
  g.nControls = 5;
  EXPECT_FALSE(RefAllocControls(&g, 0));
  EXPECT_TRUE(g.pSrc == nullptr && g.pDst == nullptr && g.nControls == 0);
  EXPECT_FALSE(RefAllocControls(nullptr, 3));
  RefFreeControls(nullptr);
  RefDeleteSystem(nullptr);
  EXPECT_EQ(RefCreateSystem(nullptr), nullptr);
  EXPECT_FALSE(RefForward(nullptr, nullptr, 0) || RefGetHandleInfo(nullptr, &g) || RefCoeffToControls(nullptr, 1, 1) ||
               RefControlsToCoeff(nullptr) || RefResize(nullptr, 1, 1, 1, 1));
  g.Method = RM_AFFINECOEFFICIENTS;
  g.Coeff[0] = 7;
  const Handle h(RefCreateSystem(&g), RefDeleteSystem);  // needs no controls
  const auto line = [&](GEOREFPOINT* pts, int n) {
    try {
      RefForward(h.get(), pts, n);
    } catch (const shr::Exception& e) {
      EXPECT_EQ(e.MessageId(), 20200);
      EXPECT_EQ(e.Source(), "OrvexGeoRef");
      return e.Line();
    }
    return 0;
  };
  EXPECT_EQ(line(nullptr, 1), 655);
  EXPECT_EQ(line(&p, 0), 657);
  GEOREFPOINT pts[] = {
      {1, 2}, {DBL_MAX, DBL_MAX}, {kNaN, 0}};  // markers are passed over, what cannot be computed is marked
  EXPECT_TRUE(RefForward(h.get(), pts, 3));
  EXPECT_TRUE(pts[0].x == 7 && pts[1].x == DBL_MAX && pts[2].x == DBL_MAX && pts[2].y == DBL_MAX);
}

TEST(Georef, RefusesControlsThatDetermineNothing) {
  const auto changed = [](std::size_t index, GEOREFPOINT src, GEOREFPOINT dst) {
    Controls c = Controls::Random(8, 30, 5e6, 5e6, 1000, Bumpy);
    c.src[index] = src;
    c.dst[index] = dst;
    return c;
  };
  const auto mapped = [](double a, double b) {  // every source point moved onto a line, which only Helmert can use
    Controls c = Controls::Random(9, 30, 5e6, 5e6, 1000, Bumpy);
    for (GEOREFPOINT& p : c.src) p.y = a + b * p.x;
    return c;
  };
  const Controls sound = changed(0, {5e6 + 1, 5e6 + 2}, {0, 0});
  struct {
    const char* what;
    Controls controls;
    int firstRefusal, lastRefusal;  // the methods between refuse, the others do not
  } cases[] = {
      {"sound", sound, 12, 12},
      {"two coincident", changed(4, sound.src[9], {1, 1}), RM_THINPLATE, RM_INVERSEDISTANCE},
      {"all coincident", {std::vector<GEOREFPOINT>(30, {5e6, 5e6}), sound.dst}, RM_HELMERT, RM_INVERSEDISTANCE},
      {"along x", mapped(5e6 / 3, 0), RM_AFFINEPOLYNOMIAL, RM_INVERSEDISTANCE},
      {"aslant", mapped(1e6 / 7, 1.0 / 3), RM_AFFINEPOLYNOMIAL, RM_INVERSEDISTANCE},
      {"not a number", changed(3, {kNaN, 5e6}, {1, 1}), RM_HELMERT, RM_INVERSEDISTANCE},
      {"infinite destination", changed(3, {5e6, 5e6}, {1, INFINITY}), RM_HELMERT, RM_INVERSEDISTANCE},
      {"unplottable destination", changed(3, {5e6, 5e6}, {DBL_MAX, DBL_MAX}), RM_HELMERT, RM_INVERSEDISTANCE},
      {"one point", {{{1, 2}}, {{3, 4}}}, RM_HELMERT, RM_INVERSEDISTANCE}};
  for (auto& test : cases) {
    for (int method = 0; method < RM_NONE; ++method) {
      const bool fits = method != RM_AFFINECOEFFICIENTS;  // which takes its coefficients and no heed of the controls
      const bool refused = fits && method >= test.firstRefusal && method <= test.lastRefusal;
      EXPECT_EQ(test.controls.Create(method) == nullptr, refused) << test.what << ", method " << method;
    }
  }
  Controls c = sound;
  GEOREF g = c.Record(RM_HELMERT);
  g.pDst = nullptr;
  EXPECT_EQ(RefCreateSystem(&g), nullptr);
  EXPECT_EQ(c.Create(RM_NONE), nullptr);
}

// Whatever the controls, a system is refused or its images of the controls are finite.
TEST(Georef, RandomControlsAreRefusedOrGiveFiniteImages) {
  std::mt19937_64 engine(20240601);
  const double special[] = {0,     1,           -1,      1e-320, 1e-300,   1e-8, 1e8,       1e154,
                            1e300, DBL_MAX / 2, 1.7e308, kNaN,   INFINITY, 5e6,  5e6 + 1e-9};
  int made = 0;
  for (int round = 0; round < 4000; ++round) {
    const double scale = std::pow(10.0, std::uniform_int_distribution<int>(-30, 30)(engine));
    const double offset = round % 3 == 0 ? 5e6 : 0;
    const int n = std::uniform_int_distribution<int>(0, 14)(engine);
    Controls c = Controls::Random(static_cast<unsigned>(round), n, offset, -offset, scale, [](double x, double y) {
      return GEOREFPOINT{x * y, x - y};
    });
    for (int k = round % 4; k > 0 && n > 0; --k) {  // up to three of them made odd, or equal to another
      const auto pick = [&] { return static_cast<std::size_t>(engine()) % c.src.size(); };
      const std::size_t i = pick(), j = pick();
      const double odd = special[engine() % std::size(special)];
      (k == 1 ? c.dst : c.src)[i] = k == 2 ? c.src[j] : GEOREFPOINT{odd, c.src[i].y};
    }
    const Handle h = c.Create(round % 12);
    if (h == nullptr || round % 12 == RM_AFFINECOEFFICIENTS) continue;
    ++made;
    for (const GEOREFPOINT& s : c.src) {
      const GEOREFPOINT p = Image(h, s.x, s.y);
      EXPECT_TRUE(std::isfinite(p.x) && std::isfinite(p.y) && p.x != DBL_MAX) << "round " << round;
    }
  }
  EXPECT_GT(made, 800);
}

TEST(ImageRegistration, AnswersNoneForUnequalSetsAndThenChangesNothing) {
  shr::CImageRegistration registration;
  shr::RPoints src, dst;
  for (const shr::RPoint p : {shr::RPoint{0, 0}, {1, 0}, {0, 1}}) {
    src.Append(p);
    dst.Append({p.x + 5, 2 * p.y});
  }
  EXPECT_EQ(registration.Calibrate(src, dst, shr::WM_MARCOV), shr::WM_MARCOV);
  EXPECT_NEAR(registration.Transform({0.5, 0.25}).x, 5.5, 1e-14);
  dst.Append({1, 1});
  EXPECT_EQ(registration.Calibrate(src, dst, shr::WM_MARCOV), shr::WM_NONE);
  EXPECT_EQ(registration.Transform({0.5, 0.25}).x, 0.5);
  EXPECT_EQ(registration.Calibrate(src, src, shr::WM_NONE), shr::WM_NONE);
}

}  // namespace
}  // namespace orvex::test
