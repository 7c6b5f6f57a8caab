// Failure - saying something without ending the work.
#include "Failure.h"

#include <iostream>

namespace orvex::tool {

void Warn(std::string_view text) {
  std::cerr << "orvex: warning: " << text << "\n";
}

}  // namespace orvex::tool
