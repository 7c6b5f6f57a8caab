// DatumHandle - datum handles and the class that owns one.
#include <cstdlib>
#include <new>

#include "datum/DatumCheck.h"
#include "datum/DatumDump.h"
#include "datum/DatumSource.h"
#include "support/ExactHandles.h"
#include "support/Flag.h"
#include "support/FpGuard.h"
#include "support/Log.h"
#include "support/SharedHandle.h"

namespace orvex {

using namespace detail;

namespace {

DATUMXFORM* RecordOf(void* handle) {
  return static_cast<DATUMXFORM*>(handle);
}

void LogDelete(const void* handle) {
  LogPrintf("DatDeleteDatum(hDatum=%p)\n", handle);
}

constexpr int kLineNoOwner = 450;  // reported when there is no room to share a handle

/// A handle of its own for a wrapper. Its release is not logged here but by each wrapper that lets go.
std::shared_ptr<void> MakeShared(const DATUMXFORM* xform) {
  return ShareHandle(DatCreateDatum(xform), FreeHandle, kDatumSource, kLineNoOwner);
}

/// The same for a copy, which computes like its original.
std::shared_ptr<void> MakeCopy(void* handle) {
  std::shared_ptr<void> copy = MakeShared(RecordOf(handle));
  if (handle != nullptr) KeepChoice(handle, copy.get(), kDatumSource, kLineNoOwner);
  return copy;
}

}  // namespace

void* DatCreateDatum(const DATUMXFORM* xform) {
  const FpGuard guard;
  LogPrintf("DatCreateDatum(pDatumData=%p)\n", static_cast<const void*>(xform));
  if (xform == nullptr) return nullptr;
  if (LogEnabled()) DumpXform(xform);
  CheckXform(xform, nullptr, true);
  void* handle = std::malloc(sizeof(DATUMXFORM));
  if (handle == nullptr) return nullptr;
  ForgetChoice(handle);
  return new (handle) DATUMXFORM(*xform);
}

void DatDeleteDatum(void* handle) {
  LogDelete(handle);
  FreeHandle(handle);
}

bool DatGetHandleInfo(void* handle, DATUMXFORM* out) {
  LogPrintf("DatGetHandleInfo(hDatum=%p, pDatumData=%p)\n", handle, static_cast<void*>(out));
  if (handle == nullptr || out == nullptr) return false;
  *out = *RecordOf(handle);
  return true;
}

bool DatHadUnplottables(void* handle) {
  LogPrintf("DatHadUnplottables(hDatum=%p)\n", handle);
  return handle != nullptr && IsSet(RecordOf(handle)->bUnplottable);
}

bool DatSetAccuracy(void* handle, ProjAccuracy accuracy) {
  LogPrintf("DatSetAccuracy(hDatum=%p, accuracy=%d)\n", handle, static_cast<int>(accuracy));
  if (handle == nullptr || (accuracy != PA_STATED && accuracy != PA_EXACT)) return false;
  const FpGuard guard;
  if (accuracy == PA_EXACT && !HasExactForm(*RecordOf(handle))) return false;
  return SetExact(handle, accuracy == PA_EXACT);
}

ProjAccuracy DatGetAccuracy(void* handle) {
  LogPrintf("DatGetAccuracy(hDatum=%p)\n", handle);
  return IsExact(handle) ? PA_EXACT : PA_STATED;
}

CDatumTransform::CDatumTransform() = default;

CDatumTransform::CDatumTransform(const DATUMXFORM* xform) : m_hDatum(MakeShared(xform)) {}

CDatumTransform::CDatumTransform(const CDatumTransform& other) : m_hDatum(MakeCopy(other.m_hDatum.get())) {}

CDatumTransform& CDatumTransform::operator=(const CDatumTransform& other) = default;

CDatumTransform::~CDatumTransform() {
  Delete();
}

bool CDatumTransform::Create(const DATUMXFORM* xform) {
  Delete();
  m_hDatum = MakeShared(xform);
  return IsCreated();
}

void CDatumTransform::Delete() {
  LogDelete(m_hDatum.get());
  m_hDatum.reset();
}

bool CDatumTransform::IsCreated() const {
  return m_hDatum != nullptr;
}

bool CDatumTransform::Convert(DATUMPOINT* pts, int n) {
  return DatConvertDatum(m_hDatum.get(), pts, n);
}

bool CDatumTransform::ConvertColumns(const double* fromLon, const double* fromLat, double* toLon, double* toLat,
                                     int n) {
  return DatConvertColumns(m_hDatum.get(), fromLon, fromLat, toLon, toLat, n);
}

bool CDatumTransform::GetInfo(DATUMXFORM* out) const {
  return DatGetHandleInfo(m_hDatum.get(), out);
}

bool CDatumTransform::HadUnplottables() const {
  return DatHadUnplottables(m_hDatum.get());
}

bool CDatumTransform::SetAccuracy(ProjAccuracy accuracy) {
  return DatSetAccuracy(m_hDatum.get(), accuracy);
}

ProjAccuracy CDatumTransform::Accuracy() const {
  return DatGetAccuracy(m_hDatum.get());
}

}  // namespace orvex
