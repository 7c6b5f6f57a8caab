// PreclipPolygon - polygons cut to what a projection can show, closed along the edge of the domain.
#include <algorithm>
#include <climits>
#include <cmath>

#include "clip/ClipLine.h"
#include "clip/Preclip.h"
#include "support/Log.h"

namespace orvex {

namespace {

using namespace detail;

constexpr int kBadParameterLine = 1172;  // position that bad parameters report
constexpr double kSamePointDeg = 1e-6;   // ends of the outline this close need no path between them
constexpr int kProbes = 5;

/// A polygon as the host gave it.
struct Polygon {
  int nParts;
  const int* counts;
  const PROJPOINT* pts;
};

/// Closed rings as the fill callback receives them.
struct Rings {
  std::vector<int> counts;
  std::vector<PROJPOINT> points;
};

bool Same(const PROJPOINT& a, const PROJPOINT& b) {
  return a.x == b.x && a.y == b.y;
}

/// Adds points of the domain's edge between the end of one piece of the outline and the start of the next: where
/// probes, square to the line between them, cross the edge.
void FollowClipEdge(const Domain& domain, const PROJPOINT& from, const PROJPOINT& to, std::vector<PROJPOINT>& path) {
  LogPrintf("Follow clip edge x1=%f x2=%f y1=%f y2=%f\n", from.x, to.x, from.y, to.y);
  const double dx = to.x - from.x, dy = to.y - from.y;
  if (std::abs(dx) <= kSamePointDeg && std::abs(dy) <= kSamePointDeg) return;
  const double halfX = dx * 0.5, halfY = dy * 0.5;
  const double stepX = dx / (kProbes + 2), stepY = dy / (kProbes + 2);  // the last two sevenths stay bare, on purpose
  for (int k = 1; k <= kProbes; ++k) {
    const PROJPOINT foot{from.x + k * stepX, from.y + k * stepY};
    const PROJPOINT a{foot.x + halfY, foot.y - halfX}, b{foot.x - halfY, foot.y + halfX};
    PROJPOINT crossing;
    const Ends ends = FindCrossing(domain, a, domain.Contains(a), b, domain.Contains(b), crossing);
    if (ends != Ends::Start && ends != Ends::End) continue;
    LogPrintf("Gen point x=%f y=%f\n", crossing.x, crossing.y);
    path.push_back(crossing);
  }
}

/// Joins the pieces of one part's outline into a closed ring.
void AddRing(const Domain& domain, const Lines& pieces, Rings& rings) {
  const std::size_t begin = rings.points.size();
  rings.points.push_back(pieces[0].front());
  for (std::size_t i = 0; i < pieces.Count(); ++i) {
    const std::span<const PROJPOINT> piece = pieces[i];
    const PROJPOINT from = piece.back(), to = pieces[i + 1 < pieces.Count() ? i + 1 : 0].front();
    rings.points.insert(rings.points.end(), piece.begin() + 1, piece.end());
    if (LogEnabled()) {  // the log reports every joint of the ring, also those where the outline itself goes on
      for (std::size_t k = 1; k + 1 < piece.size(); ++k) FollowClipEdge(domain, piece[k], piece[k], rings.points);
    }
    FollowClipEdge(domain, from, to, rings.points);
    if (!Same(from, to)) rings.points.push_back(to);
  }
  const std::size_t count = rings.points.size() - begin;
  if (count > INT_MAX) throw std::bad_alloc();
  rings.counts.push_back(static_cast<int>(count));
}

/// Takes over the pieces of one part's outline. When they are to be joined, the first is the continuation of the last.
void AddOutline(const Lines& pieces, bool join, Lines& outline) {
  join = join && pieces.Count() > 1;
  for (std::size_t i = join ? 1 : 0; i < pieces.Count(); ++i) {
    outline.Add(pieces[i]);
    if (join && i + 1 == pieces.Count()) outline.Add(pieces[0].subspan(1));
    outline.Finish();
  }
}

/// Clips every part: rings for the fill, and the visible outline unless it is null.
bool ClipParts(const Domain& domain, const Polygon& polygon, Rings& rings, Lines* outline) {
  std::size_t total = 0;
  for (int part = 0; part < polygon.nParts; ++part) {
    total += static_cast<std::size_t>(std::max(polygon.counts[part], 0));
  }
  rings.points.reserve(total);
  if (outline != nullptr) outline->Reserve(total);
  Lines pieces;
  const PROJPOINT* pts = polygon.pts;
  for (int part = 0; part < polygon.nParts; ++part) {
    const int nPts = polygon.counts[part];
    pieces.Clear();
    switch (ClipLine(domain, pts, nPts, pieces)) {
      case ClipResult::Ok:
        break;
      case ClipResult::TooFewPoints:
        LogPrintf("AppendMultiple call failed in LocalPreclipPolygon!\n");
        return false;
      case ClipResult::SearchFailed:
        LogPrintf("ClipToProjection call failed in LocalPreclipPolygon!\n");
        return false;
    }
    if (pieces.Count() > 0) {
      AddRing(domain, pieces, rings);
      // A piece starts at the part's first vertex exactly when that is inside: outside points belong to no piece.
      const bool throughFirst = Same(pts[0], pts[nPts - 1]) && Same(pts[0], pieces[0].front());
      if (outline != nullptr) AddOutline(pieces, throughFirst, *outline);
    }
    pts += nPts;
  }
  return true;
}

/// One pass over the polygon as it is. Nothing is delivered unless all of it could be clipped.
bool LocalPreclipPolygon(const Domain& domain, void* user, const Polygon& polygon, PROJFILLCALLBACK fill,
                         PROJLINECALLBACK line) {
  if (polygon.nParts < 1 || polygon.counts == nullptr || polygon.pts == nullptr || fill == nullptr) {
    LogPrintf("Invalid parameter to LocalPreclipPolygon!\n");
    return false;
  }
  Rings rings;
  Lines outline;
  if (!Guarded([&] { return ClipParts(domain, polygon, rings, line != nullptr ? &outline : nullptr); })) return false;
  if (rings.counts.empty()) return true;
  if (!fill(user, static_cast<int>(rings.counts.size()), rings.counts.data(), rings.points.data())) {
    LogPrintf("Fill callback failed in LocalPreclipPolygon!\n");
    return false;
  }
  for (std::size_t i = 0; i < outline.Count(); ++i) {
    const std::span<PROJPOINT> piece = outline[i];
    if (line(user, static_cast<int>(piece.size()), piece.data())) continue;
    LogPrintf("Failed clipping outline of polygon!\n");
    return false;
  }
  return true;
}

/// All points moved by the offset of the first part that must be repeated; empty when none must.
std::vector<PROJPOINT> MovedPolygon(const Domain& domain, const Polygon& polygon) {
  std::size_t nPts = 0;
  double dx = 0, dy = 0;
  bool repeat = false;
  for (int part = 0; part < polygon.nParts; ++part) {
    const int count = polygon.counts[part];
    repeat = repeat || domain.OffsetSplit(polygon.pts + nPts, static_cast<unsigned>(count), dx, dy);
    nPts += static_cast<std::size_t>(count);
  }
  return repeat ? Moved({polygon.pts, nPts}, dx, dy) : std::vector<PROJPOINT>{};
}

}  // namespace

bool ORVEX_CALL ProjLLPreclipPolygon(void* hProj, void* pUser, int nParts, const int* pCounts, const PROJPOINT* pPts,
                                     PROJFILLCALLBACK pFill, PROJLINECALLBACK pLine) {
  LogPrintf("ProjLLPreclipPolygon(hProj=%p, pUser=%p, nParts=%d, pCounts=%p, pPts=%p, pFill=%p, pLine=%p)\n", hProj,
            pUser, nParts, static_cast<const void*>(pCounts), static_cast<const void*>(pPts),
            reinterpret_cast<void*>(pFill), reinterpret_cast<void*>(pLine));
  if (hProj == nullptr || nParts < 1 || pCounts == nullptr || pPts == nullptr || pFill == nullptr) {
    LogPrintf("Invalid parameter to ProjLLPreclipPolygon!\n");
    ThrowError(kClipSource, kBadParameterLine, kMsgBadParameter);
  }
  const Domain domain(*static_cast<const PROJDATA*>(hProj));
  Polygon polygon{nParts, pCounts, pPts};
  if (!LocalPreclipPolygon(domain, pUser, polygon, pFill, pLine)) {
    LogPrintf("ProjLLPreclipPolygon: Failed clipping polygon!\n");
    return false;
  }
  const std::vector<PROJPOINT> moved = Guarded([&] { return MovedPolygon(domain, polygon); });
  if (moved.empty()) return true;
  polygon.pts = moved.data();
  if (!LocalPreclipPolygon(domain, pUser, polygon, pFill, pLine)) {
    LogPrintf("ProjLLPreclipPolygon: Failed clipping moved polygon!\n");
    return false;
  }
  return true;
}

}  // namespace orvex
