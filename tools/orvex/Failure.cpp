// Failure - saying something without ending the work.
#include "Failure.h"

#include <cstdio>

namespace orvex::tool {

void Warn(std::string_view text) {
  // Not a stream of C++: those would be most of a program that needs nothing else of them.
  std::fprintf(stderr, "orvex: warning: %.*s\n", static_cast<int>(text.size()), text.data());
}

}  // namespace orvex::tool
