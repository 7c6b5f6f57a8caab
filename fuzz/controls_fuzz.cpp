// Fuzzer of the tool's control points and places: tables of any text, QGIS point files among them.
#include "Failure.h"
#include "Files.h"
#include "Input.h"
#include "maps/MapPlaces.h"
#include "tables/Controls.h"

using namespace orvex;
using namespace orvex::tool;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Silence();
  fuzz::Input in(data, size);
  static constexpr const char* kDelimiters[] = {"", ",", ";", "tab", "blank", "|"};
  const char* const delimiter = kDelimiters[in.Below(6)];
  const bool decimalComma = in.Bit();
  const std::string file = fuzz::Files().Write("in.points", in.Rest());
  try {
    const Controls controls = ReadControls(file, delimiter, decimalComma);
    const std::size_t count = controls.source.size();
    fuzz::Expect(count > 0 && controls.destination.size() == count, "points come in pairs");
    fuzz::Expect(controls.names.empty() || controls.names.size() == count, "all have a name or none");
    for (const GEOREFPOINT& p : controls.source) fuzz::Expect(std::isfinite(p.x) && std::isfinite(p.y), "finite");
  } catch (const Failure&) {
  }
  try {
    for (const Place& place : ReadPlaces(file)) {
      fuzz::Expect(std::fabs(place.at.x) <= 360 && std::fabs(place.at.y) <= 90, "a place lies on the globe");
    }
  } catch (const Failure&) {
  }
  return 0;
}
