// GeorefTransform - the wrapper that owns a georeference handle, alone or together with others.
#include "georef/System.h"
#include "support/SharedHandle.h"

namespace orvex {

using namespace detail;

namespace {

constexpr int kLineNoOwner = 40;  // reported when there is no room to share a handle

std::shared_ptr<void> NewSystem(const GEOREF* g) {
  return ShareHandle(RefCreateSystem(g), RefDeleteSystem, "OrvexGeoRef", kLineNoOwner);
}

// Whether a record has control arrays that a handle holds, as RefGetHandleInfo gives them.
bool HoldsControls(const void* handle, const GEOREF* g) {
  if (handle == nullptr || g == nullptr) return false;
  const GEOREF& own = static_cast<const System*>(handle)->record;
  return own.pSrc != nullptr && (g->pSrc == own.pSrc || g->pDst == own.pDst);
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
  // A record of the present system (GetInfo) needs that system's control arrays until the fit is done.
  const std::shared_ptr<void> kept = HoldsControls(m_hRef.get(), g) ? m_hRef : nullptr;
  Delete();
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
