// Lanes - several doubles side by side, and the few words that the formulas are written in.
//
// A formula is a template over T: `double` for one point, `Lanes<N>` for N of them, `Pair<Lanes<N>>` for two vectors,
// which hides the latency of long chains. Only operations that IEEE 754 rounds in one way are used (+ - * / and the
// square root, comparisons, selection, bits of the representation), so that every width, compiler and platform gives
// the same bits. Contraction stays off (-ffp-contract=off); the caller sees to rounding to nearest and to subnormals.
//
// What takes part in a selection is computed in all lanes. An operand that must not raise an exception where it is not
// chosen is made harmless first: see OneUnless.
//
// Each instruction set compiles this once, in a namespace of its own: ORVEX_LEVEL is base, avx2 or avx512. No function
// of the standard library is used, since the linker might keep the copy of the highest level for all of them.
#pragma once

#include <cstddef>
#include <cstdint>

#if defined(__SSE2__)
#include <immintrin.h>
#endif

#include "points/Level.h"

#if defined(__clang__)  // answers of a double are joined by & and | like those of a vector
#pragma clang diagnostic ignored "-Wbitwise-instead-of-logical"
#endif
#define ORVEX_INLINE [[gnu::always_inline]] inline

namespace orvex::detail::ORVEX_LEVEL {

// ---- vectors and their answers ----

/// The compiler's own vectors; every processor has them, in pieces where it must.
template <int N>
struct VectorOf;
template <>
struct VectorOf<2> {
  typedef double Values __attribute__((vector_size(16)));
  typedef std::uint64_t Bits __attribute__((vector_size(16)));
};
template <>
struct VectorOf<4> {
  typedef double Values __attribute__((vector_size(32)));
  typedef std::uint64_t Bits __attribute__((vector_size(32)));
};
template <>
struct VectorOf<8> {
  typedef double Values __attribute__((vector_size(64)));
  typedef std::uint64_t Bits __attribute__((vector_size(64)));
};

template <int N>
struct Lanes;

/// One answer for each lane.
template <int N>
struct Mask {
  using Bits = typename VectorOf<N>::Bits;
  Bits bits;  // all ones or 0

  ORVEX_INLINE friend Mask operator&(Mask a, Mask b) { return {a.bits & b.bits}; }
  ORVEX_INLINE friend Mask operator|(Mask a, Mask b) { return {a.bits | b.bits}; }
  ORVEX_INLINE friend Mask operator!(Mask a) { return {~a.bits}; }
  ORVEX_INLINE friend Lanes<N> Select(Mask m, Lanes<N> a, Lanes<N> b) {
#if defined(__AVX__)
    if constexpr (N == 4) {
      return Lanes<N>(typename VectorOf<N>::Values(
          _mm256_blendv_pd(__m256d(b.v), __m256d(a.v), __builtin_bit_cast(__m256d, m.bits))));
    } else
#endif
    {
      return Lanes<N>::Of((m.bits & __builtin_bit_cast(Bits, a.v)) | (~m.bits & __builtin_bit_cast(Bits, b.v)));
    }
  }
  /// The value, or +0 where the answer is no.
  ORVEX_INLINE friend Lanes<N> Where(Mask m, Lanes<N> a) {
    return Lanes<N>(__builtin_bit_cast(typename VectorOf<N>::Values, m.bits & __builtin_bit_cast(Bits, a.v)));
  }
};

#if defined(__AVX512F__)
/// Eight lanes have mask registers.
template <>
struct Mask<8> {
  __mmask8 bits;

  ORVEX_INLINE friend Mask operator&(Mask a, Mask b) { return {static_cast<__mmask8>(a.bits & b.bits)}; }
  ORVEX_INLINE friend Mask operator|(Mask a, Mask b) { return {static_cast<__mmask8>(a.bits | b.bits)}; }
  ORVEX_INLINE friend Mask operator!(Mask a) { return {static_cast<__mmask8>(~a.bits)}; }
  friend Lanes<8> Select(Mask m, Lanes<8> a, Lanes<8> b);
  friend Lanes<8> Where(Mask m, Lanes<8> a);
};
#endif

/// N doubles. A double stands for the same value in every lane.
template <int N>
struct Lanes {
  using Values = typename VectorOf<N>::Values;
  Values v;

