/// \file
/// Where the grid files of NADCON and NTv2 datums are looked for.
#pragma once

#include <orvex/export.h>

namespace orvex {

/// \addtogroup grids
/// \{

/// Names a directory in which grid files are looked for before the one beside the program; null or "" names none again.
/// It counts for the whole process, for conversions that begin after the call; a grid that was loaded is forgotten.
/// File names are taken as published as well: conus.las for conus.LAS, ntv2_0.gsb for NTV2_0.GSB.
/// \param directory  with or without a separator at its end; copied
/// \returns false when there is no memory for it; the directory is then as it was.
ORVEX_API bool ORVEX_CALL DatSetGridDirectory(const char* directory);

/// \}

}  // namespace orvex
