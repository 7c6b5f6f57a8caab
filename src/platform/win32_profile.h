// win32_profile - the reading of INI sections on Windows, with the system's call as a parameter.
#pragma once

#include <windows.h>

#include <cstddef>
#include <optional>

namespace orvex::platform {

/// GetPrivateProfileSectionA or what stands in for it.
using SectionCall = DWORD(WINAPI*)(LPCSTR section, LPSTR buffer, DWORD capacity, LPCSTR fileName);

/// ReadProfileSection by that call.
std::optional<std::size_t> ReadProfileSectionBy(SectionCall call, const char* fileName, const char* section,
                                                char* buffer, std::size_t capacity);

}  // namespace orvex::platform
