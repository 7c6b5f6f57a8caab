// GeorefTransform - the wrapper that owns a georeference handle, alone or together with others.
#include <new>
#include <utility>

#include "orvex/georef.h"
#include "support/Errors.h"

namespace orvex {

namespace {

constexpr int kLineNoOwner = 40;  // reported when there is no room to share a handle

std::shared_ptr<void> NewSystem(const GEOREF* g) {
  void* const system = RefCreateSystem(g);
  if (system == nullptr) return nullptr;
  try {
    return {system, RefDeleteSystem};  // deletes the system when it throws
  } catch (const std::bad_alloc&) {
    detail::ThrowError("OrvexGeoRef", kLineNoOwner, detail::kMsgOutOfMemory);
  }
}

}  // namespace

CGeorefTransform::CGeorefTransform() = default;

CGeorefTransform::CGeorefTransform(const GEOREF* g) : m_hRef(NewSystem(g)) {}

CGeorefTransform::CGeorefTransform(const CGeorefTransform& other) {
  GEOREF record;
  if (other.GetInfo(&record)) m_hRef = NewSystem(&record);
}

CGeorefTransform& CGeorefTransform::operator=(const CGeorefTransform& other) = default;

CGeorefTransform::~CGeorefTransform() = default;

bool CGeorefTransform::Create(const GEOREF* g) {
  // The old system is let go of last: the record may be its own (GetInfo), with control arrays that it holds.
  const std::shared_ptr<void> old = std::move(m_hRef);
  m_hRef = NewSystem(g);
  return IsCreated();
}

void CGeorefTransform::Delete() {
  m_hRef.reset();
}

bool CGeorefTransform::IsCreated() const {
  return m_hRef != nullptr;
}

bool CGeorefTransform::Forward(GEOREFPOINT* pts, int n) {
  return RefForward(m_hRef.get(), pts, n);
}

bool CGeorefTransform::GetInfo(GEOREF* g) const {
  return RefGetHandleInfo(m_hRef.get(), g);
}

bool CGeorefTransform::ComputeError(double* pTotalError, double* pControlError) const {
  return RefComputeError(m_hRef.get(), pTotalError, pControlError);
}

}  // namespace orvex
