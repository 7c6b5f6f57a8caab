// Map projections: the parameter record, handles, conversion of point arrays and the parameter catalogue.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include <orvex/accuracy.h>
#include <orvex/export.h>
#include <orvex/projdata.h>

namespace orvex {

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

/// Chooses how a handle computes; a new one computes as stated. The choice is the handle's, not the record's.
///   hProj  handle from ProjCreateProjection; null: returns false
/// Returns whether the choice was taken: false, and the handle computes as before, for an unknown value, for parameters
/// with which the projection has no exact form (a cone that is none, a type outside the table, a latitude parameter
/// beyond a pole), and without memory to remember it. Exactly computed, forward gives the projection's definition to
/// rounding and inverse undoes it; longitudes count modulo a turn; latitudes beyond a pole and whatever the definition
/// does not cover become unplottable, both coordinates DBL_MAX. docs/accuracy.md has the differences, projection by
/// projection.
ORVEX_API bool ORVEX_CALL ProjSetAccuracy(void* hProj, ProjAccuracy accuracy);
/// How a handle computes; PA_STATED for a null handle.
ORVEX_API ProjAccuracy ORVEX_CALL ProjGetAccuracy(void* hProj);

/// Projects points in place: longitude/latitude in degrees to easting/northing in map units.
///   hProj  handle from ProjCreateProjection; null: returns false, nothing touched
///   pPts   nPts points. Null or nPts below 1 throws shr::Exception with id 20200
/// Longitudes are reduced modulo 360 keeping their sign, latitudes beyond a pole are folded back at the same longitude.
/// A point that cannot be projected gets DBL_MAX in both fields and ProjResult becomes 1; its neighbours are
/// unaffected. PT_LATLONG only screens: points stay in degrees. Returns false when the call as a whole failed. O(nPts),
/// no allocation. One handle must not be used by two threads at once; different handles may.
/// A point at which the formula asserts throws shr::Exception with id 20200: points before it have been converted, it
/// and those behind it are as they were given. With floating-point traps unmasked, points may be left half converted by
/// an exception or by false. Where one coordinate alone holds DBL_MAX it stays, and the formula passes the point by.
/// All of this of handles that compute as stated; ProjSetAccuracy has what is otherwise for those that compute exactly.
ORVEX_API bool ORVEX_CALL ProjForward(void* hProj, PROJPOINT* pPts, int nPts);

/// Converts points in place: easting/northing in map units to longitude/latitude in degrees. As ProjForward, except
/// that a point that was not finite on entry becomes unplottable without setting ProjResult by itself, and that degrees
/// too large for a double become DBL_MAX in that coordinate alone, without setting it either.
ORVEX_API bool ORVEX_CALL ProjInverse(void* hProj, PROJPOINT* pPts, int nPts);

/// ProjForward and ProjInverse for hosts that keep coordinates in columns, with the same bits: point i is lon[i],
/// lat[i], and its image x[i], y[i]. Results may go into columns of their own or into the given ones (then as in
/// place), but else must not overlap them; where a formula asserts, the columns hold results before that point and from
/// it on anything. No column may be null; none needs to be aligned.
ORVEX_API bool ORVEX_CALL ProjForwardColumns(void* hProj, const double* lon, const double* lat, double* x, double* y,
                                             int nPts);
ORVEX_API bool ORVEX_CALL ProjInverseColumns(void* hProj, const double* x, const double* y, double* lon, double* lat,
                                             int nPts);

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
  bool ForwardColumns(const double* lon, const double* lat, double* x, double* y, int nPts);
  bool InverseColumns(const double* x, const double* y, double* lon, double* lat, int nPts);
  int Result() const;
  bool GetInfo(PROJDATA* pProjData) const;
  /// ProjSetAccuracy and ProjGetAccuracy; a copy computes like the object that it is made from, Create starts anew.
  bool SetAccuracy(ProjAccuracy accuracy);
  ProjAccuracy Accuracy() const;
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
