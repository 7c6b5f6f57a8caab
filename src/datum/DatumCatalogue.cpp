// DatumCatalogue - the built-in datums by number, name and code.
#include "datum/DatumCatalogue.h"

#include "datum/DatumTable.h"
#include "support/Text.h"

namespace orvex {

namespace detail {

namespace {

constexpr const char kUserDefinedName[] = "User Defined";

template <class Predicate>
const DatumRow* FirstMatch(Predicate matches) {
  for (const DatumRow& row : Datums()) {
    if (matches(row)) return &row;
  }
  return nullptr;
}

bool StoreNumber(const DatumRow* row, DatumType* datum) {
  if (row == nullptr) return false;
  *datum = static_cast<DatumType>(row->number);
  return true;
}

}  // namespace

void ResolveEllipsoid(DATUM2WGS84& step) {
  if (step.Ellipsoid == ET_USER_DEFINED) return;
  step.MajorRadius = EllipsoidRadius(step.Ellipsoid);
  step.Flattening = EllipsoidFlattening(step.Ellipsoid);
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

}  // namespace detail

using namespace detail;

int DatNumDatums() {
  return DT_COUNT;
}

void DatGetDatumName(DatumType datum, char* name) {
  if (name == nullptr) return;
  const DatumRow* row = FindDatum(datum);
  CopyText(name, datum == DT_USER_DEFINED ? kUserDefinedName : row != nullptr ? row->name : "", kDatumNameCapacity);
}

bool DatGetDatumFromName(DatumType* datum, const char* name) {
  if (datum == nullptr || name == nullptr) return false;
  if (EqualIgnoringCase(name, kUserDefinedName)) {
    *datum = DT_USER_DEFINED;
    return true;
  }
  return StoreNumber(FirstMatch([name](const DatumRow& row) { return EqualIgnoringCase(row.name, name); }), datum);
}

bool DatGetDatumPOSCNumber(DatumType datum, int* posc) {
  const DatumRow* row = FindDatum(datum);
  if (row == nullptr || row->posc == 0) return false;
  if (posc != nullptr) *posc = row->posc;
  return true;
}

bool DatGetDatumFromPOSCNumber(DatumType* datum, int posc) {
  if (datum == nullptr || posc == 0) return false;
  return StoreNumber(FirstMatch([posc](const DatumRow& row) { return row.posc == posc; }), datum);
}

bool DatGetDatumMethod(DatumType datum, DatumMethod* method) {
  const DatumRow* row = FindDatum(datum);
  if (method == nullptr || row == nullptr) return false;
  *method = row->method;
  return true;
}

bool DatReversible(DatumType datum) {
  const DatumRow* row = FindDatum(datum);
  return row != nullptr && IsParametric(row->method);
}

bool DatGetDatumParams(DatumType datum, DATUM2WGS84* params) {
  // The parameters of a datum that cannot be a destination are not given out.
  return params != nullptr && LookUpStep(datum, DatumRole::Destination, *params);
}

}  // namespace orvex
