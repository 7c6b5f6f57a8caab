// Exact computation beside PROJ, through PROJ's public interface: 1e-6 m and 1e-11 degrees for what both define alike.
// Where PROJ itself stops earlier, the row has what it leaves and says why.
#include <proj.h>

#include <memory>
#include <random>

#include "support/Projection.h"

namespace orvex::test {
namespace {

constexpr double kMap = 1e-6, kDegrees = 1e-11;

/// The same projection in both; places within `reach` of lon0.
struct Peer {
  ProjType type;
  const char* parameters;
  const char* operation;
  double lon0, reach, south, north;
  double map = kMap, degrees = kDegrees;  ///< how far apart forward and inverse may be
  const char* why = "";                   ///< they may be further apart than rounding
};
constexpr const char* kArc = "its meridian arc stops at the eighth power of the eccentricity";
// clang-format off
const Peer kPeers[] = {
    {PT_MERCATOR, "Lat0=-41;Lon0=20", "merc +lat_ts=-41 +lon_0=20", 20, 180, -89, 89},
    {PT_MERCATOR, "R=6371000;Lon0=20", "merc +lon_0=20 +R=6371000", 20, 180, -89, 89},
    {PT_MILLER, "R=6371000;Lon0=20", "mill +lon_0=20 +R=6371000", 20, 180, -90, 90},
    {PT_EQUICYLINDRICAL, "R=6371000;Lat1=-37;Lon0=20", "eqc +lat_ts=-37 +lon_0=20 +R=6371000", 20, 180, -90, 90},
    {PT_TRANSVERSEMERCATOR, "Lat0=49;Lon0=-2;K0=0.9996", "tmerc +lat_0=49 +lon_0=-2 +k_0=0.9996", -2, 35, -89, 89},
    {PT_TRANSVERSEMERCATOR, "R=6371000;Lat0=-12;Lon0=80", "tmerc +lat_0=-12 +lon_0=80 +R=6371000", 80, 60, -89, 89},
    {PT_TRANSVERSEMERCATOR, "a=6377340.189;f=0.0033408506;Lon0=9", "tmerc +lon_0=9 +a=6377340.189 +f=0.0033408506", 9, 12, -89, 89},
    {PT_UTM, "Lon0=-177", "utm +zone=1", -177, 6, -80, 84},
    {PT_UTM, "Lon0=15;bSouth=1", "utm +zone=33 +south", 15, 6, -80, 84},
    {PT_CASSINI, "R=6371000;Lat0=-12;Lon0=80", "cass +lat_0=-12 +lon_0=80 +R=6371000", 80, 80, -85, 70},
    {PT_LAMBERT, "Lat0=23;Lon0=-96;Lat1=33;Lat2=45", "lcc +lat_0=23 +lon_0=-96 +lat_1=33 +lat_2=45", -96, 180, -60, 89},
    {PT_LAMBERT, "Lat0=-40;Lon0=145;Lat1=-30;Lat2=-50;R=6371000", "lcc +lat_0=-40 +lon_0=145 +lat_1=-30 +lat_2=-50 +R=6371000", 145, 180, -89, 60},
    {PT_ALBERS, "Lat0=23;Lon0=-96;Lat1=29.5;Lat2=45.5", "aea +lat_0=23 +lon_0=-96 +lat_1=29.5 +lat_2=45.5", -96, 180, -60, 85},
    {PT_ALBERS, "Lat0=-40;Lon0=145;Lat1=-30;Lat2=-50;R=6371000", "aea +lat_0=-40 +lon_0=145 +lat_1=-30 +lat_2=-50 +R=6371000", 145, 180, -85, 60},
    {PT_EQUICONIC, "R=6371000;Lat0=10;Lon0=7;Lat1=-20;Lat2=61", "eqdc +lat_0=10 +lon_0=7 +lat_1=-20 +lat_2=61 +R=6371000", 7, 180, -90, 90},
    {PT_POLYCONIC, "Lat0=30;Lon0=-96", "poly +lat_0=30 +lon_0=-96", -96, 55, -80, 80, 1e-5, 3e-10, kArc},
    {PT_POLYCONIC, "R=6371000;Lat0=30;Lon0=-96", "poly +lat_0=30 +lon_0=-96 +R=6371000", -96, 55, -80, 80},
    {PT_BONNE, "Lat1=40;Lon0=-75", "bonne +lat_1=40 +lon_0=-75", -75, 180, -80, 89, 1e-5, 3e-10, kArc},
    {PT_BONNE, "R=6371000;Lat1=40;Lon0=-75", "bonne +lat_1=40 +lon_0=-75 +R=6371000", -75, 180, -80, 89},
    {PT_STEREOGRAPHIC, "Lat0=-40;Lon0=100;K0=0.9999", "stere +lat_0=-40 +lon_0=100 +k_0=0.9999", 100, 60, -80, 10, kMap, 5e-11, "its conformal latitude stops at 1e-10 radians"},
    {PT_STEREOGRAPHIC, "Lat0=90;Lon0=-45;K0=0.994", "stere +lat_0=90 +lon_0=-45 +k_0=0.994", -45, 180, 0, 89, kMap, 5e-11, "its conformal latitude stops at 1e-10 radians"},
    {PT_STEREOGRAPHIC, "R=6371000;Lat0=40;Lon0=-100", "stere +lat_0=40 +lon_0=-100 +R=6371000", -100, 60, -10, 80},
    {PT_ORTHOGRAPHIC, "R=6371000;Lat0=40;Lon0=-100", "ortho +lat_0=40 +lon_0=-100 +R=6371000", -100, 60, -10, 80},
    {PT_GNOMONIC, "R=6371000;Lat1=40;Lon0=-100", "gnom +lat_0=40 +lon_0=-100 +R=6371000", -100, 60, 0, 80},
    {PT_GNOMONIC, "R=6371000;Lat1=-90;Lon0=-100", "gnom +lat_0=-90 +lon_0=-100 +R=6371000", -100, 180, -89, -20},
    {PT_LAMBERTAZIMUTHAL, "R=6371000;Lat1=40;Lon0=-100", "laea +lat_0=40 +lon_0=-100 +R=6371000", -100, 120, -60, 89},
    {PT_LAMBERTAZIMUTHAL, "R=6371000;Lat1=-90;Lon0=-100", "laea +lat_0=-90 +lon_0=-100 +R=6371000", -100, 180, -89, 70},
    {PT_AZIMUTHALEQUI, "R=6371000;Lat1=40;Lon0=-100", "aeqd +lat_0=40 +lon_0=-100 +R=6371000", -100, 120, -60, 89},
    {PT_AZIMUTHALEQUI, "R=6371000;Lat1=90;Lon0=-100", "aeqd +lat_0=90 +lon_0=-100 +R=6371000", -100, 180, -70, 89},
    {PT_SINUSOIDAL, "Lon0=11", "sinu +lon_0=11", 11, 180, -89, 89, 1e-5, 3e-10, kArc},
    {PT_SINUSOIDAL, "R=6371000;Lon0=11", "sinu +lon_0=11 +R=6371000", 11, 180, -89, 89},
    {PT_MOLLWEIDE, "R=6371000;Lon0=11", "moll +lon_0=11 +R=6371000", 11, 180, -89, 89},
    {PT_ECKERT4, "R=6371000;Lon0=-30", "eck4 +lon_0=-30 +R=6371000", -30, 180, -89, 89},
    {PT_ECKERT6, "R=6371000;Lon0=-30", "eck6 +lon_0=-30 +R=6371000", -30, 180, -89, 89},
    {PT_ROBINSON, "R=6371000", "robin +R=6371000", 0, 180, -90, 90, 3, 3e-5, "its coefficients are in single precision"},
    {PT_VANDERGRINTEN, "R=6371000;Lon0=-30", "vandg +lon_0=-30 +R=6371000", -30, 180, -85, 85, 3e-4, kDegrees, "its closed forms lose digits beside the axes"},
    {PT_HOTINE, "bUseAlpha=1;Lat0=57;Lon0=-133.6;Alpha=-36.9;K0=0.9999;bRotate=1;bUOffset=1", "omerc +lat_0=57 +lonc=-133.6 +alpha=-36.9 +gamma=-36.9 +k_0=0.9999", -133.6, 25, 35, 75},
};
// clang-format on

struct DestroyPeer {
  void operator()(PJ* operation) const { proj_destroy(operation); }
};

std::unique_ptr<PJ, DestroyPeer> MakePeer(const Peer& peer) {
  std::string step = peer.operation;
  if (step.find("+R=") == step.npos && step.find("+a=") == step.npos) step += " +ellps=WGS84";
  const std::string pipeline = "+proj=pipeline +step +proj=unitconvert +xy_in=deg +xy_out=rad +step +proj=" + step;
  return std::unique_ptr<PJ, DestroyPeer>(proj_create(PJ_DEFAULT_CTX, pipeline.c_str()));
}

PROJPOINT Transform(PJ* peer, PJ_DIRECTION direction, const PROJPOINT& p) {
  const PJ_COORD out = proj_trans(peer, direction, proj_coord(p.x, p.y, 0, 0));
  return {out.xy.x, out.xy.y};
}

TEST(PeerProj, DefinesTheSame) {
  for (const Peer& peer : kPeers) {
    CProjector projector = ExactProjector(Record(peer.type, peer.parameters));
    const auto other = MakePeer(peer);
    EXPECT_NE(other, nullptr) << peer.operation;
    if (!other) continue;
    std::mt19937 random(7);
    std::uniform_real_distribution<double> lon(peer.lon0 - peer.reach, peer.lon0 + peer.reach),
        lat(peer.south, peer.north);
    double map = 0, degrees = 0;
    PROJPOINT where{}, whereBack{};
    for (int i = 0; i < 200; ++i) {
      const PROJPOINT place{lon(random), lat(random)};
      const PROJPOINT a = Forward(projector, place.x, place.y), b = Transform(other.get(), PJ_FWD, place);
      if (Unplottable(a) || !(std::fabs(b.x) < 1e9)) continue;
      const PROJPOINT back = Inverse(projector, a.x, a.y), otherBack = Transform(other.get(), PJ_INV, a);
      const double apart = std::hypot(a.x - b.x, a.y - b.y), apartBack = ArcDegrees(back, otherBack);
      if (!(apart <= map)) map = apart, where = place;
      if (!(apartBack <= degrees)) degrees = apartBack, whereBack = place;
    }
    EXPECT_LE(map, peer.map) << peer.operation << " at " << where.x << ", " << where.y << "; " << peer.why;
    EXPECT_LE(degrees, peer.degrees) << peer.operation << " back from " << whereBack.x << ", " << whereBack.y << "; "
                                     << peer.why;
  }
}

}  // namespace
}  // namespace orvex::test
