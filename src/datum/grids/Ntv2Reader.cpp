// Ntv2Reader - an NTv2 file into memory. Records of 16 bytes: 11 of the overview header, then for each sub-grid 11 of
// its header followed by its shifts. Header records are read by position, since files differ in their keys.
#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <new>
#include <streambuf>
#include <vector>

#include "datum/grids/GridBytes.h"
#include "datum/grids/Ntv2Grid.h"
#include "platform/Platform.h"

namespace orvex::detail {

namespace {

constexpr std::size_t kRecord = 16, kHeaderRecords = 11, kHeader = kRecord * kHeaderRecords;
constexpr std::uint64_t kSmallestSubGrid = kHeader + 4 * kRecord;  // two rows of two nodes
constexpr int kMostLevels = 100;
constexpr double kLargestCount = 1e9;  // rows or columns; keeps the arithmetic in range

using HeaderBytes = std::array<unsigned char, kHeader>;

// The 8 characters of a text value without the blanks (or zeros) behind them.
std::string Text(const HeaderBytes& header, std::size_t record) {
  std::string text(reinterpret_cast<const char*>(&header[kRecord * record + 8]), 8);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\0')) text.pop_back();
  return text;
}

double FromSeconds(double seconds) {
  return seconds / 3600 * kNtv2RadiansPerDegree;
}

// Nodes along one side, 0 when limits and spacing make no grid.
std::int32_t NodeCount(double low, double high, double spacing) {
  if (!(std::isfinite(low) && std::isfinite(high) && high > low && spacing > 0)) return 0;
  const double steps = Floor((high - low) / spacing + 0.5);
  return steps >= 1 && steps < kLargestCount ? static_cast<std::int32_t>(steps) + 1 : 0;
}

}  // namespace

class Ntv2Grid::Reader {
 public:
  explicit Reader(std::istream& in) : m_in(in) {}

  Ntv2Status ReadInto(Ntv2Grid& grid) {
    std::int32_t count = 0;
    if (!FindSize() || !ReadOverview(count)) return Ntv2Status::BadHeader;
    if (count < 1 || static_cast<std::uint64_t>(count) > m_left / kSmallestSubGrid) return Ntv2Status::Corrupt;
    for (std::int32_t i = 0; i < count; ++i) {
      if (!ReadSubGrid(grid)) return Ntv2Status::Corrupt;
    }
    return Link(grid) ? Ntv2Status::Ok : Ntv2Status::Corrupt;  // the END record is of no use and may be missing
  }

 private:
  bool FindSize() {
    m_in.seekg(0, std::ios::end);
    const auto size = static_cast<std::streamoff>(m_in.tellg());
    m_in.seekg(0, std::ios::beg);
    m_left = size > 0 ? static_cast<std::uint64_t>(size) : 0;
    return static_cast<bool>(m_in);
  }

  bool ReadBytes(unsigned char* bytes, std::size_t count) {
    if (count > m_left || !m_in.read(reinterpret_cast<char*>(bytes), static_cast<std::streamsize>(count))) return false;
    m_left -= count;
    return true;
  }

  std::int32_t Integer(const HeaderBytes& header, std::size_t record) const {
    return LoadInt32(&header[kRecord * record + 8], m_order);
  }
  double Real(const HeaderBytes& header, std::size_t record) const {
    return LoadDouble(&header[kRecord * record + 8], m_order);
  }

  bool ReadOverview(std::int32_t& count) {
    HeaderBytes header;
    if (!ReadBytes(header.data(), header.size())) return false;
    constexpr auto kExpected = static_cast<std::int32_t>(kHeaderRecords);
    // The byte order is not declared: it is the one in which the first record says 11.
    if (Integer(header, 0) != kExpected) m_order = ByteOrder::Big;
    count = Integer(header, 2);
    return Integer(header, 0) == kExpected && Integer(header, 1) == kExpected && Text(header, 3) == "SECONDS";
  }

  bool ReadSubGrid(Ntv2Grid& grid) {
    HeaderBytes header;
    if (!ReadBytes(header.data(), header.size())) return false;
    const double south = Real(header, 4), north = Real(header, 5), east = Real(header, 6), west = Real(header, 7);
    const double rowSpacing = Real(header, 8), columnSpacing = Real(header, 9);
    SubGrid g{};
    g.rows = NodeCount(south, north, rowSpacing);
    g.columns = NodeCount(east, west, columnSpacing);
    const std::int64_t count = std::int64_t{g.rows} * g.columns;
    if (count == 0 || count != Integer(header, 10) || static_cast<std::uint64_t>(count) > m_left / kRecord)
      return false;
    g.south = FromSeconds(south);
    g.north = FromSeconds(north);
    g.east = FromSeconds(east);
    g.west = FromSeconds(west);
    g.rowsPerRadian = 1 / FromSeconds(rowSpacing);
    g.columnsPerRadian = 1 / FromSeconds(columnSpacing);
    // Cells are chosen by these numbers: they must stay within the nodes for every point inside the limits.
    if (!(g.north > g.south) || !(g.west > g.east) || !(std::fabs(g.rowsPerRadian * (g.north - g.south)) < g.rows) ||
        !(std::fabs(g.columnsPerRadian * (g.west - g.east)) < g.columns)) {
      return false;
    }
    if (!m_byName.emplace(Text(header, 0), static_cast<std::uint32_t>(grid.m_grids.size())).second) return false;
    m_parents.push_back(Text(header, 1));
    if (!ReadNodes(g.nodes, static_cast<std::size_t>(count))) return false;
    grid.m_grids.push_back(std::move(g));
    return true;
  }

