// Fuzzer of datum conversions: records of built-in datums and of steps of any kind, checked and converted by.
#include <shr/exception.h>

#include "Input.h"

using namespace orvex;
using fuzz::Expect;

namespace {

DATUM2WGS84 ReadStep(fuzz::Input& in) {
  DATUM2WGS84 step{};
  step.Method = static_cast<DatumMethod>(in.Below(8));
  step.bInverse = in.Bit();
  step.Ellipsoid = static_cast<EllipsoidType>(in.Below(58));
  for (std::size_t offset = offsetof(DATUM2WGS84, PMShift); offset < offsetof(DATUM2WGS84, Reserved); offset += 8) {
    fuzz::SetField(step, offset, in.Number());
  }
  return step;
}

bool Convert(void* handle, std::vector<DATUMPOINT>& points) {
  try {
    return DatConvertDatum(handle, points.data(), static_cast<int>(points.size()));
  } catch (const shr::Exception& e) {
    Expect(e.MessageId() == 20200 || e.MessageId() == 20280, "no grid files here");
    return false;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input in(data, size);
  DATUMXFORM xform{};
  xform.SrcDatum = static_cast<DatumType>(in.Byte());
  xform.DestDatum = static_cast<DatumType>(in.Byte());
  if (xform.SrcDatum == DT_USER_DEFINED) xform.Step1 = ReadStep(in);
  if (xform.DestDatum == DT_USER_DEFINED) xform.Step2 = ReadStep(in);
  std::vector<char> text(256);
  const int refused = DatCheckParams(&xform, text.data(), false);
  Expect((refused == 0) == (text[0] == '\0') && refused >= 0 && refused <= 26, "a refusal has a number and a text");
  void* handle = nullptr;
  try {
    handle = DatCreateDatum(&xform);
    Expect(refused == 0 && handle != nullptr, "a record makes a handle or an exception");
  } catch (const shr::Exception& e) {
    Expect(refused != 0 && e.MessageId() >= 20249, "what passes the checks makes a handle");
    return 0;
  }
  DatSetAccuracy(handle, in.Bit() ? PA_EXACT : PA_STATED);
  std::vector<DATUMPOINT> given(1 + static_cast<std::size_t>(in.Below(19)));
  for (DATUMPOINT& p : given) {
    const PROJPOINT any = in.Point();
    p = {any.x, any.y};
  }
  std::vector<DATUMPOINT> points = given, alone{given.back()};
  const bool same = xform.SrcDatum == xform.DestDatum && xform.SrcDatum != DT_USER_DEFINED;
  if (Convert(handle, points) && !same) {
    for (const DATUMPOINT& p : points) {
      Expect(p.x == DBL_MAX || std::fabs(p.x) <= 360, "a longitude or the marker");
      Expect(p.y == DBL_MAX || std::fabs(p.y) <= 90, "a latitude or the marker");
    }
    if (Convert(handle, alone)) {
      Expect(std::memcmp(alone.data(), &points.back(), sizeof points[0]) == 0, "a point alone is the same");
    }
  }
  DatDeleteDatum(handle);
  return 0;
}
