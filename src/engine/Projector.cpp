// Projector - the class that owns a projection handle.
#include "orvex/projection.h"

#include "orvex/clip.h"
#include "support/ExactHandles.h"
#include "support/Log.h"
#include "support/SharedHandle.h"

namespace orvex {

namespace {

constexpr int kNoMemoryLine = 604;  // reported when a handle cannot be shared

/// A handle of its own for a wrapper. The release is logged by each wrapper that lets go.
std::shared_ptr<void> Own(void* handle) {
  return detail::ShareHandle(handle, detail::FreeHandle, "Orvex", kNoMemoryLine);
}

/// A handle with the same parameters that computes the same way. Creation completes the record that it is given, so it
/// gets a copy: another thread may be copying the same object.
std::shared_ptr<void> OwnCopy(const void* handle) {
  if (handle == nullptr) return Own(ProjCreateProjection(nullptr));
  PROJDATA record = *static_cast<const PROJDATA*>(handle);
  std::shared_ptr<void> copy = Own(ProjCreateProjection(&record));
  detail::KeepChoice(handle, copy.get(), "Orvex", kNoMemoryLine);
  return copy;
}

}  // namespace

CProjector::CProjector() = default;

CProjector::CProjector(PROJDATA* pProjData) : m_hProj(Own(ProjCreateProjection(pProjData))) {}

CProjector::CProjector(const CProjector& other) : m_hProj(OwnCopy(other.m_hProj.get())) {}

CProjector& CProjector::operator=(const CProjector& other) = default;

CProjector::~CProjector() {
  Delete();
}

bool CProjector::Create(PROJDATA* pProjData) {
  Delete();
  m_hProj = Own(ProjCreateProjection(pProjData));
  return m_hProj != nullptr;
}

void CProjector::Delete() {
  detail::LogPrintf("ProjDeleteProjection(hProj=%p)\n", m_hProj.get());
  m_hProj.reset();
}

bool CProjector::Forward(PROJPOINT* pPts, int nPts) {
  return ProjForward(m_hProj.get(), pPts, nPts);
}

bool CProjector::Inverse(PROJPOINT* pPts, int nPts) {
  return ProjInverse(m_hProj.get(), pPts, nPts);
}

bool CProjector::ForwardColumns(const double* lon, const double* lat, double* x, double* y, int nPts) {
  return ProjForwardColumns(m_hProj.get(), lon, lat, x, y, nPts);
}

bool CProjector::InverseColumns(const double* x, const double* y, double* lon, double* lat, int nPts) {
  return ProjInverseColumns(m_hProj.get(), x, y, lon, lat, nPts);
}

int CProjector::Result() const {
  return ProjResult(m_hProj.get());
}

bool CProjector::GetInfo(PROJDATA* pProjData) const {
  return ProjGetHandleInfo(m_hProj.get(), pProjData);
}

bool CProjector::SetAccuracy(ProjAccuracy accuracy) {
  return ProjSetAccuracy(m_hProj.get(), accuracy);
}

ProjAccuracy CProjector::Accuracy() const {
  return ProjGetAccuracy(m_hProj.get());
}

bool CProjector::LLInProjection(const PROJPOINT* pPt) const {
  return ProjLLInProjection(m_hProj.get(), pPt);
}

bool CProjector::LLOffsetSplitObject(const PROJPOINT* pPts, unsigned int nPts, double* pdx, double* pdy) const {
  return ProjLLOffsetSplitObject(m_hProj.get(), pPts, nPts, pdx, pdy);
}

bool CProjector::LLPreclipPolyline(void* pUser, int nPts, const PROJPOINT* pPts, PROJLINECALLBACK pLine) const {
  return ProjLLPreclipPolyline(m_hProj.get(), pUser, nPts, pPts, pLine);
}

bool CProjector::LLPreclipPolygon(void* pUser, int nParts, const int* pCounts, const PROJPOINT* pPts,
                                  PROJFILLCALLBACK pFill, PROJLINECALLBACK pLine) const {
  return ProjLLPreclipPolygon(m_hProj.get(), pUser, nParts, pCounts, pPts, pFill, pLine);
}

}  // namespace orvex
