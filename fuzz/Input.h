// Input - the bytes of a fuzzer as numbers, texts and records. A byte that is missing is 0, so that every input is a
// whole one and a longer one begins like the shorter.
#pragma once

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include <orvex/orvex.h>

namespace orvex::fuzz {

class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : m_left(reinterpret_cast<const char*>(data), size) {}

  bool Empty() const { return m_left.empty(); }

  /// The bytes of an object as they stand.
  template <class T>
  T Raw() {
    T value{};
    const std::size_t count = std::min(sizeof value, m_left.size());
    if (count > 0) std::memcpy(&value, m_left.data(), count);
    m_left.remove_prefix(count);
    return value;
  }
  std::uint8_t Byte() { return Raw<std::uint8_t>(); }
  bool Bit() { return (Byte() & 1) != 0; }
  int Below(int limit) { return Byte() % limit; }

  /// Often a hundredth of a degree, sometimes a value at an edge, sometimes any bits at all.
  double Number() {
    static constexpr double kEdges[] = {0,
                                        -0.0,
                                        90,
                                        -90,
                                        180,
                                        -180,
                                        360,
                                        1,
                                        1e-9,
                                        -1e-300,
                                        1e7,
                                        6378137,
                                        1e300,
                                        DBL_MAX,
                                        -DBL_MAX,
                                        std::numeric_limits<double>::infinity(),
                                        std::numeric_limits<double>::quiet_NaN(),
                                        std::numeric_limits<double>::denorm_min()};
    const int kind = Byte();
    if (kind < 160) return Raw<std::int16_t>() / 100.0;
    if (kind < 200) return Raw<std::int32_t>() * 0.25;
    if (kind < 230) return kEdges[kind % static_cast<int>(std::size(kEdges))];
    return Raw<double>();
  }
  PROJPOINT Point() {
    const double x = Number();
    return {x, Number()};
  }

  /// Up to a line end, which is taken away.
  std::string Line() {
    const std::size_t end = std::min(m_left.find('\n'), m_left.size());
    std::string line(m_left.substr(0, end));
    m_left.remove_prefix(std::min(end + 1, m_left.size()));
    return line;
  }
  std::string Bytes(std::size_t count) {
    std::string bytes(m_left.substr(0, count));
    m_left.remove_prefix(bytes.size());
    return bytes;
  }
  std::string Rest() { return Bytes(m_left.size()); }

 private:
  std::string_view m_left;
};

/// What must hold whatever the input is.
inline void Expect(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "fuzz: %s\n", what);
  std::abort();
}

/// Writes a field of a packed record, which may lie on an odd address.
template <class Record>
void SetField(Record& record, std::size_t offset, double value) {
  std::memcpy(reinterpret_cast<char*>(&record) + offset, &value, sizeof value);
}

/// Any record, most of them near to what a host would give.
inline PROJDATA ReadRecord(Input& in) {
  PROJDATA record{};
  const int type = in.Below(32);
  record.Type = static_cast<ProjType>(type < 29 ? type : type == 29 ? int{PT_UNDEFINED} : in.Raw<std::int32_t>());
  record.Ellipsoid = static_cast<EllipsoidType>(in.Below(58));
  const int given = in.Byte();
  record.bSouth = (given & 1) != 0;
  record.bUseAlpha = (given & 2) != 0;
  record.bRotate = (given & 4) != 0;
  record.bUOffset = (given & 8) != 0;
  record.bWrapLon = (given & 16) != 0;
  record.MajorRadius = (given & 32) != 0 ? in.Number() : 6371000;
  record.Flattening = (given & 64) != 0 ? in.Number() : 0;
  record.Zone = in.Byte();
  for (const std::size_t offset : {offsetof(PROJDATA, Lat0), offsetof(PROJDATA, Lon0), offsetof(PROJDATA, Lat1),
                                   offsetof(PROJDATA, Lon1), offsetof(PROJDATA, Lat2), offsetof(PROJDATA, Lon2),
                                   offsetof(PROJDATA, Alpha), offsetof(PROJDATA, xOrg), offsetof(PROJDATA, yOrg)}) {
    SetField(record, offset, in.Number());
  }
  if ((given & 128) != 0) {
    record.Scale = in.Number();
    record.K0 = in.Number();
  }
  return record;
}

}  // namespace orvex::fuzz

/// Every target is this one function; it answers 0.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
