// SegList - CSEGLIST, the growable array of line segments.
#include <climits>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "clip/Preclip.h"
#include "orvex/clip.h"
#include "support/Errors.h"
#include "support/Log.h"

namespace orvex {

namespace {

// Positions that running out of memory reports.
constexpr int kCopyLine = 238, kFirstLine = 286, kGrowLine = detail::kNoMemoryLine, kInsertLine = 427;

constexpr int kGrowth = 16;  // entries; the list never doubles
constexpr int kMostEntries =
    PTRDIFF_MAX / sizeof(SEGMENT) < INT_MAX ? static_cast<int>(PTRDIFF_MAX / sizeof(SEGMENT)) : INT_MAX;

[[noreturn]] void OutOfMemory(int line) {
  detail::ThrowError(detail::kClipSource, line, detail::kMsgOutOfMemory);
}

/// realloc in entries; null (the block is still valid then) when there is no room.
SEGMENT* Reallocate(SEGMENT* block, int entries) {
  return static_cast<SEGMENT*>(std::realloc(block, static_cast<std::size_t>(entries) * sizeof(SEGMENT)));
}

SEGMENT* Grow(SEGMENT* block, int capacity) {
  return capacity <= kMostEntries - kGrowth ? Reallocate(block, capacity + kGrowth) : nullptr;
}

}  // namespace

CSEGLIST::CSEGLIST() : m_items(nullptr), m_count(0), m_capacity(0) {}

CSEGLIST::CSEGLIST(const CSEGLIST& other) : CSEGLIST() {
  if (other.m_items == nullptr || other.m_count < 1) return;
  m_items = Reallocate(nullptr, other.m_count);
  if (m_items == nullptr) OutOfMemory(kCopyLine);
  std::memcpy(m_items, other.m_items, static_cast<std::size_t>(other.m_count) * sizeof(SEGMENT));
  m_count = m_capacity = other.m_count;
}

CSEGLIST::~CSEGLIST() {
  std::free(m_items);
}

CSEGLIST& CSEGLIST::operator=(const CSEGLIST& other) {
  if (this == &other) return *this;
  CSEGLIST copy(other);
  std::swap(m_items, copy.m_items);
  std::swap(m_count, copy.m_count);
  std::swap(m_capacity, copy.m_capacity);
  return *this;
}

bool CSEGLIST::Append(const SEGMENT& seg) {
  const SEGMENT copy = seg;  // it may lie in the block that moves
  if (m_items == nullptr) {
    m_items = Reallocate(nullptr, kGrowth);
    if (m_items == nullptr) {
      detail::LogPrintf("CSEGLIST::Append out of memory for 1st item!\n");
      OutOfMemory(kFirstLine);
    }
    m_capacity = kGrowth;
  } else if (m_count >= m_capacity) {
    SEGMENT* const grown = Grow(m_items, m_capacity);
    if (grown == nullptr) {
      detail::LogPrintf("CSEGLIST::Append out of memory for realloc!\n");
      Empty();
      OutOfMemory(kGrowLine);
    }
    m_items = grown;
    m_capacity += kGrowth;
  }
  m_items[m_count++] = copy;
  return true;
}

bool CSEGLIST::Append(const PROJPOINT& start, const PROJPOINT& end, bool bStart, bool bEnd) {
  return Append(SEGMENT{start, end, bStart, bEnd});
}

bool CSEGLIST::AppendMultiple(int nPts, const PROJPOINT* pPts, bool bFlag) {
  if (nPts < 2 || pPts == nullptr) {
    detail::LogPrintf(detail::kTooFewPointsText);
    return false;
  }
  for (int i = 0; i + 1 < nPts; ++i) {
    if (!Append(pPts[i], pPts[i + 1], bFlag, bFlag)) return false;
  }
  return true;
}

bool CSEGLIST::Insert(int index, const SEGMENT& seg) {
  if (index < 0 || index > m_count) {
    detail::LogPrintf("CSEGLIST::Insert index=%d out of range!\n", index);
    return false;
  }
  if (m_items == nullptr || m_count < 1) return Append(seg);
  const SEGMENT copy = seg;
  if (m_count >= m_capacity) {
    SEGMENT* const grown = Grow(m_items, m_capacity);
    if (grown == nullptr) {
      Empty();
      OutOfMemory(kInsertLine);
    }
    m_items = grown;
    m_capacity += kGrowth;
  }
  std::memmove(m_items + index + 1, m_items + index, static_cast<std::size_t>(m_count - index) * sizeof(SEGMENT));
  m_items[index] = copy;
  ++m_count;
  return true;
}

bool CSEGLIST::Insert(int index, const PROJPOINT& start, const PROJPOINT& end, bool bStart, bool bEnd) {
  return Insert(index, SEGMENT{start, end, bStart, bEnd});
}

bool CSEGLIST::Delete(int index) {
  if (m_items == nullptr || index < 0 || index >= m_count) return false;
  std::memmove(m_items + index, m_items + index + 1, static_cast<std::size_t>(m_count - index - 1) * sizeof(SEGMENT));
  --m_count;
  return true;
}

void CSEGLIST::Empty() {
  std::free(m_items);
  m_items = nullptr;
  m_count = m_capacity = 0;
}

}  // namespace orvex
