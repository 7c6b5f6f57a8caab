// GridDirectory - finds grid files where the host said that they are, else beside the program.
#pragma once

#include <initializer_list>
#include <string>

namespace orvex::detail {

/// Path of the first of the names that is there, in the host's directory before the program's; when none is, the path
/// of the first name beside the program.
std::string FindGridFile(std::initializer_list<std::string> names);

}  // namespace orvex::detail
