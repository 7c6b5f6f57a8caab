// Ntv2Grid - an NTv2 grid-shift file in memory: reading with every number checked, choice of sub-grid, interpolation.
#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <memory>
#include <string>
#include <vector>

#include "datum/grids/Ntv2Shift.h"
#include "datum/grids/SubGridIndex.h"

namespace orvex::detail {

/// Outcomes of loading a grid and of shifting a point; the numbers are those that the datum driver understands.
enum class Ntv2Status : int {
  Ok = 0,
  NoMemory = 1,
  CannotOpen = 5,
  BadHeader = 6,  ///< not an NTv2 file, or an overview header that cannot be used
  Corrupt = 7     ///< sub-grids that contradict themselves, each other or the size of the file
};

/// Angles are radians, longitudes count positive WEST as in the file.
class Ntv2Grid {
 public:
  struct Position {
    double west, north;
  };
  /// Remembers the sub-grid of the previous point, so that neighbouring points find theirs at once. It never changes a
  /// result. One for each thread and call.
  using Hint = std::size_t;

  /// Reads a whole file; `CannotOpen` when there is none, else as below.
  Ntv2Status Load(const std::string& path);
  /// Reads a grid from a seekable stream. Never allocates more than a small multiple of what the stream holds. After
  /// a failure the grid is empty: every point lies outside.
  Ntv2Status Read(std::istream& in);

  /// The cell that holds a point of the source system.
  Ntv2Cell CellAt(const Position& point, Hint& hint) const;
  /// Shift at a point of the source system; false when the point lies in no sub-grid.
  bool ShiftAt(const Position& point, Hint& hint, Position& shift) const;

  std::size_t SubGridCount() const { return m_grids.size(); }

 private:
  class Reader;

  /// Sub-grids of one parent, or those without.
  struct Level {
    std::vector<std::uint32_t> members;         // in file order
    std::unique_ptr<const SubGridIndex> index;  // of a large level
  };

  struct SubGrid : SubGridLimits {
    double rowsPerRadian, columnsPerRadian;  // reciprocal spacings
    std::int32_t rows, columns;              // at least 2 each
    std::vector<Ntv2Node> nodes;             // from the south-east corner, row by row, each from east to west
    Level children;
    bool decisive = false;  // holding a point settles the choice: see MarkDecisive

    bool Holds(const Position& p) const {
      return p.north >= south && p.north < north && p.west >= east && p.west < west;
    }
    bool HoldsClosed(const Position& p) const {
      return p.north >= south && p.north <= north && p.west >= east && p.west <= west;
    }
    Ntv2Cell CellAt(const Position& p) const;
  };

  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  std::size_t FindIn(const Level& level, const Position& p) const;
  std::size_t Find(const Position& p) const;
  bool ComesFirst(const std::vector<std::uint32_t>& level, std::size_t place) const;
  void MarkDecisive();
  void MakeIndex(Level& level) const;
  void MakeIndexes();

  std::vector<SubGrid> m_grids;  // in file order
  Level m_topLevel;
};

}  // namespace orvex::detail
