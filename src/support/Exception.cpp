// shr::Exception - out of line so that one type information serves library and hosts.
#include "shr/exception.h"

namespace shr {

Exception::~Exception() = default;

const char* Exception::what() const noexcept {
  return m_message.c_str();
}

}  // namespace shr