  Lanes() = default;
  ORVEX_INLINE explicit Lanes(Values values) : v(values) {}
  ORVEX_INLINE Lanes(double d) {  // in every lane
    if constexpr (N == 2) v = Values{d, d};
    if constexpr (N == 4) v = Values{d, d, d, d};
    if constexpr (N == 8) v = Values{d, d, d, d, d, d, d, d};
  }

  /// Of the representations, and of N neighbours in memory.
  ORVEX_INLINE static Lanes Of(typename VectorOf<N>::Bits bits) { return Lanes(__builtin_bit_cast(Values, bits)); }
  ORVEX_INLINE static Lanes At(const double* from) {
    Values values;
    __builtin_memcpy(&values, from, sizeof values);
    return Lanes(values);
  }

  ORVEX_INLINE friend Lanes operator+(Lanes a, Lanes b) { return Lanes(a.v + b.v); }
  ORVEX_INLINE friend Lanes operator-(Lanes a, Lanes b) { return Lanes(a.v - b.v); }
  ORVEX_INLINE friend Lanes operator*(Lanes a, Lanes b) { return Lanes(a.v * b.v); }
  ORVEX_INLINE friend Lanes operator/(Lanes a, Lanes b) { return Lanes(a.v / b.v); }
  ORVEX_INLINE friend Lanes operator-(Lanes a) { return Lanes(-a.v); }
  ORVEX_INLINE Lanes& operator+=(Lanes b) { return *this = *this + b; }
  ORVEX_INLINE Lanes& operator-=(Lanes b) { return *this = *this - b; }
  ORVEX_INLINE Lanes& operator*=(Lanes b) { return *this = *this * b; }
  ORVEX_INLINE Lanes& operator/=(Lanes b) { return *this = *this / b; }
#if defined(__AVX512F__)
#define ORVEX_COMPARE(op, predicate)                                       \
  ORVEX_INLINE friend Mask<N> operator op(Lanes a, Lanes b) {              \
    if constexpr (N == 8) {                                                \
      return {_mm512_cmp_pd_mask(__m512d(a.v), __m512d(b.v), predicate)};  \
    } else {                                                               \
      return {__builtin_bit_cast(typename VectorOf<N>::Bits, a.v op b.v)}; \
    }                                                                      \
  }
#else
#define ORVEX_COMPARE(op, predicate)                                     \
  ORVEX_INLINE friend Mask<N> operator op(Lanes a, Lanes b) {            \
    return {__builtin_bit_cast(typename VectorOf<N>::Bits, a.v op b.v)}; \
  }
#endif
  ORVEX_COMPARE(<, _CMP_LT_OS)
  ORVEX_COMPARE(<=, _CMP_LE_OS)
  ORVEX_COMPARE(>, _CMP_GT_OS)
  ORVEX_COMPARE(>=, _CMP_GE_OS)
  ORVEX_COMPARE(==, _CMP_EQ_OQ)
  ORVEX_COMPARE(!=, _CMP_NEQ_UQ)
#undef ORVEX_COMPARE
};

#if defined(__AVX512F__)
ORVEX_INLINE Lanes<8> Select(Mask<8> m, Lanes<8> a, Lanes<8> b) {
  return Lanes<8>(Lanes<8>::Values(_mm512_mask_blend_pd(m.bits, __m512d(b.v), __m512d(a.v))));
}
ORVEX_INLINE Lanes<8> Where(Mask<8> m, Lanes<8> a) {
  return Lanes<8>(Lanes<8>::Values(_mm512_maskz_mov_pd(m.bits, __m512d(a.v))));
}
#endif

ORVEX_INLINE double Select(bool m, double a, double b) {
  return m ? a : b;
}
ORVEX_INLINE double Where(bool m, double a) {
  return m ? a : 0;
}

// ---- two vectors side by side ----

template <class M, class V>
struct PairMask {
  M a, b;

