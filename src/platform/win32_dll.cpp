// Entry point and message texts of the Windows DLL: the texts are its string resources.
#include <windows.h>

#include "platform/Platform.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID /*reserved*/) {
  orvex::platform::OnProcessEvent(instance, reason);
  return TRUE;
}

bool orvex::platform::LoadMessage(void* instance, int id, char* buffer, int capacity) {
  return LoadStringA(static_cast<HINSTANCE>(instance), static_cast<UINT>(id), buffer, capacity) > 0;
}
