// Platform on POSIX systems (Linux first).
#include "platform/Platform.h"

#include <fcntl.h>
#include <unistd.h>

#include <climits>
#include <cstdlib>
#include <string_view>

#if !defined(__wasm__)
#include <pthread.h>
#include <sys/auxv.h>
#endif

#include "platform/MessageTable.h"
#include "platform/posix_files.h"

namespace orvex::platform {

namespace {

#if defined(__wasm__)
void FindProgram() {}
#else
// The program's path where /proc is missing; found out when the library is loaded, since the program may be named from
// the directory that was the current one then.
char g_program[PATH_MAX];

void FindProgram() {
  const char* const name =
      reinterpret_cast<const char*>(getauxval(AT_EXECFN));  // NOLINT(performance-no-int-to-ptr): the kernel's way
  if (access("/proc/self/exe", F_OK) == 0 || name == nullptr || realpath(name, g_program) == nullptr) g_program[0] = 0;
}
#endif

__attribute__((constructor)) void OnLoad() {
  FindProgram();
  OnProcessEvent(nullptr, kAttach);
}

__attribute__((destructor)) void OnUnload() {
  OnProcessEvent(nullptr, kDetach);
}

}  // namespace

const char* Environment(const char* name) {
#if defined(__wasm__)
  return std::getenv(name);  // nobody has more rights there
#else
  return secure_getenv(name);
#endif
}

void AtFork([[maybe_unused]] void (*before)(), [[maybe_unused]] void (*inParent)(),
            [[maybe_unused]] void (*inChild)()) {
#if !defined(__wasm__)
  pthread_atfork(before, inParent, inChild);
#endif
}

std::string ExecutableDirectory() {
#if defined(__wasm__)
  return "./";  // no program has a directory there, and the files are the module's own
#else
  char path[PATH_MAX];
  const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
  if (length == sizeof path) return {};
  const std::string file = length > 0 ? std::string(path, static_cast<std::size_t>(length)) : std::string(g_program);
  return file.substr(0, file.rfind('/') + 1);
#endif
}

const char* DefaultLogFile() {
  return "talven.log";
}

void AppendToFile(const char* fileName, const char* text, std::size_t length) {
  const Descriptor file = OpenRegular(fileName, O_WRONLY | O_CREAT | O_APPEND, 0644);
  if (file.IsOpen()) WriteAll(file.Value(), {text, length});
}

bool LoadMessage(void* /*instance*/, int id, char* buffer, int capacity) {
  return CopyTableMessage(id, buffer, capacity);
}

}  // namespace orvex::platform
