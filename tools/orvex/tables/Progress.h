// Progress - a line on the terminal while long work runs.
#pragma once

#include <chrono>
#include <cstdint>

namespace orvex::tool {

/// Shows how far the work has come and how long it will still take on standard error, if that is a terminal and the
/// work takes longer than a second. Not when the results appear on the terminal as well.
class Progress {
 public:
  /// total: amount of input in bytes, 0 when it is not known
  Progress(std::uint64_t total, bool enabled, bool resultsToStandardOutput);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  /// Takes the line away, for a message to come; the next Update brings it back.
  void Hide();
  void Update(std::uint64_t bytes, std::uint64_t lines);

 private:
  std::uint64_t m_total;
  bool m_enabled;
  bool m_shown = false;
  std::chrono::steady_clock::time_point m_start, m_next;
};

}  // namespace orvex::tool
