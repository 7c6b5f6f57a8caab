// Start, end and message texts of the static library on Windows: it has neither a DllMain nor resources of its own.
#include "platform/MessageTable.h"
#include "platform/Platform.h"

namespace orvex::platform {

namespace {

__attribute__((constructor)) void OnLoad() {
  OnProcessEvent(nullptr, kAttach);
}

__attribute__((destructor)) void OnUnload() {
  OnProcessEvent(nullptr, kDetach);
}

}  // namespace

bool LoadMessage(void* /*instance*/, int id, char* buffer, int capacity) {
  return CopyTableMessage(id, buffer, capacity);
}

}  // namespace orvex::platform
