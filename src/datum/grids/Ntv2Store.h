// Ntv2Store - the grid file of the NTv2 step.
#pragma once

namespace orvex::detail {

/// Names the grid file to use instead of the one beside the executable and forgets the loaded grid; null goes back.
void SetNtv2Path(const char* path);

}  // namespace orvex::detail
