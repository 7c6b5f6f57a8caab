// MessageTable - the message texts compiled in, for libraries that have no string resources.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace orvex::platform {

inline bool CopyTableMessage(int id, char* buffer, int capacity) {
  static constexpr struct {
    int id;
    const char* text;
  } kMessages[] = {
#define ORVEX_MESSAGE(messageId, messageText) {messageId, messageText},
#include "messages.def"
#undef ORVEX_MESSAGE
  };
  for (const auto& message : kMessages) {
    if (message.id != id || capacity < 1) continue;
    const std::size_t length = std::min(std::strlen(message.text), static_cast<std::size_t>(capacity - 1));
    std::memcpy(buffer, message.text, length);
    buffer[length] = '\0';
    return true;
  }
  return false;
}

}  // namespace orvex::platform
