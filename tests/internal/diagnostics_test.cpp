// Log, errors and messages.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>

#include "shr/exception.h"
#include "support/Errors.h"
#include "support/FpGuard.h"
#include "support/Log.h"

namespace orvex::detail {
namespace {

std::string FileText(const std::string& name) {
  std::ifstream file(name, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

class LogTest : public testing::Test {
 protected:
  LogTest() { std::remove(m_file.c_str()); }
  ~LogTest() override {
    LogSetup(false, nullptr);
    std::remove(m_file.c_str());
  }
  const std::string m_file =
      testing::TempDir() + testing::UnitTest::GetInstance()->current_test_info()->name() + ".log";
};

TEST_F(LogTest, WritesOnlyWhenEnabled) {
  LogSetup(false, m_file.c_str());
  LogPrintf("%d\n", 1);
  EXPECT_FALSE(std::ifstream(m_file));
  LogSetup(true, m_file.c_str());
  LogPrintf("a=%d\n", 7);
  Trace("b=%s\n", "x");
  EXPECT_EQ(FileText(m_file), "a=7\r\nCTRACE:  b=x\r\n");
}

TEST_F(LogTest, CutsLongTexts) {
  LogSetup(true, m_file.c_str());
  LogWrite(std::string(2000, 'a').c_str());
  EXPECT_EQ(FileText(m_file), std::string(1023, 'a'));
  std::remove(m_file.c_str());
  LogWrite((std::string(1021, 'b') + "\n").c_str());
  EXPECT_EQ(FileText(m_file), std::string(1021, 'b') + "\r\n");
  std::remove(m_file.c_str());
  LogWrite((std::string(1022, 'c') + "\n\n").c_str());  // the test is made before each character; a newline counts two
  EXPECT_EQ(FileText(m_file), std::string(1022, 'c') + "\r\n");
}

TEST(Errors, CarryTheirMessage) {
  const auto thrown = [](int id, const char* text) {
    try {
      ThrowError("PrjTMerc", 220, id, text);
    } catch (const shr::Exception& e) {
      EXPECT_EQ(e.MessageId(), id);
      EXPECT_EQ(e.Line(), 220);
      EXPECT_EQ(e.Module(), "Orvex");
      EXPECT_EQ(e.Source(), "PrjTMerc");
      return e.Message();
    }
  };
  EXPECT_EQ(thrown(20200, nullptr), "Internal inconsistency detected");
  EXPECT_EQ(thrown(20269, ""), "Y axis rotation was outside the rnage of -3600 to +3600 arcseconds");
  EXPECT_EQ(thrown(20281, nullptr),
            "NTV2 grid shift file contains unexpected or corrupt data.  Unable to proceed with NTV2 datum conversion.");
  EXPECT_EQ(thrown(20210, nullptr), "Failed loading error message!");
  EXPECT_EQ(thrown(20200, "own text"), "own text");
}

TEST(FpHooks, TakeTheirOwnKindsOnly) {
  bool flag = false;
  EXPECT_EQ(FpExceptionFilter(&flag, 0xC0000005), 0);
  EXPECT_FALSE(flag);
  EXPECT_EQ(FpExceptionFilter(&flag, 0xC000008E), 1);
  EXPECT_TRUE(flag);
  FpErrorFlag() = false;
  EXPECT_NE(MathErrorHook(7), 0);
  EXPECT_FALSE(FpErrorFlag());
  EXPECT_NE(MathErrorHook(2), 0);
  EXPECT_TRUE(FpErrorFlag());
  FpErrorFlag() = false;
}

}  // namespace
}  // namespace orvex::detail
