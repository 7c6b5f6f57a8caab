// SystemCalls - system calls that fail, kill, wait or are counted when a test says so.
#pragma once

#include <cstddef>

namespace orvex::test {

enum class Call { Any, Open, Fstat, Read, Pread, Write, Fsync, Rename, Flock, Readlink };

/// While it lives, the calls of a kind are counted, and one of them, from 1 on, fails with an error or, for kKill, ends
/// the process. One at a time.
class Fault {
 public:
  static constexpr int kKill = -1, kCount = 0;

  Fault(Call call, int error, long which = 1);
  ~Fault();
  Fault(const Fault&) = delete;
  Fault& operator=(const Fault&) = delete;

  bool Happened() const;
  long Calls() const;
};

/// While it lives, every reading takes that long; answers whether one has begun.
class SlowReads {
 public:
  explicit SlowReads(unsigned milliseconds);
  ~SlowReads();
  SlowReads(const SlowReads&) = delete;
  SlowReads& operator=(const SlowReads&) = delete;

  bool Begun() const;
};

}  // namespace orvex::test
