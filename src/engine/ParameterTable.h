// ParameterTable - the settable fields of PROJDATA by number, and which of them each projection uses.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "orvex/projection.h"

namespace orvex::detail {

struct ParameterRow {
  int id;
  const char* name;
  ProjDataType type;
  std::size_t offset, size;  // of the field, bytes
};

struct UsageRow {
  ProjType type;
  std::array<std::uint8_t, 20> ids;  // in display order, closed by 0
};

std::span<const ParameterRow> Parameters();
std::span<const UsageRow> ParameterUsage();

}  // namespace orvex::detail
