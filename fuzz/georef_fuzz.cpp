// Fuzzer of georeferencing: control points of any kind and number, fitted by every method, resized and warped.
#include <shr/exception.h>
#include <shr/image_registration.h>

#include "Input.h"

using namespace orvex;
using fuzz::Expect;

namespace {

void CheckImage(const GEOREFPOINT& given, const GEOREFPOINT& image) {
  if (given.x == DBL_MAX || given.y == DBL_MAX) {
    Expect(std::memcmp(&given, &image, sizeof given) == 0, "what holds a marker stays");
  } else {
    Expect(std::isfinite(image.x) && std::isfinite(image.y), "an image is finite or the marker");
  }
}

void Fit(const GEOREF& record, const std::vector<GEOREFPOINT>& points) {
  void* const system = RefCreateSystem(&record);
  if (system == nullptr) return;
  std::vector<GEOREFPOINT> images = points;
  if (RefForward(system, images.data(), static_cast<int>(images.size()))) {
    for (std::size_t i = 0; i < points.size(); ++i) CheckImage(points[i], images[i]);
    GEOREFPOINT alone = points.back();
    RefForward(system, &alone, 1);
    Expect(std::memcmp(&alone, &images.back(), sizeof alone) == 0, "a point alone is the same");
  }
  double total = 0;
  std::vector<double> errors(static_cast<std::size_t>(record.nControls));
  RefComputeError(system, &total, errors.data());
  RefDeleteSystem(system);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input in(data, size);
  GEOREF record{};
  const int count = in.Below(24);
  RefAllocControls(&record, count);
  record.Method = static_cast<TransformMethod>(in.Below(14));
  for (std::size_t i = 0; i < 6; ++i) fuzz::SetField(record, offsetof(GEOREF, Coeff) + 8 * i, in.Number());
  const int sizes[] = {in.Raw<std::int16_t>(), in.Raw<std::int16_t>(), in.Raw<std::int16_t>(), in.Byte()};
  shr::RPoints source, destination;
  std::vector<GEOREFPOINT> points;
  for (int i = 0; i < record.nControls; ++i) {
    const PROJPOINT from = in.Point(), to = in.Point();
    record.pSrc[i] = {from.x, from.y};
    record.pDst[i] = {to.x, to.y};
    source.Append({from.x, from.y});
    destination.Append({to.x, to.y});
    points.push_back({to.y, from.x});
  }
  points.push_back({in.Number(), in.Number()});
  Fit(record, points);
  shr::CImageRegistration warp;
  warp.Calibrate(source, destination, static_cast<shr::WarpingMethod>(in.Below(8) - 1));
  const shr::RPoint image = warp.Transform({points[0].x, points[0].y});
  static_cast<void>(image);
  if (RefResize(&record, sizes[0], sizes[1], sizes[2], sizes[3])) {
    Expect(record.Method == RM_AFFINECOEFFICIENTS && record.nControls == 4, "a resized record has its corners");
    Fit(record, points);
  }
  if (RefControlsToCoeff(&record)) Expect(record.Method == RM_AFFINECOEFFICIENTS, "coefficients are a method");
  RefFreeControls(&record);
  return 0;
}
