// Datum - changes of datum, and the grid files that some of them read.
#include <sys/stat.h>
#include <cstdio>
#include <memory>

#include <orvex/datum.h>
#include <orvex/grids.h>

#include "Call.h"

namespace orvex::web {

namespace {

constexpr char kGridDirectory[] = "/grids";  // of the module's own file system, in memory

/// Method, ellipsoid, radius, flattening, prime meridian, shifts, rotations, scale: how a datum of the caller's leads
/// to WGS 84.
DATUM2WGS84 StepOf(const double* v, bool inverse) {
  DATUM2WGS84 step{};
  step.Method = static_cast<DatumMethod>(v[0]);
  step.bInverse = inverse;
  step.Ellipsoid = static_cast<EllipsoidType>(v[1]);
  step.MajorRadius = v[2];
  step.Flattening = v[3];
  step.PMShift = v[4];
  step.dx = v[5], step.dy = v[6], step.dz = v[7];
  step.rx = v[8], step.ry = v[9], step.rz = v[10];
  step.k = v[11];
  return step;
}

void Convert(CDatumTransform& shift, DATUMPOINT* points, int count) {
  try {
    if (shift.Convert(points, count)) return;
  } catch (const shr::Exception& e) {
    if (e.Source() != "DtmNadcon") throw;
    throw tool::Failure("the NADCON grids (conus.las and conus.los, prvi.las and prvi.los) are not there");
  }
  throw tool::Failure("the datum conversion failed");
}

}  // namespace
}  // namespace orvex::web

using namespace orvex;
using namespace orvex::web;

/// A datum is a number of the catalogue, or 0 and the values of a step.
ORVEX_WEB CDatumTransform* ow_shift_create(int from, int to, const double* step1, const double* step2, int exact) {
  return Guarded<CDatumTransform*>(nullptr, [&] {
    DATUMXFORM record{};
    record.SrcDatum = static_cast<DatumType>(from);
    record.DestDatum = static_cast<DatumType>(to);
    if (from == 0) record.Step1 = StepOf(step1, false);
    if (to == 0) record.Step2 = StepOf(step2, true);
    auto shift = std::make_unique<CDatumTransform>(&record);
    if (!shift->SetAccuracy(exact != 0 ? PA_EXACT : PA_STATED)) {
      throw tool::Failure("this change of datum cannot be computed exactly; accuracy \"stated\" takes it");
    }
    return shift.release();
  });
}

ORVEX_WEB void ow_shift_delete(CDatumTransform* shift) {
  delete shift;
}

ORVEX_WEB int ow_shift_convert(CDatumTransform* shift, PROJPOINT* points, int count) {
  static_assert(sizeof(DATUMPOINT) == sizeof(PROJPOINT));
  return Guarded(kFailed, [&] {
    Convert(*shift, reinterpret_cast<DATUMPOINT*>(points), count);
    MarkUnplottable(points, count);
    return kDone;
  });
}

ORVEX_WEB int ow_grid(const char* name, const unsigned char* bytes, int count) {
  return Guarded(kFailed, [&] {
    mkdir(kGridDirectory, 0755);
    const std::string path = std::string(kGridDirectory) + "/" + name;
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "wb"), std::fclose);
    const auto size = static_cast<std::size_t>(count);
    if (!file || std::fwrite(bytes, 1, size, file.get()) != size)
      throw tool::Failure("there is no memory for the grid");
    std::fflush(file.get());
    DatSetGridDirectory(kGridDirectory);
    return kDone;
  });
}
