// Degree-minute-second text: the grammar that is read, the layouts that are written, in any locale.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <string>

#include <orvex/orvex.h>

namespace orvex {
namespace {

struct Reading {
  const char* text;
  double degrees;
  char degreeChar = 'd';
};

// Expected values by hand: degrees + minutes / 60 + seconds / 3600.
TEST(LatLonText, ReadsAngles) {
  // clang-format off
  const Reading readings[] = {
      {"-85d50'", -(85 + 50.0 / 60)}, {"30d30'", 30.5}, {"57", 57}, {" \t+57 \t", 57}, {"12.5d", 12.5}, {".5", 0.5}, {"12.", 12},
      {"-36d52'11.6315", -(36 + 52.0 / 60 + 11.6315 / 3600)}, {"144d44'55.50254\"", 144 + 44.0 / 60 + 55.50254 / 3600},
      {"45 N", 45}, {"45e", 45}, {"120d W", -120}, {"10d30", 10.5}, {"10d30 s", -10.5}, {"10d 30' 15\" w", -(10.5 + 15.0 / 3600)},
      {"-10 S", -10},                                                                   // both negative: do not cancel
      {"10D30M15S", 10.5 + 15.0 / 3600}, {"10d5'3ss", -(10 + 5.0 / 60 + 3.0 / 3600)},  // first the seconds marker, then south
      {"10d5'S", -(10 + 5.0 / 60)}, {"10*30'", 10.5, '*'}, {"10X30'", 10.5, 'x'}, {"10\xB0 30'", 10.5, '\xB0'}, {"10", 10, '\0'},
      {"0.1234567890123456789012345678901", 0.1234567890123456789012345678901},
      {"123456789012345678901234567890", 123456789012345678901234567890.0}};
  // clang-format on
  for (const Reading& r : readings) {
    double degrees = -999;
    EXPECT_TRUE(LatLonToDegrees(r.text, &degrees, r.degreeChar)) << r.text;
    EXPECT_DOUBLE_EQ(degrees, r.degrees) << r.text;
  }
}

TEST(LatLonText, RefusesWhatIsNoAngle) {
  constexpr double kUntouched = -999;
  // clang-format off
  const Reading refused[] = {
      {"", kUntouched}, {"  \t ", kUntouched}, {".", kUntouched}, {"-", kUntouched}, {"d30'", kUntouched}, {"+-5", kUntouched},
      {"nan", kUntouched}, {"45 30 N", 45}, {"12.5dx", 12.5}, {"1e3", 1}, {"0x10", 0}, {"-10d30'x", 10.5}, {"10d.", 10},
      {"10d30'15'", 10.5 + 15.0 / 3600}, {"5  N", 5}, {"1,5", 1}, {"10*30'", 10, '\0'}, {"1.2.3", 1.2}};
  // clang-format on
  for (const Reading& r : refused) {
    double degrees = kUntouched;
    EXPECT_FALSE(LatLonToDegrees(r.text, &degrees, r.degreeChar)) << r.text;
    EXPECT_DOUBLE_EQ(degrees, r.degrees) << r.text;  // the unsigned partial value stays
  }
  double degrees = kUntouched;
  EXPECT_FALSE(LatLonToDegrees(nullptr, &degrees, 'd'));
  EXPECT_FALSE(LatLonToDegrees("1", nullptr, 'd'));
  EXPECT_EQ(degrees, kUntouched);
}

struct Writing {
  double degrees;
  int format;
  const char* text;
  char degSep = 'd', minSep = '\'', secSep = 's';
};

// Expected texts by hand from the layout rules.
constexpr Writing kWritings[] = {
    {45.5125, LLF_HEMISPHERE | LLF_LATITUDE | LLF_BLANKS | 2, "45d 30' 45.00s N"},
    {-120.25, LLF_MINUSSIGN | LLF_DECIMALDEGREES | 3, "-120.250"},
    {-120.25, LLF_DECIMALDEGREES | LLF_ZEROPAD | LLF_DECIMALMINUTES | 1,
     "120.2"},                          // sign lost; ties to even; nothing padded
    {10.9999999, 2, "10d59'60.00s"},    // rounding is not carried
    {5.125, LLF_ZEROPAD, "5d07'030s"},  // the width is decimals + 3
    {5.125, LLF_ZEROPAD | 2, "5d07'30.00s"},
    {5.0625, LLF_DECIMALMINUTES | LLF_ZEROPAD | LLF_BLANKS | 2, "5d 03.75'"},
    {-5.0625, LLF_DECIMALMINUTES | LLF_HEMISPHERE | 2, "5d3.75'W"},
    {-5.5, LLF_MINUSSIGN | LLF_HEMISPHERE | LLF_LATITUDE, "-5d30'0sS"},
    {5.5, LLF_PLUSSIGN | LLF_HEMISPHERE, "+5d30'0sE"},
    {5.5, LLF_SIGNCOLUMN, " 5d30'0s"},
    {-5.5, LLF_SIGNCOLUMN, "5d30'0s"},
    {5.5, 1, "5300.0", '\0', '\0', '\0'},
    {1234567.5, LLF_DECIMALMINUTES, "1.23457e+06d30'"},  // degrees take six digits
    {1e20, 1, "1e+20d0'0.0s"},                           // more than the widest integer
    {4503599627370495.5, 2, "4.5036e+15d30'0.00s"},      // the greatest with a fraction
    {0.1, LLF_DECIMALDEGREES | 15, "0.100000000000000"},
};

// However many places, a number is the double nearest to what is written.
TEST(LatLonText, ReadsEveryNumberOfPlaces) {
  for (std::size_t places = 1; places < 40; ++places) {
    for (const char* digits : {"7", "123456789012345", "9007199254740993"}) {
      const std::string text = "0." + std::string(places, '0') + digits;
      double degrees = 0;
      EXPECT_TRUE(LatLonToDegrees(text.c_str(), &degrees, 'd'));
      EXPECT_EQ(degrees, std::strtod(text.c_str(), nullptr)) << text;
    }
  }
}

TEST(LatLonText, WritesAngles) {
  for (const Writing& w : kWritings) {
    std::array<char, 260> text{};
    EXPECT_TRUE(DegreesToLatLon(text.data(), w.degrees, w.format, w.degSep, w.minSep, w.secSep));
    EXPECT_STREQ(text.data(), w.text);
  }
  std::array<char, 260> text;
  text.fill('x');
  EXPECT_FALSE(DegreesToLatLon(text.data(), 1, LLF_PLUSSIGN | LLF_SIGNCOLUMN, 'd', '\'', '"'));
  EXPECT_STREQ(text.data(), "");
  EXPECT_FALSE(DegreesToLatLon(nullptr, 1, 0, 'd', '\'', '"'));
}

TEST(LatLonText, StaysWithinTheCallersBuffer) {
  for (const double degrees : {1e308, -1e308, HUGE_VAL, std::nan("")}) {
    for (const int format : {LLF_DECIMALDEGREES | 15, LLF_HEMISPHERE | LLF_BLANKS | LLF_ZEROPAD | 15}) {
      std::array<char, 270> text;
      text.fill('x');
      EXPECT_TRUE(DegreesToLatLon(text.data(), degrees, format, 'd', '\'', '"'));
      EXPECT_LT(std::strlen(text.data()), 260u);
      EXPECT_EQ(text[260], 'x');
    }
  }
}

}  // namespace
}  // namespace orvex
