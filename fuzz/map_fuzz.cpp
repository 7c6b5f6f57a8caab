// Fuzzer of maps: shapes and points of any kind on any projection make a picture or the tool's own failure.
#include <algorithm>
#include <cmath>
#include <iterator>

#include <shr/exception.h>

#include "Failure.h"
#include "Files.h"
#include "Input.h"
#include "commands/ProjectionOptions.h"
#include "maps/MapShapes.h"
#include "maps/MapSheet.h"

using namespace orvex;
using namespace orvex::tool;

namespace {

/// The command line takes no others.
bool HasOnlyNumbers(const PROJDATA& r) {
  const double values[] = {r.Scale, r.xOrg, r.yOrg, r.Lat0, r.Lon0,  r.Lat1,        r.Lat2,      r.Lat3,
                           r.Lon1,  r.Lon2, r.Lon3, r.K0,   r.Alpha, r.MajorRadius, r.Flattening};
  return std::all_of(std::begin(values), std::end(values), [](double value) { return std::isfinite(value); });
}

/// A projection about its usual place, or any record that passes the checks.
bool ReadProjection(fuzz::Input& in, PROJDATA& record) {
  const int type = in.Below(40);
  if (type >= 29) {
    record = fuzz::ReadRecord(in);
    return HasOnlyNumbers(record) && ProjCheckParams(&record, nullptr, false) == 0;
  }
  record.Type = static_cast<ProjType>(type);
  record.Ellipsoid = ET_WGS_84;
  record.Lon0 = in.Raw<std::int8_t>() * 1.5;
  record.Lat0 = in.Raw<std::int8_t>() / 2.0;
  record.Lat1 = 20;
  record.Lat2 = 50;
  record.Lon2 = 30;
  return ProjCheckParams(&record, nullptr, false) == 0;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Silence();
  fuzz::Input in(data, size);
  PROJDATA record{};
  if (!ReadProjection(in, record)) return 0;
  MapOptions options;
  const int flags = in.Byte();
  options.width = 200;
  options.graticule = (flags & 1) != 0 ? 0 : 45;
  options.tissot = (flags & 14) == 2 ? 60 : 0;
  options.distortion = (flags & 14) == 4 ? "area" : "";
  options.grid = (flags & 14) == 6 ? 5e6 : 0;
  options.bounds = (flags & 14) == 8 ? "-30,20,60,70" : "";
  const bool points = (flags & 48) == 48, json = (flags & 64) != 0;
  const std::string text = in.Rest();
  const std::string file = fuzz::Files().Write(points ? "in.csv" : json ? "in.geojson" : "in.txt", text);
  options.land = fuzz::Files().Write("none.txt", "line 2\n1 1\n2 2\n");
  (points ? options.points : (flags & 128) != 0 ? options.overlay : options.land) = file;
  try {
    const std::string picture = DrawMap(record, options);
    fuzz::Expect(picture.find("</svg>") != std::string::npos, "a picture ends");
    fuzz::Expect(picture.find("nan") == std::string::npos || text.find("nan") != std::string::npos, "numbers in it");
  } catch (const Failure&) {
  } catch (const shr::Exception&) {
  }
  return 0;
}
