// ProjectionInfo - names and capability masks of the projections.
#include <cstring>

#include "orvex/projection.h"
#include "projections/ProjectionTable.h"
#include "support/Log.h"

namespace orvex {

int ORVEX_CALL ProjNumProjections() {
  detail::LogPrintf("ProjNumProjections()\n");
  return static_cast<int>(detail::ProjectionTable().size());
}

unsigned int ORVEX_CALL ProjGetProjectionInfo(ProjType type, char* name) {
  detail::LogPrintf("ProjGetProjectionInfo(type=%d, name=%p)\n", static_cast<int>(type), static_cast<void*>(name));
  const detail::ProjectionRow* row = detail::FindRow(type);
  if (name != nullptr) {
    const char* const text = row != nullptr ? row->name : type == PT_UNDEFINED ? "undefined" : "";
    std::memcpy(name, text, std::strlen(text) + 1);
  }
  return row != nullptr ? row->mask : 0;
}

}  // namespace orvex
