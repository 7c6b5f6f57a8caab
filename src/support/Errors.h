// Errors - the only two ways to raise one. Sources and lines that a failure reports are interface values, not __LINE__.
#pragma once

#include <cstddef>

namespace orvex::detail {

/// Message ids used by name; the texts stand in resources/messages.def.
enum MessageId : int {
  kMsgInternalInconsistency = 20200,
  kMsgOutOfMemory = 20201,
  kMsgBadParameter = 20205,
  kMsgNtv2Open = 20280,
  kMsgNtv2Corrupt = 20281
};

/// Longest message text with its terminator.
inline constexpr std::size_t kMessageCapacity = 255;

/// Throws shr::Exception. A null or empty text is replaced by the message of the id.
[[noreturn]] void ThrowError(const char* sourceFile, int line, int messageId, const char* text = nullptr);

/// Throws "Internal inconsistency detected".
[[noreturn]] void Assert(const char* sourceFile, int line);

/// Loads the text of a message; false when there is none.
bool LoadMessageText(int messageId, char (&text)[kMessageCapacity]);

}  // namespace orvex::detail
