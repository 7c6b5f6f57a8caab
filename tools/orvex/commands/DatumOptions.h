// DatumOptions - naming a datum on the command line.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <orvex/datum.h>
#include <orvex/projection.h>
#include <CLI/CLI.hpp>

#include "AreaWatch.h"
#include "Figure.h"

namespace orvex::tool {

/// A conversion between two datums given by name, number or POSC code, built in or custom. Every copy has a handle of
/// its own.
class DatumConversion {
 public:
  /// `ini`: file of custom datums, "" for none. Throws Failure for unknown datums and for destinations that can only be
  /// sources.
  DatumConversion(const std::string& from, const std::string& to, const std::string& ini, bool stated);
  void Convert(std::vector<PROJPOINT>& points);
  /// Says how many points lay outside the area of a datum.
  void Report() const;

 private:
  CDatumTransform m_transform;
  std::optional<AreaWatch> m_source, m_destination;
  std::string m_gridFiles;  // that the conversion needs
};

/// Adds --ini: a file of custom datums, which must be there and readable unless it can be new.
CLI::Option* AddIniOption(CLI::App& command, std::string& ini, bool canBeNew = false);

/// Adds the option that names the directory of grid files.
void AddGridsOption(CLI::App& command);

/// Names of all datums in list order: built in, then those of the INI file ("" for none). Unused numbers give "".
std::vector<std::string> DatumNames(const std::string& ini);

/// Whether positions can be converted to the datum. The library also runs its NTv2 datum backwards, by iteration.
bool CanBeDestination(const std::string& ini, const std::string& name);

/// The ellipsoid that positions of the datum stand on, whatever its method.
Figure DatumFigure(const std::string& text, const std::string& ini);

/// Place in the list of names of a datum given by name, POSC code or list number; throws Failure when there is none.
std::size_t FindDatum(const std::string& text, const std::vector<std::string>& names);

}  // namespace orvex::tool
