// Forms - records from short texts, and the table of all projections.
#include "support/Forms.h"

#include <cmath>
#include <cstddef>
#include <cstring>
#include <map>
#include <sstream>
#include <stdexcept>

namespace orvex::test {

namespace {

// What the inverse may miss, in degrees of arc. Inverses in closed form are good to rounding; those that stop by the
// previous estimate to their tolerance (radians) and what a fixed point that contracts by e2 a pass has still to go;
// series to the terms that they leave out.
constexpr double kDegrees = 57.295779513082321;
constexpr double kRounding = 1e-11;                                         // a micrometre on the earth
constexpr double kLimb = 1e-9;                                              // arcsines 1e-5 radians before 90 degrees
constexpr double kStop = 1.1920928955078125e-06 * kDegrees / (1 - 0.0067);  // 7.6 m
constexpr double kStopFine = 1.1920928955078125e-07 * kDegrees;
constexpr double kMercatorBase = 2.6e-5;  // 2.71828 for e: 6.7e-7 of the isometric latitude
constexpr double kEckert = 1.12 * kStop;  // of the parameter; latitudes run up to 1.12 times as fast
constexpr double kTransverse = 1e-8;      // within 3 degrees of the meridian: a millimetre
constexpr double kArc = 3e-8;             // eighth power of the eccentricity, far from the central meridian
constexpr double kConformal = 1.5e-10;    // tenth power

// clang-format off
constexpr ProjectionForm kForms[] = {
    {PT_MERCATOR, "sphere", "R=6371000;Lat0=35;Lon0=20", -159.9, 199.9, -89, 89, kRounding},
    {PT_MERCATOR, "ellipsoid", "Lat0=-41;Lon0=20", -159.9, 199.9, -89, 89, kStop + kMercatorBase},
    {PT_ALBERS, "sphere", "R=6371000;Lat0=23;Lon0=-96;Lat1=29.5;Lat2=45.5", -275, 83, -80, 85, kRounding},
    {PT_ALBERS, "ellipsoid", "Lat0=23;Lon0=-96;Lat1=29.5;Lat2=45.5", -275, 83, -80, 85, kStop},
    {PT_ALBERS, "southern sphere", "R=6371000;Lat0=-32;Lon0=132;Lat1=-18;Lat2=-36", -47, 311, -80, 80, kRounding},
    {PT_ALBERS, "southern ellipsoid", "Lat0=-32;Lon0=132;Lat1=-18;Lat2=-36", -47, 311, -80, 80, kStop},
    {PT_MILLER, "sphere", "R=6371000;Lon0=20", -159.9, 199.9, -89.9, 89.9, kRounding},
    {PT_UTM, "ellipsoid", "Lon0=15", 12, 18, -80, 84, kTransverse},
    {PT_UTM, "southern sphere", "R=6371000;Lon0=-177;bSouth=1", -183, -171, -80, 84, kRounding},
    {PT_LAMBERT, "sphere", "R=6371000;Lat0=23;Lon0=-96;Lat1=33;Lat2=45", -275, 83, -80, 89, kRounding},
    {PT_LAMBERT, "ellipsoid", "Lat0=23;Lon0=-96;Lat1=33;Lat2=45", -275, 83, -80, 89, kStop},
    {PT_LAMBERT, "southern sphere", "R=6371000;Lat0=-40;Lon0=145;Lat1=-30;Lat2=-50", -34, 324, -89, 80, kRounding},
    {PT_LAMBERT, "southern ellipsoid", "Lat0=-40;Lon0=145;Lat1=-30;Lat2=-50", -34, 324, -89, 80, kStop},
    {PT_STEREOGRAPHIC, "oblique sphere", "R=6371000;Lat0=40;Lon0=-100;K0=0.97", -190, -10, -49, 89.9, kRounding},
    {PT_STEREOGRAPHIC, "north polar sphere", "R=6371000;Lat0=90;Lon0=-45", -225, 135, 0, 89.9, kRounding},
    {PT_STEREOGRAPHIC, "oblique ellipsoid", "Lat0=-40;Lon0=100;K0=0.9999", 10, 190, -89.9, 49, kConformal},
    {PT_STEREOGRAPHIC, "equatorial ellipsoid", "Lat0=0;Lon0=100", 10, 190, -89, 89, kConformal},
    {PT_STEREOGRAPHIC, "north polar ellipsoid", "Lat0=90;Lon0=-45;K0=0.994", -225, 135, 0, 89.9, kConformal},
    {PT_STEREOGRAPHIC, "south polar ellipsoid", "Lat0=-90;Lon0=-45", -225, 135, -89.9, 0, kConformal},
    {PT_ORTHOGRAPHIC, "oblique", "R=6371000;Lat0=40;Lon0=-100", -190, -10, -49, 89, kLimb},
    {PT_ORTHOGRAPHIC, "equatorial", "R=6371000;Lon0=-100", -190, -10, -89, 89, kLimb},
    {PT_ORTHOGRAPHIC, "north polar", "R=6371000;Lat0=90;Lon0=-100", -280, 80, 0, 89.9, kLimb},
    {PT_ORTHOGRAPHIC, "south polar", "R=6371000;Lat0=-90;Lon0=-100", -280, 80, -89.9, 0, kLimb},
    {PT_MOLLWEIDE, "sphere", "R=6371000;Lon0=11", -169, 191, -89.9, 89.9, kRounding},
    {PT_MOLLWEIDE, "wrapped", "R=6371000;Lon0=11;wrap=1", -179, 181, -89.9, 89.9, kRounding},
    {PT_STATEPLANE27, "conic", "Zone=119", -100, -96, 26, 36, kStop},
    {PT_STATEPLANE83, "transverse", "Zone=86", -76, -73, 38, 42, kTransverse},
    {PT_STATEPLANE83, "oblique", "Zone=2", -136, -130, 53, 60, kRounding},
    {PT_POLYCONIC, "sphere", "R=6371000;Lat0=30;Lon0=-96", -151, -36, -80, 80, kStopFine},
    {PT_POLYCONIC, "ellipsoid", "Lat0=30;Lon0=-96;wrap=1", -151, -36, -80, 80, 5e-7},
    {PT_HOTINE, "azimuth", "bUseAlpha=1;Lat0=57;Lon0=-133.6;Alpha=-36.9;K0=0.9999;bRotate=1;bUOffset=1", -160, -100, 30, 80, kRounding},
    {PT_HOTINE, "two points", "Lat0=46;Lat1=45;Lon1=170;Lat2=48;Lon2=-150;K0=0.9996", 160, 220, 20, 70, kRounding},
    {PT_HOTINE, "sphere", "R=6371000;bUseAlpha=1;Lat0=-33;Lon0=151;Alpha=70;bRotate=1", 110, 190, -70, 10, kRounding},
    {PT_EQUICYLINDRICAL, "sphere", "R=6371000;Lon0=20;Lat1=-37", -160, 200, -90, 90, kRounding},
    {PT_ROBINSON, "sphere", "R=6371000", -180, 180, -90, 90, 2e-5},  // single precision
    {PT_VANDERGRINTEN, "sphere", "R=6371000;Lon0=-30", -210, 150, -89.9, 89.9, kRounding},
    {PT_CASSINI, "sphere", "R=6371000;Lat0=-12;Lon0=80", -9, 169, -89, 77, kRounding},
    {PT_TRANSVERSEMERCATOR, "sphere", "R=6371000;Lat0=-12;Lon0=80;K0=0.9996", 36, 124, -90, 90, kRounding},
    {PT_TRANSVERSEMERCATOR, "ellipsoid", "Lat0=49;Lon0=-2;K0=0.9996012717", -5, 1, -80, 84, kTransverse},
    {PT_GAUSSKRUGER, "ellipsoid", "Lon0=9;Ellipsoid=8;xOrg=3500000", 6, 12, -80, 84, kTransverse},
    {PT_SINUSOIDAL, "sphere", "R=6371000;Lon0=11", -169, 191, -89.9, 89.9, kRounding},
    {PT_SINUSOIDAL, "ellipsoid", "Lon0=11;wrap=1", -168.9, 190.9, -89.9, 89.9, kArc},
    {PT_LAMBERTAZIMUTHAL, "oblique", "R=6371000;Lat1=40;Lon0=-100", -220, 20, -60, 89.9, kRounding},
    {PT_LAMBERTAZIMUTHAL, "equatorial", "R=6371000;Lon0=-100", -260, 60, -89, 89, kRounding},
    {PT_LAMBERTAZIMUTHAL, "north polar", "R=6371000;Lat1=90;Lon0=-100", -280, 80, -80, 89.9, kRounding},
    {PT_LAMBERTAZIMUTHAL, "south polar", "R=6371000;Lat1=-90;Lon0=-100", -280, 80, -89.9, 80, kRounding},
    {PT_BONNE, "sphere", "R=6371000;Lat1=40;Lon0=-75", -254, 104, -85, 89, kRounding},
    {PT_BONNE, "ellipsoid", "Lat1=40;Lon0=-75", -254, 104, -85, 89, 1e-6},  // three terms of the arc, 155 for 151
    {PT_BONNE, "southern ellipsoid", "Lat1=-20;Lon0=-75", -254, 104, -85, 85, 1e-6},
    {PT_ROBINSONSTERLING, "sphere", "R=6371000;Lon0=-30", -210, 150, -90, 90, kRounding},
    {PT_ECKERT4, "sphere", "R=6371000;Lon0=-30", -210, 150, -85, 85, kEckert},
    {PT_ECKERT6, "sphere", "R=6371000;Lon0=-30", -210, 150, -85, 85, kEckert},
    {PT_OBLIQUEMERCATOR, "sphere", "R=6371000;Lat1=45;Lon1=0;Lat2=-7;Lon2=-90;K0=0.99", -150, 60, -60, 80, kRounding},
    {PT_OBLIQUEMERCATOR, "ellipsoid", "Lat1=-33;Lon1=18;Lat2=-34.5;Lon2=151", 10, 160, -80, 0, kRounding},
    {PT_EQUICONIC, "sphere", "R=6371000;Lat0=10;Lon0=7;Lat1=-20;Lat2=61", -172, 186, -90, 90, kRounding},
    {PT_EQUICONIC, "southern, wrapped", "R=6371000;Lat0=-32;Lon0=132;Lat1=-18;Lat2=-36;wrap=1", -47, 311, -80, 80, kRounding},
    {PT_GNOMONIC, "oblique", "R=6371000;Lat1=40;Lon0=-100", -190, -10, -15, 89.9, kRounding},
    {PT_GNOMONIC, "equatorial", "R=6371000;Lon0=-100", -155, -45, -55, 55, kRounding},
    {PT_GNOMONIC, "north polar", "R=6371000;Lat1=90;Lon0=-100", -280, 80, 30, 89.9, kRounding},
    {PT_AZIMUTHALEQUI, "oblique", "R=6371000;Lat1=40;Lon0=-100", -280, 80, -89, 89.9, kRounding},
    {PT_AZIMUTHALEQUI, "equatorial", "R=6371000;Lon0=-100", -280, 80, -89, 89, kRounding},
    {PT_AZIMUTHALEQUI, "north polar", "R=6371000;Lat1=90;Lon0=-100", -280, 80, -80, 89.9, kRounding},
    {PT_AZIMUTHALEQUI, "south polar", "R=6371000;Lat1=-90;Lon0=-100", -280, 80, -89.9, 80, kRounding},
};
// clang-format on

}  // namespace

PROJDATA Record(ProjType type, std::string_view parameters) {
  PROJDATA rec{};
  rec.Type = type;
  rec.Ellipsoid = ET_WGS_84;
#define FIELD(name) \
  { #name, offsetof(PROJDATA, name) }
  static const std::map<std::string, std::size_t> numbers{
      FIELD(Scale), FIELD(xOrg), FIELD(yOrg), FIELD(Lat0), FIELD(Lon0), FIELD(Lat1), FIELD(Lat2),
      FIELD(Lat3),  FIELD(Lon1), FIELD(Lon2), FIELD(Lon3), FIELD(K0),   FIELD(Alpha)};
  static const std::map<std::string, std::size_t> flags{
      FIELD(bSouth), FIELD(bUseAlpha), FIELD(bRotate), FIELD(bUOffset), {"wrap", offsetof(PROJDATA, bWrapLon)}};
#undef FIELD
  char* const bytes = reinterpret_cast<char*>(&rec);
  std::istringstream items{std::string(parameters)};
  for (std::string item; std::getline(items, item, ';');) {
    if (item.empty()) continue;
    const std::size_t equals = item.find('=');
    const std::string name = item.substr(0, equals);
    const double value = std::stod(item.substr(equals + 1));
    if (const auto number = numbers.find(name); number != numbers.end()) {
      std::memcpy(bytes + number->second, &value, sizeof value);
    } else if (const auto flag = flags.find(name); flag != flags.end()) {
      bytes[flag->second] = static_cast<char>(value != 0);
    } else if (name == "R" || name == "a") {
      rec.Ellipsoid = ET_USER_DEFINED;
      rec.MajorRadius = value;
    } else if (name == "f") {
      rec.Flattening = value;
    } else if (name == "e2") {
      rec.Flattening = 1 - std::sqrt(1 - value);
    } else if (name == "Ellipsoid") {
      rec.Ellipsoid = static_cast<EllipsoidType>(static_cast<int>(value));
    } else if (name == "Zone") {
      rec.Zone = static_cast<int>(value);
    } else {
      throw std::invalid_argument("unknown parameter " + name);
    }
  }
  return rec;
}

std::span<const ProjectionForm> AllProjections() {
  return kForms;
}

}  // namespace orvex::test
