// Files - the files that a fuzzed reader is given, and silence for what it says about them.
#pragma once

#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

namespace orvex::fuzz {

/// A directory of this process's own, in memory where there is such a place; it goes with the process.
class Directory {
 public:
  Directory() {
    const std::filesystem::path memory = "/dev/shm";
    const auto base = std::filesystem::is_directory(memory) ? memory : std::filesystem::temp_directory_path();
    m_path = base / ("orvex-fuzz-" + std::to_string(getpid()));
    std::filesystem::create_directories(m_path);
    Clear();  // of a process of this number that was killed
  }
  ~Directory() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
  }
  Directory(const Directory&) = delete;
  Directory& operator=(const Directory&) = delete;

  void Clear() const {
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator(m_path)) std::filesystem::remove_all(entry, ignored);
  }

  std::string Path() const { return m_path.string(); }
  std::string operator/(const char* name) const { return (m_path / name).string(); }
  /// Writes a file and answers its path.
  std::string Write(const char* name, const std::string& bytes) const {
    std::ofstream(m_path / name, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return *this / name;
  }

 private:
  std::filesystem::path m_path;
};

inline const Directory& Files() {
  static const Directory directory;
  return directory;
}

/// The tool's messages and tables go nowhere; the sanitizers write by themselves.
inline void Silence() {
  static const bool once = [] {
    std::cout.rdbuf(nullptr);
    std::cerr.rdbuf(nullptr);
    return std::freopen("/dev/null", "w", stdout) != nullptr && std::freopen("/dev/null", "r", stdin) != nullptr;
  }();
  if (!once) std::abort();
}

}  // namespace orvex::fuzz
