/** \file
 * The part of Orvex that other languages need, as plain C: projections, datum conversions and errors.
 *
 * Every function that can fail answers a status and, given a buffer of ORVEX_MESSAGE_SIZE characters, the text that
 * belongs to it ("" when there is nothing to say); the buffer may be null. The look-ups by name do without the text.
 * Null pointers and counts below 1 are bad arguments. Nothing is ever thrown. Angles are in degrees, lengths in metres;
 * x is longitude (east positive) or easting, y latitude or northing. One handle must not be used by two threads at
 * once. */
#ifndef ORVEX_ORVEX_C_H
#define ORVEX_ORVEX_C_H

#include <stdint.h>

#include <orvex/accuracy.h>
#include <orvex/export.h>

/** \addtogroup orvex_c
 * \{ */

#ifdef __cplusplus
extern "C" {
#endif

/* Statuses. Anything above 2 is the id of a message of the library, 20200 to 20281. */
#define ORVEX_OK 0               /**< status: done */
#define ORVEX_UNPLOTTABLE 1      /**< status: done, but points that could not be computed hold DBL_MAX twice */
#define ORVEX_FAILED 2           /**< status: not done, nothing more is known; also a name that is not found */
#define ORVEX_BAD_ARGUMENT 20205 /**< status: a null pointer or a count below 1 */

#define ORVEX_MESSAGE_SIZE 256 /**< characters of a buffer for a message, the terminator included */

#pragma pack(push, 1)

/** The parameters of a projection, byte-packed, 396 bytes; the same record as orvex::PROJDATA, which describes the
 * fields. Set every byte to zero, then the fields that the projection uses. */
typedef struct orvex_projection {
  int32_t type;          /**< number of the projection, as orvex_projection_number tells it */
  double scale;          /**< factor on every projected coordinate; 0 means 1 */
  double x_org;          /**< false easting, map units */
  double y_org;          /**< false northing, map units */
  double lat0;           /**< central latitude, degrees */
  double lon0;           /**< central longitude, degrees */
  double lat1;           /**< first standard parallel, degrees */
  double lat2;           /**< second standard parallel, degrees */
  double lat3;           /**< third latitude, degrees */
  double lon1;           /**< first longitude, degrees */
  double lon2;           /**< second longitude, degrees */
  double lon3;           /**< third longitude, degrees */
  double k0;             /**< scale factor at the centre; 0 means 1 (0.9996 for UTM) */
  uint8_t south;         /**< UTM: 1 for the southern hemisphere */
  int32_t zone;          /**< state plane zone; UTM follows lon0 */
  uint8_t use_alpha;     /**< oblique: 1 for centre and azimuth instead of two points */
  double alpha;          /**< azimuth of the central line, degrees east of north */
  uint8_t rotate;        /**< oblique: 1 to rotate u and v to x and y */
  uint8_t u_offset;      /**< oblique: 1 to count u from the centre */
  int32_t ellipsoid;     /**< number of the ellipsoid; 0: radius and flattening as given */
  double major_radius;   /**< semi-major axis, metres */
  double flattening;     /**< f, not 1/f; 0 selects the sphere */
  int32_t result;        /**< 1 when the last call left unplottable points */
  uint8_t wrap_lon;      /**< 1: some projections wrap the longitude difference into +-180 */
  uint8_t reserved[255]; /**< carried along, never read */
} orvex_projection;

/** A point, converted in place; DBL_MAX twice where it cannot be computed. */
typedef struct orvex_point {
  double x; /**< longitude (degrees, east positive) or easting */
  double y; /**< latitude (degrees, north positive) or northing */
} orvex_point;

#pragma pack(pop)

/** Number of a projection by its display name, without regard to ASCII case; ORVEX_FAILED for a name not known. */
ORVEX_API int ORVEX_CALL orvex_projection_number(const char* name, int32_t* number);
/** Number of an ellipsoid in the same way. */
ORVEX_API int ORVEX_CALL orvex_ellipsoid_number(const char* name, int32_t* number);
/** Number of a datum in the same way. */
ORVEX_API int ORVEX_CALL orvex_datum_number(const char* name, int32_t* number);

/** Makes a projection from a record, which is completed on the way (radius and flattening of the ellipsoid, for UTM the
 * false origin). *projection becomes null when it fails. */
ORVEX_API int ORVEX_CALL orvex_create(orvex_projection* record, void** projection, char* message);
/** Frees a projection; null is ignored. */
ORVEX_API void ORVEX_CALL orvex_delete(void* projection);
/** Converts points in place, longitude and latitude to x and y. ORVEX_OK, ORVEX_UNPLOTTABLE, or a failure. */
ORVEX_API int ORVEX_CALL orvex_forward(void* projection, orvex_point* points, int count, char* message);
/** Converts points in place, x and y to longitude and latitude, with the same statuses. */
ORVEX_API int ORVEX_CALL orvex_inverse(void* projection, orvex_point* points, int count, char* message);
/** orvex_forward for coordinates in columns, with the same bits: point i is lon[i], lat[i], its image x[i], y[i].
 * Results go into columns of their own or into the given ones. */
ORVEX_API int ORVEX_CALL orvex_forward_columns(void* projection, const double* lon, const double* lat, double* x,
                                               double* y, int count, char* message);
/** orvex_inverse for coordinates in columns, in the same way. */
ORVEX_API int ORVEX_CALL orvex_inverse_columns(void* projection, const double* x, const double* y, double* lon,
                                               double* lat, int count, char* message);

/** Chooses how a projection computes, PA_STATED or PA_EXACT; orvex::ProjSetAccuracy describes both. ORVEX_OK,
 * ORVEX_BAD_ARGUMENT for a null projection or an unknown value, ORVEX_FAILED where its parameters have no exact form.
 */
ORVEX_API int ORVEX_CALL orvex_set_accuracy(void* projection, int accuracy);

/** Makes a conversion between two built-in datums. *datum becomes null when it fails. */
ORVEX_API int ORVEX_CALL orvex_datum_create(int32_t source, int32_t destination, void** datum, char* message);
/** Frees a conversion; null is ignored. */
ORVEX_API void ORVEX_CALL orvex_datum_delete(void* datum);
/** Converts longitudes and latitudes in place, degrees. ORVEX_OK, ORVEX_UNPLOTTABLE, or a failure. */
ORVEX_API int ORVEX_CALL orvex_datum_convert(void* datum, orvex_point* points, int count, char* message);
/** orvex_datum_convert for coordinates in columns. */
ORVEX_API int ORVEX_CALL orvex_datum_convert_columns(void* datum, const double* from_lon, const double* from_lat,
                                                     double* to_lon, double* to_lat, int count, char* message);
/** The same choice for a conversion between datums. */
ORVEX_API int ORVEX_CALL orvex_datum_set_accuracy(void* datum, int accuracy);

/** \} */

#ifdef __cplusplus
}

using orvex::PA_EXACT;
using orvex::PA_STATED;
#endif

#endif
