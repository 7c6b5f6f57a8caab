// Files on POSIX systems.
#include "platform/posix_files.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <limits>
#include <mutex>
#include <thread>
#include <utility>

#include "platform/Platform.h"

namespace orvex::platform {

namespace {

// Holds back the signal by which the system ends a process that writes beyond its limit on the size of files; the write
// fails all the same.
class NoSizeSignal {
#if !defined(__wasm__)
 public:
  NoSizeSignal() {
    sigset_t pending;
    sigemptyset(&m_signal);
    sigaddset(&m_signal, SIGXFSZ);
    m_waiting = sigpending(&pending) == 0 && sigismember(&pending, SIGXFSZ) == 1;
    m_blocked = pthread_sigmask(SIG_BLOCK, &m_signal, &m_before) == 0;
  }
  ~NoSizeSignal() {
    if (!m_blocked) return;
    const timespec now{};
    while (!m_waiting && sigtimedwait(&m_signal, nullptr, &now) == SIGXFSZ) {
    }
    pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
  }
  NoSizeSignal(const NoSizeSignal&) = delete;
  NoSizeSignal& operator=(const NoSizeSignal&) = delete;

 private:
  sigset_t m_signal, m_before;
  bool m_waiting = false, m_blocked = false;
#endif
};

std::int64_t Nanoseconds(const timespec& time) {
  return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

}  // namespace

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
  if (this != &other) {
    Close();
    m_value = other.Release();
  }
  return *this;
}

bool Descriptor::Close() {
  const int value = Release();
  return value < 0 || close(value) == 0;
}

int Descriptor::Release() {
  const int value = m_value;
  m_value = -1;
  return value;
}

Descriptor OpenRegular(const char* name, int flags, mode_t mode) {
  Descriptor file(open(name, flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, mode));
  struct stat status {};
  if (!file.IsOpen() || (fstat(file.Value(), &status) == 0 && S_ISREG(status.st_mode))) return file;
  return Descriptor(-1);
}

bool WriteAll(int file, std::string_view text) {
  [[maybe_unused]] const NoSizeSignal quiet;
  while (!text.empty()) {
    const ssize_t count = write(file, text.data(), text.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    text.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

std::filesystem::path FollowLinks(std::filesystem::path path) {
  constexpr int kMostLinks = 40;
  std::error_code error;
  for (int i = 0; i < kMostLinks; ++i) {
    const std::filesystem::path target = read_symlink(path, error);
    if (error == std::errc::invalid_argument || error == std::errc::no_such_file_or_directory ||
        error == std::errc::not_a_directory) {
      return path;  // no link
    }
    if (error) return {};
    path = target.is_absolute() ? target : path.parent_path() / target;
  }
  return {};
}

Descriptor OpenDirectory(const std::filesystem::path& directory) {
  return Descriptor(open(directory.empty() ? "." : directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
}

// ---- files that are read ----

bool IsFileThere(const std::string& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) == 0) return S_ISREG(status.st_mode);
  return errno != ENOENT && errno != ENOTDIR;
}

InputFile::InputFile(const std::string& path) {
  Descriptor file = OpenRegular(path.c_str(), O_RDONLY);
  struct stat status {};
  if (!file.IsOpen() || fstat(file.Value(), &status) != 0) return;
  m_size = static_cast<std::uint64_t>(status.st_size);
  m_file = file.Release();
  m_open = true;
}

InputFile::~InputFile() {
  if (m_open) close(static_cast<int>(m_file));
}

bool InputFile::HoldsData([[maybe_unused]] std::uint64_t bytes) const {
#if defined(SEEK_DATA) && defined(SEEK_HOLE)
  const int file = static_cast<int>(m_file);
  std::uint64_t held = 0;
  for (off_t end = 0; held < bytes;) {
    const off_t begin = lseek(file, end, SEEK_DATA);
    if (begin < 0) return errno != ENXIO;  // ENXIO: nothing but a hole is left
    end = lseek(file, begin, SEEK_HOLE);
    if (end <= begin) return true;
    held += static_cast<std::uint64_t>(end - begin);
  }
#endif
  return true;
}

std::optional<std::size_t> InputFile::ReadAt(std::uint64_t position, void* bytes, std::size_t count) const {
  constexpr auto kLast = static_cast<std::uint64_t>(std::numeric_limits<off_t>::max());
  std::size_t done = 0;
  while (done < count && position + done <= kLast) {
    const ssize_t some = pread(static_cast<int>(m_file), static_cast<char*>(bytes) + done, count - done,
                               static_cast<off_t>(position + done));
    if (some < 0 && errno == EINTR) continue;
    if (some < 0) return std::nullopt;
    if (some == 0) break;
    done += static_cast<std::size_t>(some);
  }
  return done;
}

// ---- files that are changed ----

namespace {

enum class Locked { Yes, No, Impossible };

// A lock on an open file, which belongs to the descriptor: other threads wait for it as other processes do.
Locked Lock(const Descriptor& file) {
  constexpr std::chrono::seconds kPatience(10);
  constexpr std::chrono::milliseconds kPause(1);
  const auto end = std::chrono::steady_clock::now() + kPatience;
  while (flock(file.Value(), LOCK_EX | LOCK_NB) != 0) {
    if (errno == EBADF || errno == EINVAL || errno == EOPNOTSUPP || errno == ENOSYS) return Locked::Impossible;
    if ((errno != EWOULDBLOCK && errno != EINTR) || std::chrono::steady_clock::now() >= end) return Locked::No;
    std::this_thread::sleep_for(kPause);
  }
  return Locked::Yes;
}

// The open files of all locks. A fork copies their descriptors, and a lock lasts as long as one copy is open: the child
// closes its own, so that the lock ends with what the parent does. Files are opened with the list held, lest a child
// gets one that is not in the list yet.
std::mutex g_lockFiles;
class LockFile;
LockFile* g_firstLockFile = nullptr;

class LockFile {
 public:
  LockFile() noexcept {
    const std::lock_guard guard(g_lockFiles);
    m_next = g_firstLockFile;
    g_firstLockFile = this;
  }
  ~LockFile() {
    const std::lock_guard guard(g_lockFiles);
    LockFile** link = &g_firstLockFile;
    while (*link != nullptr && *link != this) link = &(*link)->m_next;
    if (*link != nullptr) *link = m_next;
    m_file.Close();
  }
  LockFile(const LockFile&) = delete;
  LockFile& operator=(const LockFile&) = delete;

  /// Opens the file by a function that answers a Descriptor.
  template <typename Open>
  const Descriptor& From(Open open) {
    const std::lock_guard guard(g_lockFiles);
    return m_file = open();
  }

  const Descriptor& Get() const { return m_file; }

  static void CloseAll() {
    for (LockFile* file = g_firstLockFile; file != nullptr; file = file->m_next) file->m_file.Close();
    g_firstLockFile = nullptr;
  }

 private:
  Descriptor m_file{-1};
  LockFile* m_next;
};

void HoldLockFiles() {
  g_lockFiles.lock();
}
void ReleaseLockFiles() {
  g_lockFiles.unlock();
}
void LeaveLockFiles() {
  LockFile::CloseAll();
  ReleaseLockFiles();
}
[[maybe_unused]] const bool g_atFork = (AtFork(HoldLockFiles, ReleaseLockFiles, LeaveLockFiles), true);

// Only where everybody who may change what is in a directory may open it too, as a lock on it takes.
Locked LockDirectory(const Descriptor& directory) {
  if (!directory.IsOpen()) return errno == EACCES ? Locked::Impossible : Locked::No;
  constexpr mode_t kWrite = 0222;
  struct stat status {};
  if (fstat(directory.Value(), &status) != 0) return Locked::No;
  const bool isOpenToWriters = ((status.st_mode & kWrite) << 1 & ~status.st_mode) == 0;
  return isOpenToWriters ? Lock(directory) : Locked::Impossible;
}

// A file that stays beside another; whoever may not write it may lock it all the same.
Descriptor OpenBeside(const std::string& name) {
  Descriptor file = OpenRegular(name.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW, 0666);
  if (file.IsOpen() || errno != EACCES) return file;
  return OpenRegular(name.c_str(), O_RDONLY | O_NOFOLLOW);
}

}  // namespace

// The directory is what is locked: the file itself is replaced by every save. Where the file system locks no
// directories, as NFS, or not everybody who saves can open the directory, it is a file that stays beside the other.
class ProfileLock::Holder {
 public:
  explicit Holder(const std::filesystem::path& target) {
    m_locked = LockDirectory(m_file.From([&] { return OpenDirectory(target.parent_path()); }));
    if (m_locked != Locked::Impossible) return;
    const std::string name = target.string() + ".lock";
    const Descriptor& beside = m_file.From([&] { return OpenBeside(name); });
    if (beside.IsOpen()) m_locked = Lock(beside);
  }
  ~Holder() {
    // A child in the making may still have the descriptor.
    if (IsHeld()) flock(m_file.Get().Value(), LOCK_UN);
  }
  Holder(const Holder&) = delete;
  Holder& operator=(const Holder&) = delete;

  bool IsHeld() const { return m_locked == Locked::Yes; }

 private:
  LockFile m_file;
  Locked m_locked;
};

ProfileLock::ProfileLock(const char* fileName) try {
  const std::filesystem::path target = FollowLinks(fileName);
  if (target.empty()) return;
  auto holder = std::make_unique<Holder>(target);
  if (holder->IsHeld()) m_holder = std::move(holder);
} catch (const std::exception&) {
  // no memory for the path: not held
}

ProfileLock::~ProfileLock() = default;

std::optional<FileState> SettledState(const char* fileName) {
  constexpr std::int64_t kTick = 2'000'000'000;  // the coarsest clock of a file system, FAT's
  struct stat status {};
  timespec now{};
  if (stat(fileName, &status) != 0 || clock_gettime(CLOCK_REALTIME, &now) != 0) return std::nullopt;
  const FileState state{status.st_dev, status.st_ino, static_cast<std::uint64_t>(status.st_size),
                        Nanoseconds(status.st_ctim), Nanoseconds(status.st_mtim)};
  return state.changed + kTick < Nanoseconds(now) ? std::optional(state) : std::nullopt;
}

}  // namespace orvex::platform
