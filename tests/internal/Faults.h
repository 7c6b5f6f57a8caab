// Faults - allocations and system calls of the library that fail when a test says so, and a count of formatted texts.
// The linker leads the library's calls here (tests/CMakeLists.txt), for the static library and outside Windows only.
#pragma once

#include <cstddef>

namespace orvex::test {

/// While it lives, the allocation number `first` (counted from 1) fails, and every later one as well if it is
/// `forGood`.
class FailingAllocations {
 public:
  FailingAllocations(long first, bool forGood);
  ~FailingAllocations();
  FailingAllocations(const FailingAllocations&) = delete;
  FailingAllocations& operator=(const FailingAllocations&) = delete;

  /// Whether an allocation has failed.
  bool Happened() const;
  /// Blocks allocated and not freed since construction.
  long Live() const;
};

enum class SystemCall { Open, Fstat, Read };

/// While it lives, one call of that kind, the first or a later one, fails with that error.
class FailingCall {
 public:
  FailingCall(SystemCall call, int error, int which = 1);
  ~FailingCall();
  FailingCall(const FailingCall&) = delete;
  FailingCall& operator=(const FailingCall&) = delete;

  bool Happened() const;
};

/// The next allocation of `size` bytes is answered by `block`, which is never freed.
void AnswerNextAllocation(std::size_t size, void* block);

/// Texts that have been formatted for the log since the program started.
long FormattedTexts();

}  // namespace orvex::test
