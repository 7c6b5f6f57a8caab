// peers_bench - the library beside PROJ in one process: the same places, 100000 points a call, each through its public
// functions with degrees on the geographic side. Prints a line a run: "row|direction|orvex ns|PROJ ns|farthest apart".
// Arguments: repetitions (default 9), and a text that the rows to be measured contain.
#include <proj.h>
#include <time.h>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <orvex/orvex.h>

#include "support/Forms.h"

namespace {

using namespace orvex;
using Points = std::vector<PROJPOINT>;

constexpr std::size_t kPoints = 100000;

/// Forms that PROJ has, with the operation that does the same there.
struct Peer {
  ProjType type;
  const char* form;
  const char* operation;
};
// clang-format off
constexpr Peer kPeers[] = {
    {PT_MERCATOR, "sphere", "merc +lat_ts=35 +lon_0=20 +R=6371000"},
    {PT_MERCATOR, "ellipsoid", "merc +lat_ts=-41 +lon_0=20"},
    {PT_ALBERS, "sphere", "aea +lat_0=23 +lon_0=-96 +lat_1=29.5 +lat_2=45.5 +R=6371000"},
    {PT_ALBERS, "ellipsoid", "aea +lat_0=23 +lon_0=-96 +lat_1=29.5 +lat_2=45.5"},
    {PT_MILLER, "sphere", "mill +lon_0=20 +R=6371000"},
    {PT_UTM, "ellipsoid", "utm +zone=33"},
    {PT_LAMBERT, "sphere", "lcc +lat_0=23 +lon_0=-96 +lat_1=33 +lat_2=45 +R=6371000"},
    {PT_LAMBERT, "ellipsoid", "lcc +lat_0=23 +lon_0=-96 +lat_1=33 +lat_2=45"},
    {PT_STEREOGRAPHIC, "oblique sphere", "stere +lat_0=40 +lon_0=-100 +k_0=0.97 +R=6371000"},
    {PT_STEREOGRAPHIC, "oblique ellipsoid", "stere +lat_0=-40 +lon_0=100 +k_0=0.9999"},
    {PT_STEREOGRAPHIC, "north polar ellipsoid", "stere +lat_0=90 +lon_0=-45 +k_0=0.994"},
    {PT_ORTHOGRAPHIC, "oblique", "ortho +lat_0=40 +lon_0=-100 +R=6371000"},
    {PT_ORTHOGRAPHIC, "north polar", "ortho +lat_0=90 +lon_0=-100 +R=6371000"},
    {PT_MOLLWEIDE, "sphere", "moll +lon_0=11 +R=6371000"},
    {PT_POLYCONIC, "sphere", "poly +lat_0=30 +lon_0=-96 +R=6371000"},
    {PT_POLYCONIC, "ellipsoid", "poly +lat_0=30 +lon_0=-96"},
    {PT_HOTINE, "azimuth", "omerc +lat_0=57 +lonc=-133.6 +alpha=-36.9 +k_0=0.9999"},
    {PT_HOTINE, "sphere", "omerc +lat_0=-33 +lonc=151 +alpha=70 +R=6371000"},
    {PT_EQUICYLINDRICAL, "sphere", "eqc +lon_0=20 +lat_ts=-37 +R=6371000"},
    {PT_ROBINSON, "sphere", "robin +R=6371000"},
    {PT_VANDERGRINTEN, "sphere", "vandg +lon_0=-30 +R=6371000"},
    {PT_CASSINI, "sphere", "cass +lat_0=-12 +lon_0=80 +R=6371000"},
    {PT_TRANSVERSEMERCATOR, "sphere", "tmerc +lat_0=-12 +lon_0=80 +k_0=0.9996 +R=6371000"},
    {PT_TRANSVERSEMERCATOR, "ellipsoid", "tmerc +lat_0=49 +lon_0=-2 +k_0=0.9996012717"},
    {PT_GAUSSKRUGER, "ellipsoid", "tmerc +lon_0=9 +ellps=mod_airy"},
    {PT_SINUSOIDAL, "sphere", "sinu +lon_0=11 +R=6371000"},
    {PT_SINUSOIDAL, "ellipsoid", "sinu +lon_0=11"},
    {PT_LAMBERTAZIMUTHAL, "oblique", "laea +lat_0=40 +lon_0=-100 +R=6371000"},
    {PT_LAMBERTAZIMUTHAL, "north polar", "laea +lat_0=90 +lon_0=-100 +R=6371000"},
    {PT_BONNE, "sphere", "bonne +lat_1=40 +lon_0=-75 +R=6371000"},
    {PT_BONNE, "ellipsoid", "bonne +lat_1=40 +lon_0=-75"},
    {PT_ROBINSONSTERLING, "sphere", "robin +lon_0=-30 +R=6371000"},
    {PT_ECKERT4, "sphere", "eck4 +lon_0=-30 +R=6371000"},
    {PT_ECKERT6, "sphere", "eck6 +lon_0=-30 +R=6371000"},
    {PT_OBLIQUEMERCATOR, "ellipsoid", "omerc +lat_1=-33 +lon_1=18 +lat_2=-34.5 +lon_2=151"},
    {PT_EQUICONIC, "sphere", "eqdc +lat_0=10 +lon_0=7 +lat_1=-20 +lat_2=61 +R=6371000"},
    {PT_GNOMONIC, "oblique", "gnom +lat_0=40 +lon_0=-100 +R=6371000"},
    {PT_AZIMUTHALEQUI, "oblique", "aeqd +lat_0=40 +lon_0=-100 +R=6371000"},
    {PT_AZIMUTHALEQUI, "north polar", "aeqd +lat_0=90 +lon_0=-100 +R=6371000"},
};
// clang-format on

struct DeleteOrvex {
  void operator()(void* handle) const { ProjDeleteProjection(handle); }
};
struct DeletePeer {
  void operator()(PJ* operation) const { proj_destroy(operation); }
};

/// One projection in both libraries.
class Pair {
 public:
  Pair(const Peer& peer, const test::ProjectionForm& form, ProjAccuracy accuracy) : m_record(form.MakeRecord()) {
    std::string step = peer.operation;
    if (step.find("+R=") == step.npos && step.find("+ellps=") == step.npos) step += " +ellps=WGS84";
    const std::string pipeline = "+proj=pipeline +step +proj=unitconvert +xy_in=deg +xy_out=rad +step +proj=" + step;
    m_peer.reset(proj_create(PJ_DEFAULT_CTX, pipeline.c_str()));
    m_orvex.reset(ProjCreateProjection(&m_record));
    if (!m_peer || !ProjSetAccuracy(m_orvex.get(), accuracy)) {
      std::fprintf(stderr, "cannot make %s\n", pipeline.c_str());
      std::exit(1);
    }
  }
  void Orvex(bool forward, Points& p) {
    (forward ? ProjForward : ProjInverse)(m_orvex.get(), p.data(), static_cast<int>(p.size()));
  }
  void Other(bool forward, Points& p) {
    proj_trans_generic(m_peer.get(), forward ? PJ_FWD : PJ_INV, &p[0].x, sizeof p[0], p.size(), &p[0].y, sizeof p[0],
                       p.size(), nullptr, 0, 0, nullptr, 0, 0);
  }

