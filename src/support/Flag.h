// Flag - one-byte flags of the hosts' records.
#pragma once

#include <cstring>

namespace orvex::detail {

/// Whether a flag is set. Hosts in other languages store any non-zero byte for true (-1 is common), which is no value
/// of bool; so the byte is looked at.
inline bool IsSet(const bool& flag) {
  unsigned char byte = 0;
  std::memcpy(&byte, &flag, 1);
  return byte != 0;
}

}  // namespace orvex::detail
