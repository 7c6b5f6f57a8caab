/// \file
/// The whole public interface of Orvex in one include.
///
/// Conventions that hold everywhere: x is longitude (east positive) or easting, y is latitude (north positive) or
/// northing; angles cross the interface in decimal degrees, lengths in metres; arrays of points are converted in place;
/// a point that cannot be computed holds DBL_MAX in both coordinates; bad parameters raise shr::Exception
/// (shr/exception.h).
#pragma once

#include <orvex/clip.h>
#include <orvex/datum.h>
#include <orvex/ellipsoid.h>
#include <orvex/export.h>
#include <orvex/georef.h>
#include <orvex/grids.h>
#include <orvex/projection.h>
#include <orvex/text.h>
#include <orvex/zones.h>

/// Projections, datums, ellipsoids, zones, clipping and georeferencing.
namespace orvex {}
