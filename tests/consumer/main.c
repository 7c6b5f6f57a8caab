/* The same in plain C. */
#include <orvex/orvex_c.h>

#include <stdio.h>
#include <string.h>

int main(void) {
  orvex_projection record;
  orvex_point point = {15, 0};
  void* utm;
  char message[ORVEX_MESSAGE_SIZE];
  memset(&record, 0, sizeof record);
  record.lon0 = 15;
  if (orvex_projection_number("universal transverse mercator (utm)", &record.type) != ORVEX_OK) return 1;
  if (orvex_ellipsoid_number("WGS 84", &record.ellipsoid) != ORVEX_OK) return 2;
  if (orvex_create(&record, &utm, message) != ORVEX_OK) return 3;
  if (orvex_forward(utm, &point, 1, message) != ORVEX_OK || point.x != 500000) return 4;
  orvex_delete(utm);
  record.scale = -1;
  if (orvex_create(&record, &utm, message) != 20231 || utm != NULL) return 5;
  printf("%s\n", message);
  return 0;
}
