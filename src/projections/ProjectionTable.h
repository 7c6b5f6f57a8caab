// ProjectionTable - the 29 rows that bind each projection to its name, its capability mask and its operations.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "projections/Conversion.h"
#include "projections/Domains.h"

namespace orvex::detail {

/// Forward or inverse of a row, as the instruction set in use has it.
class ConvertOperation {
 public:
  constexpr ConvertOperation(std::nullptr_t) : m_row(-1), m_inverse(false) {}
  constexpr ConvertOperation(int row, bool inverse) : m_row(row), m_inverse(inverse) {}

  constexpr bool operator==(std::nullptr_t) const { return m_row < 0; }

  bool operator()(const Conversion& call) const;
  /// Whether the row's projection has an exact form with these parameters.
  bool HasExactForm(const PROJDATA& work) const;

 private:
  int m_row;
  bool m_inverse;
};

/// One row of the table, indexed by ProjType. Rows without operations are never dispatched.
struct ProjectionRow {
  const char* name;
  unsigned mask;  // six bits for the host, opaque here
  ConvertOperation forward;
  ConvertOperation inverse;
  DomainFunction* inDomain;
  OffsetFunction* offsetSplit;
};

std::span<const ProjectionRow, 29> ProjectionTable();

/// The row of a type; null outside the table.
inline const ProjectionRow* FindRow(ProjType type) {
  const auto row = static_cast<std::size_t>(static_cast<std::uint32_t>(type));
  return row < ProjectionTable().size() ? &ProjectionTable()[row] : nullptr;
}

}  // namespace orvex::detail
