// FindSystem - a registered coordinate system by what people type.
#include "systems/FindSystem.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <set>
#include <sstream>

#include "Failure.h"
#include "commands/Names.h"

namespace orvex::tool {

namespace {

struct Alias {
  const char* name;  ///< as Condensed leaves it
  int code;
};

constexpr Alias kAliases[] = {{"webmercator", 3857}, {"britishnationalgrid", 27700}, {"bng", 27700}};

/// Lower-case letters and digits alone.
std::string Condensed(std::string_view text) {
  std::string condensed;
  for (const char c : Lower(text)) {
    if (std::isalnum(static_cast<unsigned char>(c)) != 0) condensed += c;
  }
  return condensed;
}

/// The digits of a code in one of its spellings, "" for any other text.
std::string CodeDigits(const std::string& text) {
  const std::string lower = Lower(text);
  for (const std::string_view start :
       {"epsg::", "epsg:", "urn:ogc:def:crs:epsg:", "http://www.opengis.net/def/crs/epsg/0/", ""}) {
    if (!lower.starts_with(start)) continue;
    std::string digits = lower.substr(start.size());
    if (start.starts_with("urn:")) digits.erase(0, digits.find_last_of(':') + 1);  // a version may stand between
    if (!digits.empty() && digits.find_first_not_of("0123456789") == std::string::npos) return digits;
  }
  return "";
}

/// What stands behind the stroke of a projected system's name.
std::string_view ProjectionPart(std::string_view name) {
  const std::size_t stroke = name.rfind(" / ");
  return stroke == std::string_view::npos ? std::string_view{} : name.substr(stroke + 3);
}

/// Systems whose name, or the part of it that is asked for, agrees; without deprecated ones where others agree.
std::vector<const CoordinateSystem*> WithName(const std::string& wanted, bool projectionPart) {
  std::vector<const CoordinateSystem*> found;
  for (const CoordinateSystem& system : CoordinateSystems()) {
    if (Condensed(projectionPart ? ProjectionPart(system.name) : system.name) == wanted) found.push_back(&system);
  }
  if (!std::ranges::all_of(found, &CoordinateSystem::deprecated)) {
    std::erase_if(found, [](const CoordinateSystem* system) { return system->deprecated; });
  }
  return found;
}

std::string Labels(const std::vector<const CoordinateSystem*>& systems) {
  constexpr std::size_t kMost = 8;
  std::string list;
  for (std::size_t i = 0; i < std::min(systems.size(), kMost); ++i) {
    list += (i == 0 ? "" : ", ") + systems[i]->Label() + " \"" + std::string(systems[i]->name) + "\"";
  }
  return systems.size() > kMost ? list + " ..." : list;
}

[[noreturn]] void Suggest(const std::string& text) {
  std::vector<std::string> names;
  for (const CoordinateSystem& system : CoordinateSystems()) {
    if (!system.deprecated) names.emplace_back(system.name);
  }
  FindName(names, text, "coordinate system");  // throws: no name agrees
  throw Failure("unknown coordinate system \"" + text + "\"");
}

}  // namespace

const CoordinateSystem* FindCode(int code) {
  const auto systems = CoordinateSystems();
  const auto found = std::ranges::lower_bound(systems, code, {}, &CoordinateSystem::code);
  return found != systems.end() && found->code == code ? &*found : nullptr;
}

const CoordinateSystem& FindSystem(const std::string& text) {
  if (const std::string digits = CodeDigits(text); !digits.empty()) {
    if (digits.size() < 7) {
      if (const CoordinateSystem* system = FindCode(ParseInteger(digits, "code"))) return *system;
    }
    throw Failure("there is no projected or geographic coordinate system EPSG:" + digits +
                  "; see: orvex list crs TEXT (systems with heights are not kept)");
  }
  const std::string wanted = Condensed(text);
  for (const Alias& alias : kAliases) {
    if (wanted == alias.name) return *FindCode(alias.code);
  }
  if (!wanted.empty()) {
    for (const bool projectionPart : {false, true}) {
      const std::vector<const CoordinateSystem*> found = WithName(wanted, projectionPart);
      if (found.size() == 1) return *found.front();
      if (found.size() > 1) throw Failure("\"" + text + "\" names several coordinate systems: " + Labels(found));
    }
  }
  Suggest(text);
}

std::vector<const CoordinateSystem*> SearchSystems(const std::string& text, const std::optional<PROJPOINT>& at) {
  std::istringstream stream(Lower(text));
  const std::set<std::string> words{std::istream_iterator<std::string>(stream), {}};
  std::vector<const CoordinateSystem*> found;
  for (const CoordinateSystem& system : CoordinateSystems()) {
    const Area& area = system.AreaOfUse();
    if (at && !area.Contains(*at)) continue;
    const std::string all = Lower(system.Label() + " " + std::string(system.name) + " " + std::string(area.name));
    const auto holds = [&](const std::string& word) { return all.find(word) != std::string::npos; };
    if (std::ranges::all_of(words, holds)) found.push_back(&system);
  }
  return found;
}

}  // namespace orvex::tool
