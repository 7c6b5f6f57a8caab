// Errors of the elementary functions against MPFR, their special values, the exceptions they raise; all at every level
// and width. More arguments: ORVEX_POINTS_ARGUMENTS=1000000; the table of errors:
// ORVEX_POINTS_TABLE=docs/elementary.md.
#include <gtest/gtest.h>
#include <mpfr.h>

#include <algorithm>
#include <cfenv>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iomanip>
#include <limits>
#include <map>
#include <sstream>
#include <string>

#include "Arguments.h"
#include "Levels.h"
#include "points/Elementary.h"

namespace {

using namespace points_test;
namespace base = orvex::detail::base;

using Unary = int (*)(mpfr_t, const mpfr_t, mpfr_rnd_t);
using Binary = int (*)(mpfr_t, const mpfr_t, const mpfr_t, mpfr_rnd_t);
struct Reference {
  Unary exact = nullptr;
  double (*runtime)(double) = nullptr;
  Binary exact2 = nullptr;
  double (*runtime2)(double, double) = nullptr;
};
const std::map<std::string, Reference> kReferences = {
    {"Sin", {mpfr_sin, std::sin}},
    {"Cos", {mpfr_cos, std::cos}},
    {"Tan", {mpfr_tan, std::tan}},
    {"Asin", {mpfr_asin, std::asin}},
    {"Atan", {mpfr_atan, std::atan}},
    {"Atan2", {nullptr, nullptr, mpfr_atan2, std::atan2}},
    {"Exp", {mpfr_exp, std::exp}},
    {"Log", {mpfr_log, std::log}},
    {"Log1p", {mpfr_log1p, std::log1p}},
    {"Pow", {nullptr, nullptr, mpfr_pow, std::pow}},
    {"Sinh", {mpfr_sinh, std::sinh}},
    {"Cosh", {mpfr_cosh, std::cosh}},
    {"Asinh", {mpfr_asinh, std::asinh}},
    {"Atanh", {mpfr_atanh, std::atanh}},
    {"Hypot", {nullptr, nullptr, mpfr_hypot, std::hypot}},
    {"Sqrt", {mpfr_sqrt, std::sqrt}},
    {"Nearest", {nullptr, std::nearbyint}},
    {"Floor", {nullptr, std::floor}},
    {"ToFloat", {nullptr, [](double x) { return static_cast<double>(static_cast<float>(x)); }}},
    {"Answers", {nullptr, nullptr, nullptr, [](double x, double y) { return std::isfinite(x) && x <= y ? x : y; }}},
};

const Function& FunctionOf(const Level& level, const std::string& name) {
  return *std::find_if(level.functions, level.functions + level.count,
                       [&](const Function& function) { return name == function.name; });
}
std::vector<double> RunAll(Run run, const Arguments& arguments) {
  std::vector<double> result(arguments.x.size());
  run(arguments.x.data(), arguments.y.data(), result.data(), arguments.Count());
  return result;
}

/// Errors in units in the last place of the exact value.
class Ruler {
 public:
  explicit Ruler(const std::string& name) : m_reference(kReferences.at(name)) {
    mpfr_inits2(200, m_exact, m_x, m_y, static_cast<mpfr_ptr>(nullptr));
  }
  ~Ruler() { mpfr_clears(m_exact, m_x, m_y, static_cast<mpfr_ptr>(nullptr)); }
  Ruler(const Ruler&) = delete;
  Ruler& operator=(const Ruler&) = delete;

