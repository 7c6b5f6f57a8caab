// DatumCatalogue - the built-in datums by number, name and code.
#include "datum/DatumCatalogue.h"

#include "datum/DatumTable.h"
#include "ellipsoids/Ellipsoid.h"
#include "support/FirstMatch.h"
#include "support/Log.h"
#include "support/Text.h"

namespace orvex {

namespace detail {

namespace {

constexpr const char kUserDefinedName[] = "User Defined";

bool StoreNumber(const DatumRow* row, DatumType* datum) {
  if (row == nullptr) return false;
  *datum = static_cast<DatumType>(row->number);
  return true;
}

}  // namespace

void ResolveEllipsoid(DATUM2WGS84& step) {
  if (step.Ellipsoid == ET_USER_DEFINED) return;
  step.MajorRadius = MajorRadiusOf(step.Ellipsoid);
  step.Flattening = FlatteningOf(step.Ellipsoid);
}

bool LookUpStep(DatumType datum, DatumRole role, DATUM2WGS84& step) {
  const DatumRow* row = FindDatum(datum);
  if (row == nullptr) return false;
  if (role == DatumRole::Destination && (row->method == DM_NADCON || row->method == DM_MRE)) return false;
  step.Method = row->method;
  step.bInverse = false;
  step.Ellipsoid = static_cast<EllipsoidType>(row->ellipsoid);
  step.PMShift = row->pmShift;
  step.dx = row->dx;
  step.dy = row->dy;
  step.dz = row->dz;
  step.rx = row->rx;
  step.ry = row->ry;
  step.rz = row->rz;
  step.k = row->k;
  ResolveEllipsoid(step);
  return true;
}

void CopyDatumName(DatumType datum, char* name) {
  const DatumRow* row = FindDatum(datum);
  CopyText(name, datum == DT_USER_DEFINED ? kUserDefinedName : row != nullptr ? row->name : "", kDatumNameCapacity);
}

bool FindDatumNamed(const char* name, DatumType* datum) {
  if (EqualIgnoringCase(name, kUserDefinedName)) {
    *datum = DT_USER_DEFINED;
    return true;
  }
  return StoreNumber(FirstMatch(Datums(), [name](const DatumRow& row) { return EqualIgnoringCase(row.name, name); }),
                     datum);
}

bool MethodOf(DatumType datum, DatumMethod* method) {
  const DatumRow* row = FindDatum(datum);
  if (row == nullptr) return false;
  *method = row->method;
  return true;
}

bool IsReversible(DatumType datum) {
  const DatumRow* row = FindDatum(datum);
  return row != nullptr && IsParametric(row->method);
}

}  // namespace detail

using namespace detail;

int DatNumDatums() {
  LogPrintf("DatNumDatums()\n");
  return DT_COUNT;
}

void DatGetDatumName(DatumType datum, char* name) {
  LogPrintf("DatGetDatumName(datum=%d, name=%p)\n", static_cast<int>(datum), static_cast<void*>(name));
  if (name != nullptr) CopyDatumName(datum, name);
}

bool DatGetDatumFromName(DatumType* datum, const char* name) {
  LogPrintf("DatGetDatumFromName(datum=%p, name=\"%s\")\n", static_cast<void*>(datum), LogText(name));
  return datum != nullptr && name != nullptr && FindDatumNamed(name, datum);
}

bool DatGetDatumPOSCNumber(DatumType datum, int* posc) {
  LogPrintf("DatGetDatumPOSCNumber(datum=%d, posc=%p)\n", static_cast<int>(datum), static_cast<void*>(posc));
  const DatumRow* row = FindDatum(datum);
  if (row == nullptr || row->posc == 0) return false;
  if (posc != nullptr) *posc = row->posc;
  return true;
}

bool DatGetDatumFromPOSCNumber(DatumType* datum, int posc) {
  LogPrintf("DatGetDatumFromPOSCNumber(datum=%p, posc=%d)\n", static_cast<void*>(datum), posc);
  if (datum == nullptr || posc == 0) return false;
  return StoreNumber(FirstMatch(Datums(), [posc](const DatumRow& row) { return row.posc == posc; }), datum);
}

bool DatGetDatumMethod(DatumType datum, DatumMethod* method) {
  LogPrintf("DatGetDatumMethod(datum=%d, method=%p)\n", static_cast<int>(datum), static_cast<void*>(method));
  return method != nullptr && MethodOf(datum, method);
}

bool DatReversible(DatumType datum) {
  LogPrintf("DatReversible(datum=%d)\n", static_cast<int>(datum));
  return IsReversible(datum);
}

bool DatGetDatumParams(DatumType datum, DATUM2WGS84* params) {
  LogPrintf("DatGetDatumParams(datum=%d, params=%p)\n", static_cast<int>(datum), static_cast<void*>(params));
  // The parameters of a datum that cannot be a destination are not given out.
  return params != nullptr && LookUpStep(datum, DatumRole::Destination, *params);
}

}  // namespace orvex
