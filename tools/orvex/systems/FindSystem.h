// FindSystem - a registered coordinate system by what people type.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "systems/SystemTable.h"

namespace orvex::tool {

/// The system with a code ("EPSG:32039", "32039", a URN or URL of the registry) or a name, without regard to case,
/// blanks and punctuation ("wgs84", "NAD27 / Texas Central", or what stands behind the stroke where that is
/// unambiguous). Throws Failure when there is none, or more than one.
const CoordinateSystem& FindSystem(const std::string& text);

/// The system with a code, null when there is none.
const CoordinateSystem* FindCode(int code);

/// The systems that hold every word of a text in their label, name or area, at a point if one is given; by code.
std::vector<const CoordinateSystem*> SearchSystems(const std::string& text, const std::optional<PROJPOINT>& at);

}  // namespace orvex::tool
