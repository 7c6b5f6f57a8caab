// Mre - datum shift by multiple regression equations, from the datum to WGS 84 only.
// Source: DMA Technical Report 8350.2-B (1987). Points go through in small blocks, so that a term is read once for all
// of a block and the lanes are computed side by side; each lane does what it would do alone.
#include "datum/methods/Mre.h"

#include <algorithm>
#include <array>
#include <span>

#include "datum/DatumPoint.h"
#include "datum/methods/MreTable.h"

namespace orvex::detail {

namespace {

constexpr std::size_t kLanes = 8;
using Lanes = std::array<double, kLanes>;
using Powers = std::array<Lanes, kMreHighestPower + 1>;

/// Powers 0 to 9 from power 1, each as the product of two halves.
void FillPowers(Powers& x) {
  x[0].fill(1);
  for (std::size_t i = 2; i < x.size(); ++i) {
    const Lanes &a = x[i / 2], &b = x[i - i / 2];
    for (std::size_t lane = 0; lane < kLanes; ++lane) x[i][lane] = a[lane] * b[lane];
  }
}

Lanes Evaluate(std::span<const MreTerm> terms, const Powers& U, const Powers& V) {
  Lanes sum{};
  for (const MreTerm& term : terms) {
    const Lanes &u = U[term.i], &v = V[term.j];
    for (std::size_t lane = 0; lane < kLanes; ++lane) sum[lane] += term.c * u[lane] * v[lane];
  }
  return sum;
}

/// Shifts up to kLanes points; lanes without a point to shift run idle at the centre.
void ShiftBlock(const MreDatum& datum, std::span<DATUMPOINT> pts) {
  Powers U, V;
  U[1].fill(0);
  V[1].fill(0);
  for (std::size_t lane = 0; lane < pts.size(); ++lane) {
    const DATUMPOINT p = pts[lane];
    if (IsUnplottable(p)) continue;
    U[1][lane] = (p.y - datum.latC) * datum.K;
    V[1][lane] = (p.x - datum.lonC) * datum.K;
  }
  FillPowers(U);
  FillPowers(V);
  const Lanes dLon = Evaluate(datum.lon, U, V), dLat = Evaluate(datum.lat, U, V);
  for (std::size_t lane = 0; lane < pts.size(); ++lane) {
    const DATUMPOINT p = pts[lane];
    if (!IsUnplottable(p)) pts[lane] = {p.x + dLon[lane] / 60 / 60, p.y + dLat[lane] / 60 / 60};
  }
}

}  // namespace

bool ConvertMre(DatumType datum, DATUMPOINT* pts, int n) {
  const MreDatum* equations = FindMre(datum);
  if (equations == nullptr) return true;
  for (std::span<DATUMPOINT> left(pts, static_cast<std::size_t>(n)); !left.empty();) {
    const auto block = left.first(std::min(kLanes, left.size()));
    ShiftBlock(*equations, block);
    left = left.subspan(block.size());
  }
  return true;
}

}  // namespace orvex::detail
