// WrittenJson - JSON values that are written with the numbers of the text that they were read from.
#pragma once

#include <string>

#include <nlohmann/json.hpp>

#include "geojson/OrderedMembers.h"

namespace orvex::tool {

/// Numbers that WriteJson would write otherwise (1e5, 1.50, those of more than 64 bits) are held by their text, as
/// binary values: a JSON text has none of its own.
using Json = nlohmann::basic_json<OrderedMembers>;

/// Throws Json::exception for what is no JSON, and for numbers beyond the largest double.
Json ParseJson(const std::string& text);

/// Appends the value in one line.
void WriteJson(std::string& out, const Json& value);

/// A number, whether it is held as such or by its text.
bool IsNumber(const Json& value);
double NumberOf(const Json& value);

}  // namespace orvex::tool
