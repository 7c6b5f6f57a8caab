// Sections of INI files outside Windows: what is read, and that a write changes the section's entries and nothing else.
#if !defined(_WIN32)

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <optional>
#include <string>

#include <orvex/datum.h>

#include "Faults.h"
#include "platform/Platform.h"
#include "support/GridFiles.h"

namespace orvex::platform {
namespace {

using namespace orvex::test;
namespace fs = std::filesystem;

// Entries as the two calls exchange them, written "a=1|b=2|".
std::string Bars(std::string text) {
  for (char& c : text) c = c == '|' ? '\0' : c == '\0' ? '|' : c;
  return text;
}

class Profile : public testing::Test {
 protected:
  std::string Read(std::size_t capacity = 4096) {
    std::string buffer(capacity, '#');
    const std::size_t length = ReadProfileSection(m_file.c_str(), "Custom Datums", buffer.data(), capacity).value_or(0);
    EXPECT_EQ(buffer[length], '\0');
    return Bars(buffer.substr(0, length));
  }
  std::optional<std::size_t> Result() {
    char buffer[64];
    return ReadProfileSection(m_file.c_str(), "Custom Datums", buffer, sizeof buffer);
  }
  bool Write(const char* entries) {
    return WriteProfileSection(m_file.c_str(), "Custom Datums", Bars(std::string(entries) + "|").c_str());
  }

