// Fuzzer of the NADCON reader: any pair of files shifts points or leaves them. The input: how much of it is the first
// file (0: both are the same bytes), then the bytes.
#include <shr/exception.h>

#include "Files.h"
#include "Input.h"
#include "datum/grids/GridBytes.h"

using namespace orvex;
using fuzz::Expect;

namespace {

/// Points in and about the grid that the header of a file describes.
std::vector<DATUMPOINT> PointsOf(const std::string& file) {
  std::vector<DATUMPOINT> points{{-100, 40}, {0, 0}, {-180, 90}, {179.5, -90}, {DBL_MAX, 3}};
  if (file.size() < 96) return points;
  const auto word = [&](std::size_t at) {
    return double{
        detail::LoadFloat(reinterpret_cast<const unsigned char*>(file.data()) + at, detail::ByteOrder::Little)};
  };
  for (const double step : {-1.0, -0.5, 0.0, 0.5, 1.25, 7.75}) {
    points.push_back({word(76) + step * word(80), word(84) + step * word(88)});
    points.push_back({word(76) + step * word(80), word(84)});
  }
  return points;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input in(data, size);
  const std::size_t share = in.Byte();
  const std::string all = in.Rest();
  const std::string las = share == 0 ? all : all.substr(0, all.size() * share / 256);
  const std::string los = share == 0 ? all : all.substr(las.size());
  fuzz::Files().Write("conus.las", las);
  fuzz::Files().Write("conus.los", los);
  DatSetGridDirectory(fuzz::Files().Path().c_str());
  DATUMXFORM xform{};
  xform.SrcDatum = DT_NAD_1927_CONUS_NADCON;
  xform.DestDatum = DT_NORTH_AMERICAN_DATUM_1983;
  for (const ProjAccuracy accuracy : {PA_STATED, PA_EXACT}) {
    std::vector<DATUMPOINT> points = PointsOf(las);
    void* const handle = DatCreateDatum(&xform);
    DatSetAccuracy(handle, accuracy);
    if (DatConvertDatum(handle, points.data(), static_cast<int>(points.size()))) {
      for (const DATUMPOINT& p : points) Expect(std::isfinite(p.x) && std::isfinite(p.y), "finite or the marker");
    }
    DatDeleteDatum(handle);
  }
  return 0;
}
