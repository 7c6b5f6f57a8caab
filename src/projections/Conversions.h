// Conversions - the forward and inverse of each projection, as one instruction set has them.
#pragma once

#include "points/Level.h"
#include "projections/Conversion.h"

namespace orvex::detail {

inline constexpr int kProjectionCount = 29;

/// Both null for the rows that are never dispatched: no projection, and the state plane zones.
struct ConversionRow {
  ConvertFunction* forward;
  ConvertFunction* inverse;
  ExactFormTest* hasExactForm;
};

struct ConversionTable {
  ConversionRow rows[kProjectionCount];  // by ProjType
};

namespace ORVEX_LEVEL {
extern const ConversionTable kConversions;
}

}  // namespace orvex::detail
