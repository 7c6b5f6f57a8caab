// Platform on POSIX systems (Linux first).
#include "platform/Platform.h"

#include <fcntl.h>
#include <unistd.h>
#ifdef __SSE__
#include <xmmintrin.h>
#endif

#include <cfenv>
#include <new>

#include "platform/MessageTable.h"

namespace orvex::platform {

namespace {

__attribute__((constructor)) void OnLoad() {
  OnProcessEvent(nullptr, kAttach);
}

__attribute__((destructor)) void OnUnload() {
  OnProcessEvent(nullptr, kDetach);
}

/// Exceptions whose traps are enabled. fegetexcept knows the x87 unit only, a host may have enabled those of SSE alone.
unsigned EnabledTraps() {
  unsigned traps = static_cast<unsigned>(fegetexcept());
#ifdef __SSE__
  traps |= (~_mm_getcsr() >> 7) & static_cast<unsigned>(FE_ALL_EXCEPT);  // the masks stand 7 bits above the flags
#endif
  return traps;
}

}  // namespace

std::string ExecutableDirectory() {
  char path[4096];
  const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
  if (length <= 0 || static_cast<std::size_t>(length) == sizeof path) return {};
  const std::string file(path, static_cast<std::size_t>(length));
  return file.substr(0, file.rfind('/') + 1);
}

const char* DefaultLogFile() {
  return "talven.log";
}

void AppendToFile(const char* fileName, const char* text, std::size_t length) {
  const int file = open(fileName, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644);
  if (file < 0) return;
  while (length > 0) {
    const ssize_t written = write(file, text, length);
    if (written <= 0) break;
    text += written;
    length -= static_cast<std::size_t>(written);
  }
  close(file);
}

bool LoadMessage(void* /*instance*/, int id, char* buffer, int capacity) {
  return CopyTableMessage(id, buffer, capacity);
}

FpEnvironment::FpEnvironment() noexcept : m_saved{}, m_hostTraps(0) {
  static_assert(sizeof(std::fenv_t) <= sizeof m_saved && alignof(std::fenv_t) <= 16);
  m_hostTraps = EnabledTraps();
  std::feholdexcept(new (m_saved) std::fenv_t);
}

FpEnvironment::~FpEnvironment() {
  std::fesetenv(std::launder(reinterpret_cast<const std::fenv_t*>(m_saved)));
}

unsigned FpEnvironment::RaisedFault() const noexcept {
  if (m_hostTraps == 0) return 0;
  const unsigned raised = static_cast<unsigned>(std::fetestexcept(FE_ALL_EXCEPT)) & m_hostTraps;
  if (raised & FE_INVALID) return 0xC0000090;
  if (raised & FE_DIVBYZERO) return 0xC000008E;
  if (raised & FE_OVERFLOW) return 0xC0000091;
  if (raised & FE_UNDERFLOW) return 0xC0000093;
  if (raised & FE_INEXACT) return 0xC000008F;
  return 0;
}

void FpEnvironment::ClearStatus() noexcept {
  if (m_hostTraps == 0) return;  // nobody asks, and clearing takes as long as projecting a point
  std::feclearexcept(FE_ALL_EXCEPT);
}

}  // namespace orvex::platform
