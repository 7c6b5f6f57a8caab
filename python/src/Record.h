// Record - the parameters of one projection, checked and completed by the library.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <variant>
#include <vector>

#include <orvex/projection.h>

namespace orvex::python {

using Value = std::variant<bool, int, double>;
using Chain = std::vector<PROJPOINT>;

class Record {
 public:
  /// `values` by the ids of the parameter catalogue. Throws shr::Exception for what the library refuses.
  Record(int type, const std::map<int, Value>& values, bool wrap);
  /// Throws shr::Exception for what the library refuses.
  explicit Record(const PROJDATA& data);
  /// From what Bytes gave.
  explicit Record(const std::string& bytes);

  std::string Bytes() const;
  int Type() const { return m_data.Type; }
  bool Wraps() const { return m_data.bWrapLon; }
  /// Every parameter of the catalogue by its id.
  std::map<int, Value> Values() const;
  const PROJDATA& Data() const { return m_data; }

  /// For each of `count` places whether it lies in the projection's domain, degrees.
  void Contains(const double* lon, const double* lat, bool* inside, std::size_t count) const;
  /// Cuts a polyline to the domain; degrees.
  std::vector<Chain> ClipLine(const Chain& line) const;
  /// Cuts a polygon of several rings to the domain; closed rings, degrees.
  std::vector<Chain> ClipRings(const std::vector<Chain>& rings) const;

 private:
  void Complete();

  PROJDATA m_data{};
};

}  // namespace orvex::python
