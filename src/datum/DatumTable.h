// DatumTable - rows of the built-in datums and the way to them by number.
#pragma once

#include <cstddef>
#include <span>

#include <orvex/datum.h>

namespace orvex::detail {

/// Ellipsoid of the grid and regression rows: none, outside the ellipsoid table.
inline constexpr int kNoEllipsoid = 56;

/// Longest datum name with its terminator.
inline constexpr std::size_t kDatumNameCapacity = 58;

/// One built-in datum. Shifts in metres, rotations in arcseconds, k in parts per million, PMShift in degrees; posc 0 =
/// none.
struct DatumRow {
  int number;
  int posc;
  const char* name;
  DatumMethod method;
  int ellipsoid;
  double dx = 0, dy = 0, dz = 0;
  double rx = 0, ry = 0, rz = 0;
  double k = 0;
  double pmShift = 0;
};

/// All rows in catalogue order, the order of every search; not sorted by number.
std::span<const DatumRow> Datums();

/// The row of a datum number; null when there is none.
const DatumRow* FindDatum(int number);

}  // namespace orvex::detail
