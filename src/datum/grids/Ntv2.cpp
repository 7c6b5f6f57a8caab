// Ntv2 - the NTv2 step: the grid file, loaded on first use and kept for the life of the process, and the shift of
// points.
#include "datum/grids/Ntv2.h"

#include <cfloat>
#include <cmath>
#include <memory>
#include <mutex>
#include <new>
#include <string>

#include "datum/DatumPoint.h"
#include "datum/grids/Ntv2Grid.h"
#include "datum/grids/Ntv2Store.h"
#include "platform/Platform.h"

namespace orvex::detail {

namespace {

constexpr double kDegreesPerRadian = 57.29577951308232;
constexpr double kConverged = 1e-12;  // radians: 6 micrometres on the ground
constexpr int kMaxRounds = 11;        // the last one marks the point, however small its correction was

// The one grid of the process. A failed load leaves it as it was, so that the next call tries again.
class GridStore {
 public:
  // One lock for each call; a thread that comes while another loads waits for that load.
  Ntv2Status Get(std::shared_ptr<const Ntv2Grid>& grid) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_grid) {
      auto loaded = std::make_shared<Ntv2Grid>();
      const Ntv2Status status = loaded->Load(m_path.empty() ? platform::ExecutableDirectory() + "NTV2_0.GSB" : m_path);
      if (status != Ntv2Status::Ok) return status;
      m_grid = std::move(loaded);
    }
    grid = m_grid;
    return Ntv2Status::Ok;
  }

  void SetPath(const char* path) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_path = path != nullptr ? path : "";
    m_grid.reset();
  }

 private:
  std::mutex m_mutex;
  std::string m_path;  // empty: beside the executable
  std::shared_ptr<const Ntv2Grid> m_grid;
};

GridStore& Store() {
  static GridStore store;
  return store;
}

using Position = Ntv2Grid::Position;

void ShiftForward(const Ntv2Grid& grid, Ntv2Grid::Hint& hint, Position& p) {
  Position shift;
  if (grid.ShiftAt(p, hint, shift)) p = {p.west + shift.west, p.north + shift.north};
}

// Solves the forward relation by fixed-point iteration from the shift applied backwards once. One coordinate at rest is
// enough to stop; an estimate that leaves the grid stands. False when the point must be marked.
bool ShiftInverse(const Ntv2Grid& grid, Ntv2Grid::Hint& hint, Position& p) {
  const Position target = p;
  Position shift;
  if (!grid.ShiftAt(target, hint, shift)) return true;
  p = {target.west - shift.west, target.north - shift.north};
  for (int round = 1; round < kMaxRounds; ++round) {
    if (!grid.ShiftAt(p, hint, shift)) return true;
    const Position correction{target.west - (p.west + shift.west), target.north - (p.north + shift.north)};
    p = {p.west + correction.west, p.north + correction.north};
    if (std::fabs(correction.west) <= kConverged || std::fabs(correction.north) <= kConverged) return true;
  }
  return false;
}

}  // namespace

void SetNtv2Path(const char* path) {
  Store().SetPath(path);
}

int ConvertNtv2(DATUMPOINT* pts, int n, Ntv2Direction direction) try {
  std::shared_ptr<const Ntv2Grid> grid;
  const Ntv2Status status = Store().Get(grid);
  if (status != Ntv2Status::Ok) return static_cast<int>(status);
  Ntv2Grid::Hint hint = 0;
  for (int i = 0; i < n; ++i) {
    const DATUMPOINT point = pts[i];
    if (IsUnplottable(point)) continue;
    Position p{-(point.x * kRadiansPerDegree), point.y * kRadiansPerDegree};
    bool plottable = true;
    if (direction == Ntv2Direction::Forward) {
      ShiftForward(*grid, hint, p);
    } else {
      plottable = ShiftInverse(*grid, hint, p);
    }
    // A point outside the grid takes the way through radians as well.
    pts[i] =
        plottable ? DATUMPOINT{-p.west * kDegreesPerRadian, p.north * kDegreesPerRadian} : DATUMPOINT{DBL_MAX, DBL_MAX};
  }
  return static_cast<int>(Ntv2Status::Ok);
} catch (const std::bad_alloc&) {
  return static_cast<int>(Ntv2Status::NoMemory);
}

}  // namespace orvex::detail
