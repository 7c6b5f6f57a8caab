// Names - looking things up by what people type: any case, near misses answered with a suggestion.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvex::tool {

/// Index of the candidate that equals the text without regard to case, else of the one that an alias of its kind or the
/// same letters and digits name. Otherwise throws a Failure that says what kind of thing was looked for and suggests
/// the nearest candidates.
std::size_t FindName(const std::vector<std::string>& candidates, std::string_view text, std::string_view kind);

/// Whether a text is, or stands in, a short name of this kind of thing for the candidate.
bool IsShortFor(std::string_view text, std::string_view candidate, std::string_view kind);

std::string Lower(std::string_view text);

/// A whole number; anything else throws a Failure that names `what`.
int ParseInteger(std::string_view text, std::string_view what);

}  // namespace orvex::tool
