// Platform on Windows; win32_dll.cpp and win32_static.cpp hold what the DLL and the static library do differently.
#include "platform/Platform.h"

#include <windows.h>

#undef WriteProfileSection  // a macro of <windows.h>

namespace orvex::platform {

std::string ExecutableDirectory() {
  char path[MAX_PATH];
  const DWORD length = GetModuleFileNameA(nullptr, path, 255);
  if (length == 0 || length >= 255) return {};
  const std::string file(path, length);
  return file.substr(0, file.find_last_of("\\:") + 1);
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

std::size_t ReadProfileSection(const char* fileName, const char* section, char* buffer, std::size_t capacity) {
  return GetPrivateProfileSectionA(section, buffer, static_cast<DWORD>(capacity), fileName);
}

bool WriteProfileSection(const char* fileName, const char* section, const char* entries) {
  return WritePrivateProfileSectionA(section, entries, fileName) != 0;
}

}  // namespace orvex::platform