  ORVEX_INLINE friend PairMask operator&(PairMask p, PairMask q) { return {p.a & q.a, p.b & q.b}; }
  ORVEX_INLINE friend PairMask operator|(PairMask p, PairMask q) { return {p.a | q.a, p.b | q.b}; }
  ORVEX_INLINE friend PairMask operator!(PairMask p) { return {!p.a, !p.b}; }
  ORVEX_INLINE friend V Select(PairMask m, V p, V q) { return {Select(m.a, p.a, q.a), Select(m.b, p.b, q.b)}; }
  ORVEX_INLINE friend V Where(PairMask m, V p) { return {Where(m.a, p.a), Where(m.b, p.b)}; }
};

/// The representations of a Pair.
template <class B>
struct PairBits {
  B a, b;

  ORVEX_INLINE friend PairBits operator+(PairBits p, PairBits q) { return {p.a + q.a, p.b + q.b}; }
  ORVEX_INLINE friend PairBits operator-(PairBits p, PairBits q) { return {p.a - q.a, p.b - q.b}; }
  ORVEX_INLINE friend PairBits operator&(PairBits p, PairBits q) { return {p.a & q.a, p.b & q.b}; }
  ORVEX_INLINE friend PairBits operator|(PairBits p, PairBits q) { return {p.a | q.a, p.b | q.b}; }
  ORVEX_INLINE friend PairBits operator^(PairBits p, PairBits q) { return {p.a ^ q.a, p.b ^ q.b}; }
  ORVEX_INLINE friend PairBits operator+(PairBits p, std::uint64_t q) { return {p.a + q, p.b + q}; }
  ORVEX_INLINE friend PairBits operator-(PairBits p, std::uint64_t q) { return {p.a - q, p.b - q}; }
  ORVEX_INLINE friend PairBits operator&(PairBits p, std::uint64_t q) { return {p.a & q, p.b & q}; }
  ORVEX_INLINE friend PairBits operator|(PairBits p, std::uint64_t q) { return {p.a | q, p.b | q}; }
  ORVEX_INLINE friend PairBits operator^(PairBits p, std::uint64_t q) { return {p.a ^ q, p.b ^ q}; }
  ORVEX_INLINE friend PairBits operator<<(PairBits p, int by) { return {p.a << by, p.b << by}; }
  ORVEX_INLINE friend PairBits operator>>(PairBits p, int by) { return {p.a >> by, p.b >> by}; }
};

template <class V>
struct Pair;
template <class V>
struct HalfMaskOf;
template <int N>
struct HalfMaskOf<Lanes<N>> {
  using Type = Mask<N>;
};

template <class V>
struct Pair {
  using Answer = PairMask<typename HalfMaskOf<V>::Type, Pair>;
  V a, b;

  Pair() = default;
  ORVEX_INLINE Pair(V p, V q) : a(p), b(q) {}
  ORVEX_INLINE Pair(double every) : a(every), b(every) {}

  template <class B>
  ORVEX_INLINE static Pair Of(PairBits<B> bits) {
    return {V::Of(bits.a), V::Of(bits.b)};
  }
  ORVEX_INLINE static Pair At(const double* from) { return {V::At(from), V::At(from + sizeof(V) / sizeof *from)}; }

