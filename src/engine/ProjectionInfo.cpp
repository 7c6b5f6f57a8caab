// ProjectionInfo - names and capability masks of the projections.
#include <cstring>

#include "orvex/projection.h"
#include "projections/ProjectionTable.h"

namespace orvex {

int ORVEX_CALL ProjNumProjections() {
  return static_cast<int>(detail::ProjectionTable().size());
}

unsigned int ORVEX_CALL ProjGetProjectionInfo(ProjType type, char* name) {
  const detail::ProjectionRow* row = detail::FindRow(type);
  if (name != nullptr) {
    const char* const text = row != nullptr ? row->name : type == PT_UNDEFINED ? "undefined" : "";
    std::memcpy(name, text, std::strlen(text) + 1);
  }
  return row != nullptr ? row->mask : 0;
}

}  // namespace orvex
