// MapPlaces - points with names, from a table.
#include "maps/MapPlaces.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <initializer_list>
#include <utility>

#include "Failure.h"
#include "commands/Names.h"
#include "tables/Coordinate.h"
#include "tables/Fields.h"
#include "tables/Files.h"

namespace orvex::tool {

namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

class PlaceTable {
 public:
  explicit PlaceTable(const std::string& file) : m_file(file) { OpenInput(file, m_in); }

  std::vector<Place> Read() {
    std::string line;
    while (std::getline(m_in, line)) {
      ++m_line;
      TakeCarriageReturn(line);
      if (m_line == 1 && line.starts_with(kByteOrderMark)) line.erase(0, kByteOrderMark.size());
      if (IsIdle(line)) continue;
      const std::vector<std::string> fields = Take(line);
      if (!std::exchange(m_started, true) && IsHeaderLine(fields))
        ReadHeader(fields);
      else
        ReadPlace(fields);
    }
    RequireEnd(m_file, m_in);
    return std::move(m_places);
  }

 private:
  [[noreturn]] void Fail(const std::string& what) const {
    throw Failure(m_file + ":" + std::to_string(m_line) + ": " + what);
  }

  std::vector<std::string> Take(const std::string& line) {
    if (!m_started) m_delimiter = ChooseDelimiter("", line);
    std::vector<Field> places;
    if (!Splitter(m_delimiter).Split(line, places)) Fail("a quote is not closed");
    std::vector<std::string> fields;
    fields.reserve(places.size());
    for (const Field& field : places) fields.push_back(Unquoted(Text(line, field)));
    return fields;
  }

  void ReadHeader(const std::vector<std::string>& names) {
    const auto find = [&](std::initializer_list<const char*> usual) {
      for (std::size_t i = 0; i < names.size(); ++i) {
        for (const char* name : usual) {
          if (Lower(names[i]) == name) return i;
        }
      }
      return kNone;
    };
    m_columns = {find({"lon", "long", "lng", "longitude", "x"}), find({"lat", "latitude", "y"}),
                 find({"name", "label", "title", "city", "id"})};
    if (m_columns[0] == kNone || m_columns[1] == kNone) Fail("the header has no columns lon and lat");
  }

  void ReadPlace(const std::vector<std::string>& fields) {
    if (std::max(m_columns[0], m_columns[1]) >= fields.size()) Fail("expected a longitude and a latitude");
    const auto lon = ParseLongitude(fields[m_columns[0]]), lat = ParseLatitude(fields[m_columns[1]]);
    if (!lon || !lat || std::abs(*lon) > 360) Fail("expected a longitude and a latitude");
    m_places.push_back({{*lon, *lat}, m_columns[2] < fields.size() ? fields[m_columns[2]] : "", ""});
  }

  std::string m_file;
  std::ifstream m_in;
  int m_line = 0;
  bool m_started = false;
  char m_delimiter = ',';
  std::array<std::size_t, 3> m_columns{0, 1, 2};  ///< of longitude, latitude and name
  std::vector<Place> m_places;
};

}  // namespace

std::vector<Place> ReadPlaces(const std::string& file) {
  return PlaceTable(file).Read();
}

}  // namespace orvex::tool
