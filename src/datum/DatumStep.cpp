// DatumStep - the choice of the instruction set.
#include "datum/DatumStep.h"

#include "points/Levels.h"

namespace orvex::detail {

#if defined(ORVEX_X86_LEVELS)
namespace avx2 {
extern const DatumOperations kDatumOperations;
}
namespace avx512 {
extern const DatumOperations kDatumOperations;
}
#endif

const DatumOperations& ActiveDatumOperations() {
  return AtLevel<ORVEX_EVERY_LEVEL(kDatumOperations)>();
}

}  // namespace orvex::detail
