// Failure - what ends a command with exit status 2: bad usage, bad parameters, a file that cannot be opened. And the
// milder form that only says something.
#pragma once

#include <stdexcept>
#include <string_view>

namespace orvex::tool {

struct Failure : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Says on standard error what the user may not have meant; the work goes on.
void Warn(std::string_view text);

/// Exit statuses of the program.
enum ExitStatus : int { kSuccess = 0, kSomePointsFailed = 1, kUsage = 2 };

}  // namespace orvex::tool
