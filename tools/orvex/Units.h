// Units - lengths in other units than the library's metres.
#pragma once

#include <span>
#include <string>
#include <vector>

#include <orvex/projection.h>

namespace orvex::tool {

struct Unit {
  const char* symbol;  ///< "us-ft"
  const char* name;
  double metres;
};

std::span<const Unit> Units();

/// Finds a unit by symbol or name; throws Failure with suggestions when there is none.
const Unit& FindUnit(const std::string& text);

/// Metres in the unit of that name; 1 for none.
double MetresIn(const std::string& unit);

/// Map coordinates from metres to a unit and back; points that are marked stay so.
void FromMetres(std::vector<PROJPOINT>& points, double metresInUnit);
void ToMetres(std::vector<PROJPOINT>& points, double metresInUnit);

}  // namespace orvex::tool
