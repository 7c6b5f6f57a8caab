// Sections of INI files on Windows: the system's profile calls, and what they do not say themselves.
#include "platform/win32_profile.h"

#include <string>
#include <string_view>

#include "platform/Platform.h"
#include "platform/ProfileText.h"

#undef WriteProfileSection  // a macro of <windows.h>

namespace orvex::platform {

namespace {

// Reads a file whole; a missing one gives an empty text. False for any other trouble.
bool ReadFileText(const char* fileName, std::string& text) {
  const HANDLE file = CreateFileA(FullProfileName(fileName).c_str(), GENERIC_READ,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    const DWORD error = GetLastError();
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
  }
  const struct Closer {
    HANDLE handle;
    ~Closer() { CloseHandle(handle); }
  } closer{file};
  char block[16384];
  DWORD count = 0;
  do {
    if (!ReadFile(file, block, sizeof block, &count, nullptr)) return false;
    text.append(block, count);
    if (text.size() > kLargestProfile) return false;
  } while (count > 0);
  return true;
}

// Whether a file's text has a section with entries. Of UTF-16 texts the zero bytes are left out. A header line that
// holds more than the name in brackets is not counted on: the profile calls read it in ways of their own.
bool HoldsEntries(std::string text, std::string_view section) {
  if (text.starts_with("\xFF\xFE")) text.erase(0, 2);
  std::erase(text, '\0');
  const Parts parts = Split(text, section);
  std::string_view header;
  for (std::string_view lines = parts.before; !lines.empty();) header = TakeLine(lines);
  if (Entry(header).size() != section.size() + 2) return false;
  for (std::string_view lines = parts.section; !lines.empty();) {
    const std::string entry = Entry(TakeLine(lines));
    if (!entry.starts_with('=') && entry.find('=') != entry.npos) return true;
  }
  return false;
}

}  // namespace

std::string FullProfileName(const char* fileName) {
  const std::string name(fileName);
  if (name.find_first_of("\\/:") != name.npos) return name;
  char directory[MAX_PATH];
  const UINT length = GetWindowsDirectoryA(directory, sizeof directory);
  if (length == 0 || length >= sizeof directory) return name;
  return std::string(directory, length) + "\\" + name;
}

std::optional<std::size_t> ReadProfileSectionBy(SectionCall call, const char* fileName, const char* section,
                                                char* buffer, std::size_t capacity) {
  if (fileName == nullptr || section == nullptr || buffer == nullptr || capacity < 2) return 0;
  // 0 stands for a missing file, for a section without entries and for a read that failed alike. The file itself tells
  // them apart; a second call settles a failure that has passed meanwhile.
  for (int attempt = 0; attempt < 2; ++attempt) {
    buffer[0] = buffer[1] = '\0';
    const DWORD length = call(section, buffer, static_cast<DWORD>(capacity), fileName);
    if (length > 0) return length;
    std::string text;
    if (!ReadFileText(fileName, text)) return std::nullopt;
    if (!HoldsEntries(std::move(text), section)) return 0;
  }
  return std::nullopt;
}

std::optional<std::size_t> ReadProfileSection(const char* fileName, const char* section, char* buffer,
                                              std::size_t capacity) {
  return ReadProfileSectionBy(GetPrivateProfileSectionA, fileName, section, buffer, capacity);
}

bool WriteProfileSection(const char* fileName, const char* section, const char* entries) {
  return WritePrivateProfileSectionA(section, entries, fileName) != 0;
}

}  // namespace orvex::platform
