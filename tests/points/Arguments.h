// Arguments - what the elementary functions are tried with: ranges that occur, hard cases, all doubles. Made from whole
// numbers by exactly rounded operations, so that every platform makes the same.
#pragma once

#include <cstdint>
#include <cstring>
#include <vector>

namespace points_test {

/// A stream of random bits (Weyl sequence, mixed as in SplitMix64).
class Random {
 public:
  explicit Random(std::uint64_t seed) : m_state(seed) {}
  std::uint64_t Bits() {
    std::uint64_t z = m_state += 0x9e3779b97f4a7c15;
    z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9;
    z = (z ^ (z >> 27)) * 0x94d049bb133111eb;
    return z ^ (z >> 31);
  }
  std::uint64_t Below(std::uint64_t n) { return Bits() % n; }
  double Unit() { return static_cast<double>(static_cast<std::int64_t>(Bits() >> 11)) * 0x1p-53; }

 private:
  std::uint64_t m_state;
};

inline double FromBits(std::uint64_t bits) {
  double d = 0;
  std::memcpy(&d, &bits, sizeof d);
  return d;
}
inline std::uint64_t ToBits(double d) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, &d, sizeof bits);
  return bits;
}

enum class Kind {
  Uniform,   // between low and high
  AnySize,   // every exponent from that of low to that of high alike, both signs
  Every,     // any bits at all: not finite and subnormal ones too
  Quarters,  // within a few units of a multiple of pi/2, up to high quarter turns
  Around,    // low plus or minus anything from one unit to high
  Powers,    // a power of two, and its neighbours, both signs
  Negative,  // as AnySize, below 0
  Positive,  // as AnySize, above 0
  Whole,     // a whole number from low to high
};
struct Draw {
  Kind kind;
  double low, high;
};

inline double SizeBetween(Random& random, double low, double high) {
  const std::uint64_t from = ToBits(low), to = ToBits(high);
  return FromBits(from + random.Below(to - from + 1));  // the exponents alike, nearly: the fraction is linear
}
inline double Make(const Draw& draw, Random& random) {
  const bool minus = (random.Bits() & 1) != 0;
  const auto sign = [minus](double size) { return minus ? -size : size; };
  switch (draw.kind) {
    case Kind::Uniform:
      return draw.low + (draw.high - draw.low) * random.Unit();
    case Kind::AnySize:
      return sign(SizeBetween(random, draw.low, draw.high));
    case Kind::Negative:
      return -SizeBetween(random, draw.low, draw.high);
    case Kind::Positive:
      return SizeBetween(random, draw.low, draw.high);
    case Kind::Every:
      return FromBits(random.Bits());
    case Kind::Quarters: {
      const double k = static_cast<double>(static_cast<std::int64_t>(SizeBetween(random, 1, draw.high)));
      const double near = k * 0x1.921fb54442d18p+0 + k * 0x1.1a62633145c07p-54;
      return sign(FromBits(ToBits(near) - 3 + random.Below(7)));
    }
    case Kind::Around:
      return draw.low + sign(SizeBetween(random, 0x1p-53, draw.high));
    case Kind::Powers: {
      const std::uint64_t steps = random.Below(3);
      const std::uint64_t exponent = random.Below(2046 + 52);
      const std::uint64_t power = exponent < 52 ? std::uint64_t{1} << exponent : (exponent - 51) << 52;
      return sign(FromBits(power - 1 + steps));
    }
    case Kind::Whole:
      return draw.low + static_cast<double>(static_cast<std::int64_t>(random.Below(
                            static_cast<std::uint64_t>(static_cast<std::int64_t>(draw.high - draw.low)) + 1)));
  }
  return 0;
}

struct Row {
  const char* function;
  const char* range;  // as the table of errors says it
  double bound;       // of the error, in units in the last place
  bool ordinary;      // such an argument raises neither invalid nor divide-by-zero nor overflow
  Draw x;
  Draw y = {Kind::Uniform, 0, 0};
};

