// Platform on Windows; win32_profile.cpp holds the INI files, win32_dll.cpp and win32_static.cpp what the DLL and the
// static library do differently.
#include "platform/Platform.h"

#include <windows.h>

#include <cstdlib>

namespace orvex::platform {

const char* Environment(const char* name) {
  return std::getenv(name);
}

void AtFork(void (*)(), void (*)(), void (*)()) {}

std::string ExecutableDirectory() {
  constexpr std::size_t kLongestPath = 32768;  // of any path, its terminator included
  std::string file(MAX_PATH, '\0');
  for (;;) {
    const DWORD length = GetModuleFileNameA(nullptr, file.data(), static_cast<DWORD>(file.size()));
    if (length < file.size()) return file.substr(0, file.substr(0, length).find_last_of("\\:") + 1);
    if (file.size() >= kLongestPath) return {};
    file.resize(2 * file.size());  // the name was cut
  }
}

const char* DefaultLogFile() {
  return "c:\\talven.log";
}

void AppendToFile(const char* fileName, const char* text, std::size_t length) {
  HFILE file = _lopen(fileName, OF_READWRITE);
  if (file != HFILE_ERROR) {
    _llseek(file, 0, FILE_END);
  } else {
    file = _lcreat(fileName, 0);
    if (file == HFILE_ERROR) return;
  }
  _lwrite(file, text, static_cast<UINT>(length));
  _lclose(file);
}

}  // namespace orvex::platform
