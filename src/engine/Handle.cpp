// Handle - projection handles: a validated, completed heap copy of the caller's record.
#include <cstdlib>

#include "ellipsoids/Ellipsoid.h"
#include "engine/Dump.h"
#include "support/Errors.h"
#include "support/ExactHandles.h"
#include "support/Flag.h"
#include "support/FpGuard.h"
#include "support/Log.h"

namespace orvex {

namespace {

// Positions that failed assertions report.
constexpr int kBadEllipsoidLine = 512, kBadRadiusLine = 520, kBadFlatteningLine = 525, kNoMemoryLine = 553;

constexpr double kUtmFalseEasting = 500000.0, kUtmSouthFalseNorthing = 10000000.0, kUtmScale = 0.9996;

[[noreturn]] void Impossible(const char* logText, int line) {
  detail::LogPrintf("%s", logText);
  detail::Assert("Orvex", line);
}

/// Fills radius and flattening from the ellipsoid table, or checks the caller's own.
void CompleteEllipsoid(PROJDATA& d) {
  const EllipsoidType ellipsoid = d.Ellipsoid;
  if (ellipsoid < ET_USER_DEFINED || ellipsoid > ET_BESSEL_NGO_1948) {
    Impossible("Bad ellipsoid type!\n", kBadEllipsoidLine);
  }
  if (ellipsoid != ET_USER_DEFINED) {
    d.MajorRadius = detail::MajorRadiusOf(ellipsoid);
    d.Flattening = detail::FlatteningOf(ellipsoid);
    return;
  }
  detail::LogPrintf("Have user-defined ellipsoid.\n");
  if (d.MajorRadius <= 0) Impossible("Bad ellipsoid radius!\n", kBadRadiusLine);
  if (d.Flattening < 0 || d.Flattening >= 1) Impossible("Bad ellipsoid flattening!\n", kBadFlatteningLine);
}

/// Whatever false origin the caller gave is replaced.
void CompleteUtm(PROJDATA& d) {
  d.xOrg = kUtmFalseEasting;
  d.yOrg = detail::IsSet(d.bSouth) ? kUtmSouthFalseNorthing : 0.0;
  if (d.K0 == 0) d.K0 = kUtmScale;
}

}  // namespace

void* ORVEX_CALL ProjCreateProjection(PROJDATA* pProjData) {
  using namespace detail;
  LogPrintf("ProjCreateProjection(pProjData=%p)\n", static_cast<void*>(pProjData));
  if (pProjData == nullptr) return nullptr;
  char message[256];
  if (ProjCheckParams(pProjData, message, true) != 0) {
    LogPrintf("Invalid parameter error:  \"%s\"\n", message);
    return nullptr;
  }
  const FpGuard guard;
  if (pProjData->Type != PT_LATLONG) CompleteEllipsoid(*pProjData);
  if (pProjData->Type == PT_UTM) CompleteUtm(*pProjData);

  auto* handle = static_cast<PROJDATA*>(std::malloc(sizeof(PROJDATA)));
  if (handle == nullptr) Assert("Orvex", kNoMemoryLine);
  ForgetChoice(handle);
  *handle = *pProjData;
  if (handle->Scale == 0) {
    LogPrintf("Warning:  Scale was zero.  Setting to one.\n");
    handle->Scale = 1.0;
  }
  if (handle->K0 == 0) {
    LogPrintf("Warning:  K0 was zero.  Setting to one.\n");
    handle->K0 = 1.0;
  }
  DumpProjData(handle);
  LogPrintf("ProjCreateProjection:  Returning HPROJ of %p\n", static_cast<void*>(handle));
  return handle;
}

void ORVEX_CALL ProjDeleteProjection(void* hProj) {
  detail::LogPrintf("ProjDeleteProjection(hProj=%p)\n", hProj);
  detail::FreeHandle(hProj);
}

bool ORVEX_CALL ProjGetHandleInfo(void* hProj, PROJDATA* pProjData) {
  detail::LogPrintf("ProjGetHandleInfo(hProj=%p, pProjData=%p)\n", hProj, static_cast<void*>(pProjData));
  if (hProj == nullptr || pProjData == nullptr) return false;
  *pProjData = *static_cast<const PROJDATA*>(hProj);
  return true;
}

int ORVEX_CALL ProjResult(void* hProj) {
  detail::LogPrintf("ProjResult(hProj=%p)\n", hProj);
  return hProj != nullptr ? static_cast<const PROJDATA*>(hProj)->iResult : 0;
}

}  // namespace orvex
