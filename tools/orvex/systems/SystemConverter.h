// SystemConverter - coordinates of a registered system to longitude and latitude on its datum and back.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include <orvex/projection.h>

#include "systems/SystemRecord.h"
#include "systems/SystemTable.h"

namespace orvex::tool {

/// A system's coordinates have its unit; those of geographic systems count from its prime meridian. On the other side
/// stand degrees from Greenwich. One object must not be used by two threads at once.
class SystemConverter {
 public:
  /// Throws Failure with the reason where the system cannot be represented.
  explicit SystemConverter(const CoordinateSystem& system);

  /// In place; points become DBL_MAX where there is no answer.
  void ToGeographic(std::vector<PROJPOINT>& points);
  void FromGeographic(std::vector<PROJPOINT>& points);

  const CoordinateSystem& System() const { return *m_system; }
  /// How many of the points that went through lay outside the system's area of use and a margin of a degree.
  std::size_t Outside() const { return m_outside; }

 private:
  void CountOutside(const std::vector<PROJPOINT>& points);

  const CoordinateSystem* m_system;
  std::optional<CProjector> m_projector;  // none for geographic systems
  std::optional<Turn> m_turn;
  std::size_t m_outside = 0;
};

}  // namespace orvex::tool
