// Validate - the checks that decide whether a record may become a projection handle.
// The messages say more than the checks do, on purpose: latitudes are only held against +-360 degrees, zero scales pass
// (creation repairs them), and the second parallel's message of the oblique Mercator stands for a test of the first.
// NaN passes every comparison; what comes of it is unplottable points.
#include <cmath>
#include <cstdio>

#include "engine/Dump.h"
#include "support/Errors.h"
#include "support/Flag.h"
#include "support/FpGuard.h"
#include "support/Log.h"
#include "support/Text.h"
#include "zones/ExpandStatePlane.h"

namespace orvex {

namespace detail {

namespace {

constexpr int kCheckLine = 846;
constexpr double kMaxFalseOrigin = 1.7014117331926443e38;  // 0x47DFFFFFE0000000

bool BeyondFullTurn(double degrees) {
  return degrees >= 360 || degrees <= -360;
}

bool BeyondFalseOrigin(double value) {
  return value > kMaxFalseOrigin || value < -kMaxFalseOrigin;
}

bool SumOrDifferenceVanishes(double lat1, double lat2) {
  return std::fabs(lat1 + lat2) < 0.001 || std::fabs(lat1 - lat2) < 0.001;
}

/// Message id of the first check that fails; 0 when the record is good.
int FirstFailedCheck(const PROJDATA& d) {
  const ProjType type = d.Type;
  if ((type < PT_LATLONG || type > PT_AZIMUTHALEQUI) && type != PT_UNDEFINED) return 20230;
  if (type == PT_LATLONG || type == PT_UNDEFINED) return 0;

  const bool statePlane = IsStatePlane(type);
  if (d.Scale < 0) return 20231;
  if (d.K0 < 0) return 20232;
  if (!statePlane && type != PT_UTM) {
    if (BeyondFalseOrigin(d.xOrg)) return 20233;
    if (BeyondFalseOrigin(d.yOrg)) return 20234;
  }
  if (statePlane) {
    PROJDATA expanded = d;
    if (!ExpandStatePlane(&expanded)) return 20252;
  }
  const struct {
    double degrees;
    int id;
  } angles[] = {{d.Lon0, 20235}, {d.Lon1, 20236}, {d.Lon2, 20237}, {d.Lon3, 20238},
                {d.Lat0, 20239}, {d.Lat1, 20240}, {d.Lat2, 20241}, {d.Lat3, 20242}};
  for (const auto& angle : angles) {
    if (BeyondFullTurn(angle.degrees)) return angle.id;
  }
  const double lat1 = d.Lat1, lat2 = d.Lat2;
  if (type == PT_HOTINE && BeyondFullTurn(d.Alpha)) return 20243;
  if (type == PT_BONNE && lat1 == 0) return 20244;
  if (type == PT_ALBERS && SumOrDifferenceVanishes(lat1, lat2)) return 20245;
  if (type == PT_EQUICONIC && SumOrDifferenceVanishes(lat1, lat2)) return 20256;
  if (type == PT_HOTINE && IsSet(d.bUseAlpha) && d.Alpha == 0) return 20246;
  if (type == PT_LAMBERT && std::fabs(lat1 - lat2) < 0.1) return 20247;
  if (type == PT_MERCATOR && std::fabs(std::fabs(d.Lat0) - 90) < 0.01) return 20251;
  if (type == PT_OBLIQUEMERCATOR) {
    if (std::fabs(lat1 - lat2) < 0.001) return 20253;
    if (std::fabs(lat1) < 0.001) return 20254;
    if (std::fabs(lat1 - 90) < 0.001) return 20255;
  }
  if (!statePlane) {
    if (d.Ellipsoid < 0 || d.Ellipsoid > ET_BESSEL_NGO_1948) return 20248;
    if (d.Ellipsoid == ET_USER_DEFINED) {
      if (d.MajorRadius <= 0) return 20249;
      if (d.Flattening < 0 || d.Flattening >= 1) return 20250;
    }
  }
  return 0;
}

}  // namespace

}  // namespace detail

int ORVEX_CALL ProjCheckParams(const PROJDATA* pProjData, char* message, bool bThrow) {
  using namespace detail;
  constexpr std::size_t kCallerCapacity = 256;
  const FpGuard guard;  // formatting numbers for the log raises exceptions too
  LogPrintf("ProjCheckParams called with:\n");
  DumpProjData(pProjData);
  if (message != nullptr) *message = '\0';
  if (pProjData == nullptr) {
    if (message != nullptr) CopyText(message, "NULL pointer to projection parameters", kCallerCapacity);
    return 998;
  }
  const int id = FirstFailedCheck(*pProjData);
  if (id == 0) return 0;
  if (message != nullptr) {
    char text[kMessageCapacity];
    if (LoadMessageText(id, text)) {
      CopyText(message, text, kCallerCapacity);
    } else {
      std::snprintf(message, kCallerCapacity, "Unable to load error message text for error # %u",
                    static_cast<unsigned>(id));
    }
  }
  if (bThrow) ThrowError("Orvex", kCheckLine, id);
  return 1;
}

}  // namespace orvex
