// ExpandStatePlane - turns a state plane record into the zone's own projection.
#include "zones/ExpandStatePlane.h"

#include "ellipsoids/Ellipsoid.h"
#include "zones/StatePlaneZone.h"

namespace orvex::detail {

namespace {

bool Expand(PROJDATA* rec, StatePlaneSet set) {
  if (rec == nullptr) return false;
  rec->Lon0 = rec->Lat0 = rec->Lon1 = rec->Lat1 = rec->Lon2 = rec->Lat2 = 0;
  rec->xOrg = rec->yOrg = rec->K0 = 0;
  if (rec->Zone < 0 || rec->Zone >= SZ_NONE) return false;
  const StatePlaneZone& zone = set[static_cast<std::size_t>(rec->Zone)];
  if (zone.type == PT_UNDEFINED) return false;
  rec->Type = zone.type;
  rec->Ellipsoid = zone.ellipsoid;
  rec->Lon0 = zone.lon0.degrees;
  rec->Lat0 = zone.lat0.degrees;
  rec->Lat1 = zone.lat1.degrees;
  rec->Lat2 = zone.lat2.degrees;
  if (zone.type == PT_HOTINE) {  // centre and azimuth, coordinates counted from the centre and rectified
    rec->Alpha = zone.alpha.degrees;
    rec->bUseAlpha = rec->bRotate = rec->bUOffset = true;
  }
  rec->K0 = zone.k0;
  rec->xOrg = zone.xOrg;
  rec->yOrg = zone.yOrg;
  rec->MajorRadius = MajorRadiusOf(zone.ellipsoid);
  rec->Flattening = FlatteningOf(zone.ellipsoid);
  return true;
}

}  // namespace

bool ExpandStatePlane1927(PROJDATA* rec) {
  return Expand(rec, StatePlaneZones1927());
}

bool ExpandStatePlane1983(PROJDATA* rec) {
  return Expand(rec, StatePlaneZones1983());
}

bool ExpandStatePlane(PROJDATA* rec) {
  if (rec == nullptr) return false;
  if (rec->Type == PT_STATEPLANE27) return ExpandStatePlane1927(rec);
  if (rec->Type == PT_STATEPLANE83) return ExpandStatePlane1983(rec);
  return false;
}

}  // namespace orvex::detail
