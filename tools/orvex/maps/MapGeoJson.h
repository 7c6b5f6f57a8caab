// MapGeoJson - shapes and points from GeoJSON (RFC 7946), with the colours that their properties name.
#pragma once

#include <string>

#include "maps/MapShapes.h"

namespace orvex::tool {

/// Whether a file is GeoJSON: by its name, .json or .geojson.
bool IsGeoJson(const std::string& file);

/// Reads every geometry of a file. Of the properties count "fill", "fill-opacity", "stroke", "stroke-opacity",
/// "stroke-width" (pixels), "marker-color", and "name" or "title" for points. Throws Failure for what is no GeoJSON.
Shapes ReadGeoJson(const std::string& file);

}  // namespace orvex::tool
