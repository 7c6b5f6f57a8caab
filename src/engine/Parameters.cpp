// Parameters - the parameter catalogue: every settable field by number, for dialogs and generic storage.
#include <cstring>

#include "engine/ParameterTable.h"
#include "support/FirstMatch.h"
#include "support/Log.h"
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
  return FirstMatch(ParameterUsage(), [type](const UsageRow& row) { return row.type == type; });
}

/// Place of an id among the row's ids; that of the closing 0 when it is not there.
std::size_t PlaceOf(const UsageRow& row, int id) {
  std::size_t place = 0;
  while (row.ids[place] != 0 && row.ids[place] != id) ++place;
  return place;
}

/// Number of the row's ids.
int CountOf(const UsageRow& row) {
  return static_cast<int>(PlaceOf(row, 0));
}

}  // namespace
}  // namespace detail

using detail::LogPrintf;

int ProjNumParams(ProjType type) {
  LogPrintf("ProjNumParams(type=%d)\n", static_cast<int>(type));
  const detail::UsageRow* row = detail::FindUsage(type);
  return row != nullptr ? detail::CountOf(*row) : -1;
}

int ProjEnumParam(ProjType type, int index) {
  LogPrintf("ProjEnumParam(type=%d, index=%d)\n", static_cast<int>(type), index);
  const detail::UsageRow* row = detail::FindUsage(type);
  if (row == nullptr || index < 0 || index >= detail::CountOf(*row)) return 0;
  return row->ids[static_cast<std::size_t>(index)];
}

bool ProjUsesParam(ProjType type, int paramId) {
  LogPrintf("ProjUsesParam(type=%d, paramId=%d)\n", static_cast<int>(type), paramId);
  const detail::UsageRow* row = detail::FindUsage(type);
  return row != nullptr &&
         row->ids[detail::PlaceOf(*row, paramId)] == paramId;  // id 0 meets the closing 0: true on purpose
}

bool ProjParamInfo(int paramId, char* name, ProjDataType* type, int* offset, int* size) {
  LogPrintf("ProjParamInfo(paramId=%d, name=%p, type=%p, offset=%p, size=%p)\n", paramId, static_cast<void*>(name),
            static_cast<void*>(type), static_cast<void*>(offset), static_cast<void*>(size));
  const detail::ParameterRow* row = detail::FindParameter(paramId);
  if (row == nullptr) return false;
  if (name != nullptr) detail::CopyText(name, row->name, detail::kNameCapacity);
  if (type != nullptr) *type = row->type;
  if (offset != nullptr) *offset = static_cast<int>(row->offset);
  if (size != nullptr) *size = static_cast<int>(row->size);
  return true;
}

bool ProjGetParam(PROJDATA* pData, int paramId, void* value) {
  LogPrintf("ProjGetParam(pData=%p, paramId=%d, value=%p)\n", static_cast<void*>(pData), paramId, value);
  const detail::ParameterRow* row = detail::FindParameter(paramId);
  if (row == nullptr || pData == nullptr || value == nullptr) return false;
  std::memcpy(value, reinterpret_cast<const char*>(pData) + row->offset, row->size);
  return true;
}

bool ProjSetParam(PROJDATA* pData, int paramId, void* value) {
  LogPrintf("ProjSetParam(pData=%p, paramId=%d, value=%p)\n", static_cast<void*>(pData), paramId, value);
  const detail::ParameterRow* row = detail::FindParameter(paramId);
  if (row == nullptr || pData == nullptr || value == nullptr) return false;
  std::memcpy(reinterpret_cast<char*>(pData) + row->offset, value, row->size);
  return true;
}

}  // namespace orvex
