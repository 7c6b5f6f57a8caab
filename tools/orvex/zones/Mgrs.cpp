// Mgrs - references of the Military Grid Reference System.
#include "zones/Mgrs.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdint>

#include "zones/ZoneGrid.h"

namespace orvex::tool {

namespace {

constexpr std::string_view kBands = "CDEFGHJKLMNPQRSTUVWX";                    // of 8 degrees from 80 S, the last of 12
constexpr std::string_view kColumns[] = {"ABCDEFGH", "JKLMNPQR", "STUVWXYZ"};  // by zone modulo 3, from 100 km
constexpr std::string_view kRows = "ABCDEFGHJKLMNPQRSTUV";  // every 2000 km anew; even zones start with F
constexpr int kEvenZoneRow = 5;
constexpr double kSquare = 1e5, kRowCycle = 2e6, kSouthNorthing = 1e7;  // metres
constexpr double kRounding = 1e-6;  // metres: what a place may lack to the edge of the square that it is in

/// Half of a polar map: its letter, its columns and rows and where they start, metres.
struct PolarPart {
  char letter;
  bool north;
  std::string_view columns, rows;
  double west, south;
};

constexpr std::string_view kRowsNorth = "ABCDEFGHJKLMNP", kRowsSouth = "ABCDEFGHJKLMNPQRSTUVWXYZ";
constexpr PolarPart kPolarParts[] = {{'A', false, "JKLPQRSTUXYZ", kRowsSouth, 8e5, 8e5},
                                     {'B', false, "ABCFGHJKLPQR", kRowsSouth, 2e6, 8e5},
                                     {'Y', true, "RSTUXYZ", kRowsNorth, 1.3e6, 1.3e6},
                                     {'Z', true, "ABCFGHJ", kRowsNorth, 2e6, 1.3e6}};

/// The digits of a coordinate within its square, cut off and not rounded, so that the reference names the square.
std::string Digits(double withinSquare, int digits) {
  const double cells = std::floor(withinSquare / kSquare * std::pow(10.0, digits));
  std::string text = std::to_string(static_cast<std::uint64_t>(std::max(cells, 0.0)));
  return digits == 0 ? "" : std::string(static_cast<std::size_t>(digits) - text.size(), '0') + text;
}

std::string Reference(std::string zone, std::string_view columns, std::string_view rows, PROJPOINT offset, int digits) {
  offset = {offset.x + kRounding, offset.y + kRounding};
  const double column = std::floor(offset.x / kSquare), row = std::floor(offset.y / kSquare);
  if (column < 0 || row < 0 || column >= static_cast<double>(columns.size()) ||
      row >= static_cast<double>(rows.size())) {
    return "";
  }
  zone += columns[static_cast<std::size_t>(column)];
  zone += rows[static_cast<std::size_t>(row)];
  return zone + Digits(offset.x - column * kSquare, digits) + Digits(offset.y - row * kSquare, digits);
}

/// The alphabet of the rows of a UTM zone, turned so that it starts with the letter at the equator.
std::string RowsOfZone(int zone) {
  std::string rows(kRows);
  if (zone % 2 == 0) std::rotate(rows.begin(), rows.begin() + kEvenZoneRow, rows.end());
  return rows;
}

std::string_view ColumnsOfZone(int zone) {
  return kColumns[static_cast<std::size_t>((std::abs(zone) - 1) % 3)];
}

/// What follows the zone and the band, taken apart: offsets of the centre of the square, metres.
std::optional<PROJPOINT> ReadOffset(std::string_view text, std::string_view columns, std::string_view rows) {
  if (text.size() < 2 || text.size() % 2 != 0 || text.size() > 2 + 2 * kMostMgrsDigits) return std::nullopt;
  const std::size_t column = columns.find(text[0]), row = rows.find(text[1]), digits = (text.size() - 2) / 2;
  if (column == std::string_view::npos || row == std::string_view::npos) return std::nullopt;
  double values[2] = {0, 0};
  for (std::size_t i = 0; i < 2 * digits; ++i) {
    const char c = text[2 + i];
    if (c < '0' || c > '9') return std::nullopt;
    values[i / digits] = values[i / digits] * 10 + (c - '0');
  }
  const double cell = kSquare / std::pow(10.0, static_cast<double>(digits));
  return PROJPOINT{static_cast<double>(column) * kSquare + (values[0] + 0.5) * cell,
                   static_cast<double>(row) * kSquare + (values[1] + 0.5) * cell};
}

std::optional<GridPlace> ReadPolar(std::string_view text) {
  for (const PolarPart& part : kPolarParts) {
    if (text.front() != part.letter) continue;
    const std::optional<PROJPOINT> offset = ReadOffset(text.substr(1), part.columns, part.rows);
    if (!offset) return std::nullopt;
    return GridPlace{part.north ? kUpsNorth : kUpsSouth, {part.west + offset->x, part.south + offset->y}};
  }
  return std::nullopt;
}

/// Rows repeat every 2000 km, 18 degrees; the band tells which of them is meant. A degree of the meridian has 110.6 to
/// 111.7 km, a square reaches up to a degree beyond its band.
std::optional<double> NorthingInBand(double withinCycle, std::size_t band) {
  constexpr double kDegree = 111100, kSlack = 1.5;
  const double low = -80 + 8 * static_cast<double>(band), high = band + 1 == kBands.size() ? 84 : low + 8;
  for (int cycle = -5; cycle < 5; ++cycle) {
    const double northing = withinCycle + cycle * kRowCycle, latitude = northing / kDegree;
    if (latitude > low - kSlack && latitude < high + kSlack) return northing;
  }
  return std::nullopt;
}

std::optional<GridPlace> ReadUtm(std::string_view text) {
  const std::size_t digits = text.find_first_not_of("0123456789");
  if (digits > 2) return std::nullopt;  // as when there are digits alone
  int zone = 0;
  for (const char c : text.substr(0, digits)) zone = zone * 10 + (c - '0');
  const std::size_t band = kBands.find(text[digits]);
  if (zone < 1 || zone > 60 || band == std::string_view::npos) return std::nullopt;
  const std::optional<PROJPOINT> offset = ReadOffset(text.substr(digits + 1), ColumnsOfZone(zone), RowsOfZone(zone));
  if (!offset) return std::nullopt;
  const std::optional<double> northing = NorthingInBand(offset->y, band);
  if (!northing) return std::nullopt;
  const bool south = band < kBands.find('N');
  return GridPlace{south ? -zone : zone, {kSquare + offset->x, *northing + (south ? kSouthNorthing : 0)}};
}

}  // namespace

std::string FormatMgrs(const GridPlace& place, double latitude, int digits) {
  const auto [zone, point] = place;
  if (std::abs(zone) == kUpsNorth) {
    const bool east = point.x + kRounding >= 2e6;
    const PolarPart& part = kPolarParts[(zone > 0 ? 2 : 0) + (east ? 1 : 0)];
    return Reference(std::string(1, part.letter), part.columns, part.rows, {point.x - part.west, point.y - part.south},
                     digits);
  }
  const auto band = static_cast<std::size_t>(std::clamp(std::floor((latitude + 80) / 8), 0.0, 19.0));
  double row = std::fmod(zone < 0 ? point.y - kSouthNorthing : point.y, kRowCycle);
  if (row < -kRounding) row += kRowCycle;
  const std::string number = std::to_string(std::abs(zone));
  return Reference((number.size() < 2 ? "0" : "") + number + kBands[band], ColumnsOfZone(zone), RowsOfZone(zone),
                   {point.x - kSquare, row}, digits);
}

std::optional<GridPlace> ParseMgrs(std::string_view text) {
  std::string plain;
  for (const char c : text) {
    if (c != ' ' && c != '\t') plain += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  }
  if (plain.empty()) return std::nullopt;
  return std::isdigit(static_cast<unsigned char>(plain.front())) != 0 ? ReadUtm(plain) : ReadPolar(plain);
}

}  // namespace orvex::tool
