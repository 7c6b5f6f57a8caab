// Log - the debug log and the library's attach and detach.
#include "support/Log.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <ctime>

#include "platform/Platform.h"

namespace orvex::detail {

namespace {

// Written while the library is loaded, before any other thread can call it.
struct State {
  int enabled = 0;
  char fileName[260] = "debug.log";
  void* instance = nullptr;
};

constinit State g_state;

constexpr std::size_t kFormatBuffer = 1040;
constexpr std::size_t kMaxOutput = 1023;
constexpr char kRule[] = "--------------------------------------------------------------------------\n";  // 74 hyphens
static_assert(sizeof kRule == 74 + 2);

void LogBannerText(const char* format) {
  const std::time_t now = std::time(nullptr);
  const char* text = std::ctime(&now);  // ends with a newline
  if (text == nullptr) text = "\n";
  char line[260];
  std::snprintf(line, sizeof line, format, text);  // NOLINT(clang-diagnostic-format-nonliteral)
  LogWrite(line);
}

void OnAttach(void* instance) {
  g_state.instance = instance;
  LogSetup(platform::Environment("TALVENLOG") != nullptr, platform::DefaultLogFile());
  LogPrintf("\n%s", kRule);
  if (LogEnabled()) LogBannerText("TALVEN.DLL log output started at %s");
  LogPrintf("%s", kRule);
}

void OnDetach() {
  LogPrintf("%s", kRule);
  if (LogEnabled()) LogBannerText("TALVEN.DLL log output ended at %s");
  LogPrintf("%s\n", kRule);
}

}  // namespace

bool LogEnabled() {
  return g_state.enabled != 0;
}

void LogSetup(bool enabled, const char* fileName) {
  g_state.enabled = enabled ? 1 : 0;
  std::snprintf(g_state.fileName, sizeof g_state.fileName, "%s", fileName != nullptr ? fileName : "debug.log");
}

void LogPrintf(const char* format, ...) {
  if (!LogEnabled()) return;
  char text[kFormatBuffer];
  std::va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(text, sizeof text, format, arguments);
  va_end(arguments);
  LogWrite(text);
}

void LogWrite(const char* text) {
  if (!LogEnabled()) return;
  char output[kMaxOutput + 1];  // a newline tested just below the limit still takes two characters
  std::size_t length = 0;
  for (; *text != '\0' && length < kMaxOutput; ++text) {
    if (*text == '\n') output[length++] = '\r';
    output[length++] = *text;
  }
  platform::AppendToFile(g_state.fileName, output, length);
}

void Trace(const char* format, ...) {
  if (!LogEnabled()) return;
  char text[kFormatBuffer];
  std::va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(text, sizeof text, format, arguments);
  va_end(arguments);
  LogPrintf("CTRACE:  %s", text);
}

void* ModuleInstance() {
  return g_state.instance;
}

}  // namespace orvex::detail

void orvex::platform::OnProcessEvent(void* instance, unsigned reason) {
  if (reason == kAttach) detail::OnAttach(instance);
  if (reason == kDetach) detail::OnDetach();
}
