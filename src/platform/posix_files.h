// posix_files - what the sources for POSIX systems share about files.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string_view>

namespace orvex::platform {

/// A file descriptor that is closed in the end.
class Descriptor {
 public:
  explicit Descriptor(int value) : m_value(value) {}
  ~Descriptor() { Close(); }
  Descriptor(Descriptor&& other) noexcept : m_value(other.Release()) {}
  Descriptor& operator=(Descriptor&& other) noexcept;
  int Value() const { return m_value; }
  bool IsOpen() const { return m_value >= 0; }
  /// Answers whether the system took note of all that was written.
  bool Close();
  /// Leaves the descriptor to the caller.
  int Release();

 private:
  int m_value;
};

/// Opens a regular file; anything else is neither opened nor waited for.
Descriptor OpenRegular(const char* name, int flags, mode_t mode = 0);

/// Writes all of a text. A limit on the size of files makes it fail, where the system would otherwise end the process.
bool WriteAll(int file, std::string_view text);

/// The file that a chain of symbolic links ends at, whether it exists or not; empty when that cannot be told, or the
/// chain is without end.
std::filesystem::path FollowLinks(std::filesystem::path path);

/// -1 when it cannot be opened.
Descriptor OpenDirectory(const std::filesystem::path& directory);

}  // namespace orvex::platform
