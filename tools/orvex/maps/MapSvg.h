// MapSvg - a small SVG file: paths in tenths of a pixel, written relative and without points that make no difference.
#pragma once

#include <string>
#include <string_view>

#include "maps/MapPainter.h"

namespace orvex::tool {

class MapSvg {
 public:
  /// Size in pixels.
  MapSvg(int width, int height, const Frame& frame, std::string_view title);

  /// A filled path with an edge outside of it only, so that pieces that lie side by side show no seams.
  void AddArea(const Path& path, std::string_view fill, std::string_view edge);
  void AddFill(const Path& path, std::string_view style);
  void AddLines(const Path& path, std::string_view style);
  /// A heading in the upper `height` pixels.
  void AddHeading(std::string_view text, int height);
  std::string Finish();

 private:
  int m_width;
  std::string m_text;
};

/// Text as it may stand in the file.
std::string EscapedXml(std::string_view text);

}  // namespace orvex::tool
