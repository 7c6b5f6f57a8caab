/* The part of Orvex that other languages need, as plain C: projections, datum conversions and errors.
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

#ifdef __cplusplus
extern "C" {
#endif

/* Statuses. Anything above 2 is the id of a message of the library, 20200 to 20281. */
#define ORVEX_OK 0
#define ORVEX_UNPLOTTABLE 1 /* done; some points could not be computed and hold DBL_MAX in both coordinates */
#define ORVEX_FAILED 2      /* not done, nothing more is known; also a name that is not found */
#define ORVEX_BAD_ARGUMENT 20205

#define ORVEX_MESSAGE_SIZE 256

#pragma pack(push, 1)

/* The parameters of a projection, byte-packed, 396 bytes; the same record as orvex::PROJDATA, which describes the
 * fields. Set every byte to zero, then the fields that the projection uses. */
typedef struct orvex_projection {
  int32_t type;
  double scale;
  double x_org, y_org;
  double lat0, lon0, lat1, lat2, lat3, lon1, lon2, lon3;
  double k0;
  uint8_t south;
  int32_t zone;
  uint8_t use_alpha;
  double alpha;
  uint8_t rotate;
  uint8_t u_offset;
  int32_t ellipsoid;
  double major_radius;
  double flattening;
  int32_t result;
  uint8_t wrap_lon;
  uint8_t reserved[255];
} orvex_projection;

typedef struct orvex_point {
  double x, y;
} orvex_point;

#pragma pack(pop)

/* Numbers of a projection, an ellipsoid and a datum by their display names, without regard to ASCII case. */
ORVEX_API int ORVEX_CALL orvex_projection_number(const char* name, int32_t* number);
ORVEX_API int ORVEX_CALL orvex_ellipsoid_number(const char* name, int32_t* number);
ORVEX_API int ORVEX_CALL orvex_datum_number(const char* name, int32_t* number);

/* Makes a projection from a record, which is completed on the way (radius and flattening of the ellipsoid, for UTM the
 * false origin). *projection becomes null when it fails. */
ORVEX_API int ORVEX_CALL orvex_create(orvex_projection* record, void** projection, char* message);
/* Frees a projection; null is ignored. */
ORVEX_API void ORVEX_CALL orvex_delete(void* projection);
/* Converts points in place, longitude and latitude to x and y, or back. ORVEX_OK, ORVEX_UNPLOTTABLE, or a failure. */
ORVEX_API int ORVEX_CALL orvex_forward(void* projection, orvex_point* points, int count, char* message);
ORVEX_API int ORVEX_CALL orvex_inverse(void* projection, orvex_point* points, int count, char* message);
/* The same for coordinates in columns, with the same bits: point i is lon[i], lat[i], its image x[i], y[i]. Results go
 * into columns of their own or into the given ones. */
ORVEX_API int ORVEX_CALL orvex_forward_columns(void* projection, const double* lon, const double* lat, double* x,
                                               double* y, int count, char* message);
ORVEX_API int ORVEX_CALL orvex_inverse_columns(void* projection, const double* x, const double* y, double* lon,
                                               double* lat, int count, char* message);

/* Chooses how a projection computes, PA_STATED or PA_EXACT; orvex::ProjSetAccuracy describes both. ORVEX_OK,
 * ORVEX_BAD_ARGUMENT for a null projection or an unknown value, ORVEX_FAILED where its parameters have no exact form.
 */
ORVEX_API int ORVEX_CALL orvex_set_accuracy(void* projection, int accuracy);

/* Makes a conversion between two built-in datums. *datum becomes null when it fails. */
ORVEX_API int ORVEX_CALL orvex_datum_create(int32_t source, int32_t destination, void** datum, char* message);
/* Frees a conversion; null is ignored. */
ORVEX_API void ORVEX_CALL orvex_datum_delete(void* datum);
/* Converts longitudes and latitudes in place. */
ORVEX_API int ORVEX_CALL orvex_datum_convert(void* datum, orvex_point* points, int count, char* message);
ORVEX_API int ORVEX_CALL orvex_datum_convert_columns(void* datum, const double* from_lon, const double* from_lat,
                                                     double* to_lon, double* to_lat, int count, char* message);
/* The same choice for a conversion between datums. */
ORVEX_API int ORVEX_CALL orvex_datum_set_accuracy(void* datum, int accuracy);

#ifdef __cplusplus
}

using orvex::PA_EXACT;
using orvex::PA_STATED;
#endif

#endif
