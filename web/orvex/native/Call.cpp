// Call - failures and results.
#include "Call.h"

#include <cfloat>
#include <cstdlib>
#include <limits>

namespace orvex::web {

Error& LastError() {
  static Error error;
  return error;
}

Paths& Result() {
  static Paths paths;
  return paths;
}

std::string& ResultText() {
  static std::string text;
  return text;
}

void MarkUnplottable(PROJPOINT* points, int count) {
  constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
  for (PROJPOINT* p = points; p != points + count; ++p) {
    const bool plotted = p->x < DBL_MAX && p->y < DBL_MAX;
    if (!plotted) *p = {kNone, kNone};
  }
}

}  // namespace orvex::web

using namespace orvex::web;

ORVEX_WEB int ow_error_id() {
  return LastError().messageId;
}
ORVEX_WEB const char* ow_error_text() {
  return LastError().text.c_str();
}
ORVEX_WEB const orvex::PROJPOINT* ow_result_points() {
  return Result().points.data();
}
ORVEX_WEB int ow_result_point_count() {
  return static_cast<int>(Result().points.size());
}
ORVEX_WEB const std::int32_t* ow_result_starts() {
  return Result().starts.data();
}
/// One more than there are shapes.
ORVEX_WEB int ow_result_start_count() {
  return static_cast<int>(Result().starts.size());
}
ORVEX_WEB void ow_points_delete(void* points) {
  std::free(points);
}
