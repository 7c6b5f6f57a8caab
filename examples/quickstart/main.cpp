// quickstart - the example of the README: two cities to UTM zone 33 north and back.
#include <cstdio>

#include <orvex/orvex.h>

int main() {
  orvex::PROJDATA record{};
  record.Type = orvex::PT_UTM;
  record.Lon0 = orvex::ProjUTMZoneNumberToLon(33);
  record.Ellipsoid = orvex::ET_WGS_84;
  orvex::CProjector utm(&record);  // throws shr::Exception for bad parameters

  orvex::PROJPOINT points[] = {{13.4050, 52.5200}, {16.3738, 48.2082}};  // longitude, latitude: Berlin, Vienna
  utm.Forward(points, 2);                                                // in place: easting, northing
  for (const auto& p : points) std::printf("%.3f %.3f\n", p.x, p.y);
  utm.Inverse(points, 2);
  for (const auto& p : points) std::printf("%.6f %.6f\n", p.x, p.y);
}
