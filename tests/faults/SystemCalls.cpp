// SystemCalls - what stands between the library and the C library. Calls go on to the kernel.
#include "SystemCalls.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdlib>
#include <cstring>

namespace {

using orvex::test::Call;

struct {
  std::atomic<bool> armed{false};
  Call call{};
  int error = 0;
  long which = 0;
  std::atomic<long> calls{0};
  bool happened = false;
} g_fault;

std::atomic<unsigned> g_wait{0};
std::atomic<bool> g_begun{false};

bool Fails(Call call) {
  if (!g_fault.armed || (g_fault.call != Call::Any && g_fault.call != call)) return false;
  if (++g_fault.calls != g_fault.which || g_fault.error == orvex::test::Fault::kCount) return false;
  if (g_fault.error == orvex::test::Fault::kKill) raise(SIGKILL);
  g_fault.happened = true;
  errno = g_fault.error;
  return true;
}

void WaitAsTold() {
  if (const unsigned milliseconds = g_wait) {
    g_begun = true;
    usleep(1000 * milliseconds);
  }
}

bool ProcIsMissing(const char* path) {
  return std::strncmp(path, "/proc/", 6) == 0 && std::getenv("ORVEX_TEST_WITHOUT_PROC") != nullptr;
}

int NoSuchFile() {
  errno = ENOENT;
  return -1;
}

}  // namespace

namespace orvex::test {

Fault::Fault(Call call, int error, long which) {
  g_fault.call = call;
  g_fault.error = error;
  g_fault.which = which;
  g_fault.calls = 0;
  g_fault.happened = false;
  g_fault.armed = true;
}
Fault::~Fault() {
  g_fault.armed = false;
}
bool Fault::Happened() const {
  return g_fault.happened;
}
long Fault::Calls() const {
  return g_fault.calls;
}

SlowReads::SlowReads(unsigned milliseconds) {
  g_begun = false;
  g_wait = milliseconds;
}
SlowReads::~SlowReads() {
  g_wait = 0;
}
bool SlowReads::Begun() const {
  return g_begun;
}

}  // namespace orvex::test

#if defined(__SANITIZE_THREAD__)
// A forked child knows threads of its parent that have ended, and cannot join them.
extern "C" const char* __tsan_default_options() {
  return "report_thread_leaks=0";
}
#endif

// The declarations of the C library stand with attributes that differ between its versions; these do not.
extern "C" {

int open(const char* path, int flags, ...) {
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
  va_end(arguments);
  if (Fails(Call::Open)) return -1;
  return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

int fstat(int file, struct stat* status) noexcept {
  return Fails(Call::Fstat) ? -1 : fstatat(file, "", status, AT_EMPTY_PATH);
}

int Stat(const char* path, struct stat* status) noexcept __asm__("stat");
int Stat(const char* path, struct stat* status) noexcept {
  return Fails(Call::Any) ? -1 : fstatat(AT_FDCWD, path, status, 0);
}

int lstat(const char* path, struct stat* status) noexcept {
  return Fails(Call::Any) ? -1 : fstatat(AT_FDCWD, path, status, AT_SYMLINK_NOFOLLOW);
}

off_t lseek(int file, off_t offset, int from) noexcept {
  return Fails(Call::Any) ? -1 : syscall(SYS_lseek, file, offset, from);
}

ssize_t read(int file, void* bytes, std::size_t count) {
  WaitAsTold();
  return Fails(Call::Read) ? -1 : syscall(SYS_read, file, bytes, count);
}

ssize_t pread(int file, void* bytes, std::size_t count, off_t position) {
  WaitAsTold();
  return Fails(Call::Pread) ? -1 : syscall(SYS_pread64, file, bytes, count, position);
}

ssize_t write(int file, const void* bytes, std::size_t count) {
  return Fails(Call::Write) ? -1 : syscall(SYS_write, file, bytes, count);
}

int fsync(int file) {
  return Fails(Call::Fsync) ? -1 : static_cast<int>(syscall(SYS_fsync, file));
}

int fchmod(int file, mode_t mode) noexcept {
  return Fails(Call::Any) ? -1 : static_cast<int>(syscall(SYS_fchmod, file, mode));
}

int fchown(int file, uid_t user, gid_t group) noexcept {
  return Fails(Call::Any) ? -1 : static_cast<int>(syscall(SYS_fchown, file, user, group));
}

int faccessat(int directory, const char* path, int mode, int /*flags*/) noexcept {
  return Fails(Call::Any) ? -1 : static_cast<int>(syscall(SYS_faccessat, directory, path, mode));
}

int unlink(const char* path) noexcept {
  return Fails(Call::Any) ? -1 : static_cast<int>(syscall(SYS_unlinkat, AT_FDCWD, path, 0));
}

int close(int file) {
  const bool fails = Fails(Call::Any);
  const long answer = syscall(SYS_close, file);
  return fails ? -1 : static_cast<int>(answer);
}

int rename(const char* from, const char* to) noexcept {
  return Fails(Call::Rename) ? -1 : static_cast<int>(syscall(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0));
}

int Lock(int file, int operation) __asm__("flock");  // there is a structure of that name too
int Lock(int file, int operation) {
  return Fails(Call::Flock) ? -1 : static_cast<int>(syscall(SYS_flock, file, operation));
}

ssize_t readlink(const char* path, char* text, std::size_t size) noexcept {
  if (ProcIsMissing(path)) return NoSuchFile();
  return Fails(Call::Readlink) ? -1 : syscall(SYS_readlinkat, AT_FDCWD, path, text, size);
}

int access(const char* path, int mode) noexcept {
  if (ProcIsMissing(path)) return NoSuchFile();
  return static_cast<int>(syscall(SYS_faccessat, AT_FDCWD, path, mode));
}
}
