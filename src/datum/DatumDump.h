// DatumDump - conversion records in the debug log.
#pragma once

#include <orvex/datum.h>

namespace orvex::detail {

/// Writes a conversion record to the log. `record` is what the log shows as its address.
void DumpXform(const DATUMXFORM* record);

}  // namespace orvex::detail
