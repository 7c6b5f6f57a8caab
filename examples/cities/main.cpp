// cities - turns a list of cities into UTM and state plane coordinates and back, and tells how far the way back is off,
// computed exactly and as stated.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include <orvex/orvex.h>

namespace {

using namespace orvex;

constexpr double kMetresPerDegree = 111320;

struct City {
  std::string name, state;  // state: postal code, empty outside the United States
  PROJPOINT position;
};

struct State {
  const char* code;
  const char* name;
};
constexpr State kStates[] = {
    {"AK", "Alaska"},        {"AL", "Alabama"},       {"AR", "Arkansas"},       {"AZ", "Arizona"},
    {"CA", "California"},    {"CO", "Colorado"},      {"CT", "Connecticut"},    {"DE", "Delaware"},
    {"FL", "Florida"},       {"GA", "Georgia"},       {"HI", "Hawaii"},         {"IA", "Iowa"},
    {"ID", "Idaho"},         {"IL", "Illinois"},      {"IN", "Indiana"},        {"KS", "Kansas"},
    {"KY", "Kentucky"},      {"LA", "Louisiana"},     {"MA", "Massachusetts"},  {"MD", "Maryland"},
    {"ME", "Maine"},         {"MI", "Michigan"},      {"MN", "Minnesota"},      {"MO", "Missouri"},
    {"MS", "Missippippi"},   {"MT", "Montana"},       {"NC", "North Carolina"}, {"ND", "North Dakota"},
    {"NE", "Nebraska"},      {"NH", "New Hampshire"}, {"NJ", "New Jersey"},     {"NM", "New Mexico"},
    {"NV", "Nevada"},        {"NY", "New York"},      {"OH", "Ohio"},           {"OK", "Oklahoma"},
    {"OR", "Oregon"},        {"PA", "Pennsylvania"},  {"RI", "Rhode Island"},   {"SC", "South Carolina"},
    {"SD", "South Dakota"},  {"TN", "Tennessee"},     {"TX", "Texas"},          {"UT", "Utah"},
    {"VA", "Virginia"},      {"VT", "Vermont"},       {"WA", "Washington"},     {"WI", "Wisconsin"},
    {"WV", "West Virginia"}, {"WY", "Wyoming"}};

std::vector<City> ReadCities(const char* file) {
  std::vector<City> cities;
  std::ifstream in(file);
  for (std::string line; std::getline(in, line);) {
    if (line.empty() || line[0] == '#' || line.starts_with("name,")) continue;
    std::string fields[5];  // name, country, latitude, longitude, state
    std::istringstream row(line);
    for (std::string& field : fields) std::getline(row, field, ',');
    City city{fields[0], fields[4], {}};
    if (LatLonToDegrees(fields[2].c_str(), &city.position.y, 0) &&
        LatLonToDegrees(fields[3].c_str(), &city.position.x, 0)) {
      cities.push_back(city);
    }
  }
  return cities;
}

/// What the way there and back costs in metres on the ground, by either way to compute.
struct RoundTrips {
  double stated = 0, exact = 0;

  void Note(CProjector& projector, PROJPOINT position) {
    projector.SetAccuracy(PA_STATED);
    stated = std::max(stated, Cost(projector, position));
    projector.SetAccuracy(PA_EXACT);
    exact = std::max(exact, Cost(projector, position));
  }

