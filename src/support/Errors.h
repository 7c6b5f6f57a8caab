// Errors - the only two ways to raise one. Sources and lines that a failure reports are interface values, not __LINE__.
#pragma once

#include <cstddef>
#include <new>
#include <stdexcept>

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

/// Runs a piece of work; running out of memory in it, or asking for more than a container can ever hold, becomes
/// message 20201.
template <class Work>
auto WithinMemory(const char* sourceFile, int line, Work work) -> decltype(work()) {
  try {
    return work();
  } catch (const std::bad_alloc&) {
    ThrowError(sourceFile, line, kMsgOutOfMemory);
  } catch (const std::length_error&) {
    ThrowError(sourceFile, line, kMsgOutOfMemory);
  }
}

}  // namespace orvex::detail
