// SystemConverter - coordinates of a registered system to longitude and latitude on its datum and back.
#pragma once

#include <atomic>
#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include <orvex/projection.h>

#include "systems/SystemRecord.h"
#include "systems/SystemTable.h"

namespace orvex::tool {

/// A system's coordinates have its unit; those of geographic systems count from its prime meridian. On the other side
/// stand degrees from Greenwich. Computed exactly, unless `stated`. Every copy has a library handle of its own for a
/// thread of its own.
class SystemConverter {
 public:
  /// Throws Failure with the reason where the system cannot be represented.
  explicit SystemConverter(const CoordinateSystem& system, bool stated = false);

  /// In place; points become DBL_MAX where there is no answer.
  void ToGeographic(std::vector<PROJPOINT>& points);
  void FromGeographic(std::vector<PROJPOINT>& points);

  const CoordinateSystem& System() const { return *m_system; }
  /// How many points that went through this object and its copies lay outside the area of use and a margin of a degree.
  std::size_t Outside() const { return *m_outside; }

 private:
  void CountOutside(const std::vector<PROJPOINT>& points);

  const CoordinateSystem* m_system;
  std::optional<CProjector> m_projector;  // none for geographic systems
  std::optional<Turn> m_turn;
  std::shared_ptr<std::atomic<std::size_t>> m_outside = std::make_shared<std::atomic<std::size_t>>();
};

}  // namespace orvex::tool
