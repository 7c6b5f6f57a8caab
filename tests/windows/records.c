/* The public records as a C host declares them, written from the documented layout; host_test.cpp compares. */
#include <stddef.h>
#include <stdint.h>

#pragma pack(push, 1)
struct projdata {
  int32_t type;
  double scale, x_org, y_org, lat0, lon0, lat1, lat2, lat3, lon1, lon2, lon3, k0;
  uint8_t south;
  int32_t zone;
  uint8_t use_alpha;
  double alpha;
  uint8_t rotate, u_offset;
  int32_t ellipsoid;
  double major_radius, flattening;
  int32_t result;
  uint8_t wrap_lon, reserved[255];
};
struct datum_step {
  int32_t method;
  uint8_t inverse;
  int32_t ellipsoid;
  double pm_shift, dx, dy, dz, rx, ry, rz, k, major_radius, flattening;
  uint8_t reserved[64];
};
struct datum_conversion {
  int32_t source, destination;
  uint8_t reserved1;
  struct datum_step step1, step2;
  uint8_t unplottable, reserved2[63];
};
struct point {
  double x, y;
};
struct segment {
  struct point start, end;
  uint8_t start_flag, end_flag;
};
struct georef {
  int32_t method;
  struct point *source, *destination;
  int32_t controls;
  double coefficients[6];
  uint8_t reserved[272 - 4 - 2 * sizeof(void*) - 4 - 48];
};
#pragma pack(pop)

#define FIELD(record, field) offsetof(struct record, field)
const unsigned kCLayout[] = {
    sizeof(struct projdata), FIELD(projdata, k0), FIELD(projdata, south), FIELD(projdata, zone), FIELD(projdata, alpha),
    FIELD(projdata, u_offset), FIELD(projdata, flattening), FIELD(projdata, result), FIELD(projdata, wrap_lon),
    sizeof(struct datum_step), FIELD(datum_step, ellipsoid), FIELD(datum_step, pm_shift), FIELD(datum_step, rx),
    FIELD(datum_step, flattening), sizeof(struct datum_conversion), FIELD(datum_conversion, step2),
    FIELD(datum_conversion, unplottable), sizeof(struct segment), FIELD(segment, end_flag), sizeof(struct georef),
    FIELD(georef, destination), FIELD(georef, coefficients)};
const unsigned kCLayoutCount = sizeof kCLayout / sizeof *kCLayout;