  // The accuracies in each record's second half are not kept.
  bool ReadNodes(std::vector<Ntv2Node>& nodes, std::size_t count) {
    if (count > nodes.max_size()) throw std::bad_alloc();
    nodes.reserve(count);
    while (nodes.size() < count) {
      const std::size_t records = std::min(count - nodes.size(), m_block.size() / kRecord);
      if (!ReadBytes(m_block.data(), records * kRecord)) return false;
      for (std::size_t i = 0; i < records; ++i) {
        const unsigned char* record = &m_block[kRecord * i];
        const Ntv2Node node{LoadFloat(record, m_order), LoadFloat(record + 4, m_order)};
        if (!std::isfinite(node.north) || !std::isfinite(node.west)) return false;
        nodes.push_back(node);
      }
    }
    return true;
  }

  // Parents may follow their children, so sub-grids are linked when all are read. False for an unknown parent, for
  // sub-grids that no top-level one leads to, that is for parents in a circle, and for more levels than any file has:
  // points go through them one by one.
  bool Link(Ntv2Grid& grid) const {
    std::vector<SubGrid>& grids = grid.m_grids;
    for (std::uint32_t i = 0; i < grids.size(); ++i) {
      if (m_parents[i] == "NONE") {
        grid.m_topLevel.members.push_back(i);
        continue;
      }
      const auto parent = m_byName.find(m_parents[i]);
      if (parent == m_byName.end()) return false;
      grids[parent->second].children.members.push_back(i);
    }
    std::size_t reached = 0;
    std::vector<std::uint32_t> level = grid.m_topLevel.members, next;
    for (int depth = 0; depth < kMostLevels && !level.empty(); ++depth) {
      reached += level.size();
      next.clear();
      for (const std::uint32_t member : level) {
        const std::vector<std::uint32_t>& children = grids[member].children.members;
        next.insert(next.end(), children.begin(), children.end());
      }
      level.swap(next);
    }
    return reached == grids.size();
  }

  // Like the buffer of the file not on the stack, of which a thread of the host may have little.
  std::vector<unsigned char> m_block = std::vector<unsigned char>(1024 * kRecord);
  std::istream& m_in;
  std::uint64_t m_left = 0;  // bytes that have not been read
  ByteOrder m_order = ByteOrder::Little;
  std::map<std::string, std::uint32_t> m_byName;
  std::vector<std::string> m_parents;
};

namespace {

// A file as what a stream reads from. A read that fails looks like the end of the file, which comes too soon then.
class FileBuffer : public std::streambuf {
 public:
  explicit FileBuffer(const platform::InputFile& file) : m_file(file) {}

 protected:
  int_type underflow() override {
    m_position += static_cast<std::uint64_t>(egptr() - eback());
    const std::size_t count = m_file.ReadAt(m_position, m_bytes.data(), m_bytes.size()).value_or(0);
    setg(m_bytes.data(), m_bytes.data(), m_bytes.data() + count);
    return count > 0 ? traits_type::to_int_type(m_bytes[0]) : traits_type::eof();
  }
  // To the beginning or the end, or nowhere, which is all that is asked for.
  pos_type seekoff(off_type offset, std::ios::seekdir from, std::ios::openmode) override {
    if (offset != 0) return pos_type(off_type(-1));
    if (from != std::ios::cur) {
      m_position = from == std::ios::end ? m_file.Size() : 0;
      setg(m_bytes.data(), m_bytes.data(), m_bytes.data());
    }
    return pos_type(static_cast<off_type>(m_position) + (gptr() - eback()));
  }

 private:
  const platform::InputFile& m_file;
  std::uint64_t m_position = 0;  // of the first byte in the buffer
  std::vector<char> m_bytes = std::vector<char>(65536);
};

// A file may claim any size when most of it is a hole; nodes in memory take half the room of those in the file.
bool IsMostlyHole(const platform::InputFile& file) {
  constexpr std::uint64_t kHarmless = std::uint64_t{256} << 20, kSparsest = 4;
  return file.Size() > kHarmless && !file.HoldsData(file.Size() / kSparsest);
}

}  // namespace

Ntv2Status Ntv2Grid::Read(std::istream& in) {
  Ntv2Grid grid;
  const Ntv2Status status = Reader(in).ReadInto(grid);
  if (status == Ntv2Status::Ok) {
    grid.MarkDecisive();
    grid.MakeIndexes();
  }
  *this = status == Ntv2Status::Ok ? std::move(grid) : Ntv2Grid{};
  return status;
}

Ntv2Status Ntv2Grid::Load(const std::string& path) {
  *this = Ntv2Grid{};
  const platform::InputFile file(path);
  if (!file.IsOpen()) return Ntv2Status::CannotOpen;
  if (IsMostlyHole(file)) return Ntv2Status::Corrupt;
  FileBuffer buffer(file);
  std::istream in(&buffer);
  return Read(in);
}

}  // namespace orvex::detail
