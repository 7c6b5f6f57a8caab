// Nadcon - NAD 27 to NAD 83 by a pair of NADCON grid files.
// Format and bilinear interpolation: NOAA Technical Memorandum NOS NGS-50 (1990). Little-endian records of NC + 1
// four-byte words; record 0 is the header, record r holds row r, its word 0 is a dummy and its word c the node of
// column c. Fixed on purpose: the .LAS value moves the longitude and the .LOS value the latitude, both added;
// truncation towards zero lets points up to one spacing west or south of the grid be interpolated from the dummy words
// or the header record.
#include <algorithm>
#include <array>
#include <memory>
#include <new>
#include <optional>
#include <string>

#include "datum/DatumStep.h"
#include "datum/grids/GridBytes.h"
#include "datum/grids/GridDirectory.h"
#include "datum/grids/Nadcon.h"
#include "datum/grids/NadconShift.h"
#include "platform/Platform.h"
#include "support/Errors.h"
#include "support/Log.h"

namespace orvex::detail {

namespace {

// Positions that failures report.
constexpr int kMissingFileLine = 96;
constexpr int kReadLine = 97;
constexpr int kNoMemoryLine = 98;

constexpr int kMsgReadFailed = 20203;

// A grid file as four-byte words. Blocks that points fall on are kept for the time of the call, in a table of fixed
// size, so that many points cost few reads and neither one point nor a hostile header costs much memory. A read that
// fails throws 20203; the end of the file is no failure.
class WordFile {
 public:
  explicit WordFile(const std::string& path) : m_file(path) {}
  bool IsOpen() const { return m_file.IsOpen(); }

  // Reads bytes from the start of the file; false when there are fewer.
  bool ReadStart(unsigned char* bytes, std::size_t count) { return ReadAt(0, bytes, count) == count; }

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
  const Block& BlockAt(std::uint64_t number) {
    std::unique_ptr<Block>& slot = m_slots[number % kSlots];
    if (!slot) slot = std::make_unique<Block>();
    if (slot->number != number) Read(*slot, number);
    return *slot;
  }

  void Read(Block& block, std::uint64_t number) {
    block.number = UINT64_MAX;  // until it has been read
    block.wordsRead = ReadAt(number * 4 * kBlockWords, block.bytes.data(), block.bytes.size()) / 4;
    block.number = number;
  }

  std::size_t ReadAt(std::uint64_t position, unsigned char* bytes, std::size_t count) const {
    const auto read = m_file.ReadAt(position, bytes, count);
    if (!read) ThrowError("DtmNadcon", kReadLine, kMsgReadFailed);
    return *read;
  }

  platform::InputFile m_file;
  std::array<std::unique_ptr<Block>, kSlots> m_slots;
};

// Published files are named conus.las or CONUS.LAS.
std::string UpperAscii(std::string text) {
  for (char& c : text) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  return text;
}

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

// Where a point lies: the words of the cell's western nodes.
struct Words {
  std::uint64_t south, north;
};

bool FindCell(const Header& grid, NadconExtent extent, double x, double y, Words& words, NadconCell& cell) {
  const double column = (x - grid.xMin) / grid.dx + 1;
  const double row = (y - grid.yMin) / grid.dy + 1;
  // Truncated indexes from 0 up to the count, tested before truncating so that no number, NaN included, overflows.
  if (!(column > -1 && column <= grid.columns && row > -1 && row <= grid.rows)) return false;
  auto c = static_cast<std::int32_t>(column), r = static_cast<std::int32_t>(row);
  if (extent == NadconExtent::Nodes) {
    if (!(column >= 1 && row >= 1) || grid.columns < 2 || grid.rows < 2) return false;
    c = std::min(c, grid.columns - 1);  // the edges in the east and north belong to the last cells
    r = std::min(r, grid.rows - 1);
  }
  if (c >= grid.columns || r >= grid.rows) return false;  // a grid without columns or rows as well
  const std::uint64_t record = static_cast<std::uint64_t>(grid.columns) + 1;
  words.south = record * static_cast<std::uint64_t>(r) + static_cast<std::uint64_t>(c);
  words.north = words.south + record;
  cell.fx = column - c;
  cell.fy = row - r;
  return true;
}

// The four nodes of a cell; false when the file does not hold them all.
bool Load(WordFile& file, const Words& words, GridNodes& nodes) {
  return file.Pair(words.south, nodes.southWest, nodes.southEast) &&
         file.Pair(words.north, nodes.northWest, nodes.northEast);
}

}  // namespace

class NadconFiles::Files {
 public:
  Files(const std::string& lasPath, const std::string& losPath) : las(lasPath), los(losPath) {}

  WordFile las, los;
  std::optional<Header> header;
};

NadconFiles::NadconFiles(const char* region) try {
  Trace("----------------NADCON--------------\n");
  const std::string name = region, upper = UpperAscii(name);
  const std::string lasPath = FindGridFile({name + ".LAS", name + ".las", upper + ".LAS"});
  const std::string losPath = FindGridFile({name + ".LOS", name + ".los", upper + ".LOS"});
  m_files = std::make_unique<Files>(lasPath, losPath);
  if (!m_files->las.IsOpen() || !m_files->los.IsOpen()) {
    Trace("Failed opening grid files (%s and %s)\n", lasPath.c_str(), losPath.c_str());
    Assert("DtmNadcon", kMissingFileLine);
  }
  m_files->header = ReadHeader(m_files->las);  // the .LOS file is taken to have the same one
} catch (const std::bad_alloc&) {
  ThrowError("DtmNadcon", kNoMemoryLine, kMsgOutOfMemory);
}

NadconFiles::~NadconFiles() = default;

bool NadconFiles::Find(NadconExtent extent, double x, double y, NadconCell& cell) const try {
  Words words;
  if (!m_files->header || !FindCell(*m_files->header, extent, x, y, words, cell)) return false;
  return Load(m_files->las, words, cell.las) && Load(m_files->los, words, cell.los);
} catch (const std::bad_alloc&) {
  ThrowError("DtmNadcon", kNoMemoryLine, kMsgOutOfMemory);
}

bool FindNadconCell(const NadconFiles& grid, NadconExtent extent, double x, double y, NadconCell& cell) {
  return grid.Find(extent, x, y, cell);
}

bool ConvertNadcon(const char* region, DATUMPOINT* pts, int n) {
  const NadconFiles grid(region);
  DatumOperationsFor(n).shift(ViewOf(pts), n, {StepKind::Nadcon, &grid});
  return true;
}

}  // namespace orvex::detail
