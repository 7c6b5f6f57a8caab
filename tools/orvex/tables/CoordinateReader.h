// CoordinateReader - the coordinates of a table out of its fields, and what is wrong with those that are none.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tables/Coordinate.h"

namespace orvex::tool {

class CoordinateReader {
 public:
  CoordinateReader(Kind kind, Commas commas) : m_kind(kind), m_commas(commas) {}

  /// Reads a field, quotes and blanks included; axis 0 is longitude or x. False for what is no coordinate of the axis.
  bool Read(std::string_view field, std::size_t axis, double& value) const;

  /// What is wrong with a field that Read refuses.
  std::string Fault(std::string_view field, std::size_t axis) const;

  /// True when a hemisphere letter says that the field belongs to the other axis.
  bool BelongsElsewhere(std::string_view field, std::size_t axis) const;

 private:
  std::optional<Angle> ReadAs(std::string_view text, Blanks blanks) const;
  std::optional<Angle> ReadField(std::string_view field) const;

  Kind m_kind;
  Commas m_commas;
};

}  // namespace orvex::tool
