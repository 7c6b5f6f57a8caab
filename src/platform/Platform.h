// Platform - the only door to the operating system. Windows: win32.cpp; everything else: posix.cpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace orvex::platform {

// ---- attach and detach ----

/// Reasons of the notifications below, as the Windows loader numbers them.
inline constexpr unsigned kDetach = 0;
inline constexpr unsigned kAttach = 1;

/// Called when the library is loaded and unloaded. Declared here, defined by the diagnostics.
void OnProcessEvent(void* instance, unsigned reason);

// ---- the process ----

/// An environment variable; null when it is not set, and for a program with more rights than whoever started it.
const char* Environment(const char* name);

/// Has `before` called ahead of every fork of the process and behind it one of the others, each in its process, as long
/// as the library is loaded. Nothing where processes do not fork.
void AtFork(void (*before)(), void (*inParent)(), void (*inChild)());

// ---- files ----

/// Directory of the running program's file with its trailing separator; empty when it cannot be told.
std::string ExecutableDirectory();

/// Whether a regular file stands at a path, or something keeps from telling: then opening it gives the reason.
bool IsFileThere(const std::string& path);

/// A regular file that is open to be read. Anything else (a directory, a pipe, a device) counts as a file that cannot
/// be opened, and is not waited for.
class InputFile {
 public:
  explicit InputFile(const std::string& path);
  ~InputFile();
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;

  bool IsOpen() const { return m_open; }
  std::uint64_t Size() const { return m_size; }
  /// Whether at least that many bytes are stored on the disk. Holes are not; true where the system cannot tell.
  bool HoldsData(std::uint64_t bytes) const;
  /// Reads up to `count` bytes from a position on, fewer at the end of the file; nothing when reading fails.
  std::optional<std::size_t> ReadAt(std::uint64_t position, void* bytes, std::size_t count) const;

 private:
  std::intptr_t m_file = -1;
  bool m_open = false;
  std::uint64_t m_size = 0;
};

/// Name of the debug log on this platform.
const char* DefaultLogFile();

/// Appends bytes to a file, which is made when missing, and closes it again. Failures drop the text.
void AppendToFile(const char* fileName, const char* text, std::size_t length);

// ---- messages ----

/// Copies the message text of an id into the buffer, cut to capacity - 1 characters; false when there is none.
/// `instance` is the library's module instance as given to OnProcessEvent.
bool LoadMessage(void* instance, int id, char* buffer, int capacity);

// ---- INI files ----

/// Keeps all other holders of a lock on the same file's directory waiting, those of other threads and of other
/// processes. It is not held when it could not be had within some seconds, or not at all.
class ProfileLock {
 public:
  explicit ProfileLock(const char* fileName);
  ~ProfileLock();
  ProfileLock(const ProfileLock&) = delete;
  ProfileLock& operator=(const ProfileLock&) = delete;

  bool IsHeld() const { return m_holder != nullptr; }

 private:
  class Holder;
  std::unique_ptr<Holder> m_holder;
};

/// What tells one state of a file from every later one.
struct FileState {
  std::uint64_t volume, number, size;
  std::int64_t changed, written;  // on the system's clock

  bool operator==(const FileState&) const = default;
};

/// The state of a file; nothing when it cannot be told, or changed so lately that a further change might not show.
std::optional<FileState> SettledState(const char* fileName);

/// Reads the entries of a section as consecutive NUL-terminated texts closed by one more NUL. Section names ignore
/// case; comment lines are not returned. Answers the number of characters without the closing NUL; 0 for a missing file
/// or section; capacity - 2 when the buffer is too small for all; nothing when the file is there but cannot be read.
std::optional<std::size_t> ReadProfileSection(const char* fileName, const char* section, char* buffer,
                                              std::size_t capacity);

/// Replaces the entries of a section by the given ones (form as above); everything else in the file stays as it is. The
/// file or section is made when missing. False when the file could not be written, which then is as it was.
bool WriteProfileSection(const char* fileName, const char* section, const char* entries);

}  // namespace orvex::platform
