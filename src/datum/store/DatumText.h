// DatumText - the text form of custom datums: names as keys, parameters as values of an INI section.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <orvex/datum.h>

namespace orvex::detail {

/// A name as a key: ",", "=", "%", "\" and characters outside 32 to 122 become "%" and their code. A byte above 127
/// becomes the ten digits of its sign-extended value, on purpose; such a name does not come back from UnescapeName.
std::string EscapeName(std::string_view name);

/// A key as a name: "%" and three characters become one character.
std::string UnescapeName(std::string_view key);

/// The comma-separated value of a datum; empty when its method or ellipsoid has no text form or the text is longer than
/// 255 characters.
std::optional<std::string> DatumParamsToText(const DATUM2WGS84& params);

/// Reads such a value. Only "none", "bursa" and "molodensky" can be read back, on purpose. Fields that the text does
/// not carry keep their values; on failure all do.
bool TextToDatumParams(const char* text, DATUM2WGS84* params);

}  // namespace orvex::detail
