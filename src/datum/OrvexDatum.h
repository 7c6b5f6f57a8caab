// OrvexDatum - what the sources of the datum driver share: the name under which they report, and the record dump.
#pragma once

#include <orvex/datum.h>

namespace orvex::detail {

inline constexpr const char kDatumSource[] = "OrvexDatum";

/// Writes a conversion record to the log. `record` is what the log shows as its address.
void DumpXform(const DATUMXFORM* record);

/// The checks of DatCheckParams.
int CheckXform(const DATUMXFORM* xform, char* text, bool bThrow);

}  // namespace orvex::detail
