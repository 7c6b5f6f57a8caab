// Ellipsoid - lookups in the ellipsoid table.
#include "ellipsoids/Ellipsoid.h"

#include <cstdint>

#include "ellipsoids/EllipsoidTable.h"
#include "support/FirstMatch.h"
#include "support/Log.h"
#include "support/Text.h"

namespace orvex {

namespace detail {
namespace {

constexpr std::size_t kNameCapacity = 80;

/// The row of an ellipsoid with numbers of its own; null for the user-defined one and outside the table.
const EllipsoidRow* FindRow(EllipsoidType type) {
  const auto index = static_cast<std::size_t>(static_cast<std::uint32_t>(type));
  return index != 0 && index < Ellipsoids().size() ? &Ellipsoids()[index] : nullptr;
}

EllipsoidType TypeOf(const EllipsoidRow* row) {
  return static_cast<EllipsoidType>(row - Ellipsoids().data());
}

}  // namespace

double MajorRadiusOf(EllipsoidType type) {
  const EllipsoidRow* row = FindRow(type);
  return row != nullptr ? row->radius : 1.0;
}

double FlatteningOf(EllipsoidType type) {
  const EllipsoidRow* row = FindRow(type);
  return row != nullptr ? row->flattening : 0.0;
}

const char* EllipsoidName(EllipsoidType type) {
  const EllipsoidRow* row = FindRow(type);
  return row != nullptr ? row->name : nullptr;
}

bool FindEllipsoid(const char* name, EllipsoidType& type) {
  const EllipsoidRow* row =
      FirstMatch(Ellipsoids(), [name](const EllipsoidRow& r) { return EqualIgnoringCase(r.name, name); });
  type = row != nullptr ? TypeOf(row) : ET_USER_DEFINED;
  return row != nullptr;
}

}  // namespace detail

using detail::EllipsoidRow;
using detail::LogPrintf;

bool EllipsoidInfo(EllipsoidType type, char* name, double* radius, double* flattening) {
  LogPrintf("EllipsoidInfo(type=%d, name=%p, radius=%p, flattening=%p)\n", static_cast<int>(type),
            static_cast<void*>(name), static_cast<void*>(radius), static_cast<void*>(flattening));
  const EllipsoidRow* row = detail::FindRow(type);
  if (row == nullptr) {
    // Not the table's "User Defined": EllipsoidFromName does not take this text.
    if (type == ET_USER_DEFINED && name != nullptr) detail::CopyText(name, "user-defined", detail::kNameCapacity);
    return false;
  }
  if (name != nullptr) detail::CopyText(name, row->name, detail::kNameCapacity);
  if (radius != nullptr) *radius = row->radius;
  if (flattening != nullptr) *flattening = row->flattening;
  return true;
}

double EllipsoidRadius(EllipsoidType type) {
  LogPrintf("EllipsoidRadius(type=%d)\n", static_cast<int>(type));
  return detail::MajorRadiusOf(type);
}

double EllipsoidFlattening(EllipsoidType type) {
  LogPrintf("EllipsoidFlattening(type=%d)\n", static_cast<int>(type));
  return detail::FlatteningOf(type);
}

bool EllipsoidFromName(EllipsoidType* type, const char* name) {
  LogPrintf("EllipsoidFromName(type=%p, name=\"%s\")\n", static_cast<void*>(type), detail::LogText(name));
  return type != nullptr && name != nullptr && detail::FindEllipsoid(name, *type);
}

bool EllipsoidFromPOSCNumber(int posc, EllipsoidType* type) {
  LogPrintf("EllipsoidFromPOSCNumber(posc=%d, type=%p)\n", posc, static_cast<void*>(type));
  if (posc == 0) return false;
  const EllipsoidRow* row =
      detail::FirstMatch(detail::Ellipsoids(), [posc](const EllipsoidRow& r) { return r.posc == posc; });
  if (type == nullptr) return row != nullptr;
  if (row != nullptr) {
    *type = detail::TypeOf(row);
    return true;
  }
  // The other Clarke 1880 and Everest variants: the nearest ellipsoid, but not an exact match.
  if ((posc >= 7010 && posc <= 7014) || posc == 7034) *type = ET_CLARKE_1880_MOD;
  if (posc >= 7015 && posc <= 7018) *type = ET_EVEREST_1830;
  return false;
}

bool EllipsoidToPOSCNumber(EllipsoidType type, int* posc) {
  LogPrintf("EllipsoidToPOSCNumber(type=%d, posc=%p)\n", static_cast<int>(type), static_cast<void*>(posc));
  const EllipsoidRow* row = detail::FindRow(type);
  if (row == nullptr || row->posc == 0) return false;
  if (posc != nullptr) *posc = row->posc;
  return true;
}

}  // namespace orvex
