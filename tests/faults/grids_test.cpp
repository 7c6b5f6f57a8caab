// Grid files that cannot be read, are no files or claim what is not there; forks while a grid is being loaded.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <ctime>
#include <thread>

#include <orvex/datum.h>
#include <orvex/grids.h>
#include <orvex/projection.h>
#include <shr/exception.h>

#include "SystemCalls.h"
#include "support/GridFiles.h"

namespace orvex::test {
namespace {

constexpr NadconGrid kNadcon{273, 121, -131, 20, 0.25};  // three blocks of 16 KB, like the published one's many

std::pair<double, double> OneSecond(double, double) {
  return {1, 1};
}

class Grids : public testing::Test {
 protected:
  Grids() {
    DatSetGridDirectory(m_directory.Path().c_str());
    alarm(120);  // nothing may be waited for
  }
  ~Grids() override {
    alarm(0);
    DatSetGridDirectory(nullptr);
  }

  std::filesystem::path Path(const char* name) const { return m_directory / name; }
  void UseNadcon() const {
    for (const char* name : {"conus.LAS", "conus.LOS"}) {
      std::filesystem::remove_all(Path(name));
      WriteFile(Path(name), NadconFile(kNadcon, [](int, int) { return 36.0; }));
    }
  }
  void UseNtv2(const std::vector<Ntv2SubGrid>& grids) const {
    std::filesystem::remove_all(Path("NTV2_0.GSB"));
    WriteFile(Path("NTV2_0.GSB"), Ntv2File(grids));
    DatSetGridDirectory(m_directory.Path().c_str());  // forgets the one before
  }

  /// The message of a conversion to WGS 84, 0 for none.
  static int Convert(DatumType datum, std::vector<DATUMPOINT>& points) {
    DATUMXFORM record{};
    record.SrcDatum = datum;
    record.DestDatum = DT_WORLD_GEODETIC_SYSTEM_1984;
    CDatumTransform transform(&record);
    try {
      EXPECT_TRUE(transform.Convert(points.data(), static_cast<int>(points.size())));
      return 0;
    } catch (const shr::Exception& e) {
      return e.MessageId();
    }
  }
  static int Convert(DatumType datum) {
    std::vector<DATUMPOINT> point{{-100, 45}};
    return Convert(datum, point);
  }

