// LevelTable - compiled once for each instruction set.
#include "LevelTable.h"

#include "points/Elementary.h"

namespace orvex::detail::ORVEX_LEVEL {

using points_test::Function;

namespace {

template <class T, class Operation>
void RunOver(const double* x, const double* y, double* result, int count, Operation operation) {
  for (int i = 0; i < count; i += kLaneCount<T>) {
    Store(result + i, operation(Load<T>(x + i), Load<T>(y + i)));
  }
}

// The widths that the machine has registers for; last the one that the library uses.
#define WIDTH(T, name, call)                                                                              \
  {                                                                                                       \
    name, [](const double* xs, const double* ys, double* result, int count) {                             \
      RunOver<T>(xs, ys, result, count, []([[maybe_unused]] T x, [[maybe_unused]] T y) { return call; }); \
    }                                                                                                     \
  }
#if defined(__AVX512F__)
#define WIDTHS(call)                                                                                            \
  WIDTH(double, "1", call), WIDTH(Lanes<2>, "2", call), WIDTH(Lanes<4>, "4", call), WIDTH(Lanes<8>, "8", call), \
      WIDTH(Pair<Lanes<8>>, "2 x 8", call), {                                                                   \
    nullptr, nullptr                                                                                            \
  }
#elif defined(__AVX2__)
#define WIDTHS(call)                                                                \
  WIDTH(double, "1", call), WIDTH(Lanes<2>, "2", call), WIDTH(Lanes<4>, "4", call), \
      WIDTH(Pair<Lanes<4>>, "2 x 4", call), {                                       \
    nullptr, nullptr                                                                \
  }
#else
#define WIDTHS(call)                                                                            \
  WIDTH(double, "1", call), WIDTH(Lanes<2>, "2", call), WIDTH(Pair<Lanes<2>>, "2 x 2", call), { \
    nullptr, nullptr                                                                            \
  }
#endif
#define ONE(function)     \
  {                       \
#function, false, {   \
      WIDTHS(function(x)) \
    }                     \
  }
#define TWO(function)        \
  {                          \
#function, true, {       \
      WIDTHS(function(x, y)) \
    }                        \
  }

/// Both, added, for the benchmark.
template <class T>
ORVEX_INLINE T SinCosSum(T x) {
  const SineCosine<T> both = SinCos(x);
  return both.sine + both.cosine;
}

/// x where it is finite and less than y or equal to it, else y; not a number where the words for answers disagree.
template <class T>
ORVEX_INLINE T Answers(T x, T y) {
  const MaskOf<T> chosen = IsFinite(x) & ((x < y) | !(x != y));
  T one = y, swapped = x, other = y;
  bool any = false, all = true;
  for (int i = 0; i < kLaneCount<T>; ++i) {
    if (Get(chosen, i)) Put(one, i, Get(x, i));
    any |= Get(chosen, i);
    all &= Get(chosen, i);
  }
  SwapWhere(chosen, swapped, other);
  const bool agree = Any(chosen) == any && All(chosen) == all && None(chosen) != any && All(Yes<T>()) && None(No<T>());
  const T selected = Select(chosen, x, y), added = Where(chosen, x) + Where(!chosen, y);
  const MaskOf<T> same = (selected == one) & (other == one) & (added == one);
  return Select(same, agree ? one : T(__builtin_nan("")), T(__builtin_nan("")));
}

const Function kFunctions[] = {
    ONE(Sin),
    ONE(Cos),
    ONE(Tan),
    ONE(Asin),
    ONE(Atan),
    TWO(Atan2),
    ONE(Exp),
    ONE(Log),
    ONE(Log1p),
    TWO(Pow),
    ONE(Sinh),
    ONE(Cosh),
    ONE(Asinh),
    ONE(Atanh),
    TWO(Hypot),
    ONE(Sqrt),
    ONE(Nearest),
    ONE(Floor),
    ONE(ToFloat),
    {"Answers", true, {WIDTHS(Answers(x, y))}},
    {"SinCos", false, {WIDTHS(SinCosSum(x))}},
};

}  // namespace

const points_test::Level& FunctionsOfLevel() {
#define NAME_OF(level) #level
#define NAME(level) NAME_OF(level)
  static const points_test::Level level{NAME(ORVEX_LEVEL), kFunctions, sizeof kFunctions / sizeof *kFunctions};
  return level;
}

}  // namespace orvex::detail::ORVEX_LEVEL

namespace points_test {

const Level& LEVEL_FUNCTION() {
  return orvex::detail::ORVEX_LEVEL::FunctionsOfLevel();
}

}  // namespace points_test
