// Errors - messages and the exception that carries them.
#include "support/Errors.h"

#include "platform/Platform.h"
#include "shr/exception.h"
#include "support/Log.h"

namespace orvex::detail {

void ThrowError(const char* sourceFile, int line, int messageId, const char* text) {
  char loaded[kMessageCapacity];
  if (text == nullptr || *text == '\0') {
    text = LoadMessageText(messageId, loaded) ? loaded : "Failed loading error message!";
  }
  throw shr::Exception(messageId, line, "Orvex", sourceFile, text);
}

void Assert(const char* sourceFile, int line) {
  ThrowError(sourceFile, line, kMsgInternalInconsistency);
}

bool LoadMessageText(int messageId, char (&text)[kMessageCapacity]) {
  return platform::LoadMessage(ModuleInstance(), messageId, text, static_cast<int>(sizeof text));
}

}  // namespace orvex::detail
