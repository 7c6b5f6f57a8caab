// Platform on POSIX systems (Linux first).
#include "platform/Platform.h"

#include <fcntl.h>
#include <unistd.h>

#include "platform/MessageTable.h"

namespace orvex::platform {

namespace {

__attribute__((constructor)) void OnLoad() {
  OnProcessEvent(nullptr, kAttach);
}

__attribute__((destructor)) void OnUnload() {
  OnProcessEvent(nullptr, kDetach);
}

}  // namespace

std::string ExecutableDirectory() {
  char path[4096];
  const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
  if (length <= 0 || static_cast<std::size_t>(length) == sizeof path) return {};
  const std::string file(path, static_cast<std::size_t>(length));
  return file.substr(0, file.rfind('/') + 1);
}

const char* DefaultLogFile() {
  return "talven.log";
}

void AppendToFile(const char* fileName, const char* text, std::size_t length) {
  const int file = open(fileName, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644);
  if (file < 0) return;
  while (length > 0) {
    const ssize_t written = write(file, text, length);
    if (written <= 0) break;
    text += written;
    length -= static_cast<std::size_t>(written);
  }
  close(file);
}

bool LoadMessage(void* /*instance*/, int id, char* buffer, int capacity) {
  return CopyTableMessage(id, buffer, capacity);
}

}  // namespace orvex::platform
