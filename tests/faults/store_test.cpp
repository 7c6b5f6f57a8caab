// Custom datums under failing system calls, kills, limits and competitors: what answered true is there, and nothing
// that was there is lost.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <ctime>
#include <thread>

#include <orvex/datum.h>

#include "SystemCalls.h"
#include "support/GridFiles.h"

namespace orvex::test {
namespace {

constexpr const char* kBefore =
    "[X]\nx=1\n[Custom Datums]\nOne=none,\nTwo=molodensky,0,WGS 84,1,0,0,1,2,3,\n[Y]\ny=1\n";

class Store : public testing::Test {
 protected:
  Store() { WriteFile(m_ini, kBefore); }

  bool Save(const std::string& name) const { return NDatSave(m_ini.c_str(), name.c_str(), &m_none); }
  bool Exists(const std::string& name) const { return NDatExists(m_ini.c_str(), name.c_str(), nullptr); }
  std::string NameAt(int index) const {
    char name[260] = "-";
    return NDatEnumDatumName(m_ini.c_str(), name, index) ? name : "-";
  }
  long Files() const { return std::distance(std::filesystem::directory_iterator(m_directory.Path()), {}); }

  TemporaryDirectory m_directory;
  const std::string m_ini = (m_directory / "host.ini").string();
  const DATUM2WGS84 m_none{};
};

TEST_F(Store, anAnswerIsWhatHasBecomeOfTheFile) {
  for (const bool save : {true, false}) {
    for (const int error : {EIO, EMFILE}) {
      bool happened = true;
      long which = 0;
      while (happened) {
        WriteFile(m_ini, kBefore);
        bool answer = false;
        {
          const Fault fault(Call::Any, error, ++which);
          answer = save ? Save("New") : NDatDelete(m_ini.c_str(), "One");
          happened = fault.Happened();
        }
        const std::string after = ReadWholeFile(m_ini);
        EXPECT_EQ(answer, after != kBefore) << "error " << error << ", call " << which;
        EXPECT_TRUE(Exists("Two") && Exists(save ? "One" : "Two")) << "error " << error << ", call " << which;
        EXPECT_EQ(Files(), 1) << "left behind: error " << error << ", call " << which;
      }
      EXPECT_GT(which, 15);
    }
  }
}

TEST_F(Store, aKillAtAnySystemCallLeavesTheOldOrTheNewFile) {
  bool killed = true;
  long which = 0;
  int changes = 0;
  for (; killed; ++which) {
    WriteFile(m_ini, kBefore);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      const Fault fault(Call::Any, Fault::kKill, which + 1);
      _exit(Save("New") ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    killed = WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
    EXPECT_TRUE(killed || status == 0) << status;
    EXPECT_TRUE(Exists("One") && Exists("Two")) << "call " << which;
    EXPECT_TRUE(ReadWholeFile(m_ini) == kBefore || Exists("New")) << "call " << which;
    EXPECT_TRUE(Save("Next")) << "call " << which;  // nobody is kept waiting
    changes += Exists("New");
  }
  EXPECT_GT(which, 15);
  EXPECT_GT(changes, 1);
}

TEST_F(Store, whatSeveralSaveAtOnceIsAllThere) {
  constexpr int kProcesses = 3, kThreads = 3, kNames = 12;
  std::filesystem::remove(m_ini);
  const auto name = [](int process, int thread, int i) {
    return "D" + std::to_string(process) + "-" + std::to_string(thread) + "-" + std::to_string(i);
  };
  pid_t children[kProcesses];
  for (int process = 0; process < kProcesses; ++process) {
    children[process] = fork();
    ASSERT_GE(children[process], 0);
    if (children[process] != 0) continue;
    std::atomic<bool> all{true};
    std::thread threads[kThreads];
    for (int t = 0; t < kThreads; ++t) {
      threads[t] = std::thread([&, t] {
        for (int i = 0; i < kNames; ++i) all = Save(name(process, t, i)) && all;
      });
    }
    for (std::thread& thread : threads) thread.join();
    _exit(all ? 0 : 1);
  }
  for (const pid_t child : children) {
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
  }
  EXPECT_EQ(NDatNumDatums(m_ini.c_str()), 254 + kProcesses * kThreads * kNames);
  EXPECT_EQ(Files(), 1);
}

TEST_F(Store, aLockThatCannotBeHadRefuses) {
  const int held = open(m_directory.Path().c_str(), O_RDONLY);
  ASSERT_EQ(flock(held, LOCK_EX), 0);
  std::thread holder([held] {
    usleep(100000);
    flock(held, LOCK_UN);
  });
  EXPECT_TRUE(Save("Patient"));
  holder.join();
  close(held);
  {
    const Fault fault(Call::Flock, EBADF);  // directories cannot be locked: a file beside is
    EXPECT_TRUE(Save("Beside"));
    EXPECT_TRUE(fault.Happened());
  }
  EXPECT_TRUE(std::filesystem::exists(m_ini + ".lock"));
  const std::string before = ReadWholeFile(m_ini);
  {
    const Fault fault(Call::Flock, ENOLCK);
    EXPECT_FALSE(Save("Unlocked"));
  }
  EXPECT_EQ(ReadWholeFile(m_ini), before);
  std::filesystem::remove(m_ini + ".lock");
  std::filesystem::create_symlink("elsewhere", m_ini + ".lock");
  {
    const Fault fault(Call::Flock, EBADF);
    EXPECT_FALSE(Save("Misled"));
  }
  EXPECT_FALSE(std::filesystem::exists(m_directory / "elsewhere"));
}

// A lock on a directory takes the right to read it. Where not everybody who saves has that, all lock a file beside.
TEST_F(Store, aDirectoryThatCannotBeReadIsNotWhatIsLocked) {
  {
    const Fault fault(Call::Open, EACCES);
    EXPECT_TRUE(Save("Unreadable"));
    EXPECT_TRUE(fault.Happened());
  }
  EXPECT_TRUE(std::filesystem::remove(m_ini + ".lock"));
  ASSERT_EQ(chmod(m_directory.Path().c_str(), 0733), 0);
  EXPECT_TRUE(Save("Readable for some"));
  EXPECT_TRUE(std::filesystem::remove(m_ini + ".lock"));
  ASSERT_EQ(chmod(m_directory.Path().c_str(), 0755), 0);
  EXPECT_TRUE(Save("Readable"));
  EXPECT_EQ(Files(), 1);
}

// A process that ends within a save leaves its lock to nobody, whatever processes it has started.
TEST_F(Store, aChildMadeDuringASaveDoesNotHoldTheLock) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  const pid_t parent = fork();
  ASSERT_GE(parent, 0);
  if (parent == 0) {
    const SlowReads slow(60'000);
    std::thread([this] { Save("Lost"); }).detach();
    while (!slow.Begun()) usleep(1000);
    const pid_t child = fork();
    if (child == 0) pause();
    _exit(write(ends[1], &child, sizeof child) == sizeof child ? 0 : 1);
  }
  int status = -1;
  waitpid(parent, &status, 0);
  pid_t child = 0;
  ASSERT_TRUE(status == 0 && read(ends[0], &child, sizeof child) == sizeof child);
  EXPECT_TRUE(Save("Next"));
  kill(child, SIGKILL);
  close(ends[0]);
  close(ends[1]);
}

// What cannot be told to be a link is not taken for the file itself, which would replace a link by it.
TEST_F(Store, aLinkStaysALink) {
  const std::string link = (m_directory / "link.ini").string();
  std::filesystem::create_symlink("host.ini", link);
  const auto save = [&] { return NDatSave(link.c_str(), "New", &m_none); };
  for (const long which : {1, 2}) {  // for the lock, for the file
    const Fault fault(Call::Readlink, EIO, which);
    EXPECT_FALSE(save());
    EXPECT_TRUE(fault.Happened());
  }
  EXPECT_TRUE(save());
  EXPECT_TRUE(std::filesystem::is_symlink(link) && Exists("New"));
  std::filesystem::create_symlink("round.ini", m_directory / "round.ini");
  EXPECT_FALSE(NDatSave((m_directory / "round.ini").c_str(), "New", &m_none));
}

// A limit on the size of files neither ends the process nor changes what it does with the signal.
TEST_F(Store, aSizeLimitIsARefusal) {
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    const rlimit limit{20, 20};
    setrlimit(RLIMIT_FSIZE, &limit);
    if (Save("New")) _exit(1);
    raise(SIGXFSZ);
    _exit(2);
  }
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGXFSZ) << status;  // raised by the test itself
  EXPECT_EQ(ReadWholeFile(m_ini), kBefore);
  EXPECT_EQ(Files(), 1);
}

// The names of a file that stays as it is are read once; a file that changes, in whatever way, is read again.
TEST_F(Store, listingTheNamesReadsTheFileOnce) {
  constexpr int kNames = 400;
  std::string text = "[Custom Datums]\n";
  for (int i = 0; i < kNames; ++i) text += "Datum" + std::to_string(1000 + i) + "=none,\n";
  WriteFile(m_ini, text);
  const auto settle = [] { std::this_thread::sleep_for(std::chrono::milliseconds(2100)); };
  settle();
  {
    const Fault opened(Call::Open, Fault::kCount);
    for (int i = 0; i < kNames; ++i) ASSERT_EQ(NameAt(254 + i), "Datum" + std::to_string(1000 + i));
    EXPECT_LE(opened.Calls(), 2);
  }
  struct stat was {};
  ASSERT_EQ(stat(m_ini.c_str(), &was), 0);
  {  // in place, of the same size, and with the time of the last change set back
    const int file = open(m_ini.c_str(), O_WRONLY);
    ASSERT_EQ(pwrite(file, "[Custom Datums]\nOther", 21, 0), 21);
    const timespec times[] = {was.st_atim, was.st_mtim};
    ASSERT_EQ(futimens(file, times), 0);
    close(file);
  }
  EXPECT_EQ(NameAt(254), "Other1000");
  EXPECT_TRUE(NDatDelete(m_ini.c_str(), "Other1000"));
  EXPECT_EQ(NameAt(254), "Datum1001");
  settle();
  EXPECT_EQ(NameAt(254), "Datum1001");
  {
    const Fault fault(Call::Fstat, EIO);  // the listing is kept, so that nothing is read
    EXPECT_EQ(NameAt(255), "Datum1002");
  }
  std::filesystem::remove(m_ini);
  EXPECT_EQ(NameAt(254), "-");
  WriteFile(m_ini, text);
  settle();
  {
    const Fault fault(Call::Read, EIO);
    EXPECT_EQ(NameAt(254), "-");
  }
  EXPECT_EQ(NameAt(254), "Datum1000");  // a reading that failed is not kept
}

}  // namespace
}  // namespace orvex::test
