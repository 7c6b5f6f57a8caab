// CApi - the plain C functions: they call the interface and turn exceptions into statuses and messages.
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <exception>
#include <new>

#include "orvex/orvex.h"
#include "orvex/orvex_c.h"
#include "projections/ProjectionTable.h"
#include "shr/exception.h"
#include "support/Errors.h"
#include "support/FirstMatch.h"
#include "support/Log.h"
#include "support/Text.h"

namespace orvex {

static_assert(sizeof(orvex_projection) == sizeof(PROJDATA) && sizeof(orvex_point) == sizeof(PROJPOINT) &&
              sizeof(orvex_point) == sizeof(DATUMPOINT));
static_assert(offsetof(orvex_projection, k0) == offsetof(PROJDATA, K0) &&
              offsetof(orvex_projection, zone) == offsetof(PROJDATA, Zone) &&
              offsetof(orvex_projection, alpha) == offsetof(PROJDATA, Alpha) &&
              offsetof(orvex_projection, ellipsoid) == offsetof(PROJDATA, Ellipsoid) &&
              offsetof(orvex_projection, result) == offsetof(PROJDATA, iResult) &&
              offsetof(orvex_projection, wrap_lon) == offsetof(PROJDATA, bWrapLon));
static_assert(ORVEX_BAD_ARGUMENT == detail::kMsgBadParameter);

namespace {

int Fail(int status, const char* text, char* message) {
  if (message != nullptr) std::snprintf(message, ORVEX_MESSAGE_SIZE, "%s", text);
  return status;
}

int FailWith(int messageId, char* message) {
  char text[detail::kMessageCapacity] = "";
  detail::LoadMessageText(messageId, text);
  return Fail(messageId, text, message);
}

/// Runs an operation that answers a status; whatever it throws becomes one.
template <typename Operation>
int Guarded(char* message, Operation operation) noexcept {
  if (message != nullptr) *message = '\0';
  try {
    return operation();
  } catch (const shr::Exception& e) {
    return Fail(e.MessageId(), e.what(), message);
  } catch (const std::bad_alloc&) {
    return FailWith(detail::kMsgOutOfMemory, message);
  } catch (...) {
    return FailWith(detail::kMsgInternalInconsistency, message);
  }
}

/// Runs one of the library's conversions of points or columns and tells whether all could be computed.
template <class Function, class... Coordinates>
int Convert(void* handle, int count, char* message, Function* convert, int (*unplottable)(void*),
            Coordinates*... coordinates) noexcept {
  if (handle == nullptr || ((coordinates == nullptr) || ...) || count < 1) {
    return FailWith(ORVEX_BAD_ARGUMENT, message);
  }
  return Guarded(message, [&] {
    if (!convert(handle, coordinates..., count)) return ORVEX_FAILED;
    return unplottable(handle) != 0 ? ORVEX_UNPLOTTABLE : ORVEX_OK;
  });
}

int AnyUnprojected(void* projection) {
  return ProjResult(projection);
}

int AnyUnshifted(void* datum) {
  return DatHadUnplottables(datum) ? 1 : 0;
}

int SetAccuracy(void* handle, int accuracy, bool(ORVEX_CALL* choose)(void*, ProjAccuracy)) noexcept {
  if (handle == nullptr || (accuracy != PA_STATED && accuracy != PA_EXACT)) return ORVEX_BAD_ARGUMENT;
  return Guarded(nullptr,
                 [&] { return choose(handle, static_cast<ProjAccuracy>(accuracy)) ? ORVEX_OK : ORVEX_FAILED; });
}

}  // namespace

}  // namespace orvex

using namespace orvex;
using orvex::detail::LogPrintf;
using orvex::detail::LogText;

