// JsonNesting - how deep a JSON text nests.
#pragma once

#include <string_view>

namespace orvex::tool {

/// Throws Failure for a text whose arrays and objects nest so deep that the recursion of its readers and writers would
/// run out of stack.
void RefuseDeepNesting(std::string_view text);

}  // namespace orvex::tool
