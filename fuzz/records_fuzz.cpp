// Fuzzer of projection records: checked, made into handles, converted by in both ways, deleted.
#include <algorithm>

#include <shr/exception.h>

#include "Input.h"

using namespace orvex;
using fuzz::Expect;

namespace {

using Convert = bool(ORVEX_CALL*)(void*, PROJPOINT*, int);
using Points = std::vector<PROJPOINT>;

bool SameBits(const Points& a, const Points& b) {
  return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof a[0]) == 0;
}

bool Marked(const PROJPOINT& p) {
  return p.x == DBL_MAX || p.y == DBL_MAX;
}

/// False when a point asserts; the points are then partly converted.
bool Run(Convert convert, void* handle, Points& points) {
  try {
    return convert(handle, points.data(), static_cast<int>(points.size()));
  } catch (const shr::Exception& e) {
    Expect(e.MessageId() == 20200, "a conversion asserts with 20200");
    return false;
  }
}

void CheckConversion(Convert convert, void* handle, const Points& given, Points& points) {
  points = given;
  if (!Run(convert, handle, points)) return;
  const bool flagged = ProjResult(handle) == 1;
  for (std::size_t i = 0; i < points.size(); ++i) {
    Expect(std::isfinite(points[i].x) && std::isfinite(points[i].y), "what comes out is finite or the marker");
    if (convert == ProjForward && !Marked(given[i]) && Marked(points[i])) Expect(flagged, "a lost point is told");
  }
  // Nothing depends on what else is in the array, nor on the calls before.
  Points reversed(given.rbegin(), given.rend());
  if (Run(convert, handle, reversed)) {
    std::reverse(reversed.begin(), reversed.end());
    Expect(SameBits(reversed, points), "points do not touch each other");
  }
  Points alone{given.back()};
  if (Run(convert, handle, alone)) Expect(SameBits(alone, {points.back()}), "a point alone is the same");
}

void CheckCatalogue(const PROJDATA& record) {
  char name[80];
  ProjGetProjectionInfo(record.Type, name);
  for (int i = 0; i < ProjNumParams(record.Type); ++i) {
    const int id = ProjEnumParam(record.Type, i);
    ProjDataType type{};
    int offset = 0, size = 0;
    Expect(ProjParamInfo(id, name, &type, &offset, &size), "a listed parameter is known");
    Expect(offset >= 0 && size > 0 && offset + size <= static_cast<int>(sizeof record), "it lies in the record");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input in(data, size);
  PROJDATA record = fuzz::ReadRecord(in);
  CheckCatalogue(record);
  std::vector<char> message(256);  // on the heap, where a byte too many is seen
  const int refused = ProjCheckParams(&record, message.data(), false);
  Expect((refused == 0) == (message[0] == '\0'), "a refusal has a text");
  void* handle = nullptr;
  try {
    handle = ProjCreateProjection(&record);
    Expect(handle != nullptr, "a record makes a handle or an exception");
  } catch (const shr::Exception& e) {
    Expect(refused != 0 || e.MessageId() == 20200, "what passes the checks makes a handle");
    return 0;
  }
  const ProjAccuracy accuracy = in.Bit() ? PA_EXACT : PA_STATED;
  if (ProjSetAccuracy(handle, accuracy)) Expect(ProjGetAccuracy(handle) == accuracy, "the choice is kept");
  Points given(1 + static_cast<std::size_t>(in.Below(19)));
  for (PROJPOINT& p : given) p = in.Point();
  Points there, back;
  CheckConversion(ProjForward, handle, given, there);
  CheckConversion(ProjInverse, handle, there, back);
  CheckConversion(ProjInverse, handle, given, back);
  try {
    ProjLLInProjection(handle, given.data());
    double dx = 0, dy = 0;
    if (ProjLLOffsetSplitObject(handle, given.data(), static_cast<unsigned>(given.size()), &dx, &dy)) {
      Expect((dx == 360 || dx == -360) && dy == 0, "an object is moved by a turn");
    }
  } catch (const shr::Exception& e) {
    Expect(e.MessageId() == 20200, "no domain");
  }
  ProjDeleteProjection(handle);
  return 0;
}
