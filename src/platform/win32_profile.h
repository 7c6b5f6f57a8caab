// win32_profile - INI files on Windows: where they are, and the reading and writing of sections with the system's call
// as a parameter.
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

/// WritePrivateProfileSectionA or what stands in for it.
using SectionWriter = BOOL(WINAPI*)(LPCSTR section, LPCSTR entries, LPCSTR fileName);

/// WriteProfileSection by that call.
bool WriteProfileSectionBy(SectionWriter call, const char* fileName, const char* section, const char* entries);

/// ReadProfileSection by that call.
std::optional<std::size_t> ReadProfileSectionBy(SectionCall call, const char* fileName, const char* section,
                                                char* buffer, std::size_t capacity);

}  // namespace orvex::platform
