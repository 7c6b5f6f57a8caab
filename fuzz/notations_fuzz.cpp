// Fuzzer of what the tool reads beside tables: angles, numbers, grid references, names and codes of coordinate systems.
#include "Failure.h"
#include "Input.h"
#include "commands/Names.h"
#include "systems/FindSystem.h"
#include "systems/SystemConverter.h"
#include "tables/Coordinate.h"
#include "zones/Mgrs.h"

using namespace orvex;
using namespace orvex::tool;
using fuzz::Expect;

namespace {

void ReadAngles(const std::string& text, double value, const Format& format) {
  if (const auto number = ParseNumber(text)) Expect(std::isfinite(*number), "a number is finite");
  for (const Blanks blanks : {Blanks::WithLetterOnly, Blanks::Allowed}) {
    if (const auto angle = ReadAngle(text, blanks)) Expect(std::isfinite(angle->degrees), "an angle is finite");
  }
  ParseTwoPlaces(text);
  WithoutDecimalComma(text);
  if (!(std::fabs(value) <= 90)) return;
  std::string written;
  AppendCoordinate(written, value, Kind::Geographic, true, format);
  const auto read = ParseAngle(written);
  Expect(read.has_value(), "what is written can be read");
  const double lastDigit = std::pow(10.0, -std::max(format.decimals, 0));
  if (format.decimals >= 0) Expect(std::fabs(*read - value) <= lastDigit, "as the same angle");
}

void ReadReference(const std::string& text) {
  const auto place = ParseMgrs(text);
  if (!place) return;
  Expect(std::isfinite(place->point.x) && std::isfinite(place->point.y), "a reference is a place");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input in(data, size);
  Format format;
  format.decimals = in.Below(16) - 1;
  format.dms = in.Bit();
  const double value = in.Number();
  const bool systems = in.Below(32) == 7;  // a search through thousands; not for each short input
  const PROJPOINT point = in.Point();
  const std::string text = in.Rest();
  ReadAngles(text, value, format);
  ReadReference(text);
  if (std::isfinite(point.x) && std::isfinite(point.y) && std::isfinite(value)) {
    const int digits = std::clamp(format.decimals, 0, kMostMgrsDigits), zone = 1 + 4 * digits;
    FormatMgrs({format.dms ? -zone : zone, point}, value, digits);
  }
  try {
    static const std::vector<std::string> kNames{"Mercator", "Lambert Conformal Conic", "World Geodetic System 1984"};
    Expect(FindName(kNames, text, "name") < kNames.size(), "a name that is found");
  } catch (const Failure&) {
  }
  if (!systems) return 0;
  try {
    SystemConverter converter(FindSystem(text));
    std::vector<PROJPOINT> points{point, {point.y, value}};
    converter.FromGeographic(points);
    converter.ToGeographic(points);
  } catch (const Failure&) {
  }
  return 0;
}
