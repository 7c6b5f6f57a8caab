// Map projections: the parameter record, handles, conversion of point arrays and the parameter catalogue.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include <orvex/ellipsoid.h>
#include <orvex/export.h>

namespace orvex {

/// The projections. The value is the row of the projection table; any integer may be cast to the type.
enum ProjType : std::int32_t {
  PT_LATLONG = 0,
  PT_MERCATOR = 1,
  PT_ALBERS = 2,
  PT_MILLER = 3,
  PT_UTM = 4,
  PT_LAMBERT = 5,
  PT_STEREOGRAPHIC = 6,
  PT_ORTHOGRAPHIC = 7,
  PT_MOLLWEIDE = 8,
  PT_STATEPLANE27 = 9,
  PT_STATEPLANE83 = 10,
  PT_POLYCONIC = 11,
  PT_HOTINE = 12,
  PT_EQUICYLINDRICAL = 13,
  PT_ROBINSON = 14,
  PT_VANDERGRINTEN = 15,
  PT_CASSINI = 16,
  PT_TRANSVERSEMERCATOR = 17,
  PT_GAUSSKRUGER = 18,
  PT_SINUSOIDAL = 19,
  PT_LAMBERTAZIMUTHAL = 20,
  PT_BONNE = 21,
  PT_ROBINSONSTERLING = 22,
  PT_ECKERT4 = 23,
  PT_ECKERT6 = 24,
  PT_OBLIQUEMERCATOR = 25,
  PT_EQUICONIC = 26,
  PT_GNOMONIC = 27,
  PT_AZIMUTHALEQUI = 28,
  PT_UNDEFINED = 999  ///< "undefined": has a name, but no table row
};

#pragma pack(push, 1)

/// Projection parameters: byte-packed, 396 bytes, copied whole. Zero-fill it, then set what the projection uses
/// (ProjEnumParam lists it). Angles in decimal degrees. A field may lie on an odd address: copy it before taking a
/// reference.
struct PROJDATA {
  ProjType Type;               ///< 0: the projection
  double Scale;                ///< 4: factor on every projected coordinate, after the false origin is added; 0 means 1
  double xOrg;                 ///< 12: false easting, unscaled map units
  double yOrg;                 ///< 20: false northing, unscaled map units
  double Lat0;                 ///< 28: central latitude
  double Lon0;                 ///< 36: central longitude
  double Lat1;                 ///< 44: first standard parallel
  double Lat2;                 ///< 52: second standard parallel
  double Lat3;                 ///< 60: third latitude
  double Lon1;                 ///< 68: first longitude
  double Lon2;                 ///< 76: second longitude
  double Lon3;                 ///< 84: third longitude
  double K0;                   ///< 92: scale factor at the centre; 0 means 1 (0.9996 for UTM)
  bool bSouth;                 ///< 100: UTM: southern hemisphere, false northing 10000000
  std::int32_t Zone;           ///< 101: StateZoneType for state plane; kept for the caller for UTM, which follows Lon0
  bool bUseAlpha;              ///< 105: oblique: centre and azimuth Alpha instead of two points
  double Alpha;                ///< 106: azimuth of the central line, degrees east of north
  bool bRotate;                ///< 114: oblique: rotate u/v to x/y
  bool bUOffset;               ///< 115: oblique: count u from the centre instead of from the natural origin
  EllipsoidType Ellipsoid;     ///< 116: 0: radius and flattening as given below, else both are filled from the table
  double MajorRadius;          ///< 120: semi-major axis, metres
  double Flattening;           ///< 128: flattening f, 0 <= f < 1 (not 1/f); 0 selects spherical formulas
  std::int32_t iResult;        ///< 136: 1 when the last call left unplottable points, else 0
  bool bWrapLon;               ///< 140: some projections then wrap the longitude difference into +-180; set by the host
  std::uint8_t Reserved[255];  ///< 141: carried along, never read
};

/// One point: longitude and latitude in decimal degrees, or easting and northing in map units. Both fields are DBL_MAX
/// when the point is unplottable; test by equality.
struct PROJPOINT {
  double x, y;
};

#pragma pack(pop)

static_assert(sizeof(PROJDATA) == 396 && sizeof(PROJPOINT) == 16);
static_assert(offsetof(PROJDATA, Lat0) == 28 && offsetof(PROJDATA, K0) == 92 && offsetof(PROJDATA, bSouth) == 100);
static_assert(offsetof(PROJDATA, Zone) == 101 && offsetof(PROJDATA, Alpha) == 106 &&
              offsetof(PROJDATA, Ellipsoid) == 116);
static_assert(offsetof(PROJDATA, iResult) == 136 && offsetof(PROJDATA, bWrapLon) == 140 &&
              offsetof(PROJDATA, Reserved) == 141);

/// Number of projections: 29.
ORVEX_API int ORVEX_CALL ProjNumProjections();

/// Name and capability mask of a projection.
///   name  receives the display name ("undefined" for PT_UNDEFINED, "" outside the table); null is allowed; 64
///   characters do
/// Returns the mask (six bits whose meaning belongs to the caller); 0 outside the table.
ORVEX_API unsigned int ORVEX_CALL ProjGetProjectionInfo(ProjType type, char* name);

/// Checks a record without making a handle; stops at the first failed check.
///   message  null, or room for 256 characters: receives the text of the failed check, else ""
///   bThrow   throw shr::Exception with the check's message id (20230 to 20256) instead of returning 1
/// Returns 0 when valid, 1 when a check failed, 998 for a null record (never thrown).
ORVEX_API int ORVEX_CALL ProjCheckParams(const PROJDATA* pProjData, char* message, bool bThrow);

/// Makes a projection handle: a completed copy of the record.
///   pProjData  null: returns null. The call also writes into it: radius and flattening of a built-in ellipsoid; for
///              UTM the false origin (500000, 0 or 10000000) and a zero K0 as 0.9996.
/// In the handle a zero Scale and a zero K0 become 1. Throws shr::Exception for the first failed check of
/// ProjCheckParams, and with id 20200 for an ellipsoid that cannot be used where ProjCheckParams does not look at it
/// (PT_UNDEFINED and the state plane types). Free the handle with ProjDeleteProjection.
ORVEX_API void* ORVEX_CALL ProjCreateProjection(PROJDATA* pProjData);

/// Frees a handle; null is ignored.
ORVEX_API void ORVEX_CALL ProjDeleteProjection(void* hProj);

/// Copies the handle's completed record. False when either pointer is null.
ORVEX_API bool ORVEX_CALL ProjGetHandleInfo(void* hProj, PROJDATA* pProjData);

/// 1 when the last conversion with this handle left unplottable points, else 0; 0 for a null handle.
ORVEX_API int ORVEX_CALL ProjResult(void* hProj);

/// Projects points in place: longitude/latitude in degrees to easting/northing in map units.
///   hProj  handle from ProjCreateProjection; null: returns false, nothing touched
///   pPts   nPts points. Null or nPts below 1 throws shr::Exception with id 20200
/// Longitudes are reduced modulo 360 keeping their sign, latitudes beyond a pole are folded back at the same longitude.
/// A point that cannot be projected gets DBL_MAX in both fields and ProjResult becomes 1; its neighbours are
/// unaffected. PT_LATLONG only screens: points stay in degrees. Returns false when the call as a whole failed. O(nPts),
/// no allocation. One handle must not be used by two threads at once; different handles may.
ORVEX_API bool ORVEX_CALL ProjForward(void* hProj, PROJPOINT* pPts, int nPts);

/// Converts points in place: easting/northing in map units to longitude/latitude in degrees. As ProjForward, except
/// that a point that was not finite on entry becomes unplottable without setting ProjResult by itself.
ORVEX_API bool ORVEX_CALL ProjInverse(void* hProj, PROJPOINT* pPts, int nPts);

// ---- parameter catalogue: every settable field by number, for dialogs and generic storage ----

/// Value types of parameters.
enum ProjDataType : std::int32_t {
  PDT_DOUBLE = 0,     ///< 64-bit float
  PDT_BOOL = 1,       ///< 8-bit bool
  PDT_PROJTYPE = 2,   ///< ProjType, 32 bits
  PDT_STATEZONE = 3,  ///< StateZoneType, 32 bits
  PDT_ELLIPSOID = 4   ///< EllipsoidType, 32 bits
};

/// Number of parameters the projection uses; -1 for a type outside the table.
ORVEX_API int ORVEX_CALL ProjNumParams(ProjType type);
/// Id of the parameter at `index` in display order; 0 when there is none.
ORVEX_API int ORVEX_CALL ProjEnumParam(ProjType type, int index);
/// Whether the projection uses the parameter. Id 0 answers true for every type in the table.
ORVEX_API bool ORVEX_CALL ProjUsesParam(ProjType type, int paramId);
/// Describes a parameter (ids 1 to 22). False for an unknown id, else fills each output that is not null.
///   name    room for at least 80 characters
///   offset, size  place of the value in PROJDATA, bytes
ORVEX_API bool ORVEX_CALL ProjParamInfo(int paramId, char* name, ProjDataType* type, int* offset, int* size);
/// Copies a parameter's bytes out of the record; false for an unknown id or a null pointer.
ORVEX_API bool ORVEX_CALL ProjGetParam(PROJDATA* pData, int paramId, void* value);
/// Copies a parameter's bytes into the record without judging them; false for an unknown id or a null pointer.
ORVEX_API bool ORVEX_CALL ProjSetParam(PROJDATA* pData, int paramId, void* value);

/// Callbacks of the preclippers (clip.h) for lines and for polygons of nParts closed rings. The arrays belong to the
/// library and may be overwritten until the callback returns; false stops the preclipper.
using PROJLINECALLBACK = bool(ORVEX_CALL*)(void* pUser, int nPts, PROJPOINT* pPts);
using PROJFILLCALLBACK = bool(ORVEX_CALL*)(void* pUser, int nParts, const int* pCounts, PROJPOINT* pPts);

/// Owns one projection handle. Copying makes an independent handle with the same parameters; assignment shares the
/// handle, which lives until the last object that shares it lets go.
class ORVEX_API CProjector {
 public:
  CProjector();
  /// As ProjCreateProjection; throws shr::Exception for bad parameters.
  CProjector(PROJDATA* pProjData);
  CProjector(const CProjector& other);
  CProjector& operator=(const CProjector& other);
  virtual ~CProjector();

