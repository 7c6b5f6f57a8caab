// GeoJson - converts the coordinates of GeoJSON texts and keeps everything else.
#pragma once

#include <string>

#include "tables/PointTable.h"

namespace orvex::tool {

/// True for names of files that hold GeoJSON: .geojson and .json.
bool IsGeoJsonName(const std::string& file);

/// Converts every position of every geometry, by several threads; properties, identifiers and foreign members stay. A
/// geometry with a position that cannot be computed keeps its type and gets empty coordinates. What the results are in
/// is said by a member "crs" where the options name a system other than longitude and latitude on WGS 84, which GeoJSON
/// takes for granted. Answers the exit status; throws Failure, with nothing written, for a text that is no GeoJSON and
/// for one that says itself that it is in another system.
int ConvertGeoJson(const TableOptions& options, Kind from, Kind to, const ConverterFactory& makeConverter);

}  // namespace orvex::tool
