// Units - lengths in other units than the library's metres.
#pragma once

#include <span>
#include <string>

namespace orvex::tool {

struct Unit {
  const char* symbol;  ///< "us-ft"
  const char* name;
  double metres;
};

std::span<const Unit> Units();

/// Finds a unit by symbol or name; throws Failure with suggestions when there is none.
const Unit& FindUnit(const std::string& text);

}  // namespace orvex::tool
