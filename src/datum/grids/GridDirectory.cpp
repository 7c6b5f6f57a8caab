// GridDirectory - finds grid files where the host said that they are, else beside the program.
#include "datum/grids/GridDirectory.h"

#include <mutex>
#include <new>
#include <utility>

#include "datum/grids/Ntv2.h"
#include "orvex/grids.h"
#include "platform/Platform.h"
#include "support/Log.h"

namespace orvex {

namespace detail {

namespace {

/// The directory of the process with its separator, empty for none.
class Directory {
 public:
  constexpr Directory() = default;

  void Set(std::string directory) {
    if (!directory.empty() && directory.back() != '/' && directory.back() != '\\') directory += '/';
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_directory = std::move(directory);
  }

  std::string Get() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_directory;
  }

  std::mutex& Mutex() { return m_mutex; }

 private:
  std::mutex m_mutex;
  std::string m_directory;
};

constinit Directory g_hostDirectory;

std::string FirstOf(const std::string& directory, std::initializer_list<std::string> names) {
  if (directory.empty()) return {};
  for (const std::string& name : names) {
    if (platform::IsFileThere(directory + name)) return directory + name;
  }
  return {};
}

}  // namespace

std::string FindGridFile(std::initializer_list<std::string> names) {
  const std::string host = g_hostDirectory.Get(), program = platform::ExecutableDirectory();
  if (std::string path = FirstOf(host, names); !path.empty()) return path;
  if (std::string path = FirstOf(program, names); !path.empty()) return path;
  return program.empty() ? std::string() : program + *names.begin();
}

void HoldGridDirectory() {
  g_hostDirectory.Mutex().lock();
}
void ReleaseGridDirectory() {
  g_hostDirectory.Mutex().unlock();
}

}  // namespace detail

bool DatSetGridDirectory(const char* directory) try {
  detail::LogPrintf("DatSetGridDirectory(directory=\"%s\")\n", detail::LogText(directory));
  detail::g_hostDirectory.Set(directory != nullptr ? directory : "");
  detail::ForgetNtv2();
  return true;
} catch (const std::bad_alloc&) {
  return false;
}

}  // namespace orvex
