// DatumCheck - validation of conversion records.
#pragma once

#include <orvex/datum.h>

namespace orvex::detail {

/// The checks of DatCheckParams.
int CheckXform(const DATUMXFORM* xform, char* text, bool bThrow);

/// Whether the conversion can be computed exactly.
bool HasExactForm(const DATUMXFORM& record);

}  // namespace orvex::detail
