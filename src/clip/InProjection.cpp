// InProjection - the domain tests: points inside, objects wholly outside, objects to be repeated.
#include "clip/Domain.h"
#include "orvex/clip.h"
#include "support/FpGuard.h"
#include "support/Log.h"

namespace orvex {

using detail::Domain;
using detail::FpGuard;

bool ORVEX_CALL ProjLLInProjection(void* hProj, const PROJPOINT* pPt) {
  detail::LogPrintf("ProjLLInProjection(hProj=%p, pPt=%p)\n", hProj, static_cast<const void*>(pPt));
  if (hProj == nullptr || pPt == nullptr) return false;
  const FpGuard guard;
  return Domain(*static_cast<const PROJDATA*>(hProj)).Contains(*pPt);
}

bool ORVEX_CALL ProjLLInProjection(void* hProj, int nPts, const PROJPOINT* pPts) {
  detail::LogPrintf("ProjLLInProjection(hProj=%p, nPts=%d, pPts=%p)\n", hProj, nPts, static_cast<const void*>(pPts));
  if (hProj == nullptr || pPts == nullptr || nPts < 1) return true;
  const FpGuard guard;
  const Domain domain(*static_cast<const PROJDATA*>(hProj));
  for (int i = 0; i < nPts; ++i) {
    if (domain.Contains(pPts[i])) return false;  // on purpose: the question is whether all of it is outside
  }
  return true;
}

bool ORVEX_CALL ProjLLOffsetSplitObject(void* hProj, const PROJPOINT* pPts, unsigned int nPts, double* pdx,
                                        double* pdy) {
  detail::LogPrintf("ProjLLOffsetSplitObject(hProj=%p, pPts=%p, nPts=%u, pdx=%p, pdy=%p)\n", hProj,
                    static_cast<const void*>(pPts), nPts, static_cast<void*>(pdx), static_cast<void*>(pdy));
  if (hProj == nullptr || pPts == nullptr || nPts == 0 || pdx == nullptr || pdy == nullptr) return false;
  const FpGuard guard;
  return Domain(*static_cast<const PROJDATA*>(hProj)).OffsetSplit(pPts, nPts, *pdx, *pdy);
}

}  // namespace orvex
