// DatumSource - the name under which the sources of the datum driver report.
#pragma once

namespace orvex::detail {

inline constexpr const char kDatumSource[] = "OrvexDatum";

}  // namespace orvex::detail
