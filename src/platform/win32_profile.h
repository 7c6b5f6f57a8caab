// win32_profile - INI files on Windows: where they are, and the reading of sections with the system's call as a
// parameter.
#pragma once

#include <windows.h>

#include <cstddef>
#include <optional>
#include <string>

namespace orvex::platform {

/// Where the profile calls look: a bare name means the Windows directory.
std::string FullProfileName(const char* fileName);

/// GetPrivateProfileSectionA or what stands in for it.
using SectionCall = DWORD(WINAPI*)(LPCSTR section, LPSTR buffer, DWORD capacity, LPCSTR fileName);

/// ReadProfileSection by that call.
std::optional<std::size_t> ReadProfileSectionBy(SectionCall call, const char* fileName, const char* section,
                                                char* buffer, std::size_t capacity);

}  // namespace orvex::platform