  TemporaryDirectory m_directory;
  const Ntv2SubGrid m_sub{"ONLY", "NONE", -110, 40, -90, 60, 0.5, OneSecond};
};

// Whatever cannot be read leaves all points as they were given, those before it as well.
TEST_F(Grids, aReadThatFailsIsToldAndConvertsNothing) {
  UseNadcon();
  std::vector<DATUMPOINT> given;
  for (int i = 0; i < 500; ++i) given.push_back({-130 + i * 0.13, 21 + i % 100 * 0.25});
  given.push_back({260, 135});  // would be wrapped and folded
  bool happened = true;
  long which = 0;
  while (happened) {
    std::vector<DATUMPOINT> points = given;
    const Fault fault(Call::Pread, EIO, ++which);
    const int message = Convert(DT_NAD_1927_CONUS_NADCON, points);
    happened = fault.Happened();
    EXPECT_EQ(message, happened ? 20203 : 0) << "read " << which;
    EXPECT_EQ(std::memcmp(points.data(), given.data(), given.size() * sizeof given[0]) == 0, happened) << which;
  }
  EXPECT_GT(which, 10);
  UseNtv2({m_sub});
  for (which = 1, happened = true; happened; ++which) {
    DatSetGridDirectory(m_directory.Path().c_str());
    std::vector<DATUMPOINT> points{{-100, 45}, {260, 45}};
    const Fault fault(Call::Pread, EIO, which);
    const int message = Convert(DT_NAD_1927_CANADA_NTV2, points);
    happened = fault.Happened();
    EXPECT_EQ(message, happened ? 20281 : 0) << "read " << which;
    EXPECT_EQ(points[1].x == 260, happened);
  }
}

TEST_F(Grids, whatIsNoFileIsNeitherReadNorWaitedFor) {
  for (const bool pipe : {true, false}) {
    const auto put = [&](const char* name) {
      std::filesystem::remove_all(Path(name));
      if (pipe)
        mkfifo(Path(name).c_str(), 0600);
      else
        std::filesystem::create_directory(Path(name));
    };
    UseNadcon();
    put("conus.LOS");
    EXPECT_EQ(Convert(DT_NAD_1927_CONUS_NADCON), 20200);
    UseNadcon();
    put("conus.LAS");
    EXPECT_EQ(Convert(DT_NAD_1927_CONUS_NADCON), 20200);
    put("NTV2_0.GSB");
    DatSetGridDirectory(m_directory.Path().c_str());
    EXPECT_EQ(Convert(DT_NAD_1927_CANADA_NTV2), 20280);
    WriteFile(Path("ntv2_0.gsb"), Ntv2File({m_sub}));  // the next name is looked for
    EXPECT_EQ(Convert(DT_NAD_1927_CANADA_NTV2), 0);
    std::filesystem::remove(Path("ntv2_0.gsb"));
  }
}

// A file that is there but cannot be opened is not passed over for another one.
TEST_F(Grids, aFileThatCannotBeOpenedIsNotAbsent) {
  UseNtv2({m_sub});
  WriteFile(Path("ntv2_0.gsb"), Ntv2File({m_sub}));
  {
    const Fault fault(Call::Open, EMFILE);
    EXPECT_EQ(Convert(DT_NAD_1927_CANADA_NTV2), 20280);
    EXPECT_TRUE(fault.Happened());
  }
  EXPECT_EQ(Convert(DT_NAD_1927_CANADA_NTV2), 0);
  UseNadcon();
  WriteFile(Path("conus.las"), ReadWholeFile(Path("conus.LAS")));
  const Fault fault(Call::Open, EMFILE);
  EXPECT_EQ(Convert(DT_NAD_1927_CONUS_NADCON), 20200);
}

// 64 million nodes that no disk holds.
TEST_F(Grids, aHoleIsNoGrid) {
  std::string bytes = Ntv2File({{"ONLY", "NONE", -100, 40, -99, 41, 1, OneSecond}});
  const auto replace = [&](std::size_t record, const std::string& value) {
    bytes.replace(176 + 16 * record + 8, value.size(), value);
  };
  replace(8, ByteWriter().Double(3600.0 / 7999).Bytes());
  replace(9, ByteWriter().Double(3600.0 / 7999).Bytes());
  replace(10, ByteWriter().Int(8000 * 8000).Bytes());
  WriteFile(Path("NTV2_0.GSB"), bytes);
  std::filesystem::resize_file(Path("NTV2_0.GSB"), 352 + 16 * std::uintmax_t{8000 * 8000});
  const std::clock_t before = std::clock();
  EXPECT_EQ(Convert(DT_NAD_1927_CANADA_NTV2), 20281);
  EXPECT_LT(static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC, 0.1);
}

// Each point costs some steps more, not one for each of the sub-grids.
TEST_F(Grids, manySubGridsCostLittle) {
  constexpr int kSide = 130;
  std::vector<Ntv2SubGrid> grids;
  for (int i = 0; i < kSide * kSide; ++i) {
    const double west = -130 + 0.5 * (i % kSide), south = 10 + 0.5 * (i / kSide);
    grids.push_back({"G" + std::to_string(i), "NONE", west, south, west + 0.5, south + 0.5, 0.5, OneSecond});
  }
  UseNtv2(grids);
  std::vector<DATUMPOINT> points;
  std::mt19937 random(1);
  std::uniform_real_distribution<double> lon(-130, -130 + 0.5 * kSide), lat(10, 10 + 0.5 * kSide);
  for (int i = 0; i < 300000; ++i) points.push_back({lon(random), lat(random)});
  ASSERT_EQ(Convert(DT_NAD_1927_CANADA_NTV2), 0);  // loaded
  const std::vector<DATUMPOINT> given = points;
  const std::clock_t before = std::clock();
  ASSERT_EQ(Convert(DT_NAD_1927_CANADA_NTV2, points), 0);
  EXPECT_LT(static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC, 1.5);  // one by one: 4 s and more
  for (std::size_t i = 0; i < points.size(); ++i) ASSERT_NEAR(points[i].y, given[i].y + 1.0 / 3600, 1e-9);
}

// A host's threads may have little stack; the sanitizers need more than the library does.
TEST_F(Grids, aSmallStackIsEnough) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
  constexpr std::size_t kStack = 256 << 10;
#else
  constexpr std::size_t kStack = 48 << 10;
#endif
  UseNtv2({m_sub});
  UseNadcon();
  pthread_attr_t attributes;
  ASSERT_EQ(pthread_attr_init(&attributes), 0);
  ASSERT_EQ(pthread_attr_setstacksize(&attributes, kStack), 0);
  int messages[] = {-1, -1};
  const auto convert = [](void* results) -> void* {
    auto* const message = static_cast<int*>(results);
    message[0] = Convert(DT_NAD_1927_CANADA_NTV2);
    message[1] = Convert(DT_NAD_1927_CONUS_NADCON);
    return nullptr;
  };
  pthread_t thread;
  ASSERT_EQ(pthread_create(&thread, &attributes, convert, messages), 0);
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
  EXPECT_EQ(messages[0], 0);
  EXPECT_EQ(messages[1], 0);
}

/// Runs a piece of work in a child process; whether it ended well and by itself.
template <typename Work>
bool InChild(Work work) {
  const pid_t child = fork();
  if (child == 0) {
    alarm(20);
    _exit(work() ? 0 : 1);
  }
  int status = -1;
  waitpid(child, &status, 0);
  return status == 0;
}

TEST_F(Grids, aForkDuringALoadLeavesTheChildAGrid) {
  UseNtv2({m_sub});
  std::atomic<int> message{-1};
  const SlowReads slow(200);
  std::thread loader([&] { message = Convert(DT_NAD_1927_CANADA_NTV2); });
  while (!slow.Begun()) usleep(1000);
  EXPECT_TRUE(InChild([] { return Convert(DT_NAD_1927_CANADA_NTV2) == 0; }));
  loader.join();
  EXPECT_EQ(message, 0);
}

TEST_F(Grids, forksFindNoLockTaken) {
  UseNtv2({m_sub});
  const std::string ini = Path("host.ini").string();
  WriteFile(ini, "[Custom Datums]\nOne=none,\n");
  const auto work = [&ini] {
    PROJDATA record{};
    record.Type = PT_UTM;
    record.Ellipsoid = ET_WGS_84;
    CProjector projector(&record);
    char name[260];
    return projector.SetAccuracy(PA_EXACT) && Convert(DT_NAD_1927_CANADA_NTV2) == 0 &&
           NDatEnumDatumName(ini.c_str(), name, 254);
  };
  std::atomic<bool> stop{false};
  std::thread busy[2];
  for (std::thread& thread : busy) {
    thread = std::thread([&] {
      while (!stop) {
        work();
        DatSetGridDirectory(m_directory.Path().c_str());
      }
    });
  }
  int well = 0;
  constexpr int kForks = 200;
  for (int i = 0; i < kForks; ++i) well += InChild(work);
  stop = true;
  for (std::thread& thread : busy) thread.join();
  EXPECT_EQ(well, kForks);
}

// Where /proc is missing, the program is found by what it was started as.
TEST_F(Grids, theProgramIsFoundWithoutProc) {
  const std::filesystem::path program = Path("program");
  if (std::getenv("ORVEX_TEST_WITHOUT_PROC") != nullptr) {  // the copy below
    DatSetGridDirectory(nullptr);
    EXPECT_EQ(chdir("/"), 0);
    EXPECT_EQ(Convert(DT_NAD_1927_CANADA_NTV2), 0);
    return;
  }
  UseNtv2({m_sub});
  std::filesystem::copy_file(std::filesystem::read_symlink("/proc/self/exe"), program);
  const std::string filter = "--gtest_filter=Grids.theProgramIsFoundWithoutProc";
  for (const bool relative : {true, false}) {
    const std::string from = "cd '" + m_directory.Path().string() + "' && ORVEX_TEST_WITHOUT_PROC=1 ";
    const std::string name = relative ? "./program" : program.string();
    EXPECT_EQ(std::system((from + "'" + name + "' " + filter + " >/dev/null").c_str()), 0) << name;
  }
}

}  // namespace
}  // namespace orvex::test
