// PreclipPolyline - polylines cut to what a projection can show.
#include "clip/ClipLine.h"
#include "clip/Preclip.h"
#include "support/Log.h"

namespace orvex {

namespace {

using namespace detail;

// Positions that bad parameters report.
constexpr int kBadParameterLine = 1068, kLocalBadParameterLine = 605;

/// One pass over the points as they are. Nothing is delivered unless all of the line could be clipped.
bool LocalPreclipPolyline(const Domain& domain, void* user, int nPts, const PROJPOINT* pts, PROJLINECALLBACK callback) {
  if (nPts < 2 || pts == nullptr || callback == nullptr) {
    ThrowError(kClipSource, kLocalBadParameterLine, kMsgBadParameter);
  }
  Lines pieces;
  switch (Guarded([&] { return ClipLine(domain, pts, nPts, pieces); })) {
    case ClipResult::Ok:
      break;
    case ClipResult::TooFewPoints:
      LogPrintf("Failed appening points to list in LocalPreclipPolyline!\n");
      return false;
    case ClipResult::SearchFailed:
      LogPrintf("Clipping failed in LocalPreclipPolyline!\n");
      return false;
  }
  for (std::size_t i = 0; i < pieces.Count(); ++i) {
    const std::span<PROJPOINT> piece = pieces[i];
    if (callback(user, static_cast<int>(piece.size()), piece.data())) continue;
    LogPrintf("Callback returned error in LocalPreclipPolyline!\n");
    return false;
  }
  return true;
}

}  // namespace

bool ORVEX_CALL ProjLLPreclipPolyline(void* hProj, void* pUser, int nPts, const PROJPOINT* pPts,
                                      PROJLINECALLBACK pLine) {
  LogPrintf("ProjLLPreclipPolyline(hProj=%p, pUser=%p, nPts=%d, pPts=%p, pLine=%p)\n", hProj, pUser, nPts,
            static_cast<const void*>(pPts), reinterpret_cast<void*>(pLine));
  if (hProj == nullptr || nPts < 2 || pPts == nullptr || pLine == nullptr) {
    ThrowError(kClipSource, kBadParameterLine, kMsgBadParameter);
  }
  const Domain domain(*static_cast<const PROJDATA*>(hProj));
  if (!LocalPreclipPolyline(domain, pUser, nPts, pPts, pLine)) {
    LogPrintf("ProjLLPreclipPolyline: Failed clipping polyline!\n");
    return false;
  }
  const std::vector<PROJPOINT> moved = Guarded([&] {
    double dx = 0, dy = 0;
    if (!domain.OffsetSplit(pPts, static_cast<unsigned>(nPts), dx, dy)) return std::vector<PROJPOINT>{};
    return Moved({pPts, static_cast<std::size_t>(nPts)}, dx, dy);
  });
  if (!moved.empty() && !LocalPreclipPolyline(domain, pUser, nPts, moved.data(), pLine)) {
    LogPrintf("ProjLLPreclipPolyline: Failed clipping moved polyline!\n");
    return false;
  }
  return true;
}

}  // namespace orvex
