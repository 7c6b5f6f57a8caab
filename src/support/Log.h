// Log - the debug log: off unless the environment variable TALVENLOG is set when the library is loaded.
#pragma once

namespace orvex::detail {

/// Whether the log is on; ask before building costly dumps.
bool LogEnabled();

/// Switches the log and names its file; null names "debug.log".
void LogSetup(bool enabled, const char* fileName);

/// Formats into 1040 bytes and logs; formats nothing when the log is off.
[[gnu::format(printf, 1, 2)]] void LogPrintf(const char* format, ...);

/// Appends one text to the log, "\n" as "\r\n", at most 1023 characters of output. The file is opened and closed for
/// every text so that nothing is lost when the process dies. Failures drop the text.
void LogWrite(const char* text);

/// Logs a line of internal progress, marked "CTRACE:  ".
[[gnu::format(printf, 1, 2)]] void Trace(const char* format, ...);

/// Module instance given at process attach; message texts are loaded from it.
void* ModuleInstance();

/// A text argument as the log shows it.
inline const char* LogText(const char* text) {
  return text != nullptr ? text : "(null)";
}

/// "true" or "false", for dumps.
inline const char* BoolText(bool value) {
  return value ? "true" : "false";
}

}  // namespace orvex::detail
