// SharedHandle - the owner of a handle in the wrapper classes.
#pragma once

#include <memory>

#include "support/Errors.h"

namespace orvex::detail {

/// Shares a handle that `release` frees, also when there is no memory left to share it, which throws. Null gives null.
inline std::shared_ptr<void> ShareHandle(void* handle, void (*release)(void*), const char* source, int line) {
  if (handle == nullptr) return nullptr;
  return WithinMemory(source, line, [&] { return std::shared_ptr<void>(handle, release); });
}

}  // namespace orvex::detail
