// DatumStep - one step of a datum conversion, ready to run over points.
#pragma once

#include "points/Level.h"
#include "points/PointView.h"

namespace orvex::detail {

enum class StepKind {
  Nothing,
  Molodensky,
  BursaWolf,
  Regression,
  Nadcon,
  Ntv2Forward,
  Ntv2Inverse,
  // Exact computation; what is prepared is the step from the datum, also for the way back.
  ExactMolodensky,
  MolodenskyBack,
  ExactBursaWolf,
  BursaWolfBack,
  ExactNadcon
};

/// What runs, and what it was prepared from: a Molodensky, a BursaWolf, an MreDatum, a NadconFiles or an Ntv2Grid,
/// which must outlive it.
struct DatumStep {
  StepKind kind = StepKind::Nothing;
  const void* prepared = nullptr;
};

/// Takes points (degrees) through both steps in place: screened, normalised, longitudes within +-180 for the steps, and
/// all of it once more afterwards. Answers whether a point is unplottable, before or after. Exactly computed, a
/// latitude beyond a pole is, and a point that no grid holds is told as well.
using ConvertByDatum = bool(const PointView& points, int count, const DatumStep& first, const DatumStep& second,
                            bool exact);
/// Takes points through one step and nothing else; what holds a marker stays as it is.
using ShiftByDatum = void(const PointView& points, int count, const DatumStep& step);

struct DatumOperations {
  ConvertByDatum* convert;
  ShiftByDatum* shift;
};

namespace ORVEX_LEVEL {
extern const DatumOperations kDatumOperations;
}

/// Those of the instruction set in use, for a call of a number of points.
const DatumOperations& DatumOperationsFor(int count);

}  // namespace orvex::detail
