// OrvexGeoRef - georeference systems: control arrays, handles, conversion and residuals.
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <new>

#include "georef/GeoCoeff.h"
#include "georef/System.h"
#include "points/Elementary.h"
#include "support/Errors.h"
#include "support/FpGuard.h"
#include "support/Log.h"

namespace orvex {

using namespace detail;

namespace {

constexpr char kSource[] = "OrvexGeoRef";
constexpr int kLineNoHandle = 284, kLineNoControls = 294, kLineNoRegistration = 304, kLineNoFit = 320;
constexpr int kLineNullPoints = 655, kLineBadCount = 657, kLineBadMethod = 659;

constexpr const char* kMethodNames[] = {"Helmert",
                                        "Affine Polynomial",
                                        "1st Order Polynomial",
                                        "2nd Order Polynomial",
                                        "3rd Order Polynomial",
                                        "Precalculated Affine Coefficients",
                                        "Thin Plate Spline",
                                        "Natural Cubic Spline",
                                        "Marcov Spline",  // spelled so on purpose: hosts know the method by this name
                                        "Exponential Spline",
                                        "Rational Quadratic Spline",
                                        "Inverse Distance Squared"};
static_assert(std::size(kMethodNames) == RM_NONE);

bool IsMethod(TransformMethod m) {
  return m >= RM_HELMERT && m < RM_NONE;
}

// A zero-filled array on the C heap; null when there is no memory for it.
GEOREFPOINT* AllocPoints(int n) {
  return static_cast<GEOREFPOINT*>(std::calloc(static_cast<std::size_t>(n), sizeof(GEOREFPOINT)));
}

// Gives the copied record arrays of its own. False when memory runs out.
bool DuplicateControls(GEOREF& copy) {
  const GEOREFPOINT* const source = copy.pSrc;
  const GEOREFPOINT* const destination = copy.pDst;
  const int n = copy.nControls;
  copy.pSrc = nullptr;
  copy.pDst = nullptr;
  if (n < 1) return true;
  copy.pSrc = AllocPoints(n);
  copy.pDst = AllocPoints(n);
  if (copy.pSrc == nullptr || copy.pDst == nullptr) return false;
  std::copy_n(source, n, copy.pSrc);
  std::copy_n(destination, n, copy.pDst);
  return true;
}

void FreeArrays(GEOREF& g) {
  std::free(g.pSrc);
  std::free(g.pDst);
  g.pSrc = nullptr;
  g.pDst = nullptr;
  g.nControls = 0;
}

// Keeps what a record holds until its successor is complete: the old content comes back unless Commit is called, and
// the control arrays of whichever loses are freed.
class Replacement {
 public:
  explicit Replacement(GEOREF& record) : m_record(record), m_old(record) {}
  ~Replacement() {
    if (!m_done && m_record.pSrc != m_old.pSrc) FreeArrays(m_record);
    if (m_done) {
      FreeArrays(m_old);
    } else {
      m_record = m_old;
    }
  }
  Replacement(const Replacement&) = delete;
  Replacement& operator=(const Replacement&) = delete;

  void Detach() {
    m_record.pSrc = nullptr;
    m_record.pDst = nullptr;
    m_record.nControls = 0;
  }
  void Commit() { m_done = true; }

