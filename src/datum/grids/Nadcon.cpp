// DtmNadcon - NAD 27 to NAD 83 by a pair of NADCON grid files.
// Format and bilinear interpolation: NOAA Technical Memorandum NOS NGS-50 (1990). Little-endian records of NC + 1
// four-byte words; record 0 is the header, record r holds row r, its word 0 is a dummy and its word c the node of
// column c. Fixed on purpose: the .LAS value moves the longitude and the .LOS value the latitude, both added;
// truncation towards zero lets points up to one spacing west or south of the grid be interpolated from the dummy words
// or the header record.
#include <array>
#include <climits>
#include <cstdio>
#include <memory>
#include <new>
#include <optional>
#include <string>

#include "datum/DatumPoint.h"
#include "datum/grids/GridBytes.h"
#include "datum/grids/Nadcon.h"
#include "platform/Platform.h"
#include "support/Errors.h"
#include "support/Log.h"

namespace orvex::detail {

namespace {

// Positions that failures report.
constexpr int kMissingFileLine = 96;
constexpr int kNoMemoryLine = 98;

// A grid file as four-byte words. Blocks that points fall on are kept for the time of the call, in a table of fixed
// size, so that many points cost few reads and neither one point nor a hostile header costs much memory.
class WordFile {
 public:
  explicit WordFile(const std::string& path) : m_file(std::fopen(path.c_str(), "rb")) {
    if (m_file) std::setvbuf(m_file.get(), nullptr, _IONBF, 0);
  }
  bool IsOpen() const { return m_file != nullptr; }

  // Reads bytes from the start of the file; false when there are fewer.
  bool ReadStart(unsigned char* bytes, std::size_t count) {
    return std::fseek(m_file.get(), 0, SEEK_SET) == 0 && std::fread(bytes, 1, count, m_file.get()) == count;
  }

  // The words `word` and `word + 1` as floats; false when the file does not hold both.
  bool Pair(std::uint64_t word, double& first, double& second) {
    const Block& block = BlockAt(word / kBlockWords);
    const std::size_t index = word % kBlockWords;
    if (index + 1 >= block.wordsRead) return false;
    first = LoadFloat(&block.bytes[4 * index], ByteOrder::Little);
    second = LoadFloat(&block.bytes[4 * index + 4], ByteOrder::Little);
    return true;
  }

 private:
  static constexpr std::size_t kBlockWords = 4096;  // 16 KB
  static constexpr std::size_t kSlots = 256;        // 4 MB at most: all of any published grid

  struct Block {
    std::uint64_t number = UINT64_MAX;
    std::size_t wordsRead = 0;
    std::array<unsigned char, 4 * (kBlockWords + 1)> bytes;  // one word into the next block: no pair is split
  };
  struct Closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };

  const Block& BlockAt(std::uint64_t number) {
    std::unique_ptr<Block>& slot = m_slots[number % kSlots];
    if (!slot) slot = std::make_unique<Block>();
    if (slot->number != number) Read(*slot, number);
    return *slot;
  }

  void Read(Block& block, std::uint64_t number) {
    constexpr std::uint64_t kLastBlock = LONG_MAX / (4 * kBlockWords);
    block.number = number;
    block.wordsRead = 0;
    if (number > kLastBlock) return;
    if (std::fseek(m_file.get(), static_cast<long>(number * 4 * kBlockWords), SEEK_SET) != 0) return;
    block.wordsRead = std::fread(block.bytes.data(), 1, block.bytes.size(), m_file.get()) / 4;
  }

  std::unique_ptr<std::FILE, Closer> m_file;
  std::array<std::unique_ptr<Block>, kSlots> m_slots;
};

struct Header {
  std::int32_t columns, rows;
  double xMin, dx, yMin, dy;  // degrees
};

std::optional<Header> ReadHeader(WordFile& file) {
  unsigned char bytes[96];
  if (!file.ReadStart(bytes, sizeof bytes)) return std::nullopt;
  const auto integer = [&](int offset) { return LoadInt32(bytes + offset, ByteOrder::Little); };
  const auto real = [&](int offset) { return static_cast<double>(LoadFloat(bytes + offset, ByteOrder::Little)); };
  return Header{integer(64), integer(68), real(76), real(80), real(84), real(88)};
}

// Where a point lies: the cell's south-west word and the place within the cell.
struct Cell {
  std::uint64_t south, north;  // words of the western nodes
  double fx, fy;
};

bool FindCell(const Header& grid, const DATUMPOINT& p, Cell& cell) {
  const double column = (p.x - grid.xMin) / grid.dx + 1;
  const double row = (p.y - grid.yMin) / grid.dy + 1;
  // Truncated indexes from 0 up to the count, tested before truncating so that no number, NaN included, overflows.
  if (!(column > -1 && column < grid.columns && row > -1 && row < grid.rows)) return false;
  const auto c = static_cast<std::int32_t>(column), r = static_cast<std::int32_t>(row);
  if (c >= grid.columns || r >= grid.rows) return false;  // a grid without columns or rows
  const std::uint64_t record = static_cast<std::uint64_t>(grid.columns) + 1;
  cell.south = record * static_cast<std::uint64_t>(r) + static_cast<std::uint64_t>(c);
  cell.north = cell.south + record;
  cell.fx = column - c;
  cell.fy = row - r;
  return true;
}

// Shift of a cell in degrees; false when the file does not hold all four nodes.
bool Interpolate(WordFile& file, const Cell& cell, double& degrees) {
  double a, b, c, d;
  if (!file.Pair(cell.south, a, b) || !file.Pair(cell.north, c, d)) return false;
  const double fx = cell.fx, fy = cell.fy;
  degrees = (a * (1 - fx) * (1 - fy) + b * fx * (1 - fy) + c * (1 - fx) * fy + d * fx * fy) / 3600;
  return true;
}

}  // namespace

bool ConvertNadcon(const char* region, DATUMPOINT* pts, int n) try {
  Trace("----------------NADCON--------------\n");
  const std::string stem = platform::ExecutableDirectory() + region;
  const std::string lasPath = stem + ".LAS", losPath = stem + ".LOS";
  WordFile las(lasPath), los(losPath);
  if (!las.IsOpen() || !los.IsOpen()) {
    Trace("Failed opening grid files (%s and %s)\n", lasPath.c_str(), losPath.c_str());
    Assert("DtmNadcon", kMissingFileLine);
  }
  const std::optional<Header> grid = ReadHeader(las);  // the .LOS file is taken to have the same header
  if (!grid) return true;                              // no node at all: every point lies outside
  for (int i = 0; i < n; ++i) {
    DATUMPOINT p = pts[i];
    Cell cell;
    double dx, dy;
    if (IsUnplottable(p) || !FindCell(*grid, p, cell)) continue;
    if (Interpolate(las, cell, dx) && Interpolate(los, cell, dy)) pts[i] = {p.x + dx, p.y + dy};
  }
  return true;
} catch (const std::bad_alloc&) {
  ThrowError("DtmNadcon", kNoMemoryLine, kMsgOutOfMemory);
}

}  // namespace orvex::detail
