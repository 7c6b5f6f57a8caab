// Dump - projection records in the debug log.
#include "engine/Dump.h"

#include "ellipsoids/Ellipsoid.h"
#include "projections/ProjectionTable.h"
#include "support/Flag.h"
#include "support/Log.h"
#include "zones/StateZoneTable.h"

namespace orvex::detail {

void DumpProjData(const PROJDATA* data) {
  if (!LogEnabled()) return;
  LogPrintf("  PROJDATA (Pointer=%p)\n", static_cast<const void*>(data));
  if (data == nullptr) return;
  const PROJDATA d = *data;
  const ProjectionRow* row = FindRow(d.Type);
  LogPrintf("    Type:            %d (%s)\n", static_cast<int>(d.Type), row != nullptr ? row->name : "UNKNOWN");

  const auto number = [](const char* label, double value) { LogPrintf("    %-17s%f\n", label, value); };
  const auto flag = [](const char* label, bool value) { LogPrintf("    %-17s%s\n", label, BoolText(value)); };
  number("Scale:", d.Scale);
  number("xOrg:", d.xOrg);
  number("yOrg:", d.yOrg);
  number("Lat0:", d.Lat0);
  number("Lon0:", d.Lon0);
  number("Lat1:", d.Lat1);
  number("Lat2:", d.Lat2);
  number("Lat3:", d.Lat3);
  number("Lon1:", d.Lon1);
  number("Lon2:", d.Lon2);
  number("Lon3:", d.Lon3);
  number("K0:", d.K0);
  flag("bSouth:", IsSet(d.bSouth));
  const StateZoneRow* zone = FindStateZone(d.Zone);
  LogPrintf("    Zone:            %d (%s)\n", static_cast<int>(d.Zone), zone != nullptr ? zone->name : "UNKNOWN");
  flag("bUseAlpha:", IsSet(d.bUseAlpha));
  number("Alpha:", d.Alpha);
  flag("bRotate:", IsSet(d.bRotate));
  flag("bUOffset:", IsSet(d.bUOffset));
  LogPrintf("    Ellipsoid:       %d (%s)\n", static_cast<int>(d.Ellipsoid), EllipsoidNameInDump(d.Ellipsoid));
  number("MajorRadius:", d.MajorRadius);
  number("Flattening:", d.Flattening);
  LogPrintf("    iResult:         %d\n", static_cast<int>(d.iResult));
}

}  // namespace orvex::detail
