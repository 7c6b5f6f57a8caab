// GridDirectory - finds grid files where the host said that they are, else beside the program.
#include "datum/grids/GridDirectory.h"

#include <mutex>
#include <new>

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
  void Set(std::string directory) {
    if (!directory.empty() && directory.back() != '/' && directory.back() != '\\') directory += '/';
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_directory.swap(directory);  // assigned, a short name would keep the memory of a long one
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

Directory& HostDirectory() {
  static Directory directory;
  return directory;
}

std::string FirstOf(const std::string& directory, std::initializer_list<std::string> names) {
  if (directory.empty()) return {};
  for (const std::string& name : names) {
    if (platform::IsFileThere(directory + name)) return directory + name;
  }
  return {};
}

}  // namespace

std::string FindGridFile(std::initializer_list<std::string> names) {
  const std::string host = HostDirectory().Get(), program = platform::ExecutableDirectory();
  if (std::string path = FirstOf(host, names); !path.empty()) return path;
  if (std::string path = FirstOf(program, names); !path.empty()) return path;
  return program.empty() ? std::string() : program + *names.begin();
}

void HoldGridDirectory() {
  HostDirectory().Mutex().lock();
}
void ReleaseGridDirectory() {
  HostDirectory().Mutex().unlock();
}

}  // namespace detail

bool DatSetGridDirectory(const char* directory) try {
  detail::LogPrintf("DatSetGridDirectory(directory=\"%s\")\n", detail::LogText(directory));
  detail::HostDirectory().Set(directory != nullptr ? directory : "");
  detail::ForgetNtv2();
  return true;
} catch (const std::bad_alloc&) {
  return false;
}

}  // namespace orvex
