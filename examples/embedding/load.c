/* load.c - a plain C host that finds the library at run time, projects an array in place and meets an error.
 * Usage: load [path of talven.dll or liborvex.so] */
#include <math.h>
#include <stdio.h>
#include <string.h>

#define ORVEX_STATIC /* nothing is linked: only the types of the header are used */
#include <orvex/orvex_c.h>

#ifdef _WIN32
#include <windows.h>
typedef HMODULE Library;
static Library open_library(const char* path) {
  return LoadLibraryA(path != NULL ? path : "talven.dll");
}
static void close_library(Library library) {
  FreeLibrary(library);
}
static FARPROC find(Library library, const char* name) {
  return GetProcAddress(library, name);
}
#else
#include <dlfcn.h>
typedef void* Library;
static Library open_library(const char* path) {
  return dlopen(path != NULL ? path : "liborvex.so.1", RTLD_NOW);
}
static void close_library(Library library) {
  dlclose(library);
}
static void* find(Library library, const char* name) {
  return dlsym(library, name);
}
#endif

/* The functions by their header's declarations. */
static struct {
  int(ORVEX_CALL* projection_number)(const char*, int32_t*);
  int(ORVEX_CALL* ellipsoid_number)(const char*, int32_t*);
  int(ORVEX_CALL* create)(orvex_projection*, void**, char*);
  void(ORVEX_CALL* destroy)(void*);
  int(ORVEX_CALL* forward)(void*, orvex_point*, int, char*);
} orvex;

/* A function pointer as bytes, since a C cast between kinds of pointers is not portable. */
static int bind_function(Library library, const char* name, void* pointer) {
  const void* address = (const void*)(size_t)find(library, name);
  if (address == NULL) fprintf(stderr, "%s is missing\n", name);
  memcpy(pointer, &address, sizeof address);
  return address != NULL;
}

static int bind_all(Library library) {
  return bind_function(library, "orvex_projection_number", &orvex.projection_number) &&
         bind_function(library, "orvex_ellipsoid_number", &orvex.ellipsoid_number) &&
         bind_function(library, "orvex_create", &orvex.create) &&
         bind_function(library, "orvex_delete", &orvex.destroy) &&
         bind_function(library, "orvex_forward", &orvex.forward);
}

static int project(void) {
  /* Snyder 1987, numerical example of the Lambert conformal conic on the Clarke 1866 ellipsoid. */
  orvex_point points[] = {{-75, 35}, {-96, 23}, {-96, HUGE_VAL}};
  orvex_projection record;
  char message[ORVEX_MESSAGE_SIZE];
  void* projection;
  size_t i;

  memset(&record, 0, sizeof record);
  if (orvex.projection_number("Lambert Conformal Conic", &record.type) != ORVEX_OK) return 1;
  if (orvex.ellipsoid_number("Clarke 1866", &record.ellipsoid) != ORVEX_OK) return 1;
  record.lat0 = 23;
  record.lon0 = -96;
  record.lat1 = 33;
  record.lat2 = 45;
  if (orvex.create(&record, &projection, message) != ORVEX_OK) {
    fprintf(stderr, "%s\n", message);
    return 1;
  }
  if (orvex.forward(projection, points, 3, message) != ORVEX_UNPLOTTABLE) return 1; /* the last point is infinite */
  for (i = 0; i < 2; ++i) printf("%.1f %.1f\n", points[i].x, points[i].y);
  orvex.destroy(projection);

  record.lat2 = 33; /* one parallel is no cone */
  printf("%d: ", orvex.create(&record, &projection, message));
  printf("%s\n", message);
  return 0;
}

int main(int argc, char** argv) {
  int status = 1;
  const Library library = open_library(argc > 1 ? argv[1] : NULL);
  if (library == NULL) {
    fprintf(stderr, "the library cannot be loaded\n");
    return 1;
  }
  if (bind_all(library)) status = project();
  close_library(library);
  return status;
}
