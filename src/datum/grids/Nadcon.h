// Nadcon - shifts from NAD 27 to NAD 83 by a pair of NADCON grid files beside the host's executable.
#pragma once

#include <memory>

#include <orvex/datum.h>

namespace orvex::detail {

struct NadconCell;
enum class NadconExtent;

/// The files "<region>.LAS" and "<region>.LOS" for the time of a call. Asserts from `DtmNadcon` when one cannot be
/// opened; throws 20203 from there when reading fails, here or while points are looked for.
class NadconFiles {
 public:
  explicit NadconFiles(const char* region);
  ~NadconFiles();

  /// The cell that holds a point (degrees); false for a point outside the grid.
  bool Find(NadconExtent extent, double x, double y, NadconCell& cell) const;

 private:
  class Files;
  std::unique_ptr<Files> m_files;
};

/// Shifts n points (degrees) in place; points outside the grid and points that hold DBL_MAX stay as they are. Always
/// true.
bool ConvertNadcon(const char* region, DATUMPOINT* pts, int n);

}  // namespace orvex::detail
