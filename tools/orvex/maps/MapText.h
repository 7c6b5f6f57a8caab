// MapText - text in the picture: as it may stand in the file, how wide it comes out, where it is broken.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvex::tool {

/// Text as it may stand in the file: markup escaped, bytes that are not UTF-8 replaced.
std::string EscapedXml(std::string_view text);

/// About how wide a text comes out in a sans-serif font, in units of the size; rather too wide than too narrow.
double TextWidth(std::string_view text, double size);

/// The text in lines no wider than that, broken between words, or within one that is too long by itself.
std::vector<std::string> Wrapped(std::string_view text, double size, double width);

}  // namespace orvex::tool