extern "C" {

int ORVEX_CALL orvex_projection_number(const char* name, std::int32_t* number) {
  LogPrintf("orvex_projection_number(name=\"%s\", number=%p)\n", LogText(name), static_cast<void*>(number));
  if (name == nullptr || number == nullptr) return ORVEX_BAD_ARGUMENT;
  return Guarded(nullptr, [&] {
    const auto rows = detail::ProjectionTable();
    const auto* row = detail::FirstMatch(
        rows, [name](const detail::ProjectionRow& each) { return detail::EqualIgnoringCase(each.name, name); });
    if (row == nullptr) return ORVEX_FAILED;
    *number = static_cast<std::int32_t>(row - rows.data());
    return ORVEX_OK;
  });
}

int ORVEX_CALL orvex_ellipsoid_number(const char* name, std::int32_t* number) {
  LogPrintf("orvex_ellipsoid_number(name=\"%s\", number=%p)\n", LogText(name), static_cast<void*>(number));
  if (name == nullptr || number == nullptr) return ORVEX_BAD_ARGUMENT;
  return Guarded(nullptr, [&] {
    EllipsoidType ellipsoid{};
    if (!EllipsoidFromName(&ellipsoid, name)) return ORVEX_FAILED;
    *number = ellipsoid;
    return ORVEX_OK;
  });
}

int ORVEX_CALL orvex_datum_number(const char* name, std::int32_t* number) {
  LogPrintf("orvex_datum_number(name=\"%s\", number=%p)\n", LogText(name), static_cast<void*>(number));
  if (name == nullptr || number == nullptr) return ORVEX_BAD_ARGUMENT;
  return Guarded(nullptr, [&] {
    DatumType datum{};
    if (!DatGetDatumFromName(&datum, name)) return ORVEX_FAILED;
    *number = datum;
    return ORVEX_OK;
  });
}

int ORVEX_CALL orvex_create(orvex_projection* record, void** projection, char* message) {
  LogPrintf("orvex_create(record=%p, projection=%p, message=%p)\n", static_cast<void*>(record),
            static_cast<void*>(projection), static_cast<void*>(message));
  if (projection != nullptr) *projection = nullptr;
  if (record == nullptr || projection == nullptr) return FailWith(ORVEX_BAD_ARGUMENT, message);
  return Guarded(message, [&] {
    *projection = ProjCreateProjection(reinterpret_cast<PROJDATA*>(record));
    return *projection != nullptr ? ORVEX_OK : ORVEX_FAILED;
  });
}

void ORVEX_CALL orvex_delete(void* projection) {
  LogPrintf("orvex_delete(projection=%p)\n", projection);
  ProjDeleteProjection(projection);
}

int ORVEX_CALL orvex_forward(void* projection, orvex_point* points, int count, char* message) {
  LogPrintf("orvex_forward(projection=%p, points=%p, count=%d, message=%p)\n", projection, static_cast<void*>(points),
            count, static_cast<void*>(message));
  return Convert(projection, count, message, ProjForward, AnyUnprojected, reinterpret_cast<PROJPOINT*>(points));
}

int ORVEX_CALL orvex_inverse(void* projection, orvex_point* points, int count, char* message) {
  LogPrintf("orvex_inverse(projection=%p, points=%p, count=%d, message=%p)\n", projection, static_cast<void*>(points),
            count, static_cast<void*>(message));
  return Convert(projection, count, message, ProjInverse, AnyUnprojected, reinterpret_cast<PROJPOINT*>(points));
}

int ORVEX_CALL orvex_forward_columns(void* projection, const double* lon, const double* lat, double* x, double* y,
                                     int count, char* message) {
  LogPrintf("orvex_forward_columns(projection=%p, lon=%p, lat=%p, x=%p, y=%p, count=%d, message=%p)\n", projection,
            static_cast<const void*>(lon), static_cast<const void*>(lat), static_cast<const void*>(x),
            static_cast<const void*>(y), count, static_cast<void*>(message));
  return Convert(projection, count, message, ProjForwardColumns, AnyUnprojected, lon, lat, x, y);
}

int ORVEX_CALL orvex_inverse_columns(void* projection, const double* x, const double* y, double* lon, double* lat,
                                     int count, char* message) {
  LogPrintf("orvex_inverse_columns(projection=%p, x=%p, y=%p, lon=%p, lat=%p, count=%d, message=%p)\n", projection,
            static_cast<const void*>(x), static_cast<const void*>(y), static_cast<const void*>(lon),
            static_cast<const void*>(lat), count, static_cast<void*>(message));
  return Convert(projection, count, message, ProjInverseColumns, AnyUnprojected, x, y, lon, lat);
}

int ORVEX_CALL orvex_set_accuracy(void* projection, int accuracy) {
  LogPrintf("orvex_set_accuracy(projection=%p, accuracy=%d)\n", projection, accuracy);
  return SetAccuracy(projection, accuracy, ProjSetAccuracy);
}

int ORVEX_CALL orvex_datum_create(std::int32_t source, std::int32_t destination, void** datum, char* message) {
  LogPrintf("orvex_datum_create(source=%d, destination=%d, datum=%p, message=%p)\n", static_cast<int>(source),
            static_cast<int>(destination), static_cast<void*>(datum), static_cast<void*>(message));
  if (datum != nullptr) *datum = nullptr;
  if (datum == nullptr) return FailWith(ORVEX_BAD_ARGUMENT, message);
  return Guarded(message, [&] {
    DATUMXFORM record{};
    record.SrcDatum = static_cast<DatumType>(source);
    record.DestDatum = static_cast<DatumType>(destination);
    *datum = DatCreateDatum(&record);
    return *datum != nullptr ? ORVEX_OK : FailWith(detail::kMsgOutOfMemory, message);  // nothing else gives null
  });
}

void ORVEX_CALL orvex_datum_delete(void* datum) {
  LogPrintf("orvex_datum_delete(datum=%p)\n", datum);
  DatDeleteDatum(datum);
}

int ORVEX_CALL orvex_datum_convert(void* datum, orvex_point* points, int count, char* message) {
  LogPrintf("orvex_datum_convert(datum=%p, points=%p, count=%d, message=%p)\n", datum, static_cast<void*>(points),
            count, static_cast<void*>(message));
  return Convert(datum, count, message, DatConvertDatum, AnyUnshifted, reinterpret_cast<DATUMPOINT*>(points));
}

int ORVEX_CALL orvex_datum_convert_columns(void* datum, const double* from_lon, const double* from_lat, double* to_lon,
                                           double* to_lat, int count, char* message) {
  LogPrintf(
      "orvex_datum_convert_columns(datum=%p, from_lon=%p, from_lat=%p, to_lon=%p, to_lat=%p, count=%d, message=%p)\n",
      datum, static_cast<const void*>(from_lon), static_cast<const void*>(from_lat), static_cast<const void*>(to_lon),
      static_cast<const void*>(to_lat), count, static_cast<void*>(message));
  return Convert(datum, count, message, DatConvertColumns, AnyUnshifted, from_lon, from_lat, to_lon, to_lat);
}

int ORVEX_CALL orvex_datum_set_accuracy(void* datum, int accuracy) {
  LogPrintf("orvex_datum_set_accuracy(datum=%p, accuracy=%d)\n", datum, accuracy);
  return SetAccuracy(datum, accuracy, DatSetAccuracy);
}

}  // extern "C"
