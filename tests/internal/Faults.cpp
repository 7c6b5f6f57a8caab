// Faults - what the library's calls of the runtime are led to.
#if !defined(_WIN32)

#include "Faults.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <new>

namespace {

struct Allocations {
  bool armed = false, forGood = false, happened = false;
  long untilFailure = 0, live = 0;
} g_allocations;

struct Calls {
  bool armed = false, happened = false;
  orvex::test::SystemCall call{};
  int error = 0, untilFailure = 0;
} g_calls;

struct Answer {
  std::size_t size = 0;
  void* block = nullptr;
  bool given = false;
} g_answer;

long g_formatted = 0;

bool AllocationFails() {
  if (!g_allocations.armed) return false;
  if (g_allocations.happened && g_allocations.forGood) return true;
  if (--g_allocations.untilFailure != 0) return false;
  return g_allocations.happened = true;
}

void* Counted(void* block) {
  if (g_allocations.armed && block != nullptr) ++g_allocations.live;
  return block;
}

bool CallFails(orvex::test::SystemCall call) {
  if (!g_calls.armed || g_calls.call != call || --g_calls.untilFailure != 0) return false;
  g_calls.happened = true;
  errno = g_calls.error;
  return true;
}

}  // namespace

namespace orvex::test {

FailingAllocations::FailingAllocations(long first, bool forGood) {
  g_allocations = {true, forGood, false, first, 0};
}
FailingAllocations::~FailingAllocations() {
  g_allocations.armed = false;
}
bool FailingAllocations::Happened() const {
  return g_allocations.happened;
}
long FailingAllocations::Live() const {
  return g_allocations.live;
}

FailingCall::FailingCall(SystemCall call, int error, int which) {
  g_calls = {true, false, call, error, which};
}
FailingCall::~FailingCall() {
  g_calls.armed = false;
}
bool FailingCall::Happened() const {
  return g_calls.happened;
}

void AnswerNextAllocation(std::size_t size, void* block) {
  g_answer = {size, block, false};
}

long FormattedTexts() {
  return g_formatted;
}

}  // namespace orvex::test

extern "C" {

void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void* __real_realloc(void* block, std::size_t size);
void __real_free(void* block);
int __real_open(const char* path, int flags, mode_t mode);
int __real_fstat(int file, struct stat* status);
ssize_t __real_read(int file, void* bytes, std::size_t count);
int __real_vsnprintf(char* text, std::size_t size, const char* format, std::va_list arguments);

void* __wrap_malloc(std::size_t size) {
  if (g_answer.block != nullptr && !g_answer.given && g_answer.size == size) {
    g_answer.given = true;
    return g_answer.block;
  }
  return AllocationFails() ? nullptr : Counted(__real_malloc(size));
}

void* __wrap_calloc(std::size_t count, std::size_t size) {
  return AllocationFails() ? nullptr : Counted(__real_calloc(count, size));
}

void* __wrap_realloc(void* block, std::size_t size) {
  if (AllocationFails()) return nullptr;
  void* const moved = __real_realloc(block, size);
  return block == nullptr ? Counted(moved) : moved;
}

void __wrap_free(void* block) {
  if (block == nullptr || block == g_answer.block) return;
  if (g_allocations.armed) --g_allocations.live;
  __real_free(block);
}

int __wrap_open(const char* path, int flags, ...) {
  mode_t mode = 0;
  if ((flags & O_CREAT) != 0) {
    std::va_list arguments;
    va_start(arguments, flags);
    mode = va_arg(arguments, mode_t);
    va_end(arguments);
  }
  return CallFails(orvex::test::SystemCall::Open) ? -1 : __real_open(path, flags, mode);
}

int __wrap_fstat(int file, struct stat* status) {
  return CallFails(orvex::test::SystemCall::Fstat) ? -1 : __real_fstat(file, status);
}

ssize_t __wrap_read(int file, void* bytes, std::size_t count) {
  return CallFails(orvex::test::SystemCall::Read) ? -1 : __real_read(file, bytes, count);
}

int __wrap_vsnprintf(char* text, std::size_t size, const char* format, std::va_list arguments) {
  ++g_formatted;
  return __real_vsnprintf(text, size, format, arguments);
}
}

// The C++ allocations of the whole program, the standard library's included.

void* operator new(std::size_t size) {
  if (void* const block = std::malloc(size != 0 ? size : 1)) return block;
  throw std::bad_alloc();
}
void* operator new[](std::size_t size) {
  return operator new(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return std::malloc(size != 0 ? size : 1);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return std::malloc(size != 0 ? size : 1);
}
void operator delete(void* block) noexcept {
  std::free(block);
}
void operator delete[](void* block) noexcept {
  std::free(block);
}
void operator delete(void* block, std::size_t) noexcept {
  std::free(block);
}
void operator delete[](void* block, std::size_t) noexcept {
  std::free(block);
}
void operator delete(void* block, const std::nothrow_t&) noexcept {
  std::free(block);
}
void operator delete[](void* block, const std::nothrow_t&) noexcept {
  std::free(block);
}

#endif
