// State plane and UTM zones: the published definitions, lookups, names, and the zones at work.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <string>

#include <orvex/orvex.h>
#include <shr/exception.h>

#include "support/Projection.h"

namespace orvex {
namespace {

struct ZoneSet {
  const char* file;
  ProjType type;
  std::size_t count;
};
constexpr ZoneSet kSets[] = {{"state_plane_1927.csv", PT_STATEPLANE27, 134},
                             {"state_plane_1983.csv", PT_STATEPLANE83, 123}};

PROJDATA ZoneRecord(ProjType set, int zone) {
  PROJDATA rec{};
  rec.Type = set;
  rec.Zone = zone;
  rec.Ellipsoid = ET_WGS_84;
  return rec;
}

/// The published angle text: degrees, minutes and seconds split at their marks; empty is 0.
double Degrees(const std::string& text) {
  double value = 0, unit = 1;
  std::size_t at = 0;
  while (at < text.size()) {
    std::size_t used = 0;
    value += std::abs(std::stod(text.substr(at), &used)) / unit;
    at += used + 1;
    unit *= 60;
  }
  return text.starts_with('-') ? -value : value;
}

double NumberOr0(const std::string& text) {
  return text.empty() ? 0 : std::stod(text);
}

constexpr double kSamoaHalfWidth =
    0.001;  // degrees between American Samoa's one published parallel and each of its two

TEST(StatePlane, PublishedDefinitions) {
  for (const ZoneSet& set : kSets) {
    const test::CsvFile csv(set.file);
    EXPECT_EQ(csv.Rows(), set.count);
    for (std::size_t row = 0; row < csv.Rows(); ++row) {
      SCOPED_TRACE(std::string(set.file) + " " + csv.Text(row, "name"));
      const int zone = std::stoi(csv.Text(row, "zone"));
      PROJDATA rec = ZoneRecord(set.type, zone);
      rec.Lon1 = rec.Lon2 = rec.Lat1 = rec.Lat2 = rec.xOrg = rec.yOrg = rec.K0 =
          7;  // what a zone does not give becomes 0
      ProjGetStateZoneParams(&rec);
      const std::string& kind = csv.Text(row, "projection");
      const ProjType type = kind == "TM"      ? PT_UTM
                            : kind == "LCC"   ? PT_LAMBERT
                            : kind == "OMERC" ? PT_HOTINE
                                              : PT_POLYCONIC;
      EXPECT_EQ(+rec.Type, type);
      EXPECT_EQ(+rec.Zone, zone);
      EXPECT_EQ(+rec.Ellipsoid, std::stoi(csv.Text(row, "ellipsoid")));
      EXPECT_EQ(+rec.MajorRadius, EllipsoidRadius(rec.Ellipsoid));
      EXPECT_EQ(+rec.Flattening, EllipsoidFlattening(rec.Ellipsoid));
      const bool samoa = set.type == PT_STATEPLANE27 && zone == SZ_AMERICAN_SAMOA;
      constexpr double kTolerance = 1e-13;  // an ulp or two of 180 degrees
      EXPECT_NEAR(rec.Lon0, Degrees(csv.Text(row, "lon0")), kTolerance);
      EXPECT_NEAR(rec.Lat0, Degrees(csv.Text(row, "lat0")), kTolerance);
      EXPECT_NEAR(rec.Lat1, Degrees(csv.Text(row, "lat1")) + (samoa ? kSamoaHalfWidth : 0), kTolerance);
      EXPECT_NEAR(rec.Lat2, Degrees(csv.Text(row, "lat2")) - (samoa ? kSamoaHalfWidth : 0), kTolerance);
      EXPECT_NEAR(rec.Alpha, Degrees(csv.Text(row, "alpha")), kTolerance);
      EXPECT_TRUE(rec.bUseAlpha == (type == PT_HOTINE) && rec.bRotate == rec.bUseAlpha &&
                  rec.bUOffset == rec.bUseAlpha);
      EXPECT_EQ(+rec.K0, NumberOr0(csv.Text(row, "k0")));
      EXPECT_EQ(+rec.xOrg, csv.Number(row, "x0_m"));
      EXPECT_EQ(+rec.yOrg, csv.Number(row, "y0_m"));
      EXPECT_TRUE(rec.Lon1 == 0 && rec.Lon2 == 0);
      char name[64];
      int usgs = 0;
      ProjGetStateZoneInfo(static_cast<StateZoneType>(zone), name, &usgs);
      EXPECT_EQ(name, csv.Text(row, "name"));
      EXPECT_EQ(usgs, std::stoi(csv.Text(row, "usgs_code")));
      int posc = 0;
      ProjStateZoneToPOSCNumber(set.type, static_cast<StateZoneType>(zone), &posc);
      EXPECT_EQ(posc, std::stoi(csv.Text(row, "posc")));
    }
  }
}

TEST(StatePlane, ZonesWithoutADefinitionAreRefused) {
  for (const ZoneSet& set : kSets) {
    std::size_t defined = 0;
    for (int zone = -1; zone <= SZ_NONE + 1; ++zone) {
      PROJDATA rec = ZoneRecord(set.type, zone);
      ProjGetStateZoneParams(&rec);
      const bool refused = rec.Zone == SZ_NONE;
      EXPECT_TRUE(refused ? rec.Type == set.type : rec.Zone == zone && rec.Type != set.type) << zone;
      if (!refused) {
        ++defined;
        continue;
      }
      const PROJDATA given = ZoneRecord(set.type, zone);
      char message[256];
      EXPECT_EQ(ProjCheckParams(&given, message, false), 1) << zone;
      try {
        ProjCheckParams(&given, nullptr, true);
        ADD_FAILURE() << zone;
      } catch (const shr::Exception& e) {
        EXPECT_EQ(e.MessageId(), 20252);
      }
    }
    EXPECT_EQ(defined, set.count);
  }
  PROJDATA mercator = ZoneRecord(PT_MERCATOR, SZ_OREGON_NORTH);
  ProjGetStateZoneParams(&mercator);
  EXPECT_EQ(+mercator.Zone, SZ_NONE);
  EXPECT_EQ(+mercator.Type, PT_MERCATOR);
  ProjGetStateZoneParams(nullptr);
}

TEST(StatePlane, EveryNameAndCodeFindsItsZone) {
  for (int i = 0; i < SZ_NONE; ++i) {
    const auto zone = static_cast<StateZoneType>(i);
    char name[64];
    int usgs = -1, posc = 0;
    ProjGetStateZoneInfo(zone, name, &usgs);
    StateZoneType found = SZ_NONE;
    std::transform(name, name + std::string(name).size(), name,
                   [](char c) { return static_cast<char>(std::tolower(c)); });
    EXPECT_TRUE(ProjGetStateZoneFromName(&found, name));
    EXPECT_EQ(found, zone) << name;
    EXPECT_TRUE(ProjGetStateZoneFromUSGSCode(&found, usgs));
    EXPECT_EQ(found, usgs == 0 ? SZ_GREAT_LAKES_SURVEY_1 : zone) << usgs;
    for (const ProjType set : {PT_STATEPLANE27, PT_STATEPLANE83}) {
      if (!ProjStateZoneToPOSCNumber(set, zone, &posc)) continue;
      ProjType type = PT_UNDEFINED;
      EXPECT_TRUE(ProjGetStateZoneFromPOSCNumber(posc, &type, &found));
      EXPECT_TRUE(found == zone && type == set) << posc;
      PROJDATA rec = ZoneRecord(set, zone);  // a registered zone has a definition
      EXPECT_EQ(ProjCheckParams(&rec, nullptr, false), 0) << name;
    }
  }
}

TEST(StatePlane, LookupsOutsideTheCatalogue) {
  StateZoneType zone = SZ_OREGON_NORTH;
  EXPECT_FALSE(ProjGetStateZoneFromName(&zone, ""));
  EXPECT_FALSE(ProjGetStateZoneFromName(&zone, nullptr));
  EXPECT_FALSE(ProjGetStateZoneFromName(nullptr, "Oregon North"));
  EXPECT_FALSE(ProjGetStateZoneFromUSGSCode(&zone, -1));
  EXPECT_FALSE(ProjGetStateZoneFromUSGSCode(nullptr, 101));
  ProjType type = PT_BONNE;
  for (const int posc : {0, -1, 26728}) EXPECT_FALSE(ProjGetStateZoneFromPOSCNumber(posc, &type, &zone)) << posc;
  EXPECT_TRUE(zone == SZ_OREGON_NORTH && type == PT_BONNE);           // nothing written so far
  EXPECT_FALSE(ProjGetStateZoneFromName(&zone, "Mississippi East"));  // the catalogue spells it otherwise
  EXPECT_EQ(zone, SZ_NONE);
  EXPECT_FALSE(ProjGetStateZoneFromUSGSCode(&zone, 102030));
  EXPECT_EQ(zone, SZ_NONE);
  EXPECT_TRUE(ProjGetStateZoneFromPOSCNumber(26929, nullptr, nullptr));

  int posc = 7;
  EXPECT_FALSE(ProjStateZoneToPOSCNumber(PT_STATEPLANE83, SZ_MICHIGAN_EAST_OLD, &posc));
  EXPECT_FALSE(ProjStateZoneToPOSCNumber(PT_UTM, SZ_ALABAMA_EAST, &posc));
  EXPECT_FALSE(ProjStateZoneToPOSCNumber(PT_STATEPLANE27, SZ_NONE, &posc));
  EXPECT_TRUE(ProjStateZoneToPOSCNumber(PT_STATEPLANE27, SZ_ALABAMA_EAST, nullptr));
  EXPECT_EQ(posc, 7);
  for (const int outside : {-1, 142, 1000}) {
    char name[64] = "x";
    int usgs = 7;
    ProjGetStateZoneInfo(static_cast<StateZoneType>(outside), name, &usgs);
    EXPECT_STREQ(name, "");
    EXPECT_EQ(usgs, 0);
  }
  ProjGetStateZoneInfo(SZ_ALABAMA_EAST, nullptr, nullptr);
}

// EPSG Guidance Note 7-2, methods 9802 and 1051: the worked examples, US survey feet; confirmed by an evaluation of
// Snyder 1987, eq. 14-15 and 15-7 to 15-10, in 30-digit arithmetic.
TEST(StatePlane, PublishedExamples) {
  constexpr double kFoot = 1200.0 / 3937;
  const struct {
    StateZoneType zone;
    double lon, lat, xFeet, yFeet;
  } rows[] = {{SZ_TEXAS_SOUTH_CENTRAL, -96, 28.5, 2963503.91, 254759.80},
              {SZ_MICHIGAN_CENTRAL, -(83 + 10.0 / 60), 43.75, 2308335.75, 160210.48}};
  for (const auto& row : rows) {
    PROJDATA rec = ZoneRecord(PT_STATEPLANE27, row.zone);
    CProjector projector(&rec);
    const PROJPOINT p = test::Forward(projector, row.lon, row.lat);
    EXPECT_NEAR(p.x / kFoot, row.xFeet, 0.006);  // half a unit of the last printed digit
    EXPECT_NEAR(p.y / kFoot, row.yFeet, 0.006);
  }
}

// Every zone at work: its origin lies at its false origin, it is conformal with the scale that defines it, and a point
// off the origin returns. Bounds in metres: the Lambert inverse delivers the last estimate but one (0.51 m at most), so
// does the polyconic one (5 cm); the transverse Mercator series keep 1 mm within 3 degrees.
TEST(StatePlane, EveryZoneProjects) {
  for (const ZoneSet& set : kSets) {
    for (int zone = 0; zone < SZ_NONE; ++zone) {
      PROJDATA own = ZoneRecord(set.type, zone), rec = own;
      ProjGetStateZoneParams(&own);
      if (own.Zone == SZ_NONE) continue;
      SCOPED_TRACE(std::string(set.file) + " zone " + std::to_string(zone));
      const bool lambert = own.Type == PT_LAMBERT, polyconic = own.Type == PT_POLYCONIC;
      rec.Ellipsoid = own.Ellipsoid;  // for the measurement below; the zone's own counts in any case
      CProjector projector(&rec);
      const PROJPOINT origin = test::Forward(projector, own.Lon0, own.Lat0);
      EXPECT_NEAR(origin.x, own.xOrg, 1e-6);
      EXPECT_NEAR(origin.y, own.yOrg, 1e-6);

      const test::LocalScale scale = test::ScaleAt(projector, own.Lon0, lambert ? own.Lat1 : own.Lat0);
      const double defined = lambert || polyconic ? 1.0 : own.K0;  // on a standard parallel, at the centre
      EXPECT_NEAR(scale.k, defined, 1e-8);
      EXPECT_NEAR(scale.h, defined, 1e-8);
      EXPECT_NEAR(scale.cosine, 0, 1e-8);

      const PROJPOINT place{own.Lon0 + 1.25, own.Lat0 + 0.75};
      const PROJPOINT map = test::Forward(projector, place.x, place.y);
      EXPECT_TRUE(map.x > own.xOrg && map.y > own.yOrg);
      const PROJPOINT back = test::Inverse(projector, map.x, map.y);
      const double metres = test::ArcDegrees(back, place) * 111320;
      EXPECT_LE(metres, lambert ? 0.51 : polyconic ? 0.05 : 0.001);
      EXPECT_EQ(projector.Result(), 0);
    }
  }
}

TEST(UtmZones, NumbersAndMeridians) {
  const struct {
    int zone, normal;
  } zones[] = {
      {1, 1}, {60, 60}, {61, 1}, {0, 60}, {-1, 59}, {-59, 1}, {-4000, 20}, {2147483647, 7}, {-2147483647 - 1, 52}};
  for (const auto& z : zones) EXPECT_EQ(ProjUTMZoneNumberToLon(z.zone), 6 * z.normal - 183) << z.zone;
  const struct {
    double lon;
    int zone;
  } lons[] = {{-180, 1}, {-175, 1},   {-174.5, 2}, {-174, 2},  {-0.5, 31},   {0, 31},     {5.999, 31},
              {6, 32},   {179.9, 60}, {180, 1},    {186.5, 2}, {-181.5, 60}, {720.5, 31}, {-3.6e9, 31}};
  for (const auto& l : lons) EXPECT_EQ(ProjUTMLonToZoneNumber(l.lon), l.zone) << l.lon;
  for (const double lon : {std::nan(""), HUGE_VAL, -HUGE_VAL, 1e300}) {
    const int zone = ProjUTMLonToZoneNumber(lon);
    EXPECT_TRUE(zone >= 1 && zone <= 60) << lon;
  }
}

TEST(UtmZones, Names) {
  const struct {
    int zone;
    bool south;
    UTMZoneNameFormat format;
    const char* name;
  } names[] = {{33, false, UTMZN_SHORT, "Zone 33N"},
               {31, false, UTMZN_LETTERS, "Zone 31N (000E to 006E)"},
               {30, true, UTMZN_LETTERS, "Zone 30S (006W to 000E)"},
               {60, false, UTMZN_LETTERS, "Zone 60N (174E to 180E)"},
               {1, false, UTMZN_SIGNED, "Zone 01N (-180 to -174)"},
               {31, true, UTMZN_SIGNED, "Zone 31S (+00 to +06)"},  // the width counts the sign
               {-1, false, UTMZN_SHORT, "Zone 59N"}};
  for (const auto& n : names) {
    char name[80] = "x";
    const int length = static_cast<int>(std::string(n.name).size());
    for (const int tooSmall : {length, 0, -2147483647 - 1}) {
      EXPECT_FALSE(ProjUTMZoneNumberToName(n.zone, n.south, name, tooSmall, n.format));
      EXPECT_STREQ(name, "x");
    }
    EXPECT_TRUE(ProjUTMZoneNumberToName(n.zone, n.south, name, length + 1, n.format));
    EXPECT_STREQ(name, n.name);
    int zone = 0;
    bool south = !n.south;
    EXPECT_TRUE(ProjUTMZoneNameToNumber(name, &zone, &south));
    EXPECT_TRUE(zone == (n.zone + 60 - 1) % 60 + 1 && south == n.south) << name;
  }
  char name[80] = "x";
  EXPECT_FALSE(ProjUTMZoneNumberToName(1, false, name, 80, static_cast<UTMZoneNameFormat>(3)));
  EXPECT_FALSE(ProjUTMZoneNumberToName(1, false, nullptr, 80, UTMZN_SHORT));
  EXPECT_STREQ(name, "x");
}

TEST(UtmZones, ReadsNames) {
  const struct {
    const char* name;
    int zone;
    bool south;
  } readings[] = {{"Zone 33N", 33, false}, {"Zone 33 s", 33, true},
                  {"UTM 10S", 10, true},   {"-1", 59, false},
                  {"+ \t7\tS", 7, true},   {"Zone 61N", 1, false},
                  {"0", 60, false},        {"12 north of south", 12, false},
                  {"18sT", 18, true},      {"100000000000000000001", 41, false}};
  for (const auto& r : readings) {
    int zone = 0;
    bool south = !r.south;
    EXPECT_TRUE(ProjUTMZoneNameToNumber(r.name, &zone, &south)) << r.name;
    EXPECT_TRUE(zone == r.zone && south == r.south) << r.name << ": " << zone;
    EXPECT_TRUE(ProjUTMZoneNameToNumber(r.name, nullptr, nullptr));
  }
  for (const char* name : {"", "Zone N", "-", "UTM-zone 10", "+ -5"}) {
    EXPECT_FALSE(ProjUTMZoneNameToNumber(name, nullptr, nullptr)) << name;
  }
  EXPECT_FALSE(ProjUTMZoneNameToNumber(nullptr, nullptr, nullptr));
}

}  // namespace
}  // namespace orvex
