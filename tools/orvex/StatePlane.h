// StatePlane - the two projection types that stand for a zone.
#pragma once

#include <orvex/projection.h>

namespace orvex::tool {

inline bool IsStatePlane(const PROJDATA& record) {
  return record.Type == PT_STATEPLANE27 || record.Type == PT_STATEPLANE83;
}

}  // namespace orvex::tool
