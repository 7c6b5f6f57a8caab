// Fuzzer of preclipping: lines and polygons of any points against any projection, with callbacks that convert in
// place, stop and throw.
#include <shr/exception.h>

#include "Input.h"

using namespace orvex;
using fuzz::Expect;

namespace {

struct Stop {};

/// What the callbacks do with what they are given.
struct Host {
  void* projection;
  int stopAt, throwAt;
  int calls = 0;

  bool Take(int count, PROJPOINT* points) {
    Expect(count > 1 && points != nullptr, "a piece has two points");
    for (int i = 0; i < count; ++i) Expect(std::isfinite(points[i].x) && std::isfinite(points[i].y), "finite points");
    ++calls;
    try {
      ProjForward(projection, points, count);  // the array is the host's until it answers
    } catch (const shr::Exception&) {
    }
    if (calls == throwAt) throw Stop{};
    return calls != stopAt;
  }
};

bool ORVEX_CALL TakeLine(void* user, int count, PROJPOINT* points) {
  return static_cast<Host*>(user)->Take(count, points);
}

bool ORVEX_CALL TakeRings(void* user, int parts, const int* counts, PROJPOINT* points) {
  for (int part = 0; part < parts; points += counts[part], ++part) {
    const PROJPOINT first = points[0], last = points[counts[part] - 1];
    Expect(first.x == last.x && first.y == last.y, "a ring is closed");
    if (!static_cast<Host*>(user)->Take(counts[part], points)) return false;
  }
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input in(data, size);
  PROJDATA record = fuzz::ReadRecord(in);
  if (ProjCheckParams(&record, nullptr, false) != 0) return 0;
  const int stopAt = in.Below(8), throwAt = in.Below(16), parts = 1 + in.Below(4);
  std::vector<int> counts(static_cast<std::size_t>(parts));
  int total = 0;
  for (int& count : counts) total += count = 2 + in.Below(14);
  std::vector<PROJPOINT> points(static_cast<std::size_t>(total));
  for (PROJPOINT& p : points) p = in.Point();
  try {
    CProjector projector(&record);
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): that there is a copy is what may go wrong
    const CProjector own(projector);
    void* const drawing = ProjCreateProjection(&record);
    const std::vector<PROJPOINT> given = points;
    for (const bool polygon : {false, true}) {
      Host host{drawing, stopAt, throwAt};
      try {
        if (polygon) {
          projector.LLPreclipPolygon(&host, parts, counts.data(), points.data(), TakeRings,
                                     in.Bit() ? TakeLine : nullptr);
        } else {
          projector.LLPreclipPolyline(&host, total, points.data(), TakeLine);
        }
      } catch (const Stop&) {
        Expect(host.calls == throwAt, "a host's exception comes back to the host");
      } catch (const shr::Exception&) {
      }
      Expect(std::memcmp(given.data(), points.data(), given.size() * sizeof given[0]) == 0, "the shape stays");
    }
    ProjDeleteProjection(drawing);
  } catch (const shr::Exception&) {
  }
  return 0;
}