constexpr double kLeast = 0x1p-1074, kMost = 0x1.fffffffffffffp+1023, kAround = 0.25;
inline const Row kRows[] = {
    {"Sin", "-2 pi to 2 pi", 1, true, {Kind::Uniform, -6.2832, 6.2832}},
    {"Sin", "to 32768", 1, true, {Kind::AnySize, 0x1p-60, 32768}},
    {"Sin", "near multiples of pi/2, to 1e15", 1, true, {Kind::Quarters, 1, 1e15}},
    {"Sin", "any finite", 1, true, {Kind::AnySize, kLeast, kMost}},
    {"Cos", "-2 pi to 2 pi", 1, true, {Kind::Uniform, -6.2832, 6.2832}},
    {"Cos", "to 32768", 1, true, {Kind::AnySize, 0x1p-60, 32768}},
    {"Cos", "near multiples of pi/2, to 1e15", 1, true, {Kind::Quarters, 1, 1e15}},
    {"Cos", "any finite", 1, true, {Kind::AnySize, kLeast, kMost}},
    {"Tan", "-2 pi to 2 pi", 2, true, {Kind::Uniform, -6.2832, 6.2832}},
    {"Tan", "to 32768", 2, true, {Kind::AnySize, 0x1p-60, 32768}},
    {"Tan", "near multiples of pi/2, to 1e15", 2, true, {Kind::Quarters, 1, 1e15}},
    {"Tan", "any finite", 2, true, {Kind::AnySize, kLeast, kMost}},
    {"Asin", "-1 to 1", 1, true, {Kind::Uniform, -1, 1}},
    {"Asin", "any size to 1", 1, true, {Kind::AnySize, kLeast, 1}},
    {"Asin", "near 1", 1, true, {Kind::Uniform, 0.999, 1}},
    {"Asin", "near 1/2", 1, true, {Kind::Around, 0.5, 0.01}},
    {"Atan", "-4 to 4", 1, true, {Kind::Uniform, -4, 4}},
    {"Atan", "1/8 to 8, any size", 1, true, {Kind::AnySize, 0.125, 8}},
    {"Atan", "any finite", 1, true, {Kind::AnySize, kLeast, kMost}},
    {"Atan2", "-1 to 1 each", 1, true, {Kind::Uniform, -1, 1}, {Kind::Uniform, -1, 1}},
    {"Atan2", "1e-30 to 1e7 each", 1, true, {Kind::AnySize, 1e-30, 1e7}, {Kind::AnySize, 1e-30, 1e7}},
    {"Atan2", "1/8 to 8 by 1", 1, true, {Kind::AnySize, 0.125, 8}, {Kind::AnySize, 1, 1}},
    {"Atan2", "any finite", 1, true, {Kind::AnySize, kLeast, kMost}, {Kind::AnySize, kLeast, kMost}},
    {"Exp", "-1 to 1", 1, true, {Kind::Uniform, -1, 1}},
    {"Exp", "-745 to 709.7", 1, true, {Kind::Uniform, -745, 709.7}},
    {"Exp", "any size to 40", 1, true, {Kind::AnySize, kLeast, 40}},
    {"Exp", "any finite", 1, false, {Kind::AnySize, kLeast, kMost}},
    {"Log", "0.5 to 2", 1, true, {Kind::Uniform, 0.5, 2}},
    {"Log", "near 1", 1, true, {Kind::Around, 1, kAround}},
    {"Log", "any finite above 0", 1, true, {Kind::Positive, kLeast, kMost}},
    {"Log1p", "-0.5 to 1", 1, true, {Kind::Uniform, -0.5, 1}},
    {"Log1p", "near -1", 1, true, {Kind::Uniform, -0.99999999, -0.9}},
    {"Log1p", "any size below 0", 1, true, {Kind::Negative, kLeast, 0x1.fffffffffffffp-1}},
    {"Log1p", "any finite above 0", 1, true, {Kind::Positive, kLeast, kMost}},
    {"Pow", "0.5 to 2 by -2 to 2", 2, true, {Kind::Uniform, 0.5, 2}, {Kind::Uniform, -2, 2}},
    {"Pow", "0.9 to 1.1 by e/2 of an earth", 2, true, {Kind::Uniform, 0.9, 1.1}, {Kind::Uniform, 0.04, 0.042}},
    {"Pow", "1e-20 to 1e20 by -1 to 1", 2, true, {Kind::Positive, 1e-20, 1e20}, {Kind::Uniform, -1, 1}},
    {"Pow", "near 1 by -2700 to 2700", 2, true, {Kind::Around, 1, 0.2}, {Kind::Uniform, -2700, 2700}},
    {"Pow", "any finite above 0 by -1 to 1", 2, true, {Kind::Positive, kLeast, kMost}, {Kind::Uniform, -0.95, 0.95}},
    {"Pow", "any finite by any finite", 2, false, {Kind::AnySize, kLeast, kMost}, {Kind::AnySize, kLeast, kMost}},
    {"Pow", "any finite by whole numbers", 2, false, {Kind::AnySize, 1e-30, 1e30}, {Kind::Whole, -12, 12}},
    {"Sinh", "-3 to 3", 1, true, {Kind::Uniform, -3, 3}},
    {"Sinh", "any size to 710", 1, true, {Kind::AnySize, kLeast, 710}},
    {"Sinh", "3 to 710", 1, true, {Kind::Uniform, 3, 710}},
    {"Sinh", "any finite", 1, false, {Kind::AnySize, kLeast, kMost}},
    {"Cosh", "-3 to 3", 1, true, {Kind::Uniform, -3, 3}},
    {"Cosh", "any size to 710", 1, true, {Kind::AnySize, kLeast, 710}},
    {"Cosh", "3 to 710", 1, true, {Kind::Uniform, 3, 710}},
    {"Cosh", "any finite", 1, false, {Kind::AnySize, kLeast, kMost}},
    {"Asinh", "-3 to 3", 1, true, {Kind::Uniform, -3, 3}},
    {"Asinh", "0.01 to 1e6, any size", 1, true, {Kind::AnySize, 0.01, 1e6}},
    {"Asinh", "any finite", 1, true, {Kind::AnySize, kLeast, kMost}},
    {"Atanh", "-1 to 1", 1, true, {Kind::Uniform, -1, 1}},
    {"Atanh", "near 1", 1, true, {Kind::Uniform, 0.999, 0.99999999999}},
    {"Atanh", "any size below 1", 1, true, {Kind::AnySize, kLeast, 0x1.fffffffffffffp-1}},
    {"Hypot", "-1 to 1 each", 1, true, {Kind::Uniform, -1, 1}, {Kind::Uniform, -1, 1}},
    {"Hypot", "any finite", 1, false, {Kind::AnySize, kLeast, kMost}, {Kind::AnySize, kLeast, kMost}},
    {"Sqrt", "any finite above 0", 0.5, true, {Kind::Positive, kLeast, kMost}},
};

/// A multiple of 16 arguments of a row.
struct Arguments {
  std::vector<double> x, y;
  Arguments(const Row& row, std::size_t count, std::uint64_t seed) {
    Random random(seed);
    count = (count + 15) / 16 * 16;
    for (std::size_t i = 0; i < count; ++i) {
      x.push_back(Make(row.x, random));
      y.push_back(Make(row.y, random));
    }
  }
  int Count() const { return static_cast<int>(x.size()); }
};

}  // namespace points_test
