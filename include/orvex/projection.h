/// \file
/// Map projections: the parameter record, handles, conversion of point arrays and the parameter catalogue.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include <orvex/accuracy.h>
#include <orvex/export.h>
#include <orvex/projdata.h>

namespace orvex {

/// \addtogroup projection
/// \{

/// Number of projections: 29.
ORVEX_API int ORVEX_CALL ProjNumProjections();

/// Name and capability mask of a projection.
/// \param type  the projection
/// \param name  receives the display name ("undefined" for PT_UNDEFINED, "" outside the table); null is allowed; 64
///              characters do
/// \returns the mask (six bits whose meaning belongs to the caller); 0 outside the table.
ORVEX_API unsigned int ORVEX_CALL ProjGetProjectionInfo(ProjType type, char* name);

/// Checks a record without making a handle; stops at the first failed check.
/// \param pProjData  the record
/// \param message    null, or room for 256 characters: receives the text of the failed check, else ""
/// \param bThrow     throw shr::Exception with the check's message id (20230 to 20256) instead of returning 1
/// \returns 0 when valid, 1 when a check failed, 998 for a null record (never thrown).
ORVEX_API int ORVEX_CALL ProjCheckParams(const PROJDATA* pProjData, char* message, bool bThrow);

/// Makes a projection handle: a completed copy of the record.
/// \param pProjData  null: returns null. The call also writes into it: radius and flattening of a built-in ellipsoid;
///                   for UTM the false origin (500000, 0 or 10000000) and a zero K0 as 0.9996.
///
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
/// \param hProj     handle from ProjCreateProjection; null: returns false
/// \param accuracy  PA_STATED or PA_EXACT
/// \returns whether the choice was taken: false, and the handle computes as before, for an unknown value, for
/// parameters with which the projection has no exact form (a cone that is none, a type outside the table, a latitude
/// parameter beyond a pole), and without memory to remember it
///
/// Exactly computed, forward gives the projection's definition to rounding and inverse undoes it; longitudes count
/// modulo a turn; latitudes beyond a pole and whatever the definition does not cover become unplottable, both
/// coordinates DBL_MAX. docs/accuracy.md has the differences, projection by projection.
ORVEX_API bool ORVEX_CALL ProjSetAccuracy(void* hProj, ProjAccuracy accuracy);
/// How a handle computes; PA_STATED for a null handle.
ORVEX_API ProjAccuracy ORVEX_CALL ProjGetAccuracy(void* hProj);

/// Projects points in place: longitude/latitude in degrees to easting/northing in map units.
/// \param hProj  handle from ProjCreateProjection; null: returns false, nothing touched
/// \param pPts   nPts points. Null or nPts below 1 throws shr::Exception with id 20200
/// \param nPts   number of points
/// \returns false when the call as a whole failed
///
/// Longitudes are reduced modulo 360 keeping their sign, latitudes beyond a pole are folded back at the same longitude.
/// A point that cannot be projected gets DBL_MAX in both fields and ProjResult becomes 1; its neighbours are
/// unaffected. PT_LATLONG only screens: points stay in degrees. O(nPts), no allocation. One handle must not be used by
/// two threads at once; different handles may.
///
/// A point at which the formula asserts throws shr::Exception with id 20200: points before it have been converted, it
/// and those behind it are as they were given. With floating-point traps unmasked, points may be left half converted by
/// an exception or by false. Where one coordinate alone holds DBL_MAX it stays, and the formula passes the point by.
/// All of this of handles that compute as stated; ProjSetAccuracy has what is otherwise for those that compute exactly.
ORVEX_API bool ORVEX_CALL ProjForward(void* hProj, PROJPOINT* pPts, int nPts);

/// Converts points in place: easting/northing in map units to longitude/latitude in degrees. As ProjForward, except
/// that a point that was not finite on entry becomes unplottable without setting ProjResult by itself, and that degrees
/// too large for a double become DBL_MAX in that coordinate alone, without setting it either.
ORVEX_API bool ORVEX_CALL ProjInverse(void* hProj, PROJPOINT* pPts, int nPts);

/// ProjForward for hosts that keep coordinates in columns, with the same bits: point i is lon[i],
/// lat[i], and its image x[i], y[i]. Results may go into columns of their own or into the given ones (then as in
/// place), but else must not overlap them; where a formula asserts, the columns hold results before that point and from
/// it on anything. No column may be null; none needs to be aligned.
ORVEX_API bool ORVEX_CALL ProjForwardColumns(void* hProj, const double* lon, const double* lat, double* x, double* y,
                                             int nPts);
/// ProjInverse for columns, in the same way.
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
/// \param paramId  the parameter
/// \param name     room for at least 80 characters
/// \param type     receives the type of its value
/// \param offset   receives the place of the value in PROJDATA, bytes
/// \param size     receives the size of the value, bytes
ORVEX_API bool ORVEX_CALL ProjParamInfo(int paramId, char* name, ProjDataType* type, int* offset, int* size);
/// Copies a parameter's bytes out of the record; false for an unknown id or a null pointer.
ORVEX_API bool ORVEX_CALL ProjGetParam(PROJDATA* pData, int paramId, void* value);
/// Copies a parameter's bytes into the record without judging them; false for an unknown id or a null pointer.
ORVEX_API bool ORVEX_CALL ProjSetParam(PROJDATA* pData, int paramId, void* value);

/// Receives a line from a preclipper (clip.h): nPts points and what the caller gave as pUser. The array belongs to the
/// library and may be overwritten until the callback returns; false stops the preclipper.
using PROJLINECALLBACK = bool(ORVEX_CALL*)(void* pUser, int nPts, PROJPOINT* pPts);
/// Receives a polygon of nParts closed rings, pCounts[i] points each, one after the other, in the same way.
using PROJFILLCALLBACK = bool(ORVEX_CALL*)(void* pUser, int nParts, const int* pCounts, PROJPOINT* pPts);

/// Owns one projection handle. Copying makes an independent handle with the same parameters; assignment shares the
/// handle, which lives until the last object that shares it lets go.
class ORVEX_API CProjector {
 public:
  CProjector();                                    ///< without a handle
  CProjector(PROJDATA* pProjData);                 ///< as ProjCreateProjection; throws for bad parameters
  CProjector(const CProjector& other);             ///< a handle of its own, with the same parameters
  CProjector& operator=(const CProjector& other);  ///< shares the other's handle
  virtual ~CProjector();                           ///< lets go of the handle

