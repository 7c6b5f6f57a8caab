// DatumDump - conversion records in the debug log.
#include "datum/DatumDump.h"

#include "ellipsoids/Ellipsoid.h"
#include "support/Flag.h"
#include "support/Log.h"

namespace orvex::detail {

namespace {

const char* MethodName(DatumMethod method) {
  static constexpr const char* kNames[] = {"DM_NOXFORM", "DM_NADCON", "DM_BURSA", "DM_MOLODENSKY",
                                           "DM_HARN",    "DM_MRE",    "DM_NTV2"};
  return method >= DM_NOXFORM && method <= DM_NTV2 ? kNames[method] : "*UNKNOWN*";
}

void DumpStep(const DATUM2WGS84* step) {
  LogPrintf("  DATUM2WGS84 (Pointer=%p)\n", static_cast<const void*>(step));
  LogPrintf("    Method:          %d (%s)\n", step->Method, MethodName(step->Method));
  LogPrintf("    bInverse:        %s\n", BoolText(IsSet(step->bInverse)));
  LogPrintf("    PMShift:         %f\n", step->PMShift);
  if (step->Method == DM_MOLODENSKY || step->Method == DM_BURSA) {
    LogPrintf("    dx:              %f\n", step->dx);
    LogPrintf("    dy:              %f\n", step->dy);
    LogPrintf("    dz:              %f\n", step->dz);
  }
  if (step->Method == DM_BURSA) {
    LogPrintf("    rx:              %f\n", step->rx);
    LogPrintf("    ry:              %f\n", step->ry);
    LogPrintf("    rz:              %f\n", step->rz);
    LogPrintf("    k:               %f\n", step->k);
  }
  LogPrintf("    Ellipsoid:       %d (%s", step->Ellipsoid, EllipsoidNameInDump(step->Ellipsoid));  // left open
  LogPrintf("    MajorRadius:     %f\n", step->MajorRadius);
  LogPrintf("    Flattening:      %f\n", step->Flattening);
}

}  // namespace

void DumpXform(const DATUMXFORM* record) {
  LogPrintf("DATUMXFORM (Pointer=%p)\n", static_cast<const void*>(record));
  LogPrintf("  SrcDatum:     %d\n", record->SrcDatum);
  LogPrintf("  DestDatum:    %d\n", record->DestDatum);
  LogPrintf("Step1:\n");
  DumpStep(&record->Step1);
  LogPrintf("Step2:\n");
  DumpStep(&record->Step2);
  LogPrintf("  bUnplottable: %s\n", BoolText(IsSet(record->bUnplottable)));
}

}  // namespace orvex::detail