  /// Deletes the present handle and makes a new one; true when there is one now.
  bool Create(PROJDATA* pProjData);
  void Delete();
  /// The free functions of the same names with this object's handle.
  bool Forward(PROJPOINT* pPts, int nPts);
  bool Inverse(PROJPOINT* pPts, int nPts);
  int Result() const;
  bool GetInfo(PROJDATA* pProjData) const;
  bool LLInProjection(const PROJPOINT* pPt) const;
  bool LLOffsetSplitObject(const PROJPOINT* pPts, unsigned int nPts, double* pdx, double* pdy) const;
  bool LLPreclipPolyline(void* pUser, int nPts, const PROJPOINT* pPts, PROJLINECALLBACK pLine) const;
  bool LLPreclipPolygon(void* pUser, int nParts, const int* pCounts, const PROJPOINT* pPts, PROJFILLCALLBACK pFill,
                        PROJLINECALLBACK pLine) const;

 private:
  std::shared_ptr<void> m_hProj;
};

/// A chain of projected points for the host's own use: storage and value semantics only.
class ORVEX_API CPROJCHAIN {
 public:
  CPROJCHAIN();
  CPROJCHAIN(const CPROJCHAIN& other);
  CPROJCHAIN& operator=(const CPROJCHAIN& other);
  ~CPROJCHAIN();

  std::vector<PROJPOINT> Points;
  std::int32_t iValue;
  std::vector<std::int32_t> Counts;
};

}  // namespace orvex
