// FpGuard - guarded floating-point regions: the host's traps neither fire inside nor go unnoticed.
#pragma once

#include "platform/FpEnvironment.h"

namespace orvex::detail {

/// The library's own floating-point environment for its lifetime (nearest, subnormals kept, traps masked), after it the
/// host's as it was. A fault is what the host would have seen: an exception whose trap the host had enabled. With all
/// traps masked, the usual case, nothing ever counts as a fault.
class FpGuard {
 public:
  /// Whether the host has any trap enabled: if not, Fault is always false and Reset clears the error flag only.
  bool HostTraps() const noexcept { return m_environment.HostTraps(); }
  /// Forgets what has been raised so far, and clears this thread's error flag.
  void Reset() noexcept;
  /// Whether a fault has been raised since construction or Reset; sets this thread's error flag and clears the status.
  bool Fault() noexcept;

 private:
  platform::FpEnvironment m_environment;
};

/// This thread's floating-point error flag.
bool& FpErrorFlag() noexcept;

/// Takes note of a math-library error of kind 1 to 6 (domain, singularity, overflow, underflow, total and partial loss
/// of significance): sets this thread's error flag. Answers non-zero: the result stands and nothing is printed.
int MathErrorHook(int kind) noexcept;

/// Judges an exception code: for the seven floating-point exceptions 0xC000008D to 0xC0000093 sets the flag and answers
/// 1 (handled), else 0 (not ours).
int FpExceptionFilter(bool* flag, unsigned code) noexcept;

}  // namespace orvex::detail
