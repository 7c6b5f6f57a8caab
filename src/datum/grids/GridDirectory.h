// GridDirectory - finds grid files where the host said that they are, else beside the program.
#pragma once

#include <initializer_list>
#include <string>

namespace orvex::detail {

/// Path of the first of the names that is there, in the host's directory before the program's; when none is, the path
/// of the first name beside the program. Empty when none is there and nobody can tell where the program is.
std::string FindGridFile(std::initializer_list<std::string> names);

/// Keep all other threads out of the directory's name while the process forks.
void HoldGridDirectory();
void ReleaseGridDirectory();

}  // namespace orvex::detail
