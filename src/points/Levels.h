// Levels - which of the instruction sets that the point core is compiled for runs on this processor.
#pragma once

namespace orvex::detail {

/// In rising order. `Base` is what every processor of the target has.
enum class Level { Base, Avx2, Avx512 };

/// The level in use: the highest that both the library and the processor have, chosen when the library is loaded. The
/// environment variable ORVEX_LEVEL (base, avx2 or avx512) chooses a lower one.
Level ActiveLevel() noexcept;
/// The highest level that could be in use here.
Level HighestLevel() noexcept;
/// Chooses another level from here on, for tests; one that is not to be had becomes the highest there is.
void SetLevel(Level level) noexcept;

/// Declares a constant that every level has, and picks the active level's own: in namespace orvex::detail,
/// ORVEX_AT_EVERY_LEVEL(ConversionTable, kConversions) and AtLevel<ORVEX_LEVELS_OF(kConversions)>().
#define ORVEX_DECLARE_AT(level, type, name) \
  namespace level {                         \
  extern const type name;                   \
  }
#if defined(ORVEX_AVX512_LEVEL)
#define ORVEX_AT_EVERY_LEVEL(type, name) \
  ORVEX_DECLARE_AT(base, type, name) ORVEX_DECLARE_AT(avx2, type, name) ORVEX_DECLARE_AT(avx512, type, name)
#define ORVEX_LEVELS_OF(name) &base::name, &avx2::name, &avx512::name
#elif defined(ORVEX_X86_LEVELS)
#define ORVEX_AT_EVERY_LEVEL(type, name) ORVEX_DECLARE_AT(base, type, name) ORVEX_DECLARE_AT(avx2, type, name)
#define ORVEX_LEVELS_OF(name) &base::name, &avx2::name, &avx2::name
#else
#define ORVEX_AT_EVERY_LEVEL(type, name) ORVEX_DECLARE_AT(base, type, name)
#define ORVEX_LEVELS_OF(name) &base::name, &base::name, &base::name
#endif
template <auto kBase, auto kAvx2, auto kAvx512>
auto& AtLevel() noexcept {
  const Level level = ActiveLevel();
  return *(level == Level::Base ? kBase : level == Level::Avx2 ? kAvx2 : kAvx512);
}

/// The same for a call of a number of points: for a point or two, wide vectors would be filled up with copies of them
/// and cost more than the narrow ones, which give the same bits.
template <auto kBase, auto kAvx2, auto kAvx512>
auto& AtLevelFor(int count) noexcept {
  constexpr int kFewPoints = 2;
  return count <= kFewPoints ? *kBase : AtLevel<kBase, kAvx2, kAvx512>();
}

}  // namespace orvex::detail
