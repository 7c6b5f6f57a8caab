// Catalogue - the library's tables as rows of plain values, and datums by their parameters.
#pragma once

#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include <orvex/datum.h>

namespace orvex::python {

/// number, name, capability mask
using ProjectionRow = std::tuple<int, std::string, unsigned>;
/// number, name, semi-major axis in metres, flattening, POSC code
using EllipsoidRow = std::tuple<int, std::string, double, double, std::optional<int>>;
/// number, name, method, whether it can be a destination, POSC code
using DatumRow = std::tuple<int, std::string, int, bool, std::optional<int>>;
/// number, name, USGS code, POSC code of the 1927 and of the 1983 zone
using ZoneRow = std::tuple<int, std::string, int, std::optional<int>, std::optional<int>>;
/// id, name, value type
using ParameterRow = std::tuple<int, std::string, int>;
/// method, ellipsoid, prime meridian, dx, dy, dz, rx, ry, rz, k, semi-major axis, flattening
using DatumParameters =
    std::tuple<int, int, double, double, double, double, double, double, double, double, double, double>;

std::vector<ProjectionRow> Projections();
std::vector<EllipsoidRow> Ellipsoids();
std::vector<DatumRow> Datums();
std::vector<ZoneRow> Zones();
std::vector<ParameterRow> Parameters();
/// Ids that a projection uses, in display order.
std::vector<int> UsedParameters(int projection);
std::vector<std::string> GeorefMethods();

/// Whether a state plane system, given by its projection type, has a zone.
bool ZoneExists(int type, int zone);

/// Of a built-in datum; none for datums of grids and regression equations.
std::optional<DatumParameters> ParametersOf(int datum);
/// `inverse`: the step leads from WGS 84 to the datum.
DATUM2WGS84 StepOf(const DatumParameters& parameters, bool inverse);

// Custom datums in an INI file.
std::vector<std::string> StoredDatums(const std::string& ini);
std::optional<DatumParameters> StoredDatum(const std::string& ini, const std::string& name);
bool StoreDatum(const std::string& ini, const std::string& name, const DatumParameters& parameters);

double ParseAngle(const std::string& text);
std::string FormatAngle(double degrees, int format, char degree, char minute, char second);

}  // namespace orvex::python
