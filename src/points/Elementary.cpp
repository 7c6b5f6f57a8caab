// Elementary - one compiled copy of each function for a double, and what needs more than the plain course.
#include "points/Elementary.h"

namespace orvex::detail::ORVEX_LEVEL {

namespace {

constexpr double kInfinity = __builtin_inf();

// Computed, so that the exception is raised that C's functions raise.
double InfiniteByDivision(double zero) {
  return 1 / zero;
}

// ---- angles of any size ----

// 2/pi, 64 bits a word after one word of zeros.
constexpr std::uint64_t kTwoOverPi[] = {
    0x0000000000000000, 0xa2f9836e4e441529, 0xfc2757d1f534ddc0, 0xdb6295993c439041, 0xfe5163abdebbc561,
    0xb7246e3a424dd2e0, 0x06492eea09d1921c, 0xfe1deb1cb129a73e, 0xe88235f52ebb4484, 0xe99c7026b45f7e41,
    0x3991d639835339f4, 0x9c845f8bbdf9283b, 0x1ff897ffde05980f, 0xef2f118b5a0a6d1f, 0x6d367ecf27cb09b7,
    0x4f463f669e5fea2d, 0x7527bac7ebe5f17b, 0x3d0739f78a5292ea, 0x6bfb5fb11f8d5d08, 0x56033046fc7b6bab,
    0xf0cfbc209af4361d,
};

struct Product128 {
  std::uint64_t high, low;
};
Product128 Multiply(std::uint64_t a, std::uint64_t b) {
#if defined(__SIZEOF_INT128__)
  __extension__ using Whole = unsigned __int128;
  const Whole product = Whole{a} * b;
  return {static_cast<std::uint64_t>(product >> 64), static_cast<std::uint64_t>(product)};
#else
  constexpr std::uint64_t kHalf = 0xffffffff;
  const std::uint64_t aHigh = a >> 32, aLow = a & kHalf, bHigh = b >> 32, bLow = b & kHalf;
  const std::uint64_t low = aLow * bLow, middle = aHigh * bLow + (low >> 32), other = aLow * bHigh + (middle & kHalf);
  return {aHigh * bHigh + (middle >> 32) + (other >> 32), (other << 32) | (low & kHalf)};
#endif
}
/// Below 2^52, without a conversion instruction, which the x87 unit would do on 32-bit machines.
double FromWhole(std::uint64_t whole) {
  return FromBits<double>(whole | 0x4330000000000000) - 0x1p52;
}
double PowerOfTwoOf(int exponent) {
  return FromBits<double>(static_cast<std::uint64_t>(exponent + 1023) << 52);
}

}  // namespace

// Payne and Hanek's reduction in whole numbers: of 2/pi only the bits take part that make less than a full turn.
ReducedAngle<double> ReduceHugeAngle(double size) {
  const std::uint64_t bits = ToBits(size), m = (bits & 0x000fffffffffffff) | 0x0010000000000000;
  const unsigned exponent = static_cast<unsigned>(bits >> 52 & 0x7ff);  // size = m 2^(exponent - 1075)
  const unsigned offset = exponent - 1075 - 2 + 64, word = offset / 64, shift = offset % 64;
  std::uint64_t window[3];  // 192 bits from 4 / m on
  for (unsigned i = 0; i < 3; ++i) {
    window[i] = kTwoOverPi[word + i] << shift;
    if (shift != 0) window[i] |= kTwoOverPi[word + i + 1] >> (64 - shift);
  }
  const Product128 low = Multiply(m, window[2]), middle = Multiply(m, window[1]);
  std::uint64_t f[3] = {m * window[0] + middle.high, middle.low + low.high, low.low};
  if (f[1] < low.high) ++f[0];
  // Quarter turns in the first two bits; the rest is brought to the nearest one, and its size into f.
  const std::uint64_t quarters = (f[0] + (std::uint64_t{1} << 61)) >> 62;
  const bool beyond = (f[0] >> 61 & 1) != 0;
  f[0] &= 0x3fffffffffffffff;
  if (beyond) {
    f[2] = 0 - f[2];
    f[1] = 0 - f[1] - (f[2] != 0);
    f[0] = 0x4000000000000000 - f[0] - ((f[1] | f[2]) != 0);
  }
  int scale = -62;
  if (f[0] == 0) {
    f[0] = f[1];
    f[1] = f[2];
    f[2] = 0;
    scale -= 64;
  }
  if (const int zeros = __builtin_clzll(f[0]); zeros > 0) {  // no double is so near a quarter turn that it is 0
    f[0] = f[0] << zeros | f[1] >> (64 - zeros);
    f[1] = f[1] << zeros | f[2] >> (64 - zeros);
    f[2] <<= zeros;
    scale -= zeros;
  }
  const double high = FromWhole(f[0] >> 12) * PowerOfTwoOf(scale + 12);
  const double low52 = FromWhole((f[0] & 0xfff) << 40 | f[1] >> 24) * PowerOfTwoOf(scale - 40);
  const Double<double> first = Product(high, kQuarterTurn);
  const Double<double> angle = SumOfOrdered(first.high, first.low + (high * kQuarterTurnLow + low52 * kQuarterTurn));
  return {beyond ? -angle.high : angle.high, beyond ? -angle.low : angle.low, quarters};
}

void EachSinCos(double* sines, double* cosines, int count) {
  for (int i = 0; i < count; ++i) {
    const SineCosine<double> both = SinCos(sines[i]);
    sines[i] = both.sine;
    cosines[i] = both.cosine;
  }
}
void EachLane(double (*function)(double), const double* x, double* result, int count) {
  for (int i = 0; i < count; ++i) result[i] = function(x[i]);
}
void EachLane(double (*function)(double, double), const double* x, const double* y, double* result, int count) {
  for (int i = 0; i < count; ++i) result[i] = function(x[i], y[i]);
}

// ---- the arguments that the plain course leaves out ----

double ColdAtan2(double y, double x) {
  if (y != y || x != x) return y + x;
  const double ay = Abs(y), ax = Abs(x);
  const bool left = CopySign(1.0, x) < 0;
  double angle = 0;
  if (ay == 0) {
    angle = left ? AngleOf<true>(0.0, 1.0, true) : 0;
  } else if (ay == kInfinity || ax == kInfinity) {
    angle = AngleOf<true>(ay == kInfinity ? 1.0 : 0.0, ax == kInfinity ? 1.0 : 0.0, left);
  } else {
    const double scale = (ay > ax ? ay : ax) > 1 ? 0x1p-500 : 0x1p700;
    angle = AngleOf<true>(ay * scale, ax * scale, left);
  }
  return FlipSign(angle, y);
}

double ColdExp(double x) {
  if (x != x) return x + x;
  // In two steps: neither power has to be representable, and a subnormal result rounds once.
  const ReducedExponent<double> reduced = ReduceExponent(Lesser(Greater(x, -746.0), 710.0), 0.0);
  return reduced.Twice(reduced.Plain());
}
double ColdLog(double x) {
  if (x != x || x == kInfinity) return x + x;
  if (x == 0) return -InfiniteByDivision(Abs(x));
  if (x < 0) return NotANumber(x);
  const Normalized<double> reduced = Normalize(x * 0x1p54);
  return LogOfReduced(reduced.k - 54, reduced.m - 1, 0.0);
}
double ColdLog1p(double x) {
  if (x == -1) return -InfiniteByDivision(1 + x);
  return x < -1 ? NotANumber(x) : Log(x);
}

double ColdPow(double x, double y) {
  if (y == 0 || x == 1) return 1;
  if (x != x || y != y) return x + y;
  const double ax = Abs(x), ay = Abs(y);
  const bool whole = Nearest(y) == y, odd = whole && Nearest(0.5 * y) != 0.5 * y;
  const double sign = odd && CopySign(1.0, x) < 0 ? -1 : 1;
  if (x == 0) return y < 0 ? sign * InfiniteByDivision(ax) : sign * 0;
  if (ax == kInfinity) return y < 0 ? sign * 0 : sign * kInfinity;
  if (ay == kInfinity) return ax == 1 ? 1 : (ax > 1) == (y > 0) ? kInfinity : 0;
  if (x < 0 && !whole) return NotANumber(x);
  if (ax == 1) return sign;
  if (ay > 0x1p80) return sign * Exp((ax > 1) == (y > 0) ? 1000.0 : -1000.0);
  Normalized<double> reduced = Normalize(ax < 0x1p-1022 ? ax * 0x1p54 : ax);
  if (ax < 0x1p-1022) reduced.k -= 54;
  const Double<double> log = LogOfPower(reduced, y);
  if (!(Abs(log.high) <= 750)) return sign * Exp(log.high);
  const ReducedExponent<double> rest = ReduceExponent(log.high, log.low);
  return sign * rest.Twice(rest.Plain());
}

double ColdAsinh(double x) {
  if (!IsFinite(x)) return x + x;
  const Normalized<double> reduced = Normalize(Abs(x));
  return FlipSign(LogOfReduced(reduced.k + 1, reduced.m - 1, 0.0), x);  // ln 2|x|
}
double ColdAtanh(double x) {
  const double size = Abs(x);
  if (size == 1) return FlipSign(InfiniteByDivision(1 - size), x);
  return size > 1 ? NotANumber(x) : x + x;
}

// ---- remainders ----

namespace {

/// The remainder of |x| by |y|, both finite and not 0, by long division; odd: the last bit of the quotient.
double RemainderOfSizes(double x, double y, bool& odd) {
  odd = false;
  if (x < y) return x;
  constexpr std::uint64_t kUnit = 0x0010000000000000;
  // A subnormal number is scaled, so that every number is a whole number of 53 bits times a power of two.
  const bool small = y < 0x1p-900;
  const double scale = small ? 0x1p120 : 1;
  const bool alsoScaled = small && x < 0x1p800;
  const std::uint64_t xBits = ToBits(alsoScaled ? x * scale : x), yBits = ToBits(y * scale);
  std::uint64_t m = (xBits & (kUnit - 1)) | kUnit;
  const std::uint64_t n = (yBits & (kUnit - 1)) | kUnit;
  int shift = static_cast<int>(xBits >> 52) - static_cast<int>(yBits >> 52) + (small && !alsoScaled ? 120 : 0);
  for (; shift > 0; --shift) {
    if (m >= n) m -= n;
    m <<= 1;
  }
  odd = m >= n;
  if (odd) m -= n;
  if (m == 0) return 0;
  // The remainder is m times the unit of y: m / n of y would round, its power of two does not.
  const double unit = FromBits<double>(((yBits >> 52) << 52));  // of y's leading bit
  const double high = FromWhole(m >> 1) * 2, value = high + FromWhole(m & 1);
  return value * 0x1p-52 * unit / scale;
}

}  // namespace

double Remainder(double x, double y) {
  const double ax = Abs(x), ay = Abs(y);
  if (x != x || y != y) return x + y;
  if (ax == kInfinity || y == 0) return NotANumber(ax == kInfinity ? x : y);
  if (ay == kInfinity || x == 0) return x;
  bool odd = false;
  return FlipSign(RemainderOfSizes(ax, ay, odd), x);
}
double RemainderNearest(double x, double y) {
  const double ax = Abs(x), ay = Abs(y);
  if (x != x || y != y) return x + y;
  if (ax == kInfinity || y == 0) return NotANumber(ax == kInfinity ? x : y);
  if (ay == kInfinity || x == 0) return x;
  bool odd = false;
  const double rest = RemainderOfSizes(ax, ay, odd), other = ay - rest;
  const bool up = rest > other || (rest == other && odd);
  return FlipSign(up ? -other : rest, x);
}

// ---- one compiled copy for a double ----

SineCosine<double> SinCos(double x) {
  return SinCos<double>(x);
}
double Sin(double x) {
  return SinCos(x).sine;
}
double Cos(double x) {
  return SinCos(x).cosine;
}
double Tan(double x) {
  return Tan<double>(x);
}
double Asin(double x) {
  return Asin<double>(x);
}
double Atan(double x) {
  return Atan<double>(x);
}
double Exp(double x) {
  return Exp<double>(x);
}
double Log(double x) {
  return Log<double>(x);
}
double Log1p(double x) {
  return Log1p<double>(x);
}
double Sinh(double x) {
  return Sinh<double>(x);
}
double Cosh(double x) {
  return Cosh<double>(x);
}
double Asinh(double x) {
  return Asinh<double>(x);
}
double Atanh(double x) {
  return Atanh<double>(x);
}
double Atan2(double y, double x) {
  return Atan2<double>(y, x);
}
double Pow(double x, double y) {
  return Pow<double>(x, y);
}
double Hypot(double x, double y) {
  return Hypot<double>(x, y);
}

}  // namespace orvex::detail::ORVEX_LEVEL
