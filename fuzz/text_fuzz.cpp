// Fuzzer of texts: angles read and written, names of zones, ellipsoids and datums, and their registered numbers.
#include "Input.h"

using namespace orvex;
using fuzz::Expect;

namespace {

void WriteAngle(fuzz::Input& in) {
  const double degrees = in.Number();
  const int format = in.Raw<std::int32_t>();
  const char degSep = in.Raw<char>(), minSep = in.Raw<char>(), secSep = in.Raw<char>();
  std::vector<char> text(260, 'x');  // the room that is promised to do
  DegreesToLatLon(text.data(), degrees, format, degSep, minSep, secSep);
  Expect(std::memchr(text.data(), '\0', text.size()) != nullptr, "a text ends within 260 characters");
}

void UtmNames(fuzz::Input& in) {
  const int zone = in.Raw<std::int32_t>(), length = in.Byte();
  std::vector<char> name(static_cast<std::size_t>(length) + 1);
  const bool south = in.Bit();
  const auto format = static_cast<UTMZoneNameFormat>(in.Below(4));
  if (ProjUTMZoneNumberToName(zone, south, name.data(), length, format)) {
    int read = 0;
    bool readSouth = !south;
    Expect(ProjUTMZoneNameToNumber(name.data(), &read, &readSouth), "a zone's name is read");
    Expect(readSouth == south && ProjUTMZoneNumberToLon(read) == ProjUTMZoneNumberToLon(zone), "as the same zone");
  }
  const int of = ProjUTMLonToZoneNumber(in.Number());
  Expect(of >= 1 && of <= 60, "a longitude lies in a zone");
}

void Numbers(fuzz::Input& in) {
  const int number = in.Raw<std::int32_t>();
  ProjType type{};
  StateZoneType zone{};
  EllipsoidType ellipsoid{};
  DatumType datum{};
  char name[80];
  if (ProjGetStateZoneFromPOSCNumber(number, &type, &zone)) {
    int posc = 0;
    Expect(ProjStateZoneToPOSCNumber(type, zone, &posc) && posc == number, "a zone's number leads back");
  }
  EllipsoidFromPOSCNumber(number, &ellipsoid);
  DatGetDatumFromPOSCNumber(&datum, number);
  ProjGetStateZoneFromUSGSCode(&zone, number);
  ProjGetStateZoneInfo(static_cast<StateZoneType>(number), name, nullptr);
  EllipsoidInfo(static_cast<EllipsoidType>(number), name, nullptr, nullptr);
  DatGetDatumName(static_cast<DatumType>(number), name);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input in(data, size);
  WriteAngle(in);
  UtmNames(in);
  Numbers(in);
  const char degreeChar = in.Raw<char>();
  const std::string text = in.Rest();
  double degrees = 0;
  if (LatLonToDegrees(text.c_str(), &degrees, degreeChar)) Expect(!std::isnan(degrees), "an angle is a number");
  int number = 0;
  bool south = false;
  if (ProjUTMZoneNameToNumber(text.c_str(), &number, &south)) Expect(number >= -60 && number <= 60, "modulo 60");
  StateZoneType zone{};
  EllipsoidType ellipsoid{};
  DatumType datum{};
  ProjGetStateZoneFromName(&zone, text.c_str());
  EllipsoidFromName(&ellipsoid, text.c_str());
  DatGetDatumFromName(&datum, text.c_str());
  return 0;
}
