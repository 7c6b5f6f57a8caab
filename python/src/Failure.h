// Failure - what goes wrong in the package itself; the library's own failures are shr::Exception.
#pragma once

#include <stdexcept>
#include <string>

namespace orvex::python {

/// Becomes orvex.OrvexError with the library's id for a bad parameter.
class Failure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace orvex::python
