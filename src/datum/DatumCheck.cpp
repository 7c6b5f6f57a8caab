// DatumCheck - validation of conversion records.
#include "datum/DatumCheck.h"

#include <cfloat>
#include <cstddef>

#include "datum/DatumCatalogue.h"
#include "datum/DatumSource.h"
#include "support/Errors.h"
#include "support/FpGuard.h"
#include "support/Log.h"
#include "support/Text.h"

namespace orvex {

namespace detail {

namespace {

constexpr int kNullRecord = 998;
constexpr int kStep2Offset = 12;  // codes of Step2 are those of Step1 and this

/// Room that a caller's text buffer must have.
constexpr std::size_t kTextCapacity = 256;

/// A failed check reports this line and its code.
constexpr int kCheckLine = 200;

enum Message : int {
  kMsgEllipsoidRadius = 20249,
  kMsgEllipsoidFlattening = 20250,
  kMsgSourceDatum = 20260,
  kMsgDestinationDatum = 20261,
  kMsgMethod = 20262,
  kMsgEllipsoid = 20263,
  kMsgPrimeMeridian = 20264,
  kMsgShiftX = 20265,
  kMsgShiftY = 20266,
  kMsgShiftZ = 20267,
  kMsgRotationX = 20268,
  kMsgRotationY = 20269,
  kMsgRotationZ = 20270
};

/// Where the outcome of the checks goes.
struct Reporter {
  char* text;  // null or room for kTextCapacity
  bool throws;

  int Fail(int code, int messageId) const {
    if (text != nullptr) {
      char message[kMessageCapacity];
      CopyText(text, LoadMessageText(messageId, message) ? message : "Unable to load error message text!",
               kTextCapacity);
    }
    if (throws) ThrowError(kDatumSource, kCheckLine + code, messageId);
    return code;
  }
};

// Every comparison is written so that NaN passes it; what comes of it is unplottable points.

bool IsBuiltInOrUserDefined(DatumType datum) {
  return datum >= DT_USER_DEFINED && datum < DT_COUNT;
}

int CheckEllipsoid(const DATUM2WGS84& step, const Reporter& report) {
  if (step.Ellipsoid < ET_USER_DEFINED || step.Ellipsoid > ET_BESSEL_NGO_1948) return report.Fail(4, kMsgEllipsoid);
  if (step.Ellipsoid != ET_USER_DEFINED) return 0;
  if (step.MajorRadius <= 0) return report.Fail(13, kMsgEllipsoidRadius);
  if (step.Flattening < 0 || step.Flattening >= 1) return report.Fail(14, kMsgEllipsoidFlattening);
  return 0;
}

int CheckRanges(const DATUM2WGS84& step, const Reporter& report) {
  constexpr double kMostDegrees = 180, kMostMetres = FLT_MAX / 2, kMostArcseconds = 3600;
  const struct {
    int code, messageId;
    bool bursaOnly;
    double value, limit;
  } ranges[] = {
      {5, kMsgPrimeMeridian, false, step.PMShift, kMostDegrees},
      {6, kMsgShiftX, false, step.dx, kMostMetres},
      {7, kMsgShiftY, false, step.dy, kMostMetres},
      {8, kMsgShiftZ, false, step.dz, kMostMetres},
      {9, kMsgRotationX, true, step.rx, kMostArcseconds},
      {10, kMsgRotationY, true, step.ry, kMostArcseconds},
      {11, kMsgRotationZ, true, step.rz, kMostArcseconds},
  };
  for (const auto& range : ranges) {
    if (range.bursaOnly && step.Method != DM_BURSA) continue;
    if (range.value < -range.limit || range.value > range.limit) return report.Fail(range.code, range.messageId);
  }
  return 0;
}

int CheckStep(const DATUM2WGS84& step, const Reporter& report) {
  if (step.Method < DM_NOXFORM || step.Method > DM_NTV2 || step.Method == DM_HARN) return report.Fail(3, kMsgMethod);
  if (step.Method != DM_MOLODENSKY && step.Method != DM_BURSA) return 0;
  const int code = CheckEllipsoid(step, report);
  return code != 0 ? code : CheckRanges(step, report);
}

}  // namespace

int CheckXform(const DATUMXFORM* xform, char* text, bool bThrow) {
  const FpGuard guard;
  if (text != nullptr) *text = '\0';
  if (xform == nullptr) {
    if (text != nullptr) CopyText(text, "NULL Pointer to datum parameters", kTextCapacity);
    return kNullRecord;
  }
  const Reporter report{text, bThrow};
  if (!IsBuiltInOrUserDefined(xform->SrcDatum)) return report.Fail(1, kMsgSourceDatum);
  if (!IsBuiltInOrUserDefined(xform->DestDatum)) return report.Fail(2, kMsgDestinationDatum);
  if (xform->SrcDatum == DT_USER_DEFINED) {
    const int code = CheckStep(xform->Step1, report);
    if (code != 0) return code;
  }
  if (xform->DestDatum == DT_USER_DEFINED) {
    const int code = CheckStep(xform->Step2, report);
    return code != 0 ? code + kStep2Offset : 0;
  }
  DATUM2WGS84 step{};
  if (!LookUpStep(xform->DestDatum, DatumRole::Destination, step)) return report.Fail(2, kMsgDestinationDatum);
  return 0;
}

}  // namespace detail

int DatCheckParams(const DATUMXFORM* xform, char* text, bool bThrow) {
  detail::LogPrintf("DatCheckParams(xform=%p, text=%p, bThrow=%s)\n", static_cast<const void*>(xform),
                    static_cast<void*>(text), detail::BoolText(bThrow));
  return detail::CheckXform(xform, text, bThrow);
}

}  // namespace orvex
