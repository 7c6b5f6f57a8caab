// Failure - what ends a command with exit status 2: bad usage, bad parameters, a file that cannot be opened.
#pragma once

#include <stdexcept>

namespace orvex::tool {

struct Failure : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Exit statuses of the program.
enum ExitStatus : int { kSuccess = 0, kSomePointsFailed = 1, kUsage = 2 };

}  // namespace orvex::tool
