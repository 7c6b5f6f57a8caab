// Platform - the only door to the operating system. Windows: win32.cpp; everything else: posix.cpp.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace orvex::platform {

// ---- attach and detach ----

/// Reasons of the notifications below, as the Windows loader numbers them.
inline constexpr unsigned kDetach = 0;
inline constexpr unsigned kAttach = 1;

/// Called when the library is loaded and unloaded. Declared here, defined by the diagnostics.
void OnProcessEvent(void* instance, unsigned reason);

// ---- files ----

/// Directory of the running program's file with its trailing separator; empty when it cannot be told.
std::string ExecutableDirectory();

/// Name of the debug log on this platform.
const char* DefaultLogFile();

/// Appends bytes to a file, which is made when missing, and closes it again. Failures drop the text.
void AppendToFile(const char* fileName, const char* text, std::size_t length);

// ---- messages ----

/// Copies the message text of an id into the buffer, cut to capacity - 1 characters; false when there is none.
/// `instance` is the library's module instance as given to OnProcessEvent.
bool LoadMessage(void* instance, int id, char* buffer, int capacity);

// ---- INI files ----

/// Reads the entries of a section as consecutive NUL-terminated texts closed by one more NUL. Section names ignore
/// case; comment lines are not returned. Answers the number of characters without the closing NUL; 0 for a missing file
/// or section; capacity - 2 when the buffer is too small for all; nothing when the file is there but cannot be read.
std::optional<std::size_t> ReadProfileSection(const char* fileName, const char* section, char* buffer,
                                              std::size_t capacity);

/// Replaces the entries of a section by the given ones (form as above); everything else in the file stays as it is. The
/// file or section is made when missing. False when the file could not be written, which then is as it was.
bool WriteProfileSection(const char* fileName, const char* section, const char* entries);

}  // namespace orvex::platform
