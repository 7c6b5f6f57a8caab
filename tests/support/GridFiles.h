// Synthetic grid files for the tests, byte by byte, and a directory that goes when the test ends.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace orvex::test {

/// Numbers as bytes in either byte order.
class ByteWriter {
 public:
  explicit ByteWriter(bool bigEndian = false) : m_big(bigEndian) {}
  template <typename Unsigned>
  ByteWriter& Raw(Unsigned value) {
    std::string bytes;
    for (std::size_t i = 0; i < sizeof value; ++i)
      bytes += static_cast<char>(static_cast<unsigned char>(value >> 8 * i));
    if (m_big) std::reverse(bytes.begin(), bytes.end());
    m_bytes += bytes;
    return *this;
  }
  ByteWriter& Int(std::int32_t value) { return Raw(static_cast<std::uint32_t>(value)); }
  ByteWriter& Float(double value) { return Raw(__builtin_bit_cast(std::uint32_t, static_cast<float>(value))); }
  ByteWriter& Double(double value) { return Raw(__builtin_bit_cast(std::uint64_t, value)); }
  ByteWriter& Text(std::string text, std::size_t width) {
    text.resize(width, ' ');
    m_bytes += text;
    return *this;
  }
  std::string& Bytes() { return m_bytes; }

 private:
  bool m_big;
  std::string m_bytes;
};

/// Shifts in seconds, north and west positive, at a position in degrees, north and east positive.
using ShiftField = std::function<std::pair<double, double>(double lon, double lat)>;

/// Limits and spacing in degrees, longitudes east positive.
struct Ntv2SubGrid {
  std::string name, parent;
  double west, south, east, north, spacing;
  ShiftField shift;
};

inline std::string Ntv2File(const std::vector<Ntv2SubGrid>& grids, bool bigEndian = false) {
  ByteWriter file(bigEndian);
  const auto text = [&](const char* key, const std::string& value) { file.Text(key, 8).Text(value, 8); };
  const auto integer = [&](const char* key, std::int32_t value) { file.Text(key, 8).Int(value).Int(0); };
  const auto real = [&](const char* key, double value) { file.Text(key, 8).Double(value); };
  integer("NUM_OREC", 11);
  integer("NUM_SREC", 11);
  integer("NUM_FILE", static_cast<std::int32_t>(grids.size()));
  text("GS_TYPE", "SECONDS");
  for (const char* key : {"VERSION", "SYSTEM_F", "SYSTEM_T"}) text(key, "TEST");
  for (const char* key : {"MAJOR_F", "MINOR_F", "MAJOR_T", "MINOR_T"}) real(key, 6378137);
  for (const Ntv2SubGrid& g : grids) {
    const auto rows = std::lround((g.north - g.south) / g.spacing) + 1;
    const auto columns = std::lround((g.east - g.west) / g.spacing) + 1;
    text("SUB_NAME", g.name);
    text("PARENT", g.parent);
    text("CREATED", "");
    text("UPDATED", "");
    real("S_LAT", g.south * 3600);
    real("N_LAT", g.north * 3600);
    real("E_LONG", -g.east * 3600);
    real("W_LONG", -g.west * 3600);
    real("LAT_INC", g.spacing * 3600);
    real("LONG_INC", g.spacing * 3600);
    integer("GS_COUNT", static_cast<std::int32_t>(rows * columns));
    for (long r = 0; r < rows; ++r) {
      for (long c = 0; c < columns; ++c) {
        const auto [north, west] =
            g.shift(g.east - static_cast<double>(c) * g.spacing, g.south + static_cast<double>(r) * g.spacing);
        file.Float(north).Float(west).Float(-1).Float(-1);
      }
    }
  }
  file.Text("END", 16);
  return file.Bytes();
}

/// A NADCON file; word(row, column) gives every word from row 1 on, column 0 (the dummy) included.
struct NadconGrid {
  std::int32_t columns, rows;
  double xMin, yMin, spacing;
};

inline std::string NadconFile(const NadconGrid& grid, const std::function<double(int row, int column)>& word) {
  ByteWriter file;
  file.Text("SYNTHETIC", 56).Text("TEST", 8).Int(grid.columns).Int(grid.rows).Int(1);
  for (const double value : {grid.xMin, grid.spacing, grid.yMin, grid.spacing, 0.0}) file.Float(value);
  file.Bytes().resize(4 * (static_cast<std::size_t>(grid.columns) + 1), '\0');
  for (int r = 1; r <= grid.rows; ++r) {
    for (int c = 0; c <= grid.columns; ++c) file.Float(word(r, c));
  }
  return file.Bytes();
}

inline void WriteFile(const std::filesystem::path& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

inline std::string ReadWholeFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// A directory of this process's own, removed with all it holds.
class TemporaryDirectory {
 public:
  TemporaryDirectory() {
    std::random_device random;
    m_path =
        std::filesystem::temp_directory_path() / ("orvex-test-" + std::to_string(random()) + std::to_string(random()));
    std::filesystem::create_directories(m_path);
  }
  ~TemporaryDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
  }
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
  std::filesystem::path operator/(const std::string& name) const { return m_path / name; }
  const std::filesystem::path& Path() const { return m_path; }

 private:
  std::filesystem::path m_path;
};

/// A few bytes of a file changed, cut off or doubled at random.
inline std::string Damaged(std::string bytes, std::mt19937& random) {
  const auto below = [&](std::size_t limit) {
    return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
  };
  for (std::size_t changes = 1 + below(4); changes > 0 && !bytes.empty(); --changes) {
    const std::size_t at = below(2) == 0 ? below(bytes.size()) : below(std::min<std::size_t>(bytes.size(), 400));
    static constexpr unsigned char kNasty[] = {0x00, 0x01, 0x7F, 0x80, 0xFF, 0x0B, 0xC0, 0xF0};
    switch (below(5)) {
      case 0:
        bytes.resize(at);
        break;
      case 1:
        bytes.insert(at, bytes.substr(at, below(64)));
        break;
      case 2:
        bytes.replace(at, 4, 4, static_cast<char>(kNasty[below(8)]));
        break;
      default:
        bytes[at] = static_cast<char>(below(2) == 0 ? kNasty[below(8)] : below(256));
        break;
    }
  }
  return bytes;
}

}  // namespace orvex::test