 private:
  PROJDATA m_record;
  std::unique_ptr<void, DeleteOrvex> m_orvex;
  std::unique_ptr<PJ, DeletePeer> m_peer;
};

/// Processor time, which other programs on the machine disturb least.
double Now() {
  timespec t{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &t);
  return static_cast<double>(t.tv_sec) * 1e9 + static_cast<double>(t.tv_nsec);
}

/// Nanoseconds a point; the array is a fresh copy each time and in the cache to the same extent.
template <class Convert>
double Measure(const Points& pristine, Points& work, Convert convert) {
  std::copy(pristine.begin(), pristine.end(), work.begin());
  const double start = Now();
  convert(work);
  return (Now() - start) / static_cast<double>(work.size());
}

bool Usable(const PROJPOINT& p) {
  return std::fabs(p.x) < 1e9 && std::fabs(p.y) < 1e9;
}

/// How far the two lie apart, once the mean difference is off (false origins, origins of the map).
double Apart(const Points& a, const Points& b) {
  double dx = 0, dy = 0, apart = 0;
  const auto n = static_cast<double>(a.size());
  for (std::size_t i = 0; i < a.size(); ++i) dx += (a[i].x - b[i].x) / n, dy += (a[i].y - b[i].y) / n;
  for (std::size_t i = 0; i < a.size(); ++i) {
    apart = std::max(apart, std::hypot(a[i].x - b[i].x - dx, a[i].y - b[i].y - dy));
  }
  return apart;
}

void Run(const Peer& peer, const test::ProjectionForm& form, ProjAccuracy accuracy, const std::string& row,
         int repetitions) {
  Pair pair(peer, form, accuracy);
  std::mt19937_64 random(1);
  std::uniform_real_distribution<double> fraction(0, 1);
  Points places, orvex, other;  // that both plot
  while (places.size() < kPoints) {
    Points candidates(kPoints);
    for (PROJPOINT& p : candidates) {
      const double u = fraction(random), v = fraction(random);
      p = form.Place(u, v);
    }
    Points a = candidates, b = candidates;
    pair.Orvex(true, a);
    pair.Other(true, b);
    for (std::size_t i = 0; i < kPoints && places.size() < kPoints; ++i) {
      if (!Usable(a[i]) || !Usable(b[i])) continue;
      places.push_back(candidates[i]);
      orvex.push_back(a[i]);
      other.push_back(b[i]);
    }
  }
  const double apart = Apart(orvex, other);
  Points work(kPoints);
  for (const bool forward : {true, false}) {
    const auto runOrvex = [&](Points& p) { pair.Orvex(forward, p); };
    const auto runOther = [&](Points& p) { pair.Other(forward, p); };
    for (int i = 0; i < repetitions; ++i) {
      const double a = Measure(forward ? places : orvex, work, runOrvex);
      const double b = Measure(forward ? places : other, work, runOther);
      std::printf("%s|%s|%.3f|%.3f|%.3g\n", row.c_str(), forward ? "forward" : "inverse", a, b, apart);
    }
  }
  std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
  const int repetitions = argc > 1 ? std::atoi(argv[1]) : 9;
  const ProjAccuracy accuracy = argc > 2 && std::strcmp(argv[2], "exact") == 0 ? PA_EXACT : PA_STATED;
  const std::string filter = argc > 3 ? argv[3] : "";
  for (const Peer& peer : kPeers) {
    for (const test::ProjectionForm& form : test::AllProjections()) {
      if (form.type != peer.type || std::strcmp(form.form, peer.form) != 0) continue;
      char name[64];
      ProjGetProjectionInfo(form.type, name);
      const std::string row = std::string(name) + ", " + form.form;
      if (row.find(filter) != row.npos) Run(peer, form, accuracy, row, repetitions);
    }
  }
}
