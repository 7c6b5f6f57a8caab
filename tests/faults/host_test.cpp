// Hosts that load the library with the log on: a pipe or a link in its place, a limit on the size of files, foreign
// rights, and loading without end.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "support/GridFiles.h"

namespace orvex::test {
namespace {

class Host : public testing::Test {
 protected:
  /// Runs a program in the directory with the log on; its status, -1 for one that was killed or took too long.
  template <typename Prepare>
  int Run(std::vector<std::string> command, Prepare prepare) {
    std::vector<char*> arguments;
    for (std::string& argument : command) arguments.push_back(argument.data());
    arguments.push_back(nullptr);
    const pid_t child = fork();
    if (child == 0) {
      alarm(60);
      prepare();
      if (chdir(m_directory.Path().c_str()) != 0 || setenv("TALVENLOG", "1", 1) != 0) _exit(99);
      execv(arguments[0], arguments.data());
      _exit(98);
    }
    int status = -1;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }
  int Run(const std::vector<std::string>& command) {
    return Run(command, [] {});
  }

  static int Count(const std::string& text, const std::string& word) {
    int count = 0;
    for (std::size_t at = text.find(word); at != text.npos; at = text.find(word, at + 1)) ++count;
    return count;
  }

  TemporaryDirectory m_directory;
  const std::string m_log = (m_directory / "talven.log").string();
};

TEST_F(Host, eachLoadStartsAndEndsTheLog) {
  ASSERT_EQ(Run({ORVEX_FAULT_LOADER, ORVEX_LIBRARY, "25"}), 0);  // 2: the library stayed; 3: something of it did
  const std::string log = ReadWholeFile(m_log);
  EXPECT_EQ(Count(log, "log output started"), 25);
  EXPECT_EQ(Count(log, "log output ended"), 25);
  EXPECT_LT(log.find("log output ended"), log.find("log output started", log.find("log output started") + 1));
}

TEST_F(Host, aPipeForALogIsNotWaitedFor) {
  ASSERT_EQ(mkfifo(m_log.c_str(), 0600), 0);
  EXPECT_EQ(Run({ORVEX_FAULT_HOST}), 0);
}

TEST_F(Host, aSizeLimitCutsTheLogAndNothingElse) {
  EXPECT_EQ(Run({ORVEX_FAULT_HOST},
                [] {
                  const rlimit limit{100, 100};
                  setrlimit(RLIMIT_FSIZE, &limit);
                }),
            0);
  EXPECT_EQ(ReadWholeFile(m_log).size(), 100U);
}

// A program that has the rights of another user writes no log for whoever starts it.
TEST_F(Host, foreignRightsWriteNoLog) {
  constexpr uid_t kNobody = 65534;
  if (geteuid() != 0) GTEST_SKIP() << "only the superuser can make such a program";
  const std::filesystem::path program = m_directory / "host";
  std::filesystem::copy_file(ORVEX_FAULT_HOST, program);
  ASSERT_EQ(chmod(m_directory.Path().c_str(), 0777), 0);
  ASSERT_EQ(chmod(program.c_str(), 0755), 0);
  ASSERT_EQ(Run({program.string()}), 0);
  EXPECT_TRUE(std::filesystem::remove(m_log));  // with rights of its own it does
  ASSERT_TRUE(chown(program.c_str(), kNobody, kNobody) == 0 && chmod(program.c_str(), 04755) == 0);
  ASSERT_EQ(Run({program.string()}), 0);
  EXPECT_FALSE(std::filesystem::exists(m_log));
}

}  // namespace
}  // namespace orvex::test
