/// \file
/// Georeferencing: transforms from one plane to another fitted to pairs of control points.
#pragma once

#include <cstdint>
#include <memory>

#include <orvex/export.h>

namespace orvex {

/// \addtogroup georef
/// \{

/// How a georeference transform is made. The value is the index of RefMethodName.
enum TransformMethod : std::int32_t {
  RM_HELMERT = 0,             ///< similarity: scale, rotation, two shifts; least squares, at least 2 controls
  RM_AFFINEPOLYNOMIAL = 1,    ///< terms 1, x, y; at least 3 controls
  RM_POLYNOMIAL1 = 2,         ///< bilinear: 1, x, y, xy; at least 4 controls
  RM_POLYNOMIAL2 = 3,         ///< all terms to degree 2; at least 6 controls
  RM_POLYNOMIAL3 = 4,         ///< all terms to degree 3; at least 10 controls
  RM_AFFINECOEFFICIENTS = 5,  ///< the record's own six coefficients, no fit
  RM_THINPLATE = 6,           ///< r^2 ln r; warps 6 to 11 pass through every control; at least 3 controls
  RM_NATURALCUBIC = 7,        ///< r^3, as shr::WM_NATURAL_CUBIC
  RM_MARCOV = 8,              ///< as shr::WM_MARCOV
  RM_EXPONENTIAL = 9,         ///< as shr::WM_EXPONENTIAL
  RM_RATIONALQUADRATIC = 10,  ///< as shr::WM_RATIONAL_QUADRATIC
  RM_INVERSEDISTANCE = 11,    ///< as shr::WM_INVERSE_DISTANCE
  RM_NONE = 12                ///< no method
};

/// One point of either plane, converted in place by RefForward.
struct GEOREFPOINT {
  double x;  ///< column, easting or whatever else the plane counts first
  double y;  ///< row, northing or whatever else the plane counts second
};

#pragma pack(push, 1)
/// Georeference record, byte-packed, 272 bytes, copied whole.
struct GEOREF {
  TransformMethod Method;  ///< how the transform is made
  GEOREFPOINT* pSrc;       ///< source control points (RefAllocControls)
  GEOREFPOINT* pDst;       ///< destination control points
  std::int32_t nControls;  ///< points in each array
  double Coeff[6];         ///< X = Coeff[0] + x*Coeff[1] + y*Coeff[2], Y = Coeff[3] + x*Coeff[4] + y*Coeff[5]
  std::uint8_t Reserved[272 - 4 - 2 * sizeof(void*) - 4 - 48];  ///< not interpreted
};
#pragma pack(pop)
static_assert(sizeof(GEOREF) == 272);

/// Allocates two zero-filled control arrays of n points on the C heap. False (pointers null, count 0) for n below 1,
/// when memory runs out, or for a null record. Arrays the record already held are not freed.
ORVEX_API bool ORVEX_CALL RefAllocControls(GEOREF* g, int n);
/// Frees both arrays and clears pointers and count; null is ignored.
ORVEX_API void ORVEX_CALL RefFreeControls(GEOREF* g);

/// Fits the transform and returns a handle with private copies of the control arrays; null when the method is unknown,
/// the controls do not determine the transform (too few, coincident, collinear, not finite, DBL_MAX), or g is null.
/// Throws shr::Exception when memory runs out: 20200 for the handle, 20201 in the fit. Free it with RefDeleteSystem.
ORVEX_API void* ORVEX_CALL RefCreateSystem(const GEOREF* g);
/// Frees a handle; null is ignored.
ORVEX_API void ORVEX_CALL RefDeleteSystem(void* h);
/// Transforms n points in place, source to destination. A point that holds DBL_MAX is passed over; one whose image is
/// not finite becomes DBL_MAX twice. Time for a point is constant for methods 0 to 5 and proportional to the number of
/// controls for the warps. False for a null handle; null points or n below 1 throw shr::Exception with id 20200. One
/// handle must not be used by two threads at once.
ORVEX_API bool ORVEX_CALL RefForward(void* h, GEOREFPOINT* pts, int n);
/// Copies the handle's record; its control pointers are the handle's own and stay owned by it. False for null pointers.
ORVEX_API bool ORVEX_CALL RefGetHandleInfo(void* h, GEOREF* g);

/// Destination coordinates for the four corners (0,0), (w,0), (w,h), (0,h) of a raster by the record's coefficients
/// become its control points. Only for method 5 and w, h of at least 1; else false and the record is unchanged.
/// Arrays the record already held are not freed.
ORVEX_API bool ORVEX_CALL RefCoeffToControls(GEOREF* g, int iWidth, int iHeight);
/// Fits the affine coefficients to the record's controls (at least 3, method neither 5 nor RM_NONE) and makes it a
/// record of method 5. Else false and the record is unchanged.
ORVEX_API bool ORVEX_CALL RefControlsToCoeff(GEOREF* g);
/// Adapts the record to a resampled raster that covers the same ground. False and unchanged for sizes below 1 or when
/// no affine coefficients can be had. Afterwards the record has method 5, the new coefficients and the raster's corners
/// as controls. The arrays it held are freed, so they must be its own (RefAllocControls) or null.
ORVEX_API bool ORVEX_CALL RefResize(GEOREF* g, int iOldW, int iOldH, int iNewW, int iNewH);
/// Residuals at the control points, in destination units.
/// \param h              handle from RefCreateSystem
/// \param pTotalError    null, or receives the root mean square
/// \param pControlError  null, or receives nControls distances between transformed source and destination
/// \returns false for a null handle or a record without control points.
ORVEX_API bool ORVEX_CALL RefComputeError(void* h, double* pTotalError, double* pControlError);
/// Name of a method, for example "Thin Plate Spline"; null outside 0 to 11.
ORVEX_API const char* ORVEX_CALL RefMethodName(TransformMethod m);

/// Owns at most one georeference handle. Copying fits anew from the other's record; assignment shares the handle, which
/// lives until the last object that shares it lets go.
class ORVEX_API CGeorefTransform {
 public:
  CGeorefTransform();                               ///< without a handle
  CGeorefTransform(const GEOREF* g);                ///< as RefCreateSystem; without a handle where that fails
  CGeorefTransform(const CGeorefTransform& other);  ///< fits anew from the other's record
  CGeorefTransform& operator=(const CGeorefTransform& other);  ///< shares the other's handle
  virtual ~CGeorefTransform();                                 ///< lets go of the handle

  /// Deletes the present handle and makes a new one; true when there is one now.
  bool Create(const GEOREF* g);
  void Delete();                          ///< lets go of the handle
  bool IsCreated() const;                 ///< whether there is a handle
  bool Forward(GEOREFPOINT* pts, int n);  ///< RefForward; false without a handle
  bool GetInfo(GEOREF* g) const;          ///< RefGetHandleInfo; false without a handle
  /// RefComputeError; false without a handle.
  bool ComputeError(double* pTotalError, double* pControlError) const;

 private:
  std::shared_ptr<void> m_hRef;
};

/// \}

}  // namespace orvex
