// Dump - projection records in the debug log.
#pragma once

#include "orvex/projection.h"

namespace orvex::detail {

/// Writes every field of a record to the log; does nothing when the log is off.
void DumpProjData(const PROJDATA* data);

}  // namespace orvex::detail
