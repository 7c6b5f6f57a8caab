// Sections of INI files on Windows: what an answer of 0 characters means, and that a save is all or nothing.
#if defined(_WIN32)

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <random>
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

const char* const kText = "[Other]\r\na=1\r\n[Custom Datums]\r\nOne=none,\r\n";
const char kEntries[] = "One=none,\0Two=none,\0";

class WindowsSave : public testing::Test {
 protected:
  WindowsSave() { WriteFile(m_file, kText); }
  bool Write(SectionWriter call = WritePrivateProfileSectionA) const {
    return WriteProfileSectionBy(call, m_file.c_str(), "Custom Datums", kEntries);
  }
  std::ptrdiff_t Files() const { return std::distance(std::filesystem::directory_iterator(m_directory.Path()), {}); }

  TemporaryDirectory m_directory;
  const std::string m_file = (m_directory / "host.ini").string();
  const std::string m_after = std::string(kText) + "Two=none,\r\n";
};

BOOL WINAPI BreakOff(LPCSTR, LPCSTR, LPCSTR fileName) {
  WriteFile(fileName, "[Oth");
  return FALSE;
}

TEST_F(WindowsSave, AWriteThatBreaksOffLeavesTheFile) {
  EXPECT_FALSE(Write(BreakOff));
  EXPECT_EQ(ReadWholeFile(m_file), kText);
  EXPECT_TRUE(Write());
  EXPECT_EQ(ReadWholeFile(m_file), m_after);
  std::filesystem::remove(m_file);
  EXPECT_TRUE(Write());
  EXPECT_EQ(ReadWholeFile(m_file), "[Custom Datums]\r\nOne=none,\r\nTwo=none,\r\n");
  EXPECT_EQ(Files(), 1);
}

TEST_F(WindowsSave, WhatMayNotBeWrittenIsNot) {
  ASSERT_TRUE(SetFileAttributesA(m_file.c_str(), FILE_ATTRIBUTE_READONLY));
  EXPECT_FALSE(Write());
  EXPECT_EQ(ReadWholeFile(m_file), kText);
  ASSERT_TRUE(SetFileAttributesA(m_file.c_str(), FILE_ATTRIBUTE_NORMAL));
  WriteFile(m_file, kText + std::string(std::size_t{17} << 20, '\n'));
  EXPECT_FALSE(Write());
  EXPECT_EQ(Files(), 1);
}

// Whoever keeps the file open so that it cannot be replaced lets it be written still.
TEST_F(WindowsSave, AnOpenFileIsWrittenInPlace) {
  const HANDLE held =
      CreateFileA(m_file.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(held, INVALID_HANDLE_VALUE);
  EXPECT_TRUE(Write());
  CloseHandle(held);
  EXPECT_EQ(ReadWholeFile(m_file), m_after);
  EXPECT_EQ(Files(), 1);
}

// What the next test runs in a program of its own, and ends.
TEST(WindowsSaver, DISABLED_SavesWithoutEnd) {
  const char* file = std::getenv("ORVEX_TEST_INI");
  for (unsigned i = 0; file != nullptr; ++i) {
    const std::string entry = "One=none," + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(i);
    WriteProfileSectionBy(WritePrivateProfileSectionA, file, "Custom Datums", (entry + '\0').c_str());
  }
}

TEST_F(WindowsSave, AKillLeavesTheOldOrTheNewFile) {
  WriteFile(m_file, "[Other]\r\n" + std::string(20000, 'a') + "=1\r\n[Custom Datums]\r\nOne=none,\r\n[Y]\r\ny=1\r\n");
  const std::string text = ReadWholeFile(m_file), head = text.substr(0, text.find("none")), tail = "\r\n[Y]\r\ny=1\r\n";
  char program[MAX_PATH];
  ASSERT_LT(GetModuleFileNameA(nullptr, program, MAX_PATH), MAX_PATH);
  ASSERT_TRUE(SetEnvironmentVariableA("ORVEX_TEST_INI", m_file.c_str()));
  for (const char* share : {"GTEST_TOTAL_SHARDS", "GTEST_SHARD_INDEX"}) SetEnvironmentVariableA(share, nullptr);
  std::mt19937 random(9);
  int changes = 0;
  for (int round = 0; round < 12; ++round) {
    const std::string before = ReadWholeFile(m_file);
    std::string command =
        std::string("\"") + program +
        "\" --gtest_brief=1 --gtest_filter=WindowsSaver.* --gtest_also_run_disabled_tests --gtest_output=";
    STARTUPINFOA start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process;
    ASSERT_TRUE(
        CreateProcessA(program, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process));
    for (int i = 0; i < 1000 && ReadWholeFile(m_file) == before; ++i) Sleep(10);
    Sleep(std::uniform_int_distribution<DWORD>(0, 20)(random));
    TerminateProcess(process.hProcess, 1);
    WaitForSingleObject(process.hProcess, INFINITE);
    CloseHandle(process.hProcess);
    CloseHandle(process.hThread);
    const std::string after = ReadWholeFile(m_file);
    EXPECT_TRUE(after.starts_with(head + "none,") && after.ends_with(tail)) << after.substr(0, 200);
    changes += after != before;
  }
  EXPECT_GT(changes, 8);
}

}  // namespace
}  // namespace orvex::platform

#endif
