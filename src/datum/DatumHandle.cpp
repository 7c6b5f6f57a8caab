// DatumHandle - datum handles and the class that owns one.
#include <cstdlib>
#include <new>

#include "datum/DatumCheck.h"
#include "datum/DatumDump.h"
#include "datum/DatumSource.h"
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
  return ShareHandle(DatCreateDatum(xform), std::free, kDatumSource, kLineNoOwner);
}

}  // namespace

void* DatCreateDatum(const DATUMXFORM* xform) {
  const FpGuard guard;
  LogPrintf("DatCreateDatum(pDatumData=%p)\n", static_cast<const void*>(xform));
  if (xform == nullptr) return nullptr;
  if (LogEnabled()) DumpXform(xform);
  CheckXform(xform, nullptr, true);
  void* handle = std::malloc(sizeof(DATUMXFORM));
  return handle != nullptr ? new (handle) DATUMXFORM(*xform) : nullptr;
}

void DatDeleteDatum(void* handle) {
  LogDelete(handle);
  std::free(handle);
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

CDatumTransform::CDatumTransform() = default;

CDatumTransform::CDatumTransform(const DATUMXFORM* xform) : m_hDatum(MakeShared(xform)) {}

CDatumTransform::CDatumTransform(const CDatumTransform& other) : m_hDatum(MakeShared(RecordOf(other.m_hDatum.get()))) {}

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

bool CDatumTransform::GetInfo(DATUMXFORM* out) const {
  return DatGetHandleInfo(m_hDatum.get(), out);
}

bool CDatumTransform::HadUnplottables() const {
  return DatHadUnplottables(m_hDatum.get());
}

}  // namespace orvex
