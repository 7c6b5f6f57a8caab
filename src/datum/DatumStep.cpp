// DatumStep - the choice of the instruction set.
#include "datum/DatumStep.h"

#include "points/Levels.h"

namespace orvex::detail {

ORVEX_AT_EVERY_LEVEL(DatumOperations, kDatumOperations)

const DatumOperations& DatumOperationsFor(int count) {
  return AtLevelFor<ORVEX_LEVELS_OF(kDatumOperations)>(count);
}

}  // namespace orvex::detail
