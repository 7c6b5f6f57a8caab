// Fuzzer of GeoJSON: any text is converted or refused, and what comes out is read again.
#include "Failure.h"
#include "Files.h"
#include "Input.h"
#include "geojson/GeoJson.h"
#include "maps/MapGeoJson.h"

using namespace orvex;
using namespace orvex::tool;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Silence();
  fuzz::Input in(data, size);
  TableOptions options;
  options.quiet = true;
  options.geoJson = true;
  options.format.decimals = in.Below(18) - 1;
  options.sourceCode = in.Bit() ? 4326 : 0;
  options.resultCode = in.Bit() ? 32633 : 0;
  options.file = fuzz::Files().Write("in.geojson", in.Rest());
  options.output = fuzz::Files() / "out.geojson";
  const auto convert = [](std::vector<PROJPOINT>& points) {
    for (PROJPOINT& p : points) p = p.x > 90 ? PROJPOINT{DBL_MAX, DBL_MAX} : PROJPOINT{p.y * 1000, p.x};
  };
  bool converted = false;
  try {
    ConvertGeoJson(options, Kind::Geographic, Kind::Projected, [&] { return convert; });
    converted = true;
  } catch (const Failure&) {
  }
  if (converted) {
    options.file = options.output;
    options.output = fuzz::Files() / "again.geojson";
    options.sourceCode = 0;
    try {
      ConvertGeoJson(options, Kind::Projected, Kind::Projected, [] { return [](std::vector<PROJPOINT>&) {}; });
    } catch (const Failure& e) {
      fuzz::Expect(false, e.what());
    }
  }
  try {
    ReadGeoJson(fuzz::Files() / "in.geojson");
  } catch (const Failure&) {
  }
  return 0;
}
