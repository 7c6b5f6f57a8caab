// Parameters - the parameter catalogue: every settable field by number, for dialogs and generic storage.
#include <algorithm>
#include <cstring>

#include "engine/ParameterTable.h"
#include "support/Text.h"

namespace orvex {

namespace detail {
namespace {

constexpr std::size_t kNameCapacity = 80;

const ParameterRow* FindParameter(int id) {
  return id >= 1 && id <= static_cast<int>(Parameters().size()) ? &Parameters()[static_cast<std::size_t>(id - 1)]
                                                                : nullptr;
}

/// The usage row of a projection; null outside the table.
const UsageRow* FindUsage(ProjType type) {
  const auto row = std::ranges::find(ParameterUsage(), type, &UsageRow::type);
  return row != ParameterUsage().end() ? &*row : nullptr;
}

/// Place of an id among the row's ids; that of the closing 0 when it is not there.
std::size_t PlaceOf(const UsageRow& row, int id) {
  std::size_t place = 0;
  while (row.ids[place] != 0 && row.ids[place] != id) ++place;
  return place;
}

}  // namespace
}  // namespace detail

int ProjNumParams(ProjType type) {
  const detail::UsageRow* row = detail::FindUsage(type);
  return row != nullptr ? static_cast<int>(detail::PlaceOf(*row, 0)) : -1;
}

int ProjEnumParam(ProjType type, int index) {
  if (index < 0 || index >= ProjNumParams(type)) return 0;
  return detail::FindUsage(type)->ids[static_cast<std::size_t>(index)];
}

bool ProjUsesParam(ProjType type, int paramId) {
  const detail::UsageRow* row = detail::FindUsage(type);
  return row != nullptr &&
         row->ids[detail::PlaceOf(*row, paramId)] == paramId;  // id 0 meets the closing 0: true on purpose
}

bool ProjParamInfo(int paramId, char* name, ProjDataType* type, int* offset, int* size) {
  const detail::ParameterRow* row = detail::FindParameter(paramId);
  if (row == nullptr) return false;
  if (name != nullptr) detail::CopyText(name, row->name, detail::kNameCapacity);
  if (type != nullptr) *type = row->type;
  if (offset != nullptr) *offset = static_cast<int>(row->offset);
  if (size != nullptr) *size = static_cast<int>(row->size);
  return true;
}

bool ProjGetParam(const PROJDATA* pData, int paramId, void* value) {
  const detail::ParameterRow* row = detail::FindParameter(paramId);
  if (row == nullptr || pData == nullptr || value == nullptr) return false;
  std::memcpy(value, reinterpret_cast<const char*>(pData) + row->offset, row->size);
  return true;
}

bool ProjSetParam(PROJDATA* pData, int paramId, const void* value) {
  const detail::ParameterRow* row = detail::FindParameter(paramId);
  if (row == nullptr || pData == nullptr || value == nullptr) return false;
  std::memcpy(reinterpret_cast<char*>(pData) + row->offset, value, row->size);
  return true;
}

}  // namespace orvex
