// Progress - a line on the terminal while long work runs.
#include "tables/Progress.h"

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
      m_next(std::chrono::steady_clock::now() + kFirst) {}

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
  if (m_total > 0) {
    std::fprintf(stderr, ", %.0f %%", 100.0 * static_cast<double>(bytes) / static_cast<double>(m_total));
  }
  std::fflush(stderr);
}

}  // namespace orvex::tool