  ORVEX_INLINE friend Pair operator+(Pair p, Pair q) { return {p.a + q.a, p.b + q.b}; }
  ORVEX_INLINE friend Pair operator-(Pair p, Pair q) { return {p.a - q.a, p.b - q.b}; }
  ORVEX_INLINE friend Pair operator*(Pair p, Pair q) { return {p.a * q.a, p.b * q.b}; }
  ORVEX_INLINE friend Pair operator/(Pair p, Pair q) { return {p.a / q.a, p.b / q.b}; }
  ORVEX_INLINE friend Pair operator-(Pair p) { return {-p.a, -p.b}; }
  ORVEX_INLINE Pair& operator+=(Pair q) { return *this = *this + q; }
  ORVEX_INLINE Pair& operator-=(Pair q) { return *this = *this - q; }
  ORVEX_INLINE Pair& operator*=(Pair q) { return *this = *this * q; }
  ORVEX_INLINE Pair& operator/=(Pair q) { return *this = *this / q; }
  ORVEX_INLINE friend Answer operator<(Pair p, Pair q) { return {p.a < q.a, p.b < q.b}; }
  ORVEX_INLINE friend Answer operator<=(Pair p, Pair q) { return {p.a <= q.a, p.b <= q.b}; }
  ORVEX_INLINE friend Answer operator>(Pair p, Pair q) { return {p.a > q.a, p.b > q.b}; }
  ORVEX_INLINE friend Answer operator>=(Pair p, Pair q) { return {p.a >= q.a, p.b >= q.b}; }
  ORVEX_INLINE friend Answer operator==(Pair p, Pair q) { return {p.a == q.a, p.b == q.b}; }
  ORVEX_INLINE friend Answer operator!=(Pair p, Pair q) { return {p.a != q.a, p.b != q.b}; }
};

// ---- types that go with T ----

template <class T>
struct LaneTraits;
template <>
struct LaneTraits<double> {
  static constexpr int kCount = 1;
  using Answer = bool;
  using Bits = std::uint64_t;
};
template <int N>
struct LaneTraits<Lanes<N>> {
  static constexpr int kCount = N;
  using Answer = Mask<N>;
  using Bits = typename VectorOf<N>::Bits;
};
template <class V>
struct LaneTraits<Pair<V>> {
  static constexpr int kCount = 2 * LaneTraits<V>::kCount;
  using Answer = typename Pair<V>::Answer;
  using Bits = PairBits<typename LaneTraits<V>::Bits>;
};
template <class T>
inline constexpr int kLaneCount = LaneTraits<T>::kCount;
template <class T>
using MaskOf = typename LaneTraits<T>::Answer;
template <class T>
using BitsOf = typename LaneTraits<T>::Bits;

/// T where it is not to be deduced, so that a double may stand for every lane.
template <class T>
struct SameAs {
  using Type = T;
};
template <class T>
using Same = typename SameAs<T>::Type;

/// The numbers of this instruction set.
template <int N>
struct RealOf {
  using Type = Pair<Lanes<N>>;
};
template <>
struct RealOf<2> {
  using Type = Lanes<2>;
};
#define ORVEX_WIDTH_base 2
#define ORVEX_WIDTH_avx2 4
#define ORVEX_WIDTH_avx512 8
#define ORVEX_JOIN(a, b) a##b
#define ORVEX_WIDTH(level) ORVEX_JOIN(ORVEX_WIDTH_, level)
using Real = RealOf<ORVEX_WIDTH(ORVEX_LEVEL)>::Type;

// ---- answers ----

template <class T>
ORVEX_INLINE MaskOf<T> No() {
  return MaskOf<T>{};
}
template <class T>
ORVEX_INLINE MaskOf<T> Yes() {
  return !No<T>();
}
ORVEX_INLINE bool Any(bool m) {
  return m;
}
ORVEX_INLINE bool All(bool m) {
  return m;
}
#if defined(__AVX512F__)
ORVEX_INLINE bool Any(Mask<8> m) {
  return m.bits != 0;
}
ORVEX_INLINE bool All(Mask<8> m) {
  return m.bits == 0xFF;
}
#endif
#if defined(__AVX__)
ORVEX_INLINE bool Any(Mask<4> m) {
  return _mm256_movemask_pd(__builtin_bit_cast(__m256d, m.bits)) != 0;
}
ORVEX_INLINE bool All(Mask<4> m) {
  return _mm256_movemask_pd(__builtin_bit_cast(__m256d, m.bits)) == 0xF;
}
#endif
#if defined(__SSE2__)
ORVEX_INLINE bool Any(Mask<2> m) {
  return _mm_movemask_pd(__builtin_bit_cast(__m128d, m.bits)) != 0;
}
ORVEX_INLINE bool All(Mask<2> m) {
  return _mm_movemask_pd(__builtin_bit_cast(__m128d, m.bits)) == 0x3;
}
#endif
template <int N>
ORVEX_INLINE bool Any(Mask<N> m) {
  std::uint64_t any = 0;
  for (int i = 0; i < N; ++i) any |= m.bits[i];
  return any != 0;
}
template <int N>
ORVEX_INLINE bool All(Mask<N> m) {
  return !Any(!m);
}
template <class M, class V>
ORVEX_INLINE bool Any(PairMask<M, V> m) {
  return Any(m.a | m.b);
}
template <class M, class V>
ORVEX_INLINE bool All(PairMask<M, V> m) {
  return All(m.a & m.b);
}
template <class M>
ORVEX_INLINE bool None(M m) {
  return !Any(m);
}

// ---- single lanes, for loading and storing ----

ORVEX_INLINE double Get(double a, int) {
  return a;
}
ORVEX_INLINE bool Get(bool a, int) {
  return a;
}
ORVEX_INLINE void Put(double& a, int, double value) {
  a = value;
}
template <int N>
ORVEX_INLINE double Get(const Lanes<N>& a, int i) {
  return a.v[i];
}
template <int N>
ORVEX_INLINE bool Get(const Mask<N>& a, int i) {
#if defined(__AVX512F__)
  if constexpr (N == 8) {
    return (a.bits >> i & 1) != 0;
  } else
#endif
  {
    return a.bits[i] != 0;
  }
}
template <int N>
ORVEX_INLINE void Put(Lanes<N>& a, int i, double value) {
  a.v[i] = value;
}
template <class V>
ORVEX_INLINE double Get(const Pair<V>& p, int i) {
  constexpr int kHalf = kLaneCount<V>;
  return i < kHalf ? Get(p.a, i) : Get(p.b, i - kHalf);
}
template <class M, class V>
ORVEX_INLINE bool Get(const PairMask<M, V>& m, int i) {
  constexpr int kHalf = kLaneCount<V> / 2;
  return i < kHalf ? Get(m.a, i) : Get(m.b, i - kHalf);
}
template <class V>
ORVEX_INLINE void Put(Pair<V>& p, int i, double value) {
  if (i < kLaneCount<V>) {
    Put(p.a, i, value);
  } else {
    Put(p.b, i - kLaneCount<V>, value);
  }
}

// ---- neighbours in memory ----

template <class T>
ORVEX_INLINE T Load(const double* from) {
  if constexpr (kLaneCount<T> == 1) {
    return *from;
  } else {
    return T::At(from);  // a vector at a time: a Pair as a whole would go by way of the stack
  }
}
ORVEX_INLINE void Store(double* to, double a) {
  *to = a;
}
template <int N>
ORVEX_INLINE void Store(double* to, Lanes<N> a) {
  __builtin_memcpy(to, &a.v, sizeof a.v);
}
template <class V>
ORVEX_INLINE void Store(double* to, Pair<V> p) {
  Store(to, p.a);
  Store(to + kLaneCount<V>, p.b);
}

// ---- representations ----

inline constexpr std::uint64_t kSignBit = 0x8000000000000000, kExponentBits = 0x7ff0000000000000;

ORVEX_INLINE std::uint64_t ToBits(double a) {
  return __builtin_bit_cast(std::uint64_t, a);
}
template <int N>
ORVEX_INLINE BitsOf<Lanes<N>> ToBits(Lanes<N> a) {
  return __builtin_bit_cast(BitsOf<Lanes<N>>, a.v);
}
template <class V>
ORVEX_INLINE BitsOf<Pair<V>> ToBits(Pair<V> p) {
  return {ToBits(p.a), ToBits(p.b)};
}
template <class T>
ORVEX_INLINE T FromBits(BitsOf<T> bits) {
  if constexpr (kLaneCount<T> == 1) {
    return __builtin_bit_cast(T, bits);
  } else {
    return T::Of(bits);
  }
}

template <int N>
ORVEX_INLINE Mask<N> OddOf(Lanes<N>, BitsOf<Lanes<N>> bits) {
#if defined(__AVX512F__)
  if constexpr (N == 8) {
    return {_mm512_test_epi64_mask(__m512i(bits), _mm512_set1_epi64(1))};
  } else
#endif
  {
    return {0 - (bits & 1)};
  }
}
template <class V>
ORVEX_INLINE MaskOf<Pair<V>> OddOf(Pair<V>, BitsOf<Pair<V>> bits) {
  return {OddOf(V{}, bits.a), OddOf(V{}, bits.b)};
}
/// Whether the last bit is set.
template <class T>
ORVEX_INLINE MaskOf<T> IsOdd(BitsOf<T> bits) {
  if constexpr (kLaneCount<T> == 1) {
    return (bits & 1) != 0;
  } else {
    return OddOf(T{}, bits);
  }
}

template <class T>
ORVEX_INLINE T Abs(T a) {
  return FromBits<T>(ToBits(a) & ~kSignBit);
}
/// The magnitude of the one with the sign of the other.
template <class T>
ORVEX_INLINE T CopySign(T magnitude, Same<T> sign) {
  return FromBits<T>((ToBits(magnitude) & ~kSignBit) | (ToBits(sign) & kSignBit));
}
/// The value, negated where `sign` has a minus.
template <class T>
ORVEX_INLINE T FlipSign(T value, Same<T> sign) {
  return FromBits<T>(ToBits(value) ^ (ToBits(sign) & kSignBit));
}
/// Neither infinite nor not a number; raises nothing.
ORVEX_INLINE bool IsFinite(double a) {
  return (ToBits(a) & kExponentBits) != kExponentBits;
}
template <class T>
ORVEX_INLINE MaskOf<T> IsFinite(T a) {
  // Without the bits of a fraction there is no signalling number, and the quiet comparison raises nothing.
  return FromBits<T>(ToBits(a) & kExponentBits) != T(__builtin_inf());
}
/// Also of an infinity.
template <class T>
ORVEX_INLINE MaskOf<T> IsNumber(T a) {
  return a == a;  // NOLINT(misc-redundant-expression): what is no number differs from itself
}
/// What C's functions give where there is no answer: computed, so that the exception is raised that they raise.
ORVEX_INLINE double NotANumber(double a) {
  return (a - a) / (a - a);  // NOLINT(misc-redundant-expression): 0 / 0, or no number already
}

// ---- exact operations, and the square root ----

ORVEX_INLINE double Sqrt(double a) {
#if defined(__SSE2__)  // the compiler's own calls the runtime for what is negative
  return _mm_cvtsd_f64(_mm_sqrt_sd(_mm_set_sd(a), _mm_set_sd(a)));
#else
  return __builtin_sqrt(a);
#endif
}
template <int N>
ORVEX_INLINE Lanes<N> Sqrt(Lanes<N> a) {
#if defined(__AVX512F__)
  if constexpr (N == 8) {
    return Lanes<N>(typename Lanes<N>::Values(_mm512_maskz_sqrt_pd(0xFF, __m512d(a.v))));
  } else
#endif
#if defined(__AVX__)
      if constexpr (N == 4) {
    return Lanes<N>(typename Lanes<N>::Values(_mm256_sqrt_pd(__m256d(a.v))));
  } else
#endif
#if defined(__SSE2__)
      if constexpr (N == 2) {
    return Lanes<N>(typename Lanes<N>::Values(_mm_sqrt_pd(__m128d(a.v))));
  } else
#endif
  {
    for (int i = 0; i < N; ++i) a.v[i] = Sqrt(a.v[i]);
    return a;
  }
}
template <class V>
ORVEX_INLINE Pair<V> Sqrt(Pair<V> p) {
  return {Sqrt(p.a), Sqrt(p.b)};
}

/// Rounded to single precision and back.
ORVEX_INLINE double ToFloat(double a) {
  return static_cast<double>(static_cast<float>(a));
}
template <int N>
ORVEX_INLINE Lanes<N> ToFloat(Lanes<N> a) {
  // By instructions or one by one: GCC 12 takes the two conversions of a vector for nothing.
  using Values [[maybe_unused]] = typename Lanes<N>::Values;
#if defined(__AVX512F__)
  if constexpr (N == 8) {
    return Lanes<N>(Values(_mm512_maskz_cvtps_pd(0xFF, _mm512_maskz_cvtpd_ps(0xFF, __m512d(a.v)))));
  } else
#endif
#if defined(__AVX__)
      if constexpr (N == 4) {
    return Lanes<N>(Values(_mm256_cvtps_pd(_mm256_cvtpd_ps(__m256d(a.v)))));
  } else
#endif
#if defined(__SSE2__)
      if constexpr (N == 2) {
    return Lanes<N>(Values(_mm_cvtps_pd(_mm_cvtpd_ps(__m128d(a.v)))));
  } else
#endif
  {
    for (int i = 0; i < N; ++i) {
      const volatile float single = static_cast<float>(a.v[i]);
      a.v[i] = static_cast<double>(single);
    }
    return a;
  }
}
template <class V>
ORVEX_INLINE Pair<V> ToFloat(Pair<V> p) {
  return {ToFloat(p.a), ToFloat(p.b)};
}

/// The nearest whole number, ties to even, exact for every double; the sign of a zero stays.
template <class T>
ORVEX_INLINE T Nearest(T a) {
  constexpr double kWhole = 0x1p52;  // every double beyond is whole
  const T size = Abs(a);
  return CopySign(Select(size < T(kWhole), (size + kWhole) - kWhole, size), a);
}
/// The greatest whole number that is not greater, exact for every double; -0 stays.
template <class T>
ORVEX_INLINE T Floor(T a) {
  const T nearest = Nearest(a);
  return CopySign(nearest - Where(nearest > a, T(1)), a);
}
/// a where it is less, else b: b where one of them is not a number. Where that is what the instruction does, it serves.
ORVEX_INLINE double Lesser(double a, double b) {
  return a < b ? a : b;
}
template <int N>
ORVEX_INLINE Lanes<N> Lesser(Lanes<N> a, Lanes<N> b) {
#if defined(__AVX512F__)
  if constexpr (N == 8) {
    return Lanes<N>(typename Lanes<N>::Values(_mm512_maskz_min_pd(0xFF, __m512d(a.v), __m512d(b.v))));
  } else
#endif
#if defined(__AVX__)
      if constexpr (N == 4) {
    return Lanes<N>(typename Lanes<N>::Values(_mm256_min_pd(__m256d(a.v), __m256d(b.v))));
  } else
#endif
#if defined(__SSE2__)
      if constexpr (N == 2) {
    return Lanes<N>(typename Lanes<N>::Values(_mm_min_pd(__m128d(a.v), __m128d(b.v))));
  } else
#endif
  {
    return Select(a < b, a, b);
  }
}
template <class V>
ORVEX_INLINE Pair<V> Lesser(Pair<V> p, Pair<V> q) {
  return {Lesser(p.a, q.a), Lesser(p.b, q.b)};
}
/// a where it is greater, else b.
ORVEX_INLINE double Greater(double a, double b) {
  return a > b ? a : b;
}
template <int N>
ORVEX_INLINE Lanes<N> Greater(Lanes<N> a, Lanes<N> b) {
#if defined(__AVX512F__)
  if constexpr (N == 8) {
    return Lanes<N>(typename Lanes<N>::Values(_mm512_maskz_max_pd(0xFF, __m512d(a.v), __m512d(b.v))));
  } else
#endif
#if defined(__AVX__)
      if constexpr (N == 4) {
    return Lanes<N>(typename Lanes<N>::Values(_mm256_max_pd(__m256d(a.v), __m256d(b.v))));
  } else
#endif
#if defined(__SSE2__)
      if constexpr (N == 2) {
    return Lanes<N>(typename Lanes<N>::Values(_mm_max_pd(__m128d(a.v), __m128d(b.v))));
  } else
#endif
  {
    return Select(a > b, a, b);
  }
}
template <class V>
ORVEX_INLINE Pair<V> Greater(Pair<V> p, Pair<V> q) {
  return {Greater(p.a, q.a), Greater(p.b, q.b)};
}

/// Exchanges a and b where the answer is yes.
template <class T>
ORVEX_INLINE void SwapWhere(MaskOf<T> m, T& a, T& b) {
  const T first = Select(m, b, a), second = Select(m, a, b);
  a = first;
  b = second;
}
#if defined(__SSE2__)  // a selection takes three steps there, or one instruction of three
template <int N>
requires(N < 8) ORVEX_INLINE void SwapWhere(Mask<N> m, Lanes<N>& a, Lanes<N>& b) {
  const BitsOf<Lanes<N>> differing = (ToBits(a) ^ ToBits(b)) & m.bits;
  a = Lanes<N>::Of(ToBits(a) ^ differing);
  b = Lanes<N>::Of(ToBits(b) ^ differing);
}
#endif
template <class M, class V>
ORVEX_INLINE void SwapWhere(PairMask<M, Pair<V>> m, Pair<V>& p, Pair<V>& q) {
  SwapWhere(m.a, p.a, q.a);
  SwapWhere(m.b, p.b, q.b);
}
template <class T>
ORVEX_INLINE T Square(T a) {
  return a * a;
}

/// A divisor in the lanes that count, 1 in the others, where it might be 0.
template <class T>
ORVEX_INLINE T OneUnless(MaskOf<T> counts, Same<T> divisor) {
  return Select(counts, divisor, T(1));
}

}  // namespace orvex::detail::ORVEX_LEVEL
