// RobinsonTable - lengths and distances of Robinson's parallels, every 5 degrees from the equator to the pole, as
// published and as the cubics that PrjRobin interpolates with.
#pragma once

#include "points/Level.h"

namespace orvex::detail::ORVEX_LEVEL {

inline constexpr int kRobinsonRows = 19;
inline constexpr int kRobinsonLastInterval = 17;

/// Relative length of a parallel and its relative distance from the equator.
struct RobinsonRow {
  double length, distance;
};

/// A cubic over one interval in degrees from its start.
template <class Number>
struct RobinsonCubic {
  Number v0, c1, c2, c3;

  constexpr double operator()(double d) const { return v0 + ((c3 * d + c2) * d + c1) * d; }
};

template <class Number>
struct RobinsonCubics {
  RobinsonCubic<Number> length, distance;
};

// clang-format off

// Robinson, "A new map projection: its development and characteristics", 1974.
inline constexpr RobinsonRow kRobinsonRowsPublished[kRobinsonRows] = {
    {1.0000, 0.0000}, {0.9986, 0.0620}, {0.9954, 0.1240}, {0.9900, 0.1860}, {0.9822, 0.2480}, {0.9730, 0.3100},  //  0 - 25
    {0.9600, 0.3720}, {0.9427, 0.4340}, {0.9216, 0.4958}, {0.8962, 0.5571}, {0.8679, 0.6176}, {0.8350, 0.6769},  // 30 - 55
    {0.7986, 0.7346}, {0.7597, 0.7903}, {0.7186, 0.8435}, {0.6732, 0.8936}, {0.6213, 0.9394}, {0.5722, 0.9761},  // 60 - 85
    {0.5322, 1.0000},                                                                                            // 90
};

// The distance at 40 degrees is 0.4968 here, where 0.4958 was published, and the cubics run through it: kept on purpose.
// In single precision, like everything computed with it backwards.
inline constexpr RobinsonCubics<float> kRobinsonCubics[kRobinsonRows] = {
    {{1.0f,        -5.6723901e-12f, -7.1551098e-05f,  3.11028e-06f},    {0.0f,          0.0124f,        3.7252901e-10f,  1.15484e-09f}},     //  0
    {{0.99860001f, -0.00048224101f, -2.4896999e-05f, -1.33094e-06f},    {0.061999999f,  0.0124001f,     1.76951e-08f,   -5.9232099e-09f}},   //  5
    {{0.99540001f, -0.00083103101f, -4.4861001e-05f, -9.8658802e-07f},  {0.124f,        0.0123998f,    -7.0966799e-08f,  2.25753e-08f}},     // 10
    {{0.99000001f, -0.00135363f,    -5.96598e-05f,    3.67749e-06f},    {0.186f,        0.0124008f,     2.66917e-07f,   -8.4452303e-08f}},   // 15
    {{0.98220003f, -0.00167442f,    -4.4975e-06f,    -5.7239399e-06f},  {0.248f,        0.0123971f,    -9.9968202e-07f,  3.15569e-07f}},     // 20
    {{0.97299999f, -0.0021486899f,  -9.0356501e-05f,  1.8876699e-08f},  {0.31f,         0.0124108f,     3.7334901e-06f, -1.1779e-06f}},      // 25
    {{0.95999998f, -0.00305084f,    -9.0073197e-05f,  1.64869e-06f},    {0.37200001f,   0.0123598f,    -1.3935e-05f,     4.3958798e-06f}},   // 30
    {{0.94270003f, -0.00382792f,    -6.53428e-05f,   -2.6149301e-06f},  {0.43399999f,   0.0125501f,     5.2003401e-05f, -1.00051e-05f}},     // 35
    {{0.92159998f, -0.0046774698f,  -0.000104566f,    4.8122001e-06f},  {0.49680001f,   0.0123198f,    -9.8073499e-05f,  9.2239698e-06f}},   // 40
    {{0.8962f,     -0.0053622201f,  -3.2383399e-05f, -5.43445e-06f},    {0.5571f,       0.0120308f,     4.02857e-05f,   -5.2901e-06f}},      // 45
    {{0.86790001f, -0.0060936399f,  -0.0001139f,      3.3252099e-06f},  {0.61760002f,   0.0120369f,    -3.9066199e-05f,  7.3611699e-07f}},   // 50
    {{0.83499998f, -0.0069832499f,  -6.40219e-05f,    9.3458198e-07f},  {0.67690003f,   0.0117015f,    -2.80246e-05f,   -8.5428297e-07f}},   // 55
    {{0.79860002f, -0.0075533702f,  -5.00038e-05f,    9.35532e-07f},    {0.73460001f,   0.0113572f,    -4.0838899e-05f, -5.1852402e-07f}},   // 60
    {{0.7597f,     -0.0079832496f,  -3.59716e-05f,   -2.27604e-06f},    {0.79030001f,   0.0109099f,    -4.8616901e-05f, -1.0718001e-06f}},   // 65
    {{0.71859998f, -0.0085136602f,  -7.0112001e-05f, -8.63072e-06f},    {0.84350002f,   0.0103433f,    -6.4693399e-05f,  5.36384e-09f}},     // 70
    {{0.67320001f, -0.0098620905f,  -0.00019957199f,  1.91978e-05f},    {0.89359999f,   0.00969679f,   -6.4612897e-05f, -8.5489401e-06f}},   // 75
    {{0.62129998f, -0.010418f,       8.8394801e-05f,  6.2403101e-06f},  {0.93940002f,   0.0084094899f, -0.000192847f,   -4.2102301e-06f}},   // 80
    {{0.5722f,     -0.0090660099f,   0.000181999f,    6.2403301e-06f},  {0.97610003f,   0.0061652502f, -0.00025600099f, -4.2102101e-06f}},   // 85
    {{0.53219998f,  0.0f,            0.0f,            0.0f},            {1.0f,          0.0f,           0.0f,            0.0f}},             // 90
};
// clang-format on

struct RobinsonSplines {
  RobinsonCubics<double> rows[kRobinsonRows];
};

/// The cubics of the published values in double precision: splines with continuous curvature over the whole meridian,
/// on which the lengths are even and the distances odd, and the last two intervals next to a pole have one cubic.
constexpr RobinsonSplines MakeRobinsonSplines() {
  constexpr double kStep = 5;
  constexpr int kLast = kRobinsonRows - 1;
  RobinsonSplines splines{};
  constexpr bool kParities[] = {true, false};
  for (const bool even : kParities) {
    double v[kRobinsonRows] = {}, M[kRobinsonRows] = {};  // values and second derivatives
    for (int i = 0; i < kRobinsonRows; ++i) {
      v[i] = even ? kRobinsonRowsPublished[i].length : kRobinsonRowsPublished[i].distance;
    }
    // M(i-1) + 4 M(i) + M(i+1) = bend(i), by elimination from the equator on, M(i) = p(i) - r(i) M(i+1).
    double p[kRobinsonRows] = {}, r[kRobinsonRows] = {};
    p[0] = even ? 6 / (kStep * kStep) * 2 * (v[1] - v[0]) / 4 : 0;
    r[0] = even ? 0.5 : 0;
    for (int i = 1; i < kLast; ++i) {
      const double bend = 6 / (kStep * kStep) * (v[i - 1] - 2 * v[i] + v[i + 1]);
      p[i] = (bend - p[i - 1]) / (4 - r[i - 1]);
      r[i] = 1 / (4 - r[i - 1]);
      if (i == kLast - 1) M[i] = bend / 6;  // with M(i+1) = 2 M(i) - M(i-1)
    }
    for (int i = kLast - 2; i >= 0; --i) M[i] = p[i] - r[i] * M[i + 1];
    M[kLast] = 2 * M[kLast - 1] - M[kLast - 2];
    for (int i = 0; i < kRobinsonRows; ++i) {
      RobinsonCubic<double> cubic{v[i], 0, 0, 0};
      if (i < kLast) {
        cubic.c1 = (v[i + 1] - v[i]) / kStep - kStep * (2 * M[i] + M[i + 1]) / 6;
        cubic.c2 = M[i] / 2;
        cubic.c3 = (M[i + 1] - M[i]) / (6 * kStep);
      }
      (even ? splines.rows[i].length : splines.rows[i].distance) = cubic;
    }
  }
  return splines;
}

inline constexpr RobinsonSplines kRobinsonSplines = MakeRobinsonSplines();

/// The interval that holds a distance 0 <= distance <= 1, from the distances at its ends.
template <class DistanceOfRow>
[[gnu::always_inline]] constexpr int RobinsonInterval(double distance, DistanceOfRow distanceOfRow) {
  int i = static_cast<int>(distance * 18);
  if (i > kRobinsonLastInterval) i = kRobinsonLastInterval;
  while (distance < distanceOfRow(i)) --i;
  while (i < kRobinsonLastInterval && distanceOfRow(i + 1) <= distance) ++i;
  return i;
}

/// Lengths fall and distances rise from the equator to the pole.
constexpr bool RobinsonMonotonic() {
  for (int i = 1; i < kRobinsonRows; ++i) {
    const RobinsonRow &below = kRobinsonRowsPublished[i - 1], &above = kRobinsonRowsPublished[i];
    if (below.length <= above.length || below.distance >= above.distance) return false;
  }
  return true;
}

/// The cubics start from the published values, the distance at 40 degrees aside, and end where the next one starts.
constexpr bool RobinsonCubicsJoin() {
  for (int i = 0; i < kRobinsonRows; ++i) {
    const RobinsonCubics<float>& row = kRobinsonCubics[i];
    if (row.length.v0 != static_cast<float>(kRobinsonRowsPublished[i].length)) return false;
    if (i != 8 && row.distance.v0 != static_cast<float>(kRobinsonRowsPublished[i].distance)) return false;
    if (i + 1 == kRobinsonRows) break;
    const double lengthGap = row.length(5.0) - kRobinsonCubics[i + 1].length.v0;
    const double distanceGap = row.distance(5.0) - kRobinsonCubics[i + 1].distance.v0;
    if (lengthGap > 2e-6 || lengthGap < -2e-6 || distanceGap > 2e-6 || distanceGap < -2e-6) return false;
  }
  return true;
}

static_assert(RobinsonMonotonic() && RobinsonCubicsJoin());
static_assert(kRobinsonCubics[8].distance.v0 == 0.4968f);
static_assert(kRobinsonCubics[kRobinsonRows - 1].length.v0 != 0, "the inverse divides by it at the poles");

}  // namespace orvex::detail::ORVEX_LEVEL