  TemporaryDirectory m_directory;
  fs::path m_file = m_directory / "host.ini";
};

TEST_F(Profile, readsTheEntriesOfOneSection) {
  struct Row {
    const char *text, *entries;
  };
  const Row rows[] = {
      {"", ""},
      {"a=1\n[Other]\nb=2\n", ""},
      {"[Custom Datums]\na=1\nb=2\n", "a=1|b=2|"},
      {"[cUSTOM dATUMS]\r\nA=1\r\n\r\nb=2\r\n[Next]\r\nc=3\r\n", "A=1|b=2|"},  // case, CRLF, next section
      {"[X]\nx=1\n[Custom Datums]\na=1", "a=1|"},                              // no line end at the end
      {"[Custom Datums]\n; a=1\n  ;b=2\n#c=3\n", "#c=3|"},                     // comments
      {"[Custom Datums]\n \t a b \t= \t1 2 \t\n", "a b=1 2|"},                 // blanks
      {"[Custom Datums]\na=1\n[Custom Datums]\nb=2\n", "a=1|"},                // the first of that name counts
      {"[Custom Datums2]\na=1\n[ Custom Datums]\nb=2\n", ""},
      {"[Custom Datums] ; ours\nlonely\nx=a=b\n[open\n", "lonely|x=a=b|[open|"},
      {"\xEF\xBB\xBF[Custom Datums]\na=1\n", "a=1|"},  // byte order mark
      {"[Custom Datums", ""},
  };
  for (const Row& row : rows) {
    WriteFile(m_file, row.text);
    EXPECT_EQ(Read(), row.entries) << row.text;
  }
  fs::remove(m_file);
  EXPECT_EQ(Read(), "");
  EXPECT_EQ(ReadProfileSection(m_directory.Path().c_str(), "s", nullptr, 0), 0u);
}

// "a=1" and "bc=2" with their terminators take 9 characters, 10 with the closing one.
TEST_F(Profile, aSmallBufferGetsWhatFits) {
  WriteFile(m_file, "[Custom Datums]\na=1\nbc=2\n");
  for (std::size_t capacity = 2; capacity <= 12; ++capacity) {
    const std::string whole = "a=1|bc=2|";
    const std::string read = Read(capacity);
    if (capacity >= 11) {
      EXPECT_EQ(read, whole);
    } else {
      EXPECT_EQ(read, whole.substr(0, capacity - 2)) << capacity;
    }
  }
}

TEST_F(Profile, writesTheEntriesAndNothingElse) {
  struct Row {
    const char *before, *entries, *after;
  };
  const Row rows[] = {
      {"", "a=1|", "[Custom Datums]\na=1\n"},
      {"[X]\nx = 1", "a=1|", "[X]\nx = 1\n[Custom Datums]\na=1\n"},
      {"; top\r\n[X]\r\nx=1\r\n", "a=1|", "; top\r\n[X]\r\nx=1\r\n[Custom Datums]\r\na=1\r\n"},
      // One entry changed, one kept to the byte, one new, among comments and blank lines of every kind.
      {"\t[X] ;1\n x =1 \n\n[CUSTOM datums]\n; ours\nA =1\n\n;c\n b = 2 \n\n[Y]\r\ny\n\n", "A=9|b=2|c=3|",
       "\t[X] ;1\n x =1 \n\n[CUSTOM datums]\n; ours\nA=9\n\n;c\n b = 2 \nc=3\n\n[Y]\r\ny\n\n"},
      {"[Custom Datums]\r\na=1\r\nb=2\r\nc=3\r\n[Y]\r\n", "a=1|c=3|",
       "[Custom Datums]\r\na=1\r\nc=3\r\n[Y]\r\n"},  // removed
      {"[Custom Datums]\na=1", "a=1|b=2|", "[Custom Datums]\na=1\nb=2\n"},
      {"[Custom Datums]", "a=1|", "[Custom Datums]\na=1\n"},
      {"[Custom Datums]\na=1\na=2\n[Y]", "a=2|", "[Custom Datums]\na=2\n[Y]"},  // same key twice
      {"[Custom Datums]\na=1\n;end", "b=2|", "[Custom Datums]\nb=2\n;end"},
      {"[Custom Datums]\na=1\n;end", "", "[Custom Datums]\n;end"},
      {"\n\r\n\x01\x80[\n[Custom Datums]\nA=1\n\n\n", "a=1|", "\n\r\n\x01\x80[\n[Custom Datums]\na=1\n\n\n"},
  };
  for (const Row& row : rows) {
    WriteFile(m_file, row.before);
    EXPECT_TRUE(Write(row.entries));
    EXPECT_EQ(ReadWholeFile(m_file), row.after);
    EXPECT_EQ(Read(), row.entries) << row.before;
  }
}

// Whatever a file holds: what was written is read back, a second write changes nothing, bytes outside the section stay.
TEST_F(Profile, randomFilesKeepEverythingElse) {
  std::mt19937 random(2);
  const char* pieces[] = {"[Custom Datums]",
                          "[custom datums]x",
                          "[X]",
                          "a=1",
                          "b = 2",
                          " c",
                          ";d",
                          "=",
                          "\n",
                          "\n",
                          "\r\n",
                          "\t",
                          "]",
                          "[",
                          "\x80",
                          "\xEF\xBB\xBF"};
  for (int i = 0; i < 100; ++i) {
    std::string text;
    for (int n = std::uniform_int_distribution<int>(0, 25)(random); n > 0; --n)
      text += pieces[random() % std::size(pieces)];
    WriteFile(m_file, text);
    ASSERT_TRUE(Write("a=7|z=8|"));
    const std::string once = ReadWholeFile(m_file);
    ASSERT_EQ(Read(), "a=7|z=8|") << text;
    ASSERT_TRUE(Write("a=7|z=8|"));
    ASSERT_EQ(ReadWholeFile(m_file), once) << text;
    ASSERT_TRUE(once.starts_with(text.substr(0, text.find("ustom")))) << text;
  }
}

TEST_F(Profile, replacesTheFileAndKeepsItsNature) {
  WriteFile(m_directory / "real.ini", "[X]\n");
  ASSERT_EQ(chmod((m_directory / "real.ini").c_str(), 0640), 0);
  fs::create_symlink("real.ini", m_directory / "link");
  fs::create_symlink(m_directory / "link", m_file);  // a relative link behind an absolute one
  EXPECT_TRUE(Write("a=1|"));
  EXPECT_TRUE(fs::is_symlink(m_file) && fs::is_symlink(m_directory / "link"));
  EXPECT_EQ(ReadWholeFile(m_directory / "real.ini"), "[X]\n[Custom Datums]\na=1\n");
  EXPECT_EQ(static_cast<unsigned>(fs::status(m_file).permissions()), 0640u);
  fs::remove(m_directory / "real.ini");
  EXPECT_TRUE(Write("b=1|"));  // a link to nothing: its target is made
  EXPECT_EQ(ReadWholeFile(m_directory / "real.ini"), "[Custom Datums]\nb=1\n");
  EXPECT_EQ(std::distance(fs::directory_iterator(m_directory.Path()), fs::directory_iterator()),
            3);  // nothing left over
}

TEST_F(Profile, failsWithoutATrace) {
  EXPECT_FALSE(WriteProfileSection((m_directory / "missing/host.ini").c_str(), "Custom Datums", "a=1\0"));
  EXPECT_FALSE(WriteProfileSection(m_directory.Path().c_str(), "Custom Datums", "a=1\0"));
  EXPECT_FALSE(WriteProfileSection("/dev/null", "Custom Datums", "a=1\0"));
  fs::create_symlink("host.ini", m_file);  // a link to itself
  EXPECT_FALSE(Write("a=1|"));
  fs::remove(m_file);
  ASSERT_EQ(mkfifo(m_file.c_str(), 0600), 0);
  EXPECT_EQ(Result(), std::nullopt);  // neither waits
  EXPECT_FALSE(Write("a=1|"));
  fs::remove(m_file);
  EXPECT_TRUE(fs::is_empty(m_directory.Path()));
  fs::create_directory(m_file);
  EXPECT_EQ(Result(), std::nullopt);
  fs::remove(m_file);
  EXPECT_EQ(Result(), 0u);     // a missing file is an empty one
  if (geteuid() == 0) return;  // permissions do not bind the superuser
  WriteFile(m_file, "[X]\n");
  fs::permissions(m_file, fs::perms::owner_read);
  EXPECT_FALSE(Write("a=1|"));
  EXPECT_EQ(ReadWholeFile(m_file), "[X]\n");
}

// Whatever goes wrong with the first look at the file: nothing is taken for an empty section, nothing is overwritten.
TEST_F(Profile, aFileThatCannotBeReadIsNotAnEmptyOne) {
  const std::string before = "[Custom Datums]\nOne=none,\nTwo=molodensky,0,WGS 84,1,0,0,1,2,3,\n[Y]\ny=1\n";
  DATUM2WGS84 params{};
  params.Method = DM_NOXFORM;
  const struct {
    SystemCall call;
    int error, which;
  } faults[] = {
      {SystemCall::Open, EIO, 1},    {SystemCall::Open, EMFILE, 1}, {SystemCall::Open, ENOMEM, 1},
      {SystemCall::Open, EACCES, 2}, {SystemCall::Fstat, EIO, 1},   {SystemCall::Read, EIO, 1},
      {SystemCall::Read, EIO, 2},    {SystemCall::Open, EMFILE, 2}, {SystemCall::Open, EMFILE, 3},
      {SystemCall::Read, EIO, 3},
  };
  const std::string ini = m_file.string();
  WriteFile(m_file, before);
  for (const auto& fault : faults) {
    SCOPED_TRACE(testing::Message() << static_cast<int>(fault.call) << ", error " << fault.error << ", "
                                    << fault.which);
    const auto failing = [&](auto call) {
      const FailingCall one(fault.call, fault.error, fault.which);
      const auto answer = call();
      EXPECT_TRUE(one.Happened());
      return answer;
    };
    EXPECT_FALSE(failing([&] { return NDatSave(ini.c_str(), "New", &params); }));
    EXPECT_EQ(ReadWholeFile(m_file), before);
    EXPECT_FALSE(failing([&] { return NDatDelete(ini.c_str(), "One"); }));
    EXPECT_EQ(ReadWholeFile(m_file), before);
    if (fault.which > 1) continue;
    EXPECT_EQ(failing([&] { return NDatNumDatums(ini.c_str()); }), 254);
    EXPECT_FALSE(failing([&] { return NDatGetDatumParams(ini.c_str(), "Two", &params); }));
  }
  EXPECT_TRUE(NDatSave(ini.c_str(), "New", &params));
  EXPECT_EQ(NDatNumDatums(ini.c_str()), 257);
}

// A line of one character is no custom datum, but it is somebody's.
TEST_F(Profile, aStrayLineIsKept) {
  DATUM2WGS84 params{};
  const std::string ini = m_file.string();
  WriteFile(m_file, "[Custom Datums]\nx\n");
  EXPECT_EQ(NDatNumDatums(ini.c_str()), 254);
  EXPECT_TRUE(NDatSave(ini.c_str(), "New", &params));
  EXPECT_EQ(ReadWholeFile(m_file), "[Custom Datums]\nx\nNew=none,\n");
}

}  // namespace
}  // namespace orvex::platform

#endif