  /// Deletes the present handle and makes a new one; true when there is one now.
  bool Create(PROJDATA* pProjData);
  void Delete();                            ///< lets go of the handle
  bool Forward(PROJPOINT* pPts, int nPts);  ///< ProjForward with this object's handle
  bool Inverse(PROJPOINT* pPts, int nPts);  ///< ProjInverse with this object's handle
  /// ProjForwardColumns with this object's handle.
  bool ForwardColumns(const double* lon, const double* lat, double* x, double* y, int nPts);
  /// ProjInverseColumns with this object's handle.
  bool InverseColumns(const double* x, const double* y, double* lon, double* lat, int nPts);
  int Result() const;                       ///< ProjResult of this object's handle
  bool GetInfo(PROJDATA* pProjData) const;  ///< ProjGetHandleInfo; false without a handle
  /// ProjSetAccuracy; a copy computes like the object that it is made from, Create starts anew.
  bool SetAccuracy(ProjAccuracy accuracy);
  ProjAccuracy Accuracy() const;                    ///< ProjGetAccuracy; PA_STATED without a handle
  bool LLInProjection(const PROJPOINT* pPt) const;  ///< ProjLLInProjection for one point
  /// ProjLLOffsetSplitObject.
  bool LLOffsetSplitObject(const PROJPOINT* pPts, unsigned int nPts, double* pdx, double* pdy) const;
  /// ProjLLPreclipPolyline.
  bool LLPreclipPolyline(void* pUser, int nPts, const PROJPOINT* pPts, PROJLINECALLBACK pLine) const;
  /// ProjLLPreclipPolygon.
  bool LLPreclipPolygon(void* pUser, int nParts, const int* pCounts, const PROJPOINT* pPts, PROJFILLCALLBACK pFill,
                        PROJLINECALLBACK pLine) const;

 private:
  std::shared_ptr<void> m_hProj;
};

/// A chain of projected points for the host's own use: storage and value semantics only.
class ORVEX_API CPROJCHAIN {
 public:
  CPROJCHAIN();                                    ///< empty, iValue 0
  CPROJCHAIN(const CPROJCHAIN& other);             ///< a deep copy
  CPROJCHAIN& operator=(const CPROJCHAIN& other);  ///< a deep copy
  ~CPROJCHAIN();                                   ///< frees what it holds

  std::vector<PROJPOINT> Points;     ///< the points
  std::int32_t iValue;               ///< the host's own
  std::vector<std::int32_t> Counts;  ///< counts that belong to them, the host's own
};

/// \}

}  // namespace orvex
