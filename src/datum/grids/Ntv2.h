// Ntv2 - shifts by the NTv2 grid file "NTV2_0.GSB" beside the host's executable.
#pragma once

#include <memory>

#include <orvex/datum.h>

namespace orvex::detail {

class Ntv2Grid;

enum class Ntv2Direction { Forward, Inverse };

/// The grid of the process. Returns 0, or 5 when the file cannot be opened, 6 or 7 when its content is not to be
/// trusted, another number for any other failure. Raises nothing: the caller turns the code into the message.
int LoadNtv2(std::shared_ptr<const Ntv2Grid>& grid);

/// Shifts n points (degrees) in place, from the grid's own datum to WGS 84 or back; points that hold DBL_MAX stay as
/// they are. Returns as above.
int ConvertNtv2(DATUMPOINT* pts, int n, Ntv2Direction direction);

/// Names the grid file to use instead of the one beside the executable and forgets the loaded grid; null goes back.
void SetNtv2Path(const char* path);

/// Forgets the loaded grid: the file may have to be looked for elsewhere.
void ForgetNtv2();

}  // namespace orvex::detail
