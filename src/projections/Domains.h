// Domains - where each projection is defined and when an object must be drawn again. Degrees.
#pragma once

#include "orvex/projdata.h"

namespace orvex::detail {

/// Whether a point lies in the projection's domain.
using DomainFunction = bool(const PROJDATA* rec, const PROJPOINT* point);
/// Whether an object must be drawn again, moved by (dx, dy).
using OffsetFunction = bool(const PROJDATA* rec, const PROJPOINT* pts, unsigned nPts, double* dx, double* dy);

/// Less than 180 degrees of longitude from Lon0: most world maps.
DomainFunction InWorldBand;
/// The same without the poles.
DomainFunction InWorldBandBetweenPoles;
/// Less than 180 degrees of longitude from Greenwich, whatever Lon0.
DomainFunction InGreenwichBand;
/// Less than 45 degrees from Lon0: as far as a transverse Mercator map is accepted.
DomainFunction InTransverseBand;
/// Every point.
DomainFunction Everywhere;
/// The hemisphere about the centre Lat0/Lon0, its edge included.
DomainFunction InHemisphere;
/// Within 60 degrees of arc of the centre Lat1/Lon0, the edge included.
DomainFunction InGnomonicArc;
/// Within 170 degrees of arc of the centre Lat1/Lon0, the edge included.
DomainFunction InEquidistantArc;
/// Within 45 degrees of arc of the central line.
DomainFunction NearHotineLine;
DomainFunction NearTwoPointLine;

/// About Lon0: an object that touches or passes its western limit is repeated 360 degrees further east, else one that
/// reaches the eastern limit 360 degrees further west.
OffsetFunction CommonOffset;
/// The same about Greenwich.
OffsetFunction GreenwichOffset;
/// Objects are never repeated.
OffsetFunction NeverOffset;
/// The same, but an empty object gets its zero offsets as well.
OffsetFunction NeverOffsetEvenEmpty;

}  // namespace orvex::detail
