// FpGuard - floating-point fault handling.
#include "support/FpGuard.h"

#include "support/Log.h"

namespace orvex::detail {

bool& FpErrorFlag() noexcept {
  static thread_local constinit bool flag = false;
  return flag;
}

void FpGuard::Reset() noexcept {
  FpErrorFlag() = false;
  m_environment.ClearStatus();
}

bool FpGuard::Fault() noexcept {
  const unsigned code = m_environment.RaisedFault();
  if (code == 0 || FpExceptionFilter(&FpErrorFlag(), code) == 0) return false;
  m_environment.ClearStatus();
  return FpErrorFlag();
}

int MathErrorHook(int kind) noexcept {
  Trace("Entered _matherr!\n");
  if (kind >= 1 && kind <= 6) FpErrorFlag() = true;
  return 1;
}

int FpExceptionFilter(bool* flag, unsigned code) noexcept {
  Trace("Entered FPException!\n");
  if (code < 0xC000008D || code > 0xC0000093) return 0;
  *flag = true;
  return 1;
}

}  // namespace orvex::detail
