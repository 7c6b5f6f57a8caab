// AreaWatch - counts the points that lie outside the area for which a zone, a projection or a datum is meant.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <orvex/datum.h>
#include <orvex/projection.h>

namespace orvex::tool {

/// Says on standard error how many points lay outside an area, if any.
void WarnOfPointsOutside(std::uint64_t outside, const std::string& area);

/// Copies count together, so that every thread has one of its own.
class AreaWatch {
 public:
  /// Counts the points (degrees) that lie outside.
  using Counter = std::function<std::uint64_t(const std::vector<PROJPOINT>&)>;

  AreaWatch(std::string area, Counter counter);

  void Watch(const std::vector<PROJPOINT>& points);
  void Report() const { WarnOfPointsOutside(*m_outside, m_area); }

 private:
  std::string m_area;
  Counter m_counter;
  std::shared_ptr<std::atomic<std::uint64_t>> m_outside;
};

/// The watch for a projection: a UTM zone, a state, or the domain that the projection can sensibly show. Nothing for
/// projections of the world.
std::optional<AreaWatch> WatchProjection(const PROJDATA& record);

/// The watch for a datum: the area of its regression equations, or its grids.
std::optional<AreaWatch> WatchDatum(DatumType datum);

}  // namespace orvex::tool
