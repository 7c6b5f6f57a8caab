// GridBytes - numbers of grid files out of their bytes, whatever the byte order of file and machine.
#pragma once

#include <cstdint>

namespace orvex::detail {

enum class ByteOrder { Little, Big };

inline std::uint32_t LoadUint32(const unsigned char* bytes, ByteOrder order) {
  const bool little = order == ByteOrder::Little;
  const std::uint32_t b0 = bytes[little ? 0 : 3], b1 = bytes[little ? 1 : 2];
  const std::uint32_t b2 = bytes[little ? 2 : 1], b3 = bytes[little ? 3 : 0];
  return b0 | b1 << 8 | b2 << 16 | b3 << 24;
}

inline std::int32_t LoadInt32(const unsigned char* bytes, ByteOrder order) {
  return static_cast<std::int32_t>(LoadUint32(bytes, order));
}

inline float LoadFloat(const unsigned char* bytes, ByteOrder order) {
  return __builtin_bit_cast(float, LoadUint32(bytes, order));
}

inline double LoadDouble(const unsigned char* bytes, ByteOrder order) {
  const bool little = order == ByteOrder::Little;
  const std::uint64_t low = LoadUint32(bytes + (little ? 0 : 4), order);
  const std::uint64_t high = LoadUint32(bytes + (little ? 4 : 0), order);
  return __builtin_bit_cast(double, low | high << 32);
}

}  // namespace orvex::detail
