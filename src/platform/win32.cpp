// Platform on Windows; win32_profile.cpp holds the INI files, win32_dll.cpp and win32_static.cpp what the DLL and the
// static library do differently.
#include "platform/Platform.h"

#include <fenv.h>
#include <windows.h>
#include <xmmintrin.h>

#include <cstring>
#include <new>

namespace orvex::platform {

namespace {

// Exception bits stand in the same order in the x87 status and control words and in MXCSR (masks there 7 bits up).
constexpr unsigned kInvalid = 0x01, kDenormal = 0x02, kZeroDivide = 0x04, kOverflow = 0x08, kUnderflow = 0x10,
                   kInexact = 0x20, kAll = 0x3F;
constexpr unsigned kDefaultMxcsr = 0x1F80;      // all masked, nearest, status clear
constexpr unsigned short kDefaultX87 = 0x037F;  // all masked, nearest, 64-bit mantissa as the runtime's x87 code wants

struct SavedEnvironment {
  fenv_t x87;  // this runtime's fenv covers the x87 unit only
  unsigned mxcsr;
};

unsigned short X87Status() {
  unsigned short status = 0;
  asm volatile("fnstsw %0" : "=am"(status));
  return status;
}

}  // namespace

std::string ExecutableDirectory() {
  constexpr std::size_t kLongestPath = 32768;  // of any path, its terminator included
  std::string file(MAX_PATH, '\0');
  for (;;) {
    const DWORD length = GetModuleFileNameA(nullptr, file.data(), static_cast<DWORD>(file.size()));
    if (length < file.size()) return file.substr(0, file.substr(0, length).find_last_of("\\:") + 1);
    if (file.size() >= kLongestPath) return {};
    file.resize(2 * file.size());  // the name was cut
  }
}

const char* DefaultLogFile() {
  return "c:\\talven.log";
}

void AppendToFile(const char* fileName, const char* text, std::size_t length) {
  HFILE file = _lopen(fileName, OF_READWRITE);
  if (file != HFILE_ERROR) {
    _llseek(file, 0, FILE_END);
  } else {
    file = _lcreat(fileName, 0);
    if (file == HFILE_ERROR) return;
  }
  _lwrite(file, text, static_cast<UINT>(length));
  _lclose(file);
}

FpEnvironment::FpEnvironment() noexcept : m_saved{}, m_hostTraps(0) {
  static_assert(sizeof(SavedEnvironment) <= sizeof m_saved);
  auto* saved = new (m_saved) SavedEnvironment{};
  saved->mxcsr = _mm_getcsr();
  unsigned short control = 0;
  asm volatile("fnstcw %0" : "=m"(control));
  m_hostTraps = (~static_cast<unsigned>(control) | ~(saved->mxcsr >> 7)) & kAll;
  feholdexcept(&saved->x87);
  _mm_setcsr(kDefaultMxcsr);
  asm volatile("fldcw %0" : : "m"(kDefaultX87));
}

FpEnvironment::~FpEnvironment() {
  const auto* saved = std::launder(reinterpret_cast<const SavedEnvironment*>(m_saved));
  asm volatile("fnclex");
  fesetenv(&saved->x87);
  _mm_setcsr(saved->mxcsr);
}

unsigned FpEnvironment::RaisedFault() const noexcept {
  if (m_hostTraps == 0) return 0;
  const unsigned raised = (X87Status() | _mm_getcsr()) & m_hostTraps;
  if (raised & kInvalid) return EXCEPTION_FLT_INVALID_OPERATION;
  if (raised & kZeroDivide) return EXCEPTION_FLT_DIVIDE_BY_ZERO;
  if (raised & kOverflow) return EXCEPTION_FLT_OVERFLOW;
  if (raised & kUnderflow) return EXCEPTION_FLT_UNDERFLOW;
  if (raised & kDenormal) return EXCEPTION_FLT_DENORMAL_OPERAND;
  if (raised & kInexact) return EXCEPTION_FLT_INEXACT_RESULT;
  return 0;
}

void FpEnvironment::ClearStatus() noexcept {
  if (m_hostTraps == 0) return;  // nobody asks
  asm volatile("fnclex");
  _mm_setcsr(kDefaultMxcsr);
}

}  // namespace orvex::platform
