// Names - looking things up by what people type.
#include "commands/Names.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <numeric>
#include <optional>

#include "Failure.h"

namespace orvex::tool {

namespace {

/// Edits (insert, delete, replace a character) that turn one text into the other.
std::size_t EditDistance(const std::string& a, const std::string& b) {
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < a.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i + 1;
    for (std::size_t j = 0; j < b.size(); ++j) {
      const std::size_t replaced = diagonal + (a[i] == b[j] ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({row[j] + 1, row[j + 1] + 1, replaced});
    }
  }
  return row.back();
}

/// The text's runs of letters and runs of digits: "nad27" gives "nad" and "27".
std::vector<std::string> Words(const std::string& text) {
  const auto kind = [](char c) { return c >= '0' && c <= '9' ? 1 : c >= 'a' && c <= 'z' ? 2 : 0; };
  std::vector<std::string> words;
  int last = 0;
  for (const char c : text) {
    const int now = kind(c);
    if (now != 0 && now != last) words.emplace_back();
    if (now != 0) words.back() += c;
    last = now;
  }
  return words;
}

/// First letters of the words of letters: "wgs" of "world geodetic system 1984".
std::string Initials(const std::string& text) {
  std::string initials;
  for (const std::string& word : Words(text)) {
    if (word.front() >= 'a') initials += word.front();
  }
  return initials;
}

/// Short names that people know from elsewhere; letters and digits alone count.
struct Alias {
  std::string_view kind, typed, name;
};

constexpr Alias kAliases[] = {
    {"datum", "wgs84", "World Geodetic System 1984"},
    {"datum", "wgs72", "World Geodetic System 1972"},
    {"datum", "nad83", "North American Datum 1983"},
    {"datum", "nad27", "North American Datum 1927"},
    {"datum", "ed50", "European 1950 - Mean"},
    {"datum", "sad69", "South American 1969"},
    {"datum", "agd66", "Australian Geodetic 1966"},
    {"datum", "agd84", "Australian Geodetic 1984"},
    {"datum", "pulkovo42", "Pulkovo 1942 - Russia"},
    {"datum", "ch1903", "Switzerland - CH1903 (Bursa-Wolf)"},
    {"ellipsoid", "grs80", "GRS 1980 / IUGG 1980"},
    {"ellipsoid", "grs1980", "GRS 1980 / IUGG 1980"},
    {"ellipsoid", "clrk66", "Clarke 1866"},
    {"ellipsoid", "intl", "International 1924"},
    {"projection", "latlong", "Unprojected Lat/Long"},
    {"projection", "longlat", "Unprojected Lat/Long"},
    {"projection", "merc", "Mercator"},
    {"projection", "aea", "Albers Equal Area Conic"},
    {"projection", "albers", "Albers Equal Area Conic"},
    {"projection", "mill", "Miller Cylindrical"},
    {"projection", "miller", "Miller Cylindrical"},
    {"projection", "utm", "Universal Transverse Mercator (UTM)"},
    {"projection", "lcc", "Lambert Conformal Conic"},
    {"projection", "stere", "Stereographic"},
    {"projection", "ortho", "Orthographic"},
    {"projection", "moll", "Mollweide"},
    {"projection", "poly", "Polyconic"},
    {"projection", "omerc", "Hotine Oblique Mercator"},
    {"projection", "eqc", "Equidistant Cylindrical"},
    {"projection", "platecarree", "Equidistant Cylindrical"},
    {"projection", "robin", "Robinson"},
    {"projection", "vandg", "Van Der Grinten"},
    {"projection", "cass", "Cassini"},
    {"projection", "tm", "Transverse Mercator"},
    {"projection", "tmerc", "Transverse Mercator"},
    {"projection", "gk", "Gauss-Kruger / Gauss Conformal"},
    {"projection", "gausskruger", "Gauss-Kruger / Gauss Conformal"},
    {"projection", "sinu", "Sinusoidal"},
    {"projection", "laea", "Lambert Azimuthal Equal Area"},
    {"projection", "eck4", "Eckert IV"},
    {"projection", "eck6", "Eckert VI"},
    {"projection", "eqdc", "Equidistant Conic"},
    {"projection", "gnom", "Gnomonic"},
    {"projection", "aeqd", "Azimuthal Equidistant"},
    {"zone", "mississippieast", "Missippippi East"},  // as the catalogue spells them
    {"zone", "mississippiwest", "Missippippi West"},
};

/// Letters and digits of a text, lower case: "WGS 84" and "wgs-84" are "wgs84".
std::string Squashed(std::string_view text) {
  std::string squashed;
  for (const std::string& word : Words(Lower(text))) squashed += word;
  return squashed;
}

std::optional<std::size_t> FindSquashed(const std::vector<std::string>& candidates, std::string_view text,
                                        std::string_view kind) {
  const std::string wanted = Squashed(text);
  if (wanted.empty()) return std::nullopt;
  std::string_view name;
  for (const Alias& alias : kAliases) {
    if (alias.kind == kind && alias.typed == wanted) name = alias.name;
  }
  const auto means = [&](const std::string& candidate) {
    return name.empty() ? Squashed(candidate) == wanted : candidate == name;
  };
  const auto found = std::find_if(candidates.begin(), candidates.end(), means);
  if (found == candidates.end() || std::find_if(found + 1, candidates.end(), means) != candidates.end()) {
    return std::nullopt;  // none, or more than one
  }
  return static_cast<std::size_t>(found - candidates.begin());
}

/// Up to three candidates that the text may have meant: those that hold its words, else those a few edits away.
std::vector<std::string> Suggestions(const std::vector<std::string>& candidates, const std::string& wanted) {
  constexpr std::size_t kLongest = 200;  // no name is near to a longer text, which would take long to compare
  if (wanted.size() > kLongest) return {};
  const std::vector<std::string> words = Words(wanted);
  const std::size_t mostEdits = 1 + wanted.size() / 3;
  std::vector<std::pair<std::size_t, std::string>> ranked;
  for (const std::string& candidate : candidates) {
    const std::string lower = Lower(candidate);
    const auto holds = [&](const std::string& word) {
      return lower.find(word) != std::string::npos || word == Initials(lower);
    };
    const bool holdsAll = !words.empty() && std::all_of(words.begin(), words.end(), holds);
    if (!holdsAll && std::max(lower.size(), wanted.size()) - std::min(lower.size(), wanted.size()) > mostEdits)
      continue;
    const std::size_t rank = holdsAll ? 1 : EditDistance(lower, wanted);
    if (rank <= mostEdits) ranked.emplace_back(rank, candidate);
  }
  std::stable_sort(ranked.begin(), ranked.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<std::string> names;
  for (std::size_t i = 0; i < std::min<std::size_t>(3, ranked.size()); ++i) names.push_back(ranked[i].second);
  return names;
}

}  // namespace

bool IsShortFor(std::string_view text, std::string_view candidate, std::string_view kind) {
  const std::string wanted = Squashed(text);
  return !wanted.empty() && std::any_of(std::begin(kAliases), std::end(kAliases), [&](const Alias& alias) {
    return alias.kind == kind && alias.name == candidate && alias.typed.find(wanted) != std::string_view::npos;
  });
}

std::string Lower(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  return lower;
}

std::size_t FindName(const std::vector<std::string>& candidates, std::string_view text, std::string_view kind) {
  const std::string wanted = Lower(text);
  for (std::size_t i = 0; i < candidates.size(); ++i) {
    if (Lower(candidates[i]) == wanted) return i;
  }
  if (const std::optional<std::size_t> found = FindSquashed(candidates, text, kind)) return *found;
  std::string message = "unknown " + std::string(kind) + " \"" + std::string(text) + "\"";
  const std::vector<std::string> names = Suggestions(candidates, wanted);
  for (std::size_t i = 0; i < names.size(); ++i) {
    message += (i == 0 ? "; did you mean \"" : i + 1 == names.size() ? " or \"" : ", \"") + names[i] + "\"";
  }
  if (!names.empty()) message += "?";
  throw Failure(message);
}

int ParseInteger(std::string_view text, std::string_view what) {
  int value = 0;
  const char* const end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc{} || rest != end) {
    throw Failure("\"" + std::string(text) + "\" is not a whole number (" + std::string(what) + ")");
  }
  return value;
}

}  // namespace orvex::tool
