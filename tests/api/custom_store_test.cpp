// Built-in and custom datums as one list by name: text form, lookups, refusals, what happens to the rest of the file.
#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <cstring>
#include <limits>
#include <thread>

#include <orvex/datum.h>

#include "support/GridFiles.h"

#if !defined(_WIN32)
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace orvex {
namespace {

using namespace orvex::test;

DATUM2WGS84 Params(DatumMethod method, EllipsoidType ellipsoid) {
  DATUM2WGS84 params{};
  params.Method = method;
  params.Ellipsoid = ellipsoid;
  return params;
}

class CustomStore : public testing::Test {
 protected:
  bool Save(const char* name, const DATUM2WGS84& params) { return NDatSave(Ini(), name, &params); }
  std::string NameAt(int index) {
    char name[260] = "?";
    return NDatEnumDatumName(Ini(), name, index) ? name : "-";
  }
  const char* Ini() const { return m_ini.c_str(); }

  TemporaryDirectory m_directory;
  const std::string m_ini = (m_directory / "host.ini").string();
};

std::string Unix(std::string text) {
  text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
  return text;
}

// Texts by hand from the description of the format; the double nearest to 6377397.155 ends in ...50000003.
TEST_F(CustomStore, writesTheStatedText) {
  DATUM2WGS84 bursa = Params(DM_BURSA, ET_BESSEL_MODIFIED);
  bursa.PMShift = -1.5;
  bursa.dx = 582;
  bursa.dy = 105.00000000016;  // rounds up in the tenth decimal
  bursa.dz = -414;
  bursa.rx = 1.04;
  bursa.rz = -3.08;
  bursa.k = 8.3;
  DATUM2WGS84 own = Params(DM_MOLODENSKY, ET_USER_DEFINED);
  own.bInverse = true;
  own.MajorRadius = 6377000.25;
  own.Flattening = 0.00335;
  EXPECT_TRUE(Save("One", bursa));
  EXPECT_TRUE(Save("Two", own));
  EXPECT_TRUE(Save("A=B", Params(DM_NOXFORM, ET_USER_DEFINED)));
  EXPECT_TRUE(Save("Grid", Params(DM_NADCON, ET_CLARKE_1866)));
  EXPECT_TRUE(Save("Mre", Params(DM_MRE, ET_APPL_PHYSICS_1965)));
  EXPECT_EQ(
      Unix(ReadWholeFile(m_ini)),
      "[Custom Datums]\n"
      "One=bursa,0,Bessel Modified,6377397.1550000003,0.0033427732,-1.500000,582.0000000000,105.0000000002,"
      "-414.0000000000,1.0400000000,0.0000000000,-3.0800000000,8.3000000000,\n"
      "Two=molodensky,1,user-defined,6377000.2500000000,0.0033500000,0.000000,0.0000000000,0.0000000000,0.0000000000,\n"
      "A%061B=none,\n"
      "Grid=nadcon,0,Clarke 1866,\n"
      "Mre=mre,0,Appl. Physics. 1965,\n");
  // What the reader takes back: not the grid and regression methods.
  DATUM2WGS84 read{};
  DatumMethod method{};
  EXPECT_TRUE(NDatGetDatumParams(Ini(), "a=b", &read) && read.Method == DM_NOXFORM);
  EXPECT_TRUE(NDatGetDatumMethod(Ini(), "two", &method) && method == DM_MOLODENSKY && NDatReversible(Ini(), "two"));
  EXPECT_FALSE(NDatGetDatumParams(Ini(), "Grid", &read) || NDatGetDatumMethod(Ini(), "Mre", &method) ||
               NDatReversible(Ini(), "Mre"));
  EXPECT_TRUE(NDatExists(Ini(), "MRE", nullptr));
}

TEST_F(CustomStore, parametersComeBackToThePrintedPrecision) {
  std::mt19937 random(4);
  std::uniform_real_distribution<double> metres(-1000, 1000), unit(0, 1);
  for (int i = 0; i < 112; ++i) {
    DATUM2WGS84 p = Params(i % 2 ? DM_BURSA : DM_MOLODENSKY, static_cast<EllipsoidType>(i % 56));
    p.bInverse = i % 3 == 0;
    p.PMShift = unit(random) * 360 - 180;
    p.dx = metres(random), p.dy = metres(random), p.dz = metres(random);
    p.rx = metres(random), p.ry = metres(random), p.rz = metres(random), p.k = metres(random);
    p.MajorRadius = 6378000 + metres(random);
    p.Flattening = 0.003 + unit(random) / 1000;
    ASSERT_TRUE(Save("Mixed Case", p));
    DATUM2WGS84 q{};
    ASSERT_TRUE(NDatGetDatumParams(Ini(), "mixed case", &q));
    const bool own = i % 56 == 0;
    EXPECT_TRUE(q.Method == p.Method && q.bInverse == p.bInverse && q.Ellipsoid == p.Ellipsoid);
    EXPECT_NEAR(q.MajorRadius, own ? p.MajorRadius : EllipsoidRadius(p.Ellipsoid), 1e-9);  // 6e6 has steps of 1e-9
    EXPECT_NEAR(q.Flattening, own ? p.Flattening : EllipsoidFlattening(p.Ellipsoid), 0.51e-10);
    EXPECT_NEAR(q.PMShift, p.PMShift, 0.51e-6);
    const double saved[] = {p.dx, p.dy, p.dz, p.rx, p.ry, p.rz, p.k},
                 read[] = {q.dx, q.dy, q.dz, q.rx, q.ry, q.rz, q.k};
    for (int j = 0; j < (q.Method == DM_BURSA ? 7 : 3); ++j) EXPECT_NEAR(read[j], saved[j], 0.51e-10);
  }
  EXPECT_EQ(NDatNumDatums(Ini()), 255);  // one entry, replaced each time
}

TEST_F(CustomStore, namesAreEscapedAsStated) {
  struct Row {
    const char *name, *key, *back;
  };
  const Row rows[] = {
      {"Plain (1)", "Plain (1)", "Plain (1)"},
      {"a,b=c%d\\e", "a%044b%061c%037d%092e", "a,b=c%d\\e"},
      {"{|}~", "%123%124%125%126", "{|}~"},
      {"tab\there", "tab%009here", "tab\there"},
      {"caf\xE9!", "caf%4294967273!",
       "caf\xAD"
       "4967273!"},  // 429 modulo 256 is 0xAD; the rest stays as text
  };
  int index = 254;
  for (const Row& row : rows) {
    EXPECT_TRUE(Save(row.name, Params(DM_NOXFORM, ET_USER_DEFINED)));
    EXPECT_NE(Unix(ReadWholeFile(m_ini)).find("\n" + std::string(row.key) + "=none,\n"), std::string::npos) << row.name;
    EXPECT_EQ(NameAt(index), row.back);
    int found = 0;
    EXPECT_TRUE(NDatExists(Ini(), row.name, &found));
    EXPECT_EQ(found, index++);
  }
}

TEST_F(CustomStore, builtInNamesComeFirst) {
  int index = 0;
  DatumType datum{};
  DATUM2WGS84 params{};
  DatumMethod method{};
  for (const char* ini : {static_cast<const char*>(nullptr), Ini()}) {
    EXPECT_TRUE(NDatExists(ini, "world geodetic system 1984", &index) && index == 3);
    EXPECT_TRUE(NDatIsBuiltIn(ini, "World Geodetic System 1984", &datum) && datum == DT_WORLD_GEODETIC_SYSTEM_1984);
    EXPECT_TRUE(NDatGetDatumParams(ini, "World Geodetic System 1984", &params) && params.Ellipsoid == ET_WGS_84);
    EXPECT_TRUE(NDatGetDatumMethod(ini, "NAD 1927 - CONUS (NADCON)", &method) && method == DM_NADCON);
    EXPECT_FALSE(NDatGetDatumParams(ini, "NAD 1927 - CONUS (NADCON)", &params));
    EXPECT_TRUE(NDatReversible(ini, "World Geodetic System 1984") && !NDatReversible(ini, "NAD 1927 - CONUS (NADCON)"));
    EXPECT_EQ(NDatNumDatums(ini), 254);
    char name[260];
    EXPECT_TRUE(NDatEnumDatumName(ini, name, 0) && std::strcmp(name, "User Defined") == 0);
    EXPECT_FALSE(NDatEnumDatumName(ini, name, 254) || NDatEnumDatumName(ini, name, -1));
    EXPECT_FALSE(NDatSave(ini, "World Geodetic System 1984", &params) || NDatDelete(ini, "World Geodetic System 1984"));
    EXPECT_FALSE(NDatExists(ini, "No such", &index) || NDatIsBuiltIn(ini, "No such", &datum));
  }
  EXPECT_FALSE(NDatSave(nullptr, "X", &params) || NDatSave(Ini(), nullptr, &params) || NDatSave(Ini(), "X", nullptr));
  EXPECT_FALSE(NDatDelete(nullptr, "X") || NDatDelete(Ini(), nullptr) || NDatExists(Ini(), nullptr, nullptr));
  EXPECT_FALSE(NDatGetDatumParams(Ini(), nullptr, &params) || NDatGetDatumMethod(Ini(), "X", nullptr) ||
               NDatReversible(Ini(), nullptr) || NDatIsBuiltIn(Ini(), nullptr, nullptr) ||
               NDatEnumDatumName(Ini(), nullptr, 1));
  EXPECT_FALSE(std::filesystem::exists(m_ini));
}

// A value that cannot be written, or a name that an INI file would not give back, leaves the file as it was.
TEST_F(CustomStore, refusesWhatCannotBeStored) {
  const std::string before = "[X]\nx=1\n[Custom Datums]\na=none,\n";
  WriteFile(m_ini, before);
  const DATUM2WGS84 none = Params(DM_NOXFORM, ET_USER_DEFINED);
  DATUM2WGS84 longText = Params(DM_BURSA, ET_WGS_84);
  longText.dx = longText.dy = longText.dz = longText.rx = longText.ry = 1e38;  // 50 characters each
  EXPECT_FALSE(Save("b", longText));
  for (const DatumMethod method : {DM_HARN, DM_NTV2, static_cast<DatumMethod>(7), static_cast<DatumMethod>(-1)}) {
    EXPECT_FALSE(Save("b", Params(method, ET_WGS_84)));
  }
  for (const int ellipsoid : {56, -1})
    EXPECT_FALSE(Save("b", Params(DM_NADCON, static_cast<EllipsoidType>(ellipsoid))));
  for (const std::string& name : {std::string(), std::string(";b"), std::string("[b]"), std::string(" b"),
                                  std::string("b "), std::string(259, 'b')}) {
    EXPECT_FALSE(Save(name.c_str(), none)) << name;
  }
  EXPECT_FALSE(NDatDelete(Ini(), "b"));
  EXPECT_FALSE(NDatSave((m_directory / "missing/host.ini").string().c_str(), "b", &none));
  EXPECT_EQ(ReadWholeFile(m_ini), before);
  // The last one cannot be removed: an empty section is not written back, and that is a success.
  EXPECT_TRUE(NDatDelete(Ini(), "A"));
  EXPECT_EQ(ReadWholeFile(m_ini), before);
  EXPECT_TRUE(Save(std::string(258, 'b').c_str(), none));
  EXPECT_TRUE(NDatDelete(Ini(), "A"));
  EXPECT_EQ(NameAt(254), std::string(258, 'b'));
  EXPECT_EQ(NDatNumDatums(Ini()), 255);
}

// Values by hand. MajorRadius tells where reading got to; -1 where the whole value must be refused.
TEST_F(CustomStore, readsHandWrittenAndDamagedValues) {
  struct Row {
    const char* value;
    double radius, dz;
  };
  const Row rows[] = {
      {" MOLODENSKY , 0", -1, 0},  // the keyword is the whole field, blanks behind it included
      {"\tMolodensky, \t1x,  user-DEFINED, +6.4e6, .003, 0, 1, 2, 3", 6400000, 3},
      {"molodensky,0,user-defined,0x10p3,0,0,0,0,-2.5rubbish,", 128, -2.5},
      {"molodensky,0,%085ser Defined,7", 7, 0},  // escaped; the catalogue's own name of row 0; missing numbers are 0
      {"molodensky,0,wgs 84,1e400,0,0,0,0,1e-400", HUGE_VAL, 0},
      {"molodensky,0,wgs 84,0.1e400,0,0,0,0,0x8p-2000", HUGE_VAL, 0},
      {"bursa,0,WGS 84,--5,,,,,4,", 0, 4},
      {"molodensky", -1, 0},
      {"molodensky,2,WGS 84,1", -1, 0},
      {"molodensky,,WGS 84,1", -1, 0},
      {"molodensky,0,WGS,1", -1, 0},
      {"nadcon,0,WGS 84,1", -1, 0},
      {"ntv2,0,WGS 84,1", -1, 0},
      {"", -1, 0},
  };
  for (const Row& row : rows) {
    WriteFile(m_ini, std::string("[Custom Datums]\nX=") + row.value + "\n");
    DATUM2WGS84 params{};
    params.MajorRadius = -1;
    EXPECT_EQ(NDatGetDatumParams(Ini(), "x", &params), row.radius != -1) << row.value;
    const double radius = params.MajorRadius, dz = params.dz;  // copies: the record is packed
    EXPECT_EQ(radius, row.radius) << row.value;                // untouched after a failure
    EXPECT_EQ(dz, row.dz) << row.value;
  }
  WriteFile(m_ini, "[Custom Datums]\nlonely\n" + std::string(500, 'k') + "=none,\n%00\n%999=none,\n");
  EXPECT_EQ(NDatNumDatums(Ini()), 258);
  DATUM2WGS84 params{};
  EXPECT_FALSE(NDatGetDatumParams(Ini(), "lonely", &params));
  EXPECT_EQ(NameAt(254), "lonely");
  EXPECT_EQ(NameAt(255), std::string(259, 'k'));
  EXPECT_EQ(NameAt(256), "%00");
  EXPECT_EQ(NameAt(257), std::string(1, static_cast<char>(999 % 256)));
}

TEST_F(CustomStore, aSectionTooLargeToReadIsNotCutDown) {
  std::string text = "[Custom Datums]\n";
  while (text.size() < 40000) text += "Datum" + std::to_string(text.size()) + "=none,\n";
  WriteFile(m_ini, text);
  EXPECT_TRUE(NDatExists(Ini(), "Datum16", nullptr));
  EXPECT_FALSE(Save("New", Params(DM_NOXFORM, ET_USER_DEFINED)) || NDatDelete(Ini(), "Datum16"));
  EXPECT_EQ(ReadWholeFile(m_ini), text);
  // Nor is a section made that could not be read back.
  std::filesystem::remove(m_ini);
  int saved = 0;
  const DATUM2WGS84 bursa = Params(DM_BURSA, ET_WGS_84);
  while (saved < 1000 && Save(("Datum" + std::to_string(saved)).c_str(), bursa)) ++saved;
  EXPECT_EQ(NDatNumDatums(Ini()), 254 + saved);
  EXPECT_GT(saved, 32767 / 255);
  EXPECT_LT(saved, 1000);
}

#if !defined(_WIN32)
// Windows reads the section itself.
TEST_F(CustomStore, aFileThatIsAllHoleIsNotReadIntoMemory) {
  WriteFile(m_ini, "[Custom Datums]\nKept=none,\n");
  constexpr std::uintmax_t kSize = std::uintmax_t{1} << 32;
  std::filesystem::resize_file(m_ini, kSize);
  EXPECT_EQ(NDatNumDatums(Ini()), 254);
  EXPECT_FALSE(Save("New", Params(DM_NOXFORM, ET_USER_DEFINED)) || NDatDelete(Ini(), "Kept"));
  EXPECT_EQ(std::filesystem::file_size(m_ini), kSize);
  std::filesystem::resize_file(m_ini, 4096);
  EXPECT_TRUE(NDatExists(Ini(), "Kept", nullptr));
}
#endif

TEST_F(CustomStore, randomDamageDoesNoHarm) {
  const std::string good =
      "[X]\nx=1\n[Custom Datums]\nA%061B=none,\nBessel=bursa,0,Bessel 1841,6377397.155,0.00334,0,1,2,3,4,5,6,7,\n"
      "Molo=molodensky,1,user-defined,6378000,0.003,2.5,1,2,3,\n[Y]\ny=%4294967273\n";
  std::mt19937 random(6);
  for (int i = 0; i < 200; ++i) {
    WriteFile(m_ini, Damaged(good, random));
    const int count = NDatNumDatums(Ini());
    for (int index = 254; index < count; ++index) {
      const std::string name = NameAt(index);
      DATUM2WGS84 params{};
      NDatGetDatumParams(Ini(), name.c_str(), &params);
      NDatReversible(Ini(), name.c_str());
    }
    EXPECT_EQ(NameAt(count), "-");
    ASSERT_TRUE(Save("New", Params(DM_NOXFORM, ET_USER_DEFINED))) << testing::PrintToString(ReadWholeFile(m_ini));
    ASSERT_TRUE(NDatExists(Ini(), "New", nullptr));
  }
}

TEST_F(CustomStore, threadsThatSaveAtOnceLoseNothing) {
  constexpr int kThreads = 4, kNames = 10;
  std::atomic<bool> all{true};
  std::thread threads[kThreads];
  for (int t = 0; t < kThreads; ++t) {
    threads[t] = std::thread([&, t] {
      for (int i = 0; i < kNames; ++i) {
        const std::string name = std::to_string(t) + "-" + std::to_string(i);
        all = Save(name.c_str(), Params(DM_NOXFORM, ET_USER_DEFINED)) && all;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_TRUE(all);
  EXPECT_EQ(NDatNumDatums(Ini()), 254 + kThreads * kNames);
}

#if !defined(_WIN32)
// A child saves without end and is killed at random moments: the file is whole each time, old or new.
TEST_F(CustomStore, aKilledSaveLeavesTheOldOrTheNewFile) {
  const std::string head = "[X]\n" + std::string(20000, ';') + "\n[Custom Datums]\n", tail = "[Y]\ny=1\n";
  WriteFile(m_ini, head + "A=none,\n" + tail);
  std::mt19937 random(8);
  int changes = 0;
  // A slow machine gets more rounds, and longer ones, for its child to come as far as saving.
  for (int round = 0; round < 60 || (changes <= 10 && round < 600); ++round) {
    const std::string before = ReadWholeFile(m_ini);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      DATUM2WGS84 params = Params(DM_MOLODENSKY, ET_WGS_84);
      for (params.dx = round;; params.dx += 0.5) NDatSave(Ini(), "A", &params);
    }
    usleep(std::uniform_int_distribution<useconds_t>(1000, 15000)(random) * static_cast<useconds_t>(1 + round / 60));
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    const std::string text = ReadWholeFile(m_ini);
    ASSERT_TRUE(text.starts_with(head + "A=") && text.ends_with(",\n" + tail)) << text.substr(head.size());
    DATUM2WGS84 read{};
    ASSERT_TRUE(NDatGetDatumParams(Ini(), "A", &read));
    changes += text != before;
  }
  EXPECT_GT(changes, 10);
}
#endif

}  // namespace
}  // namespace orvex
