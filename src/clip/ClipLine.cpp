// ClipLine - the boundary search along a segment, and a line cut to a domain.
#include "clip/ClipLine.h"

#include <cmath>

#include "clip/Preclip.h"
#include "support/Log.h"

namespace orvex::detail {

namespace {

constexpr double kBracketDeg = 0.001;

bool IsFinite(const PROJPOINT& p) {
  return std::isfinite(p.x) && std::isfinite(p.y);
}

/// Halves the bracket until it is small, at least once. `inside` is a place on the globe, so any finite `outside` comes
/// near: 19 times for 360 degrees, 1034 for the largest double.
void Halve(const Domain& domain, PROJPOINT& inside, PROJPOINT outside) {
  do {
    const PROJPOINT middle{inside.x + (outside.x - inside.x) * 0.5, inside.y + (outside.y - inside.y) * 0.5};
    (domain.Contains(middle) ? inside : outside) = middle;
  } while (std::abs(outside.x - inside.x) > kBracketDeg || std::abs(outside.y - inside.y) > kBracketDeg);
}

}  // namespace

Ends FindCrossing(const Domain& domain, const PROJPOINT& a, bool inA, const PROJPOINT& b, bool inB,
                  PROJPOINT& crossing) {
  if (inA == inB) return inA ? Ends::Both : Ends::None;
  const PROJPOINT outside = inA ? b : a;
  if (!IsFinite(outside)) return Ends::SearchFailed;  // the bracket would never become small
  crossing = inA ? a : b;
  Halve(domain, crossing, outside);
  return inA ? Ends::Start : Ends::End;
}

ClipResult ClipLine(const Domain& domain, const PROJPOINT* pts, int nPts, Lines& pieces) {
  if (nPts < 2) {
    LogPrintf(kTooFewPointsText);
    return ClipResult::TooFewPoints;
  }
  pieces.Reserve(static_cast<std::size_t>(nPts));
  bool open = false;  // the piece at the end of `pieces` reaches the current point
  bool inEnd = domain.Contains(pts[0]);
  for (int i = 1; i < nPts; ++i) {
    const PROJPOINT start = pts[i - 1], end = pts[i];
    const bool inStart = inEnd;
    inEnd = domain.Contains(end);
    PROJPOINT crossing;
    switch (FindCrossing(domain, start, inStart, end, inEnd, crossing)) {
      case Ends::Both:
        if (!open) pieces.Add(start);
        pieces.Add(end);
        break;
      case Ends::None:
        break;
      case Ends::Start:
        if (!open) pieces.Add(start);
        pieces.Add(crossing);
        pieces.Finish();
        break;
      case Ends::End:
        pieces.Add(crossing);
        pieces.Add(end);
        break;
      case Ends::SearchFailed:
        LogPrintf("ClipLineSegment failed!\n");
        return ClipResult::SearchFailed;
    }
    open = inEnd;
  }
  if (open) pieces.Finish();
  return ClipResult::Ok;
}

}  // namespace orvex::detail