  double ErrorOf(double result, double x, double y) {
    constexpr double kWrong = 1e300;
    mpfr_set_d(m_x, x, MPFR_RNDN);
    if (m_reference.exact != nullptr) {
      m_reference.exact(m_exact, m_x, MPFR_RNDN);
    } else {
      mpfr_set_d(m_y, y, MPFR_RNDN);
      m_reference.exact2(m_exact, m_x, m_y, MPFR_RNDN);
    }
    const double nearest = mpfr_get_d(m_exact, MPFR_RNDN);
    if (std::isnan(nearest) || std::isnan(result)) return std::isnan(nearest) && std::isnan(result) ? 0 : kWrong;
    if (std::signbit(nearest) != std::signbit(result)) return kWrong;
    if (nearest == result && (std::isinf(result) || mpfr_zero_p(m_exact) != 0)) return 0;
    if (mpfr_inf_p(m_exact) != 0) return kWrong;
    if (std::isinf(result)) mpfr_set_ui_2exp(m_x, 1, 1024, MPFR_RNDN);
    if (!std::isinf(result)) mpfr_set_d(m_x, result, MPFR_RNDN);
    if (std::isinf(result)) mpfr_setsign(m_x, m_x, std::signbit(result), MPFR_RNDN);
    const mpfr_exp_t exponent = mpfr_zero_p(m_exact) != 0 ? -1021 : mpfr_get_exp(m_exact);
    mpfr_sub(m_x, m_x, m_exact, MPFR_RNDN);
    mpfr_mul_2si(m_x, m_x, 53 - std::max<mpfr_exp_t>(exponent, -1021), MPFR_RNDN);
    return std::fabs(mpfr_get_d(m_x, MPFR_RNDN));
  }

 private:
  const Reference& m_reference;
  mpfr_t m_exact, m_x, m_y;
};

bool SameBits(double a, double b) {
  return ToBits(a) == ToBits(b) || (std::isnan(a) && std::isnan(b));
}

std::size_t ArgumentCount() {
  const char* wanted = std::getenv("ORVEX_POINTS_ARGUMENTS");
  return wanted != nullptr ? static_cast<std::size_t>(std::strtoull(wanted, nullptr, 10)) : 12000;
}

/// Puts the rows in the place of those that stand there: all that follows the line below the heads of their columns.
void WriteTable(const char* path, const std::string& rows) {
  std::ostringstream kept;
  std::ifstream before(path);
  for (std::string line; std::getline(before, line);) {
    kept << line << '\n';
    if (line == "|---|---|--:|--:|--:|") break;
  }
  before.close();
  std::ofstream(path) << kept.str() << rows;
}

TEST(Elementary, ErrorsAreWithinTheBoundsAndAllWidthsAgree) {
  const std::size_t count = ArgumentCount();
  std::ostringstream table;
  for (const Row& row : kRows) {
    const Arguments arguments(row, count, 1);
    const std::vector<double> result = RunAll(FunctionOf(BaseLevel(), row.function).widths[0].run, arguments);
    Ruler ruler(row.function);
    double worst = 0, worstX = 0, worstY = 0;
    for (std::size_t i = 0; i < result.size(); ++i) {
      const double error = ruler.ErrorOf(result[i], arguments.x[i], arguments.y[i]);
      if (error > worst) worst = error, worstX = arguments.x[i], worstY = arguments.y[i];
    }
    EXPECT_LE(worst, row.bound) << row.function << ", " << row.range << ": " << std::hexfloat << worstX << ", "
                                << worstY;
    table << "| " << row.function << " | " << row.range << " | " << std::fixed << std::setprecision(3) << worst << " | "
          << std::defaultfloat << row.bound << " | " << result.size() << " |\n";
    for (const Level& level : Levels()) {
      for (const Width* width = FunctionOf(level, row.function).widths; width->name != nullptr; ++width) {
        const std::vector<double> other = RunAll(width->run, arguments);
        const auto at = std::mismatch(result.begin(), result.end(), other.begin(), SameBits).first - result.begin();
        EXPECT_EQ(at, static_cast<std::ptrdiff_t>(result.size()))
            << row.function << " differs at " << level.name << ", " << width->name;
      }
    }
  }
  mpfr_free_cache();
  if (const char* path = std::getenv("ORVEX_POINTS_TABLE")) WriteTable(path, table.str());
}

TEST(Elementary, SpecialValuesAreThoseOfTheRuntime) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity(), kNaN = std::numeric_limits<double>::quiet_NaN();
  std::vector<double> special = {
      0,      0.5,       1,     1.5,          2,     2.5,   3,     4,     0x1p53,    0x1p52,       5e-324,
      1e-310, 0x1p-1022, 1e-20, 0.9999999999, 1e308, 709.9, 745.5, kMost, kInfinity, 0x1p52 - 0.5, 0x1p53 + 2,
      0x1p90, 1e5};
  for (std::size_t i = special.size(); i-- > 0;) special.push_back(-special[i]);
  special.push_back(kNaN);
  Random random(9);
  for (int i = 0; i < 40; ++i) special.push_back(Make({Kind::AnySize, 1e-46, 1e40}, random));
  for (const auto& [name, reference] : kReferences) {
    Arguments arguments({name.c_str(), "", 0, false, {}, {}}, 0, 0);
    for (const double x : special) {
      for (const double y : special) {
        arguments.x.push_back(x);
        arguments.y.push_back(y);
      }
    }
    while (arguments.x.size() % 16 != 0) arguments.x.push_back(1), arguments.y.push_back(1);
    for (const Level& level : Levels()) {
      for (const Width* width = FunctionOf(level, name).widths; width->name != nullptr; ++width) {
        const std::vector<double> result = RunAll(width->run, arguments);
        for (std::size_t i = 0; i < result.size(); ++i) {
          const double x = arguments.x[i], y = arguments.y[i];
          const double wanted = reference.runtime != nullptr ? reference.runtime(x) : reference.runtime2(x, y);
          const bool plain = std::isfinite(wanted) && wanted != 0 && std::isfinite(result[i]);
          const bool same = plain ? std::fabs(result[i] - wanted) <= std::max(std::fabs(wanted) * 5e-16, 1e-323)
                                  : SameBits(result[i], wanted);
          EXPECT_TRUE(same) << name << "(" << x << ", " << y << ") is " << result[i] << ", not " << wanted << "; "
                            << level.name << ", " << width->name;
        }
      }
    }
  }
}

