// UtmZones - UTM zone numbers, names and central meridians.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "orvex/zones.h"
#include "points/Elementary.h"
#include "support/FpGuard.h"
#include "support/Log.h"
#include "support/Text.h"

namespace orvex {

namespace detail {
namespace {

/// Zone number counted from 0, for any integer: zone 1, 61 and -59 are 0, zone 0 is 59.
int ZoneIndex(int zone) {
  const int remainder = (zone % 60 + 59) % 60;
  return remainder < 0 ? remainder + 60 : remainder;
}

int WestLimit(int index) {
  return 6 * index - 180;
}

char EastOrWest(int lon) {
  return lon < 0 ? 'W' : 'E';
}

const char* SkipBlanksFrom(const char* at) {
  while (IsBlank(*at)) ++at;
  return at;
}

}  // namespace
}  // namespace detail

using detail::LogPrintf;

double ProjUTMZoneNumberToLon(int zone) {
  LogPrintf("ProjUTMZoneNumberToLon(zone=%d)\n", zone);
  return detail::WestLimit(detail::ZoneIndex(zone)) + 3;
}

int ProjUTMLonToZoneNumber(double lon) {
  const detail::FpGuard guard;  // formatting a number for the log raises exceptions too
  LogPrintf("ProjUTMLonToZoneNumber(lon=%f)\n", lon);
  const double reduced = detail::Remainder(lon, 360.0);  // keeps the sign; a longitude that is not finite counts as 0
  const int whole = std::isnan(reduced) ? 0 : static_cast<int>(reduced);
  return (whole + 360 + 180) % 360 / 6 + 1;
}

bool ProjUTMZoneNumberToName(int zone, bool south, char* name, int nameLen, UTMZoneNameFormat format) {
  LogPrintf("ProjUTMZoneNumberToName(zone=%d, south=%s, name=%p, nameLen=%d, format=%d)\n", zone,
            detail::BoolText(south), static_cast<void*>(name), nameLen, static_cast<int>(format));
  if (name == nullptr) return false;
  const int index = detail::ZoneIndex(zone), west = detail::WestLimit(index), east = west + 6;
  const char hemisphere = south ? 'S' : 'N';
  char text[80];
  switch (static_cast<int>(format)) {
    case UTMZN_SHORT:
      std::snprintf(text, sizeof text, "Zone %02d%c", index + 1, hemisphere);
      break;
    case UTMZN_LETTERS:
      std::snprintf(text, sizeof text, "Zone %02d%c (%03d%c to %03d%c)", index + 1, hemisphere, std::abs(west),
                    detail::EastOrWest(west), std::abs(east), detail::EastOrWest(east));
      break;
    case UTMZN_SIGNED:
      std::snprintf(text, sizeof text, "Zone %02d%c (%+03d to %+03d)", index + 1, hemisphere, west, east);
      break;
    default:
      return false;
  }
  const std::size_t length = std::strlen(text);
  if (static_cast<int>(length) >= nameLen) return false;
  std::memcpy(name, text, length + 1);
  return true;
}

bool ProjUTMZoneNameToNumber(const char* name, int* zone, bool* south) {
  LogPrintf("ProjUTMZoneNameToNumber(name=\"%s\", zone=%p, south=%p)\n", detail::LogText(name),
            static_cast<void*>(zone), static_cast<void*>(south));
  if (name == nullptr) return false;
  const char* at = name;
  while (*at != '\0' && !detail::IsDigit(*at) && *at != '+' && *at != '-') ++at;
  const bool negative = *at == '-';
  if (*at == '+' || *at == '-') at = detail::SkipBlanksFrom(at + 1);
  if (!detail::IsDigit(*at)) return false;
  int number = 0;
  for (; detail::IsDigit(*at); ++at) number = (number * 10 + (*at - '0')) % 60;  // only the residue counts
  at = detail::SkipBlanksFrom(at);
  if (zone != nullptr) *zone = detail::ZoneIndex(negative ? -number : number) + 1;
  if (south != nullptr) *south = detail::LowerAscii(*at) == 's';
  return true;
}

}  // namespace orvex
