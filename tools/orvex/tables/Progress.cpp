// Progress - a line on the terminal while long work runs.
#include "tables/Progress.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#if defined(_WIN32)
#include <io.h>
#else
#include <unistd.h>
#endif

namespace orvex::tool {

namespace {

constexpr auto kFirst = std::chrono::seconds(1);
constexpr auto kEvery = std::chrono::milliseconds(250);

bool IsTerminal(std::FILE* stream) {
#if defined(_WIN32)
  return _isatty(_fileno(stream)) != 0;
#else
  return isatty(fileno(stream)) != 0;
#endif
}

}  // namespace

Progress::Progress(std::uint64_t total, bool enabled, bool resultsToStandardOutput)
    : m_total(total),
      m_enabled(enabled && IsTerminal(stderr) && !(resultsToStandardOutput && IsTerminal(stdout))),
      m_start(std::chrono::steady_clock::now()),
      m_next(m_start + kFirst) {}

Progress::~Progress() {
  Hide();
}

void Progress::Hide() {
  if (m_shown) std::fputs("\r\x1b[K", stderr);
  m_shown = false;
}

void Progress::Update(std::uint64_t bytes, std::uint64_t lines) {
  if (!m_enabled) return;
  const auto now = std::chrono::steady_clock::now();
  if (now < m_next) return;
  m_next = now + kEvery;
  m_shown = true;
  std::fprintf(stderr, "\r%llu lines", static_cast<unsigned long long>(lines));
  if (m_total > 0 && bytes > 0) {
    const double done = std::min(1.0, static_cast<double>(bytes) / static_cast<double>(m_total));
    const double left = std::chrono::duration<double>(now - m_start).count() * (1 - done) / done;
    const long long seconds = std::llround(left);
    std::fprintf(stderr, ", %.0f %%, %lld:%02lld left\x1b[K", 100 * done, seconds / 60, seconds % 60);
  }
  std::fflush(stderr);
}

}  // namespace orvex::tool