  static double Cost(CProjector& projector, PROJPOINT position);
};

double RoundTrips::Cost(CProjector& projector, PROJPOINT position) {
  PROJPOINT back = position;
  projector.Forward(&back, 1);
  projector.Inverse(&back, 1);
  const double dx = (back.x - position.x) * std::cos(position.y * 3.141592653589793 / 180), dy = back.y - position.y;
  return std::hypot(dx, dy) * kMetresPerDegree;
}

/// How much a map stretches at a position: the length of a small step north on the map against the ground.
double ScaleError(CProjector& projector, PROJPOINT position) {
  constexpr double kStep = 0.01;
  PROJPOINT ends[] = {{position.x, position.y - kStep}, {position.x, position.y + kStep}};
  projector.Forward(ends, 2);
  const double a = EllipsoidRadius(ET_GRS_1980_IUGG_1980), f = EllipsoidFlattening(ET_GRS_1980_IUGG_1980);
  const double e2 = 2 * f - f * f, sine = std::sin(position.y * 3.141592653589793 / 180), w = 1 - e2 * sine * sine;
  const double ground = 2 * kStep * 3.141592653589793 / 180 * a * (1 - e2) / (w * std::sqrt(w));
  return std::fabs(std::hypot(ends[1].x - ends[0].x, ends[1].y - ends[0].y) / ground - 1);
}

/// The zone of the state's name whose map stretches least at the position.
StateZoneType BestZone(const City& city) {
  const auto state =
      std::find_if(std::begin(kStates), std::end(kStates), [&](const State& s) { return city.state == s.code; });
  if (state == std::end(kStates)) return SZ_NONE;
  StateZoneType best = SZ_NONE;
  double least = 1;
  for (int i = 0; i < SZ_NONE; ++i) {
    const auto zone = static_cast<StateZoneType>(i);
    char name[64];
    int posc = 0;
    ProjGetStateZoneInfo(zone, name, nullptr);
    if (!std::string(name).starts_with(state->name) || !ProjStateZoneToPOSCNumber(PT_STATEPLANE83, zone, &posc))
      continue;
    PROJDATA record{};
    record.Type = PT_STATEPLANE83;
    record.Zone = zone;
    record.Ellipsoid = ET_GRS_1980_IUGG_1980;
    CProjector projector(&record);
    const double error = ScaleError(projector, city.position);
    if (error < least) {
      least = error;
      best = zone;
    }
  }
  return best;
}

CProjector UtmProjector(double lon, double lat, char* zoneName) {
  const int zone =
      ProjUTMLonToZoneNumber(std::floor(lon));  // whole degrees below the longitude: truncation would shift -0.5
  PROJDATA record{};
  record.Type = PT_UTM;
  record.Lon0 = ProjUTMZoneNumberToLon(zone);
  record.bSouth = lat < 0;
  record.Ellipsoid = ET_WGS_84;
  ProjUTMZoneNumberToName(zone, lat < 0, zoneName, 16, UTMZN_SHORT);
  return CProjector(&record);
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<City> cities = ReadCities(argc > 1 ? argv[1] : "cities.csv");
  if (cities.empty()) {
    std::fprintf(stderr, "usage: cities FILE (name,country,lat,lon,state)\n");
    return 2;
  }
  RoundTrips utmTrips, stateTrips;
  std::printf("%-20s %10s %10s  %-8s %11s %12s  %-26s %11s %11s\n", "CITY", "LAT", "LON", "UTM", "EASTING", "NORTHING",
              "STATE PLANE 1983", "X", "Y");
  for (const City& city : cities) {
    char utmZone[16];
    PROJPOINT p = city.position;
    CProjector utm = UtmProjector(city.position.x, city.position.y, utmZone);
    utmTrips.Note(utm, city.position);
    utm.Forward(&p, 1);
    std::printf("%-20s %10.4f %10.4f  %-8s %11.3f %12.3f", city.name.c_str(), city.position.y, city.position.x,
                utmZone + 5, p.x, p.y);
    if (const StateZoneType zone = BestZone(city); zone != SZ_NONE) {
      char name[64];
      ProjGetStateZoneInfo(zone, name, nullptr);
      PROJDATA record{};
      record.Type = PT_STATEPLANE83;
      record.Zone = zone;
      record.Ellipsoid = ET_GRS_1980_IUGG_1980;
      CProjector projector(&record);
      stateTrips.Note(projector, city.position);
      p = city.position;
      projector.Forward(&p, 1);
      std::printf("  %-26s %11.3f %11.3f", name, p.x, p.y);
    }
    std::printf("\n");
  }
  std::printf(
      "\n%zu cities, computed exactly. Largest difference after the way back:\n"
      "                   UTM  state plane\n"
      "  exact   %11.9f m  %11.9f m\n"
      "  stated  %11.9f m  %11.9f m  (the state plane figure: a stopping rule, see docs/accuracy.md)\n",
      cities.size(), utmTrips.exact, stateTrips.exact, utmTrips.stated, stateTrips.stated);
  return 0;
}
