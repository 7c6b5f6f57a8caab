// Record - the parameters of one projection, checked and completed by the library.
#include "Record.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <new>

#include "Failure.h"

namespace orvex::python {

namespace {

/// The id 1 is the projection itself.
constexpr int kFirstId = 2, kLastId = 22;

template <class Stored, class Given>
void Store(PROJDATA& record, int id, Given given) {
  Stored stored = static_cast<Stored>(given);
  ProjSetParam(&record, id, &stored);
}

template <class Given>
std::int32_t WholeNumber(Given given) {
  const auto number = static_cast<double>(given);
  if (!(std::abs(number) <= INT32_MAX) || number != std::trunc(number)) throw tool::Failure("a whole number is needed");
  return static_cast<std::int32_t>(given);
}

template <class Stored>
Stored Load(PROJDATA& record, int id) {
  Stored stored{};
  ProjGetParam(&record, id, &stored);
  return stored;
}

ProjDataType TypeOf(int id) {
  ProjDataType type{};
  if (!ProjParamInfo(id, nullptr, &type, nullptr, nullptr)) throw tool::Failure("there is no such parameter");
  return type;
}

void Set(PROJDATA& record, int id, const Value& value) {
  const ProjDataType type = TypeOf(id);
  std::visit(
      [&](auto given) {
        if (type == PDT_DOUBLE) {
          Store<double>(record, id, given);
        } else if (type == PDT_BOOL) {
          Store<bool>(record, id, given);
        } else {
          Store<std::int32_t>(record, id, WholeNumber(given));
        }
      },
      value);
}

Value Get(PROJDATA& record, int id) {
  switch (TypeOf(id)) {
    case PDT_DOUBLE:
      return Load<double>(record, id);
    case PDT_BOOL:
      return Load<bool>(record, id);
    default:
      return static_cast<int>(Load<std::int32_t>(record, id));
  }
}

/// Collects what a preclipper delivers. An exception must not pass through the library.
struct Collector {
  std::vector<Chain> pieces;
  bool outOfMemory = false;

  bool Add(int parts, const int* counts, const PROJPOINT* points) noexcept {
    try {
      for (int i = 0; i < parts; points += counts[i++]) pieces.emplace_back(points, points + counts[i]);
      return true;
    } catch (const std::bad_alloc&) {
      outOfMemory = true;
      return false;
    }
  }

  std::vector<Chain> Finish(bool done) {
    if (outOfMemory) throw std::bad_alloc();
    if (!done)
      throw tool::Failure("a shape has a coordinate that is not a finite number, or a part of fewer than 2 points");
    return std::move(pieces);
  }
};

bool ORVEX_CALL AddLine(void* collector, int count, PROJPOINT* points) {
  return static_cast<Collector*>(collector)->Add(1, &count, points);
}

bool ORVEX_CALL AddRings(void* collector, int parts, const int* counts, PROJPOINT* points) {
  return static_cast<Collector*>(collector)->Add(parts, counts, points);
}

/// Whether every flag in the bytes of a record is one or none: nothing else may be read as one.
bool AreFlags(const std::string& bytes) {
  constexpr std::size_t kFlags[] = {offsetof(PROJDATA, bSouth), offsetof(PROJDATA, bUseAlpha),
                                    offsetof(PROJDATA, bRotate), offsetof(PROJDATA, bUOffset),
                                    offsetof(PROJDATA, bWrapLon)};
  return std::all_of(std::begin(kFlags), std::end(kFlags),
                     [&](std::size_t at) { return bytes[at] == 0 || bytes[at] == 1; });
}

CProjector Projector(PROJDATA record) {
  return CProjector(&record);
}

}  // namespace

Record::Record(int type, const std::map<int, Value>& values, bool wrap) {
  m_data.Type = static_cast<ProjType>(type);
  m_data.bWrapLon = wrap;
  for (const auto& [id, value] : values) Set(m_data, id, value);
  Complete();
}

Record::Record(const PROJDATA& data) : m_data(data) {
  Complete();
}

/// The library fills in the ellipsoid's figure, UTM's origin and the factors that are 1 when they are not given.
void Record::Complete() {
  ProjCheckParams(&m_data, nullptr, true);
  Projector(m_data).GetInfo(&m_data);
}

Record::Record(const std::string& bytes) {
  if (bytes.size() != sizeof m_data || !AreFlags(bytes)) throw tool::Failure("these are not the bytes of a projection");
  std::memcpy(&m_data, bytes.data(), sizeof m_data);
  ProjCheckParams(&m_data, nullptr, true);
}

std::string Record::Bytes() const {
  return {reinterpret_cast<const char*>(&m_data), sizeof m_data};
}

std::map<int, Value> Record::Values() const {
  PROJDATA record = m_data;
  std::map<int, Value> values;
  for (int id = kFirstId; id <= kLastId; ++id) values[id] = Get(record, id);
  return values;
}

void Record::Contains(const double* lon, const double* lat, bool* inside, std::size_t count) const {
  const CProjector projector = Projector(m_data);
  for (std::size_t i = 0; i < count; ++i) {
    const PROJPOINT place{lon[i], lat[i]};
    inside[i] = projector.LLInProjection(&place);
  }
}

std::vector<Chain> Record::ClipLine(const Chain& line) const {
  Collector collector;
  const bool done =
      Projector(m_data).LLPreclipPolyline(&collector, static_cast<int>(line.size()), line.data(), AddLine);
  return collector.Finish(done);
}

std::vector<Chain> Record::ClipRings(const std::vector<Chain>& rings) const {
  std::vector<int> counts;
  Chain points;
  for (const Chain& ring : rings) {
    counts.push_back(static_cast<int>(ring.size()));
    points.insert(points.end(), ring.begin(), ring.end());
  }
  Collector collector;
  const bool done = Projector(m_data).LLPreclipPolygon(&collector, static_cast<int>(counts.size()), counts.data(),
                                                       points.data(), AddRings, nullptr);
  return collector.Finish(done);
}

}  // namespace orvex::python
