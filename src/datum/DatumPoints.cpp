// DatumPoints - datum conversions of points, once for each instruction set.
#include "datum/DatumStep.h"
#include "datum/grids/NadconShift.h"
#include "datum/grids/Ntv2Shift.h"
#include "datum/methods/BursaWolf.h"
#include "datum/methods/Molodensky.h"
#include "datum/methods/Mre.h"
#include "math/Normalize.h"
#include "points/PointLoop.h"

namespace orvex::detail::ORVEX_LEVEL {

namespace {

template <class Prepared>
const Prepared& Of(const DatumStep& step) {
  return *static_cast<const Prepared*>(step.prepared);
}

/// Runs a step over a block and takes what cannot be plotted out of the lanes. Compiled once: all steps together are
/// much code.
[[gnu::noinline]] void RunStep(const DatumStep& step, Point<Real>& p, MaskOf<Real>& plottable, MaskOf<Real>& outside) {
  MaskOf<Real> inside = Yes<Real>();
  switch (step.kind) {
    case StepKind::Molodensky:
      Shift(Of<Molodensky>(step), p);
      break;
    case StepKind::BursaWolf:
      Shift(Of<BursaWolf>(step), p);
      break;
    case StepKind::Regression:
      Shift(Of<MreDatum>(step), p);
      break;
    case StepKind::Nadcon:
      Shift(Of<NadconFiles>(step), p);
      break;
    case StepKind::Ntv2Forward:
      inside = ShiftForward(Of<Ntv2Step>(step), p);
      break;
    case StepKind::Ntv2Inverse:
      plottable = plottable & ShiftInverse(Of<Ntv2Step>(step), p, inside);
      break;
    case StepKind::ExactMolodensky:
      plottable = plottable & ShiftExactly(Of<Molodensky>(step), p);
      break;
    case StepKind::MolodenskyBack:
      plottable = plottable & ShiftBack(Of<Molodensky>(step), p);
      break;
    case StepKind::ExactBursaWolf:
      ShiftExactly(Of<BursaWolf>(step), p);
      break;
    case StepKind::BursaWolfBack:
      plottable = plottable & ShiftBack(Of<BursaWolf>(step), p);
      break;
    case StepKind::ExactNadcon:
      inside = ShiftExactly(Of<NadconFiles>(step), p);
      break;
    case StepKind::Nothing:
      break;
  }
  outside = outside | !inside;
}

/// What is done to every point before and after the steps.
struct OnGlobe {
  ORVEX_INLINE MaskOf<Real> IsPlain(const Point<Real>& p) const { return IsOnGlobe(p.x, p.y); }
  ORVEX_INLINE void Enter(Point<Real>&) const {}
  bool EnterOne(double& x, double& y, bool& flagged) const {
    Screen(x, y, flagged);
    if (IsMarked(x, y)) flagged = true;
    x = NormalizeLon(x);
    y = NormalizeLat(y);
    return !IsMarked(x, y);
  }
  ORVEX_INLINE void Leave(Point<Real>& p, MaskOf<Real>& plottable) const {
    plottable = plottable & IsFinite(p.x) & IsFinite(p.y);
    p.x = Select(plottable, p.x, Real(0));
    p.y = Select(plottable, p.y, Real(0));
    if (!All(IsOnGlobe(p.x, p.y))) NormalizeEach(p.x, p.y);
  }
};

/// The same for exact computation: latitudes are not folded.
struct BetweenPoles : OnGlobe {
  bool EnterOne(double& x, double& y, bool& flagged) const {
    const bool beyond = IsFinite(y) && Abs(y) > 90;
    if (OnGlobe::EnterOne(x, y, flagged) && !beyond) return true;
    x = y = DBL_MAX;
    flagged = true;
    return false;
  }
  ORVEX_INLINE void Leave(Point<Real>& p, MaskOf<Real>& plottable) const {
    plottable = plottable & (Abs(p.y) <= Real(90));
    OnGlobe::Leave(p, plottable);
  }
};

template <class Stage>
ORVEX_INLINE bool ConvertThrough(const Stage& stage, const PointView& points, int count, const DatumStep& first,
                                 const DatumStep& second, MaskOf<Real>& outside) {
  const auto operation = [&](Point<Real>& p) -> Plot<Real> {
    const Real turn = Select(Abs(p.x) > Real(180), CopySign(Real(360), p.x), Real(0));
    p.x = p.x - turn;
    MaskOf<Real> plottable = Yes<Real>();
    RunStep(first, p, plottable, outside);
    RunStep(second, p, plottable, outside);
    p.x = p.x + turn;
    return plottable;
  };
  return ConvertPoints(points, count, stage, operation, "OrvexDatum");
}

bool Convert(const PointView& points, int count, const DatumStep& first, const DatumStep& second, bool exact) {
  MaskOf<Real> outside = No<Real>();
  if (!exact) return ConvertThrough(OnGlobe{}, points, count, first, second, outside);
  const bool flagged = ConvertThrough(BetweenPoles{}, points, count, first, second, outside);
  return flagged || Any(outside);
}

void ShiftAlone(const PointView& points, int count, const DatumStep& step) {
  const auto operation = [&step](Point<Real>& p) -> Plot<Real> {
    MaskOf<Real> plottable = Yes<Real>(), outside = No<Real>();
    RunStep(step, p, plottable, outside);
    return plottable;
  };
  ConvertPoints(points, count, AsTheyAre{}, operation, "OrvexDatum");
}

}  // namespace

const DatumOperations kDatumOperations{Convert, ShiftAlone};

}  // namespace orvex::detail::ORVEX_LEVEL
