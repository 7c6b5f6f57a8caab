// MapSvg - a small SVG file, in tenths of a pixel.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "maps/MapPath.h"

namespace orvex::tool {

class MapSvg {
 public:
  /// Size in pixels.
  MapSvg(int width, int height, const Frame& frame, std::string_view title);

  /// The part of the globe that is shown, its edge drawn outside of it only.
  void AddArea(const std::string& path, std::string_view fill, std::string_view edge);
  /// Areas of one style; those that overlap cover each other.
  void AddFills(const std::vector<std::string>& paths, std::string_view style);
  void AddLines(const std::string& path, std::string_view style);
  void AddText(const Spot& at, double size, std::string_view style, std::string_view text);
  /// Anything else.
  void Add(std::string_view markup) { m_text += markup; }
  std::string Finish();

 private:
  std::string m_text;
};

}  // namespace orvex::tool
