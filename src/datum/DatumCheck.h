// DatumCheck - validation of conversion records.
#pragma once

#include <orvex/datum.h>

namespace orvex::detail {

/// The checks of DatCheckParams.
int CheckXform(const DATUMXFORM* xform, char* text, bool bThrow);

}  // namespace orvex::detail
