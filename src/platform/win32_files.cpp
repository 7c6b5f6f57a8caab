// Files on Windows.
#include <windows.h>

#include <cstdio>
#include <exception>
#include <utility>

#include "platform/Platform.h"
#include "platform/win32_profile.h"

namespace orvex::platform {

namespace {

HANDLE HandleOf(std::intptr_t value) {
  return reinterpret_cast<HANDLE>(value);
}

std::uint64_t Wide(DWORD high, DWORD low) {
  return std::uint64_t{high} << 32 | low;
}

// Opens a file or a directory to look at, whoever else has it open.
HANDLE OpenShared(const std::string& path, DWORD access) {
  return CreateFileA(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                     OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
}

// What the system knows of a file or directory by its path.
bool Inspect(const std::string& path, BY_HANDLE_FILE_INFORMATION& information) {
  const HANDLE file = OpenShared(path, 0);
  if (file == INVALID_HANDLE_VALUE) return false;
  const bool known = GetFileInformationByHandle(file, &information) != 0;
  CloseHandle(file);
  return known;
}

std::int64_t Ticks(const FILETIME& time) {
  return static_cast<std::int64_t>(Wide(time.dwHighDateTime, time.dwLowDateTime));
}

}  // namespace

// ---- files that are read ----

bool IsFileThere(const std::string& path) {
  const DWORD attributes = GetFileAttributesA(path.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES) return (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
  const DWORD error = GetLastError();
  return error != ERROR_FILE_NOT_FOUND && error != ERROR_PATH_NOT_FOUND && error != ERROR_INVALID_NAME;
}

InputFile::InputFile(const std::string& path) {
  const HANDLE file = OpenShared(path, GENERIC_READ);
  if (file == INVALID_HANDLE_VALUE) return;
  BY_HANDLE_FILE_INFORMATION information;
  m_open = GetFileType(file) == FILE_TYPE_DISK && GetFileInformationByHandle(file, &information) != 0 &&
           (information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
  if (!m_open) {
    CloseHandle(file);
    return;
  }
  m_file = reinterpret_cast<std::intptr_t>(file);
  m_size = Wide(information.nFileSizeHigh, information.nFileSizeLow);
}

InputFile::~InputFile() {
  if (m_open) CloseHandle(HandleOf(m_file));
}

bool InputFile::HoldsData(std::uint64_t bytes) const {
  FILE_STANDARD_INFO information;
  if (!GetFileInformationByHandleEx(HandleOf(m_file), FileStandardInfo, &information, sizeof information)) return true;
  return static_cast<std::uint64_t>(information.AllocationSize.QuadPart) >= bytes;
}

std::optional<std::size_t> InputFile::ReadAt(std::uint64_t position, void* bytes, std::size_t count) const {
  constexpr std::size_t kMost = std::size_t{1} << 30;
  std::size_t done = 0;
  while (done < count) {
    const std::uint64_t at = position + done;
    OVERLAPPED place{};
    place.Offset = static_cast<DWORD>(at);
    place.OffsetHigh = static_cast<DWORD>(at >> 32);
    const std::size_t rest = count - done;
    DWORD some = 0;
    if (!ReadFile(HandleOf(m_file), static_cast<char*>(bytes) + done, static_cast<DWORD>(rest < kMost ? rest : kMost),
                  &some, &place)) {
      if (GetLastError() == ERROR_HANDLE_EOF) break;
      return std::nullopt;
    }
    if (some == 0) break;
    done += some;
  }
  return done;
}

// ---- files that are changed ----

// A mutex of the whole system.
class ProfileLock::Holder {
 public:
  explicit Holder(const char* name) {
    constexpr DWORD kPatience = 10000;  // milliseconds
    SECURITY_DESCRIPTOR everybody;      // programs of other users wait as well
    InitializeSecurityDescriptor(&everybody, SECURITY_DESCRIPTOR_REVISION);
    SetSecurityDescriptorDacl(&everybody, TRUE, nullptr, FALSE);
    SECURITY_ATTRIBUTES attributes{sizeof attributes, &everybody, FALSE};
    m_mutex = CreateMutexA(&attributes, FALSE, name);
    if (m_mutex == nullptr) return;
    const DWORD answer = WaitForSingleObject(m_mutex, kPatience);
    m_held = answer == WAIT_OBJECT_0 || answer == WAIT_ABANDONED;  // a program that ended left nothing half done
  }
  ~Holder() {
    if (m_held) ReleaseMutex(m_mutex);
    if (m_mutex != nullptr) CloseHandle(m_mutex);
  }
  Holder(const Holder&) = delete;
  Holder& operator=(const Holder&) = delete;

  bool IsHeld() const { return m_held; }

 private:
  HANDLE m_mutex;
  bool m_held = false;
};

// The mutex is named after the directory, which has one identity however it is spelt.
ProfileLock::ProfileLock(const char* fileName) try {
  const std::string name = FullProfileName(fileName);
  BY_HANDLE_FILE_INFORMATION directory;
  if (!Inspect(name.substr(0, name.find_last_of("\\/:") + 1), directory)) return;
  char mutexName[80];
  std::snprintf(mutexName, sizeof mutexName, "Global\\Orvex-%08lx-%08lx%08lx", directory.dwVolumeSerialNumber,
                directory.nFileIndexHigh, directory.nFileIndexLow);
  auto holder = std::make_unique<Holder>(mutexName);
  if (holder->IsHeld()) m_holder = std::move(holder);
} catch (const std::exception&) {
  // no memory for the name: not held
}

ProfileLock::~ProfileLock() = default;

std::optional<FileState> SettledState(const char* fileName) {
  constexpr std::int64_t kTick = 20'000'000;  // 2 s: the coarsest clock of a file system, FAT's
  BY_HANDLE_FILE_INFORMATION file;
  FILETIME now;
  GetSystemTimeAsFileTime(&now);
  if (!Inspect(FullProfileName(fileName), file)) return std::nullopt;
  const FileState state{file.dwVolumeSerialNumber, Wide(file.nFileIndexHigh, file.nFileIndexLow),
                        Wide(file.nFileSizeHigh, file.nFileSizeLow), Ticks(file.ftCreationTime),
                        Ticks(file.ftLastWriteTime)};
  return state.written + kTick < Ticks(now) ? std::optional(state) : std::nullopt;
}

}  // namespace orvex::platform
