// Sections of INI files on POSIX systems, with the observable behaviour of the two Windows profile calls: names ignore
// case, blanks around keys and before values do not count, lines that begin with ';' are comments. A write touches the
// entries of one section only, every other byte stays, and replaces the file in one step.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/LetterCase.h"
#include "platform/Platform.h"
#include "platform/ProfileText.h"
#include "platform/posix_files.h"

namespace orvex::platform {

namespace {

// ---- text ----

// The section's lines with its entries replaced. An entry whose text stays keeps its line to the byte, comments and
// blank lines stay where they are, new entries follow the last old one.
std::string Merge(std::string_view section, const std::vector<std::string_view>& entries, std::string_view lineEnd) {
  std::string merged, pending;  // pending: comments and blank lines after the last entry so far
  const auto append = [&](std::string_view line) {
    if (!merged.empty() && !merged.ends_with('\n')) merged += lineEnd;
    merged += line;
  };
  std::size_t next = 0;
  while (!section.empty()) {
    const std::string_view line = TakeLine(section);
    const std::string old = Entry(line);
    if (old.empty()) {
      pending += line;
      continue;
    }
    append(pending);
    pending.clear();
    std::size_t match = next;
    while (match < entries.size() && !EqualIgnoringCase(KeyOf(entries[match]), KeyOf(old))) ++match;
    if (match == entries.size()) continue;  // removed
    for (; next < match; ++next) append(std::string(entries[next]).append(lineEnd));
    append(Entry(entries[match]) == old ? std::string(line) : std::string(entries[match]).append(lineEnd));
    ++next;
  }
  for (; next < entries.size(); ++next) append(std::string(entries[next]).append(lineEnd));
  append(pending);
  return merged;
}

std::string Replace(std::string_view text, std::string_view section, const char* entries) {
  std::vector<std::string_view> list;
  for (; *entries != '\0'; entries += list.back().size() + 1) list.emplace_back(entries);
  const std::size_t firstEnd = text.find('\n');
  const bool crlf = firstEnd != text.npos && firstEnd > 0 && text[firstEnd - 1] == '\r';
  const std::string_view lineEnd = crlf ? "\r\n" : "\n";
  const Parts parts = Split(text, section);
  std::string result(parts.before);
  if (!parts.found) {
    if (!result.empty() && !result.ends_with('\n')) result += lineEnd;
    result.append("[").append(section).append("]").append(lineEnd);
  } else if (!result.ends_with('\n') && !list.empty()) {
    result += lineEnd;
  }
  result += Merge(parts.section, list, lineEnd);
  if (!parts.after.empty() && !result.ends_with('\n')) result += lineEnd;
  return result.append(parts.after);
}

// ---- files ----

// Reads a regular file whole; a missing one leaves the text empty and `status` alone. False for any other trouble.
bool ReadFile(const char* name, std::string& text, std::optional<struct stat>& status) {
  const Descriptor file(open(name, O_RDONLY | O_CLOEXEC | O_NONBLOCK));  // a pipe must not hold up the host
  if (!file.IsOpen()) return errno == ENOENT;
  struct stat found {};
  if (fstat(file.Value(), &found) != 0 || !S_ISREG(found.st_mode)) return false;
  if (found.st_size > static_cast<off_t>(kLargestProfile)) return false;
  char block[16384];
  for (;;) {
    const ssize_t count = read(file.Value(), block, sizeof block);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return false;
    if (count == 0) break;
    text.append(block, static_cast<std::size_t>(count));
    if (text.size() > kLargestProfile) return false;
  }
  status = found;
  return true;
}

// Makes a file with a name of its own in the target's directory, so that the rename stays within one file system.
Descriptor CreateBeside(const std::filesystem::path& target, mode_t mode, std::filesystem::path& name) {
  static std::atomic<unsigned> counter{0};
  constexpr int kAttempts = 1000;  // names may be taken by what a killed process left behind
  for (int i = 0; i < kAttempts; ++i) {
    const std::string unique = std::to_string(getpid()) + "-" + std::to_string(counter++);
    name = target.parent_path() / (".orvex-" + unique + ".tmp");
    const int file = open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    if (file >= 0 || errno != EEXIST) return Descriptor(file);
  }
  return Descriptor(-1);
}

// At any moment the name leads to the old or to the new text, whole.
bool ReplaceFile(const std::filesystem::path& target, std::string_view text, const std::optional<struct stat>& old) {
  // All that takes memory comes first: nothing may fail between the file that is made and the one that is replaced.
  const Descriptor directory = OpenDirectory(target.parent_path());
  std::filesystem::path name;
  Descriptor file = CreateBeside(target, old ? old->st_mode & 0700 : 0666, name);
  if (!file.IsOpen()) return false;
  // Another user's file becomes this user's where the system does not allow to give it back.
  [[maybe_unused]] const bool sameOwner = !old || fchown(file.Value(), old->st_uid, old->st_gid) == 0;
  const bool done = (!old || fchmod(file.Value(), old->st_mode & 07777) == 0) && WriteAll(file.Value(), text) &&
                    fsync(file.Value()) == 0 && file.Close() && rename(name.c_str(), target.c_str()) == 0;
  if (!done) {
    unlink(name.c_str());
  } else if (directory.IsOpen()) {
    fsync(directory.Value());  // when this fails, the file is stored all the same
  }
  return done;
}

}  // namespace

std::optional<std::size_t> ReadProfileSection(const char* fileName, const char* section, char* buffer,
                                              std::size_t capacity) {
  if (buffer == nullptr || capacity == 0) return 0;
  std::memset(buffer, 0, std::min<std::size_t>(capacity, 2));
  std::string text;
  std::optional<struct stat> status;
  if (fileName == nullptr || section == nullptr || capacity < 2) return 0;
  if (!ReadFile(fileName, text, status)) return std::nullopt;
  std::size_t length = 0;
  for (std::string_view lines = Split(text, section).section; !lines.empty();) {
    const std::string entry = Entry(TakeLine(lines));
    if (entry.empty()) continue;
    const std::size_t room = capacity - 2 - length;
    std::memcpy(buffer + length, entry.c_str(), std::min(entry.size() + 1, room));
    if (entry.size() + 1 > room) {
      buffer[capacity - 2] = buffer[capacity - 1] = '\0';
      return capacity - 2;
    }
    length += entry.size() + 1;
  }
  buffer[length] = '\0';
  return length;
}

bool WriteProfileSection(const char* fileName, const char* section, const char* entries) {
  if (fileName == nullptr || section == nullptr || entries == nullptr) return false;
  const std::filesystem::path target = FollowLinks(fileName);
  if (target.empty()) return false;
  std::string text;
  std::optional<struct stat> old;
  if (!ReadFile(target.c_str(), text, old)) return false;
  if (old && faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0) return false;  // a rename would not ask
  return ReplaceFile(target, Replace(text, section, entries), old);
}

}  // namespace orvex::platform
