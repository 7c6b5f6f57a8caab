// A host with a German locale, whose numbers have commas: texts and files are read and written as ever.
#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <string>

#include <orvex/orvex.h>

#include "support/GridFiles.h"

namespace orvex {
namespace {

using namespace orvex::test;

/// The whole process in German while it lives. The locale is the build's own, or the system's.
class GermanLocale {
 public:
  GermanLocale() : m_before(std::setlocale(LC_ALL, nullptr)) {
#if defined(ORVEX_LOCALES)
    setenv("LOCPATH", ORVEX_LOCALES, 1);
#endif
    std::setlocale(LC_ALL, "de_DE.UTF-8");
  }
  ~GermanLocale() {
    std::setlocale(LC_ALL, m_before.c_str());
#if defined(ORVEX_LOCALES)
    unsetenv("LOCPATH");
#endif
  }
  GermanLocale(const GermanLocale&) = delete;
  GermanLocale& operator=(const GermanLocale&) = delete;

  static bool WritesCommas() {
    return *std::localeconv()->decimal_point == ',';
  }

 private:
  std::string m_before;
};

class GermanHost : public testing::Test {
 protected:
  void SetUp() override {
#if defined(ORVEX_LOCALES)
    ASSERT_TRUE(GermanLocale::WritesCommas()) << "the locale that was built has no effect";
#else
    if (!GermanLocale::WritesCommas()) GTEST_SKIP() << "there is no German locale";
#endif
  }
  GermanLocale m_locale;
};

// What is written with full decimals reads back to the same place (decimals of a second: 1e-15 / 3600 degrees and
// rounding).
TEST_F(GermanHost, AnglesKeepTheirPoint) {
  for (const int layout :
       {LLF_DECIMALDEGREES | LLF_MINUSSIGN, LLF_DECIMALMINUTES | LLF_MINUSSIGN, 0 | LLF_HEMISPHERE}) {
    for (const double degrees : {0.0, -0.25, 12.3456789, -77.7654321, 179.9999, -179.00001}) {
      char text[260];
      double back = 0;
      EXPECT_TRUE(DegreesToLatLon(text, degrees, layout | 13, 'd', '\'', '"'));
      EXPECT_EQ(std::string(text).find(','), std::string::npos) << text;
      EXPECT_TRUE(LatLonToDegrees(text, &back, 'd')) << text;
      EXPECT_NEAR(back, degrees, 1e-12) << text;
    }
  }
  double degrees = 0;
  EXPECT_FALSE(LatLonToDegrees("12,5", &degrees, 'd')) << "a comma stays no part of a number";
}

TEST_F(GermanHost, ZonesAreWhereTheyAre) {
  PROJDATA record{};
  record.Type = PT_STATEPLANE27;
  record.Zone = SZ_ALASKA_1;  // seconds with decimals in its angles
  record.Ellipsoid = ET_CLARKE_1866;
  ProjGetStateZoneParams(&record);
  EXPECT_NEAR(record.Alpha, -(36 + 52 / 60.0 + 11.63152504 / 3600), 1e-7);
}

TEST_F(GermanHost, CustomDatumsHavePoints) {
  const TemporaryDirectory directory;
  const std::string ini = (directory / "host.ini").string();
  DATUM2WGS84 saved{}, read{};
  saved.Method = DM_BURSA;
  saved.Ellipsoid = ET_USER_DEFINED;
  saved.MajorRadius = 6377340.25, saved.Flattening = 0.00334;
  saved.dx = -12.5, saved.rz = 0.125, saved.k = 1.75;
  ASSERT_TRUE(NDatSave(ini.c_str(), "Deutsch", &saved));
  ASSERT_TRUE(NDatGetDatumParams(ini.c_str(), "Deutsch", &read));
  EXPECT_TRUE(read.MajorRadius == 6377340.25 && read.Flattening == 0.00334);
  EXPECT_TRUE(read.dx == -12.5 && read.rz == 0.125 && read.k == 1.75);
  EXPECT_NE(ReadWholeFile(ini).find("-12.5"), std::string::npos);
}

}  // namespace
}  // namespace orvex