TEST(Elementary, OrdinaryArgumentsRaiseNothing) {
  for (const Row& row : kRows) {
    if (!row.ordinary) continue;
    const Arguments arguments(row, 4000, 3);
    for (const Level& level : Levels()) {
      for (const Width* width = FunctionOf(level, row.function).widths; width->name != nullptr; ++width) {
        std::feclearexcept(FE_ALL_EXCEPT);
        RunAll(width->run, arguments);
        EXPECT_EQ(std::fetestexcept(FE_INVALID | FE_DIVBYZERO | FE_OVERFLOW), 0)
            << row.function << ", " << row.range << "; " << level.name << ", " << width->name;
      }
    }
  }
}

TEST(Elementary, RemaindersAreExact) {
  const Row rows[] = {{"", "degrees", 0, true, {Kind::Uniform, -1e4, 1e4}, {Kind::Whole, 90, 360}},
                      {"", "alike", 0, true, {Kind::AnySize, 0.1, 10}, {Kind::AnySize, 0.1, 10}},
                      {"", "whole", 0, true, {Kind::Whole, -40, 40}, {Kind::Whole, -9, 9}},
                      {"", "small", 0, true, {Kind::AnySize, kLeast, 1e-290}, {Kind::AnySize, kLeast, 1e-300}},
                      {"", "any", 0, true, {Kind::AnySize, kLeast, kMost}, {Kind::AnySize, kLeast, kMost}},
                      {"", "every", 0, true, {Kind::Every, 0, 0}, {Kind::Powers, 0, 0}}};
  for (const Row& row : rows) {
    const Arguments arguments(row, 20000, 5);
    for (std::size_t i = 0; i < arguments.x.size(); ++i) {
      const double x = arguments.x[i], y = arguments.y[i];
      ASSERT_TRUE(SameBits(base::Remainder(x, y), std::fmod(x, y))) << std::hexfloat << x << ", " << y;
      const double nearest = base::RemainderNearest(x, y), wanted = std::remainder(x, y);
      const bool same =
          wanted == 0 ? SameBits(nearest, std::copysign(0, x)) : SameBits(nearest, wanted);  // runtimes vary
      ASSERT_TRUE(same) << std::hexfloat << x << ", " << y;
    }
  }
  for (const double x : {0.0, -0.0, 1.0, -HUGE_VAL, HUGE_VAL, std::nan("")}) {
    for (const double y : {0.0, 1.0, HUGE_VAL, std::nan("")}) {
      EXPECT_TRUE(SameBits(base::Remainder(x, y), std::fmod(x, y))) << x << ", " << y;
      EXPECT_TRUE(SameBits(base::RemainderNearest(x, y), std::remainder(x, y))) << x << ", " << y;
    }
  }
}

}  // namespace
