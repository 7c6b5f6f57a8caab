// Sections of INI files on Windows: the system's profile calls, and what they do not say themselves.
#include "platform/win32_profile.h"

#include <atomic>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Platform.h"
#include "platform/ProfileText.h"

#undef WriteProfileSection  // a macro of <windows.h>

namespace orvex::platform {

namespace {

class Handle {
 public:
  explicit Handle(HANDLE value) : m_value(value) {}
  ~Handle() {
    if (IsOpen()) CloseHandle(m_value);
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  bool IsOpen() const { return m_value != INVALID_HANDLE_VALUE; }
  HANDLE Value() const { return m_value; }

 private:
  HANDLE m_value;
};

HANDLE Open(const std::string& name, DWORD access, DWORD disposition = OPEN_EXISTING) {
  return CreateFileA(name.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, disposition,
                     FILE_ATTRIBUTE_NORMAL, nullptr);
}

// Reads a file whole; a missing one gives an empty text. False for any other trouble.
bool ReadFileText(const char* fileName, std::string& text) {
  const Handle file(Open(FullProfileName(fileName), GENERIC_READ));
  if (!file.IsOpen()) {
    const DWORD error = GetLastError();
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
  }
  char block[16384];
  DWORD count = 0;
  do {
    if (!ReadFile(file.Value(), block, sizeof block, &count, nullptr)) return false;
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

// ---- writing ----

enum class Target { Missing, File, Other, Refused };

// What stands where a file is to be written. A rename would not ask whether the file may be.
Target Inspect(const std::string& name) {
  const DWORD attributes = GetFileAttributesA(name.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) {
    return GetLastError() == ERROR_FILE_NOT_FOUND ? Target::Missing : Target::Refused;
  }
  if ((attributes & FILE_ATTRIBUTE_READONLY) != 0) return Target::Refused;
  if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) return Target::Other;
  const Handle file(Open(name, GENERIC_WRITE));
  LARGE_INTEGER size;
  const bool suits = file.IsOpen() && GetFileSizeEx(file.Value(), &size) != 0 &&
                     size.QuadPart <= static_cast<LONGLONG>(kLargestProfile);
  return suits ? Target::File : Target::Refused;
}

// Gives a file the access rights of another one.
bool CopyAccessRights(const std::string& from, const std::string& to) {
  DWORD size = 0;
  GetFileSecurityA(from.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
  std::vector<char> rights(size);
  return GetFileSecurityA(from.c_str(), DACL_SECURITY_INFORMATION, rights.data(), size, &size) != 0 &&
         SetFileSecurityA(to.c_str(), DACL_SECURITY_INFORMATION, rights.data()) != 0;
}

// A copy of a file beside it, or an empty file where there is none, which is deleted in the end unless it was renamed.
class Draft {
 public:
  Draft(const std::string& target, bool exists) {
    static std::atomic<unsigned> counter{0};
    constexpr int kAttempts = 1000;  // names may be taken by what a killed process left behind
    const std::string directory = target.substr(0, target.find_last_of("\\/:") + 1);
    m_error = ERROR_FILE_EXISTS;
    for (int i = 0; i < kAttempts && m_error == ERROR_FILE_EXISTS; ++i) {
      m_name = directory + ".orvex-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(counter++) + ".tmp";
      const bool made = exists ? CopyFileA(target.c_str(), m_name.c_str(), TRUE) != 0
                               : Handle(Open(m_name, GENERIC_WRITE, CREATE_NEW)).IsOpen();
      m_error = made ? ERROR_SUCCESS : GetLastError();
    }
    m_isThere = m_error == ERROR_SUCCESS;
    if (m_isThere && exists && !CopyAccessRights(target, m_name)) m_error = GetLastError();
  }
  ~Draft() {
    if (m_isThere) DeleteFileA(m_name.c_str());
  }
  Draft(const Draft&) = delete;
  Draft& operator=(const Draft&) = delete;

  bool IsMade() const { return m_error == ERROR_SUCCESS; }
  /// Whether no file may be made there.
  bool IsForbidden() const { return m_error == ERROR_ACCESS_DENIED; }
  const std::string& Name() const { return m_name; }

  /// Has everything written to the disk.
  bool Flush() const {
    const Handle file(Open(m_name, GENERIC_WRITE));
    return file.IsOpen() && FlushFileBuffers(file.Value()) != 0;
  }
  /// Puts the draft in the target's place. Programs that just read the target can hinder it for a moment.
  bool Replace(const std::string& target) {
    constexpr int kAttempts = 50;
    constexpr DWORD kPause = 10;  // milliseconds
    for (int i = 0; i < kAttempts && m_isThere; ++i) {
      if (i > 0) Sleep(kPause);
      m_isThere = MoveFileExA(m_name.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) == 0;
    }
    return !m_isThere;
  }

 private:
  std::string m_name;
  DWORD m_error;
  bool m_isThere;
};

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

// The system changes a file in place, and a program that ends meanwhile leaves half of it. So a draft is changed, which
// then takes the place of the file. Where that cannot be, in place: links, directories in which no file may be made,
// files that another program keeps open.
bool WriteProfileSectionBy(SectionWriter call, const char* fileName, const char* section, const char* entries) {
  if (fileName == nullptr || section == nullptr || entries == nullptr) return false;
  const std::string target = FullProfileName(fileName);
  const Target kind = Inspect(target);
  if (kind == Target::Refused) return false;
  if (kind != Target::Other) {
    Draft draft(target, kind == Target::File);
    if (!draft.IsMade() && !draft.IsForbidden()) return false;
    if (draft.IsMade()) {
      if (!call(section, entries, draft.Name().c_str()) || !draft.Flush()) return false;
      if (draft.Replace(target)) return true;
    }
  }
  return call(section, entries, fileName) != 0;
}

bool WriteProfileSection(const char* fileName, const char* section, const char* entries) {
  return WriteProfileSectionBy(WritePrivateProfileSectionA, fileName, section, entries);
}

}  // namespace orvex::platform
