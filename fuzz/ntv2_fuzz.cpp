// Fuzzer of the NTv2 reader: any bytes either load or are refused, and a grid that loads gives finite shifts.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

#include "datum/grids/Ntv2Grid.h"

using orvex::detail::Ntv2Grid;
using orvex::detail::Ntv2Status;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::istringstream in(std::string(reinterpret_cast<const char*>(data), size));
  Ntv2Grid grid;
  if (grid.Read(in) != Ntv2Status::Ok) return 0;
  Ntv2Grid::Hint hint = 0;
  for (double west = -3.25; west < 3.25; west += 0.125) {
    for (double north = -1.6; north < 1.6; north += 0.125) {
      Ntv2Grid::Position shift{};
      Ntv2Grid::Hint fresh = static_cast<Ntv2Grid::Hint>(-1);
      Ntv2Grid::Position again{};
      const bool inside = grid.ShiftAt({west, north}, hint, shift);
      if (inside != grid.ShiftAt({west, north}, fresh, again)) std::abort();
      if (inside && !(std::isfinite(shift.west) && std::isfinite(shift.north) && shift.west == again.west))
        std::abort();
    }
  }
  return 0;
}
