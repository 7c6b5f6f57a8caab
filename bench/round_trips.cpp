// round_trips - how far the way there and back leads from where it began, as stated and exactly: the largest distance
// on the ground in metres over random points of each form's area that lie in its domain, and of each datum's way.
// Prints a Markdown table for docs/accuracy.md.
#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstdio>
#include <random>
#include <string>

#include <orvex/orvex.h>

#include "support/Forms.h"

namespace {

using namespace orvex;

constexpr int kPoints = 20000;
constexpr double kMetresPerDegree = 111319.5;
constexpr double kRadiansPerDegree = 3.141592653589793 / 180;

template <class Point>
double Ground(const Point& a, const Point& b) {
  return std::hypot(std::remainder(a.x - b.x, 360) * std::cos(b.y * kRadiansPerDegree), a.y - b.y) * kMetresPerDegree;
}

struct Worst {
  double metres = 0;
  int lost = 0;  // that went there but did not come back

  void Print() const {
    std::printf(" | %.1e", metres);
    if (lost > 0) std::printf(" (%d lost)", lost);
  }
};

Worst OfProjection(const test::ProjectionForm& form, ProjAccuracy accuracy) {
  PROJDATA record = form.MakeRecord();
  CProjector projector(&record);
  projector.SetAccuracy(accuracy);
  std::mt19937_64 random(1);
  std::uniform_real_distribution<double> fraction(0, 1);
  Worst worst;
  for (int i = 0; i < kPoints; ++i) {
    const double u = fraction(random), v = fraction(random);
    const PROJPOINT place = form.Place(u, v);
    PROJPOINT p = place;
    if (!projector.LLInProjection(&place) || !projector.Forward(&p, 1) || p.x == DBL_MAX) continue;
    if (!projector.Inverse(&p, 1) || p.x == DBL_MAX) {
      ++worst.lost;
    } else {
      worst.metres = std::max(worst.metres, Ground(p, place));
    }
  }
  return worst;
}

Worst OfDatum(DatumType datum, ProjAccuracy accuracy) {
  DATUMXFORM there{}, back{};
  there.SrcDatum = back.DestDatum = datum;
  there.DestDatum = back.SrcDatum = DT_WORLD_GEODETIC_SYSTEM_1984;
  CDatumTransform forward(&there), inverse(&back);
  forward.SetAccuracy(accuracy);
  inverse.SetAccuracy(accuracy);
  std::mt19937_64 random(1);
  std::uniform_real_distribution<double> lon(-180, 180), lat(-85, 85);
  Worst worst;
  for (int i = 0; i < kPoints / 10; ++i) {
    const DATUMPOINT place{lon(random), lat(random)};
    DATUMPOINT p = place;
    if (!forward.Convert(&p, 1) || p.x == DBL_MAX) continue;
    if (!inverse.Convert(&p, 1) || p.x == DBL_MAX) {
      ++worst.lost;
    } else {
      worst.metres = std::max(worst.metres, Ground(p, place));
    }
  }
  return worst;
}

void Row(const std::string& name, const Worst& stated, const Worst& exact) {
  std::printf("| %s", name.c_str());
  stated.Print();
  exact.Print();
  std::printf(" |\n");
}

/// The worst datum of a method.
void RowOfMethod(DatumMethod method, const char* name) {
  Worst stated, exact;
  for (int i = 1; i < DatNumDatums(); ++i) {
    DatumMethod own = DM_NOXFORM;
    const auto datum = static_cast<DatumType>(i);
    DatGetDatumMethod(datum, &own);
    if (own != method) continue;
    const Worst a = OfDatum(datum, PA_STATED), b = OfDatum(datum, PA_EXACT);
    stated = {std::max(stated.metres, a.metres), stated.lost + a.lost};
    exact = {std::max(exact.metres, b.metres), exact.lost + b.lost};
  }
  Row(name, stated, exact);
}

}  // namespace

int main() {
  std::printf("| there and back, metres at most | stated | exact |\n|---|--:|--:|\n");
  for (const test::ProjectionForm& form : test::AllProjections()) {
    char name[64];
    ProjGetProjectionInfo(form.type, name);
    Row(std::string(name) + ", " + form.form, OfProjection(form, PA_STATED), OfProjection(form, PA_EXACT));
  }
  RowOfMethod(DM_MOLODENSKY, "Molodensky, all datums, latitudes to 85 degrees");
  RowOfMethod(DM_BURSA, "Bursa-Wolf, all datums, latitudes to 85 degrees");
}
