// FpEnvironment - the library's own floating-point environment for the time of a call, and the host's before and after.
#pragma once

#include <cstdint>
#if !defined(__SSE__) && !defined(__aarch64__) && !defined(__wasm__)
#include <cfenv>
#endif

namespace orvex::platform {

/// On construction the library's environment: rounding to nearest, subnormal numbers kept, all traps masked. On
/// destruction everything is as the host had it, status flags included. Both look before they write: reading a control
/// register costs a nanosecond, writing it ten, and most hosts have at their first call what the library wants.
class FpEnvironment {
 public:
  FpEnvironment() noexcept;
  ~FpEnvironment();
  FpEnvironment(const FpEnvironment&) = delete;
  FpEnvironment& operator=(const FpEnvironment&) = delete;

  /// Whether the host has any trap enabled; without, there are no faults.
  bool HostTraps() const noexcept { return m_hostTraps != 0; }
  /// Code (0xC000008D to 0xC0000093, the Windows exception codes) of an exception that has been raised since the status
  /// was last cleared and whose trap the host had enabled; 0 when there is none.
  unsigned RaisedFault() const noexcept { return HostTraps() ? FaultCode(Raised() & m_hostTraps) : 0; }
  /// Clears the status as far as RaisedFault looks at it: without host traps there is nothing to do.
  void ClearStatus() noexcept {
    if (HostTraps()) Clear();
  }

 private:
  static unsigned FaultCode(unsigned exceptions) noexcept;
  unsigned Raised() const noexcept;
  void Clear() noexcept;

  unsigned m_hostTraps = 0;  // exceptions whose traps the host had enabled, in the platform's bits
#if defined(__SSE__)
  unsigned m_mxcsr;
  std::uint16_t m_x87Control, m_x87Status = 0;
#elif defined(__aarch64__)
  std::uint64_t m_control, m_status;
#elif !defined(__wasm__)
  std::fenv_t m_environment;
#endif
};

}  // namespace orvex::platform
