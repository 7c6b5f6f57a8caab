// Remembered - constants of the record that a module saw last. A host that converts point by point asks for the same
// ones again and again, and they can cost more than the point.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstring>
#include <new>
#include <type_traits>

#include "points/Level.h"
#include "projections/Conversion.h"

namespace orvex::detail::ORVEX_LEVEL {

/// The last constants that a function made of a record. Whoever finds another thread in here makes its own.
template <class Constants>
class Last {
 public:
  constexpr Last() = default;

  template <class Make>
  Constants Of(const PROJDATA& work, const Make& make) {
    if (m_busy.exchange(true, std::memory_order_acquire)) return make(work);
    if (!m_holds || !SameParameters(m_record, work)) {
      m_holds = false;
      new (m_constants) Constants(make(work));
      m_record = work;
      m_holds = true;
    }
    const Constants constants = *std::launder(reinterpret_cast<const Constants*>(m_constants));
    m_busy.store(false, std::memory_order_release);
    return constants;
  }

 private:
  static_assert(std::is_trivially_copyable_v<Constants>);

  /// All but the result and what is reserved.
  static bool SameParameters(const PROJDATA& a, const PROJDATA& b) {
    return std::memcmp(&a, &b, offsetof(PROJDATA, iResult)) == 0 &&
           std::memcmp(reinterpret_cast<const char*>(&a) + offsetof(PROJDATA, bWrapLon),
                       reinterpret_cast<const char*>(&b) + offsetof(PROJDATA, bWrapLon), 1) == 0;
  }

  std::atomic<bool> m_busy{false};
  bool m_holds = false;
  PROJDATA m_record{};
  alignas(Constants) std::byte m_constants[sizeof(Constants)]{};
};

/// Constants(record) of a call's record, or those that were made of the same parameters last. Where the driver looks at
/// each stage by itself, for a host with traps, they are made anew, so that what they raise is raised each time.
template <class Constants>
Constants Remembered(const Conversion& call) {
  static constinit Last<Constants> last;
  const auto make = [](const PROJDATA& record) { return Constants(record); };
  return call.steps != nullptr ? last.Of(*call.work, make) : make(*call.work);
}

/// The same of a function.
template <auto kMake>
auto Remembered(const Conversion& call) {
  static constinit Last<decltype(kMake(*call.work))> last;
  return call.steps != nullptr ? last.Of(*call.work, kMake) : kMake(*call.work);
}

}  // namespace orvex::detail::ORVEX_LEVEL