 private:
  GEOREF& m_record;
  GEOREF m_old;
  bool m_done = false;
};

}  // namespace

bool ORVEX_CALL RefAllocControls(GEOREF* g, int n) {
  Trace("RefAllocControls(pRefData=%p, nControls=%d)\n", static_cast<const void*>(g), n);
  if (g == nullptr) return false;
  g->pSrc = nullptr;
  g->pDst = nullptr;
  g->nControls = 0;
  if (n < 1) return false;
  GEOREFPOINT* const source = AllocPoints(n);
  GEOREFPOINT* const destination = source != nullptr ? AllocPoints(n) : nullptr;
  if (destination == nullptr) {
    std::free(source);
    return false;
  }
  g->pSrc = source;
  g->pDst = destination;
  g->nControls = n;
  return true;
}

void ORVEX_CALL RefFreeControls(GEOREF* g) {
  Trace("RefFreeControls(%p)\n", static_cast<const void*>(g));
  if (g != nullptr) FreeArrays(*g);
}

void* ORVEX_CALL RefCreateSystem(const GEOREF* g) {
  Trace("RefCreateSystem(pRefData=%p)\n", static_cast<const void*>(g));
  if (g == nullptr) return nullptr;
  const FpGuard guard;
  if (g->nControls > 0 && (g->pSrc == nullptr || g->pDst == nullptr)) return nullptr;
  SystemPtr system(static_cast<System*>(std::calloc(1, sizeof(System))));
  if (system == nullptr) Assert(kSource, kLineNoHandle);
  system->record = *g;
  if (!DuplicateControls(system->record)) Assert(kSource, kLineNoControls);
  system->registration = new (std::nothrow) shr::CImageRegistration;
  if (system->registration == nullptr) Assert(kSource, kLineNoRegistration);
  const bool fitted = WithinMemory(kSource, kLineNoFit, [&] { return FitSystem(*system); });
  return fitted ? system.release() : nullptr;
}

void ORVEX_CALL RefDeleteSystem(void* h) {
  Trace("RefDeleteSystem(hRef=%p)\n", h);
  SystemPtr(static_cast<System*>(h)).reset();
}

bool ORVEX_CALL RefForward(void* h, GEOREFPOINT* pts, int n) {
  Trace("RefForward(hRef=%p, pPts=%p, nPts=%d)\n", h, static_cast<const void*>(pts), n);
  if (h == nullptr) return false;
  const System& system = *static_cast<const System*>(h);
  if (pts == nullptr) Assert(kSource, kLineNullPoints);
  if (n < 1) Assert(kSource, kLineBadCount);
  if (!IsMethod(system.record.Method)) Assert(kSource, kLineBadMethod);
  const FpGuard guard;
  return Forward(system, pts, n);
}

bool ORVEX_CALL RefGetHandleInfo(void* h, GEOREF* g) {
  Trace("RefGetHandleInfo(hRef=%p, pGeoRef=%p)\n", h, static_cast<const void*>(g));
  if (h == nullptr || g == nullptr) return false;
  *g = static_cast<const System*>(h)->record;
  return true;
}

bool ORVEX_CALL RefComputeError(void* h, double* pTotalError, double* pControlError) {
  Trace("fefComputeError(hRef=%p, pTotalError=%p, pControlError=%p)\n", h,  // "fef": hosts' log readers look for it
        static_cast<const void*>(pTotalError), static_cast<const void*>(pControlError));
  if (h == nullptr) return false;
  const System& system = *static_cast<const System*>(h);
  const Controls controls = system.ControlPoints();
  const std::size_t n = controls.source.size();
  if (n == 0) return false;
  const FpGuard guard;
  double root = 0;  // of the sum of squares so far; no square is ever formed, so none overflows
  for (std::size_t i = 0; i < n; ++i) {
    GEOREFPOINT p = controls.source[i];
    if (!Forward(system, &p, 1)) return false;
    const double error = Hypot(p.x - controls.destination[i].x, p.y - controls.destination[i].y);
    if (pControlError != nullptr) pControlError[i] = error;
    root = Hypot(root, error);
  }
  if (pTotalError != nullptr) *pTotalError = root / std::sqrt(static_cast<double>(n));
  return true;
}

bool ORVEX_CALL RefControlsToCoeff(GEOREF* g) {
  Trace("RefCoeffToControls(pRefData=%p)\n", static_cast<const void*>(g));  // the other function's name, on purpose
  if (g == nullptr || g->Method == RM_AFFINECOEFFICIENTS || g->Method == RM_NONE) return false;
  if (g->nControls < 3 || g->pSrc == nullptr || g->pDst == nullptr) return false;
  GEOREF copy = *g;
  copy.Method = RM_AFFINEPOLYNOMIAL;
  void* const system = RefCreateSystem(&copy);
  if (system == nullptr) return false;
  const FpGuard guard;
  const bool stored = StoreCoefficients(CoefficientsOf(static_cast<const System*>(system)->fit), *g);
  RefDeleteSystem(system);
  if (stored) g->Method = RM_AFFINECOEFFICIENTS;
  return stored;
}

bool ORVEX_CALL RefCoeffToControls(GEOREF* g, int iWidth, int iHeight) {
  Trace("RefCoeffToControls(pRefData=%p, iWidth=%d, iHeight=%d)\n", static_cast<const void*>(g), iWidth, iHeight);
  if (g == nullptr || g->Method != RM_AFFINECOEFFICIENTS || iWidth < 1 || iHeight < 1) return false;
  const FpGuard guard;
  const AffineCoefficients coefficients = CoefficientsOf(*g);
  const auto corners = RasterCorners(iWidth, iHeight);
  GEOREF filled = *g;
  if (!RefAllocControls(&filled, static_cast<int>(corners.size()))) return false;
  for (std::size_t i = 0; i < corners.size(); ++i) {
    filled.pSrc[i] = corners[i];
    filled.pDst[i] = coefficients(corners[i]);
  }
  *g = filled;
  return true;
}

bool ORVEX_CALL RefResize(GEOREF* g, int iOldW, int iOldH, int iNewW, int iNewH) {
  Trace("RefResize(pRefData=%p, iOldW=%d, iOldH=%d, iNewW=%d, iNewH=%d)\n", static_cast<const void*>(g), iOldW, iOldH,
        iNewW, iNewH);
  if (g == nullptr || iOldW < 1 || iOldH < 1 || iNewW < 1 || iNewH < 1) return false;
  Replacement resized(*g);
  if (g->Method != RM_AFFINECOEFFICIENTS && !RefControlsToCoeff(g)) return false;
  resized.Detach();
  const AffineCoefficients coefficients = CoefficientsOf(*g);
  RefFreeControls(g);
  if (!RefCoeffToControls(g, iNewW, iNewH)) return false;
  {
    const FpGuard guard;
    const auto ground = RasterCorners(iOldW, iOldH);  // the new corners cover the ground of the old ones
    for (std::size_t i = 0; i < ground.size(); ++i) g->pDst[i] = coefficients(ground[i]);
  }
  g->Method = RM_AFFINEPOLYNOMIAL;
  if (!RefControlsToCoeff(g)) return false;
  resized.Commit();
  return true;
}

const char* ORVEX_CALL RefMethodName(TransformMethod m) {
  Trace("RefMethodName(Method=%d)\n", static_cast<int>(m));
  return IsMethod(m) ? kMethodNames[m] : nullptr;
}

}  // namespace orvex
