// Ntv2 - the grid file of the NTv2 step, loaded on first use and kept for the life of the process.
#include "datum/grids/Ntv2.h"

#include <memory>
#include <mutex>
#include <new>
#include <string>

#include "datum/DatumStep.h"
#include "datum/grids/GridDirectory.h"
#include "datum/grids/Ntv2Grid.h"
#include "platform/Platform.h"

namespace orvex::detail {

namespace {

// The one grid of the process. A failed load leaves it as it was, so that the next call tries again.
class GridStore {
 public:
  // One lock for each call; a thread that comes while another loads waits for that load.
  Ntv2Status Get(std::shared_ptr<const Ntv2Grid>& grid) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_grid) {
      auto loaded = std::make_shared<Ntv2Grid>();
      const Ntv2Status status = loaded->Load(m_path.empty() ? FindGridFile({"NTV2_0.GSB", "ntv2_0.gsb"}) : m_path);
      if (status != Ntv2Status::Ok) return status;
      m_grid = std::move(loaded);
    }
    grid = m_grid;
    return Ntv2Status::Ok;
  }

  void Forget() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_grid.reset();
  }

  void SetPath(const char* path) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_path = path != nullptr ? path : "";
    m_grid.reset();
  }

  std::mutex& Mutex() { return m_mutex; }

 private:
  std::mutex m_mutex;
  std::string m_path;  // empty: beside the executable
  std::shared_ptr<const Ntv2Grid> m_grid;
};

GridStore& Store() {
  static GridStore store;
  return store;
}

// A child process has only the thread that forked: it must not find the store locked by another one, nor in the making.
// The locks are taken in the order of a load.
void HoldGrids() {
  Store().Mutex().lock();
  HoldGridDirectory();
}
void ReleaseGrids() {
  ReleaseGridDirectory();
  Store().Mutex().unlock();
}
[[maybe_unused]] const bool g_atFork = [] {
  HoldGrids();  // makes what is locked
  ReleaseGrids();
  platform::AtFork(HoldGrids, ReleaseGrids, ReleaseGrids);
  return true;
}();

}  // namespace

void SetNtv2Path(const char* path) {
  Store().SetPath(path);
}

void ForgetNtv2() {
  Store().Forget();
}

int LoadNtv2(std::shared_ptr<const Ntv2Grid>& grid) try {
  return static_cast<int>(Store().Get(grid));
} catch (const std::bad_alloc&) {
  return static_cast<int>(Ntv2Status::NoMemory);
}

int ConvertNtv2(DATUMPOINT* pts, int n, Ntv2Direction direction) {
  std::shared_ptr<const Ntv2Grid> grid;
  if (const int result = LoadNtv2(grid); result != 0) return result;
  const Ntv2Step step{grid.get()};
  DatumOperationsFor(n).shift(
      ViewOf(pts), n, {direction == Ntv2Direction::Forward ? StepKind::Ntv2Forward : StepKind::Ntv2Inverse, &step});
  return 0;
}

}  // namespace orvex::detail
