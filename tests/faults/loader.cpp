// A host that loads and frees a library so many times, and forks when nothing of it is left.
#include <dlfcn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

namespace {

bool LoadAndFree(const char* path) {
  void* const library = dlopen(path, RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) return false;
  const auto create = reinterpret_cast<int (*)(int, int, void**, char*)>(dlsym(library, "orvex_datum_create"));
  char message[256];
  void* datum = nullptr;
  const bool threw = create != nullptr && create(999, 2, &datum, message) == 20260;  // an exception inside
  dlclose(library);
  return threw && dlopen(path, RTLD_NOW | RTLD_NOLOAD) == nullptr;
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 3) return 1;
  for (int i = std::atoi(arguments[2]); i > 0; --i) {
    if (!LoadAndFree(arguments[1])) return 2;
  }
  const pid_t child = fork();
  if (child == 0) _exit(0);
  int status = -1;
  waitpid(child, &status, 0);
  return status == 0 ? 0 : 3;
}
