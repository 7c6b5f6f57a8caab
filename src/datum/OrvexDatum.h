// OrvexDatum - what the sources of the datum driver share: the name under which they report, and the record dump.
#pragma once

#include <orvex/datum.h>

namespace orvex::detail {

inline constexpr const char kDatumSource[] = "OrvexDatum";

/// Writes a conversion record to the log. `record` is what the log shows as its address.
void DumpXform(const DATUMXFORM* record);

}  // namespace orvex::detail
