// Sections of INI files on Windows: what an answer of 0 characters means.
#if defined(_WIN32)

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "platform/win32_profile.h"
#include "support/GridFiles.h"

namespace orvex::platform {
namespace {

using namespace orvex::test;

int g_failures = 0;  // calls that still fail

DWORD WINAPI FailFirst(LPCSTR section, LPSTR buffer, DWORD capacity, LPCSTR fileName) {
  return g_failures-- > 0 ? 0 : GetPrivateProfileSectionA(section, buffer, capacity, fileName);
}

TEST(WindowsProfile, AnAnswerOfNothingIsLookedInto) {
  const TemporaryDirectory directory;
  const std::string file = (directory / "host.ini").string();
  const auto read = [&](int failures) {
    char buffer[4096];
    g_failures = failures;
    return ReadProfileSectionBy(FailFirst, file.c_str(), "Custom Datums", buffer, sizeof buffer);
  };
  EXPECT_EQ(read(9), 0u);  // no file
  WriteFile(file, "[Custom Datums]\r\n; none=yet\r\n\r\n[Other]\r\na=1\r\n");
  EXPECT_EQ(read(9), 0u);  // no entries
  WriteFile(file, "[Other]\r\na=1\r\n[custom datums]\r\nOne=none,\r\n");
  EXPECT_EQ(read(0), 10u);
  EXPECT_EQ(read(1), 10u);  // a failure that has passed
  EXPECT_EQ(read(9), std::nullopt);
  std::string wide = "\xFF\xFE";
  for (const char c : ReadWholeFile(file)) wide.append({c, '\0'});
  WriteFile(file, wide);
  EXPECT_EQ(read(9), std::nullopt);
  {
    const HANDLE held = CreateFileA(file.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    EXPECT_EQ(read(9), std::nullopt);
    CloseHandle(held);
  }
  std::filesystem::remove(file);
  std::filesystem::create_directory(file);
  EXPECT_EQ(read(9), std::nullopt);
}

}  // namespace
}  // namespace orvex::platform

#endif
