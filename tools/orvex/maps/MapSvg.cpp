// MapSvg - a small SVG file, in tenths of a pixel.
#include "maps/MapSvg.h"

#include <cmath>
#include <cstdio>
#include <utility>

#include "maps/MapText.h"

namespace orvex::tool {

MapSvg::MapSvg(int width, int height, const Frame& frame, std::string_view title) {
  const std::string w = std::to_string(width), h = std::to_string(height);
  m_text = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + w + "\" height=\"" + h + "\" viewBox=\"0 0 " + w +
           "0 " + h + "0\" font-family=\"sans-serif\">\n<title>" + EscapedXml(title) + "</title>\n";
  char text[200];  // for hosts that lay the picture over other data
  std::snprintf(text, sizeof text, "<desc>One pixel is %.10g map units; x 0, y 0 lies at pixel %.3f, %.3f.</desc>\n",
                10 / frame.scale, frame.x0 / 10, frame.y0 / 10);
  m_text += text;
  m_text += "<rect width=\"100%\" height=\"100%\" fill=\"#fff\"/>\n";
}

void MapSvg::AddArea(const std::string& path, std::string_view fill, std::string_view edge) {
  m_text += "<defs><path id=\"area\" fill-rule=\"evenodd\" d=\"" + path +
            "\"/><clipPath id=\"frame\"><use href=\"#area\" clip-rule=\"evenodd\"/></clipPath></defs>\n";
  m_text += "<use href=\"#area\" fill=\"none\" stroke=\"" + EscapedXml(edge) +
            "\" stroke-width=\"22\" stroke-linejoin=\"round\"/>\n<use href=\"#area\" fill=\"" + EscapedXml(fill) +
            "\"/>\n";
}

void MapSvg::AddFills(const std::vector<std::string>& paths, std::string_view style) {
  m_text += "<g fill-rule=\"evenodd\" ";
  m_text += style;
  m_text += ">\n";
  for (const std::string& path : paths) {
    if (path.empty()) continue;
    m_text += "<path d=\"";
    m_text += path;
    m_text += "\"/>\n";
  }
  m_text += "</g>\n";
}

void MapSvg::AddLines(const std::string& path, std::string_view style) {
  if (path.empty()) return;
  m_text += "<path fill=\"none\" stroke-linejoin=\"round\" stroke-linecap=\"round\" ";
  m_text += style;
  m_text += " d=\"";
  m_text += path;
  m_text += "\"/>\n";
}

void MapSvg::AddText(const Spot& at, double size, std::string_view style, std::string_view text) {
  m_text += "<text x=\"" + std::to_string(std::lround(at.x)) + "\" y=\"" + std::to_string(std::lround(at.y)) +
            "\" font-size=\"" + std::to_string(std::lround(size)) + "\" ";
  m_text += style;
  m_text += ">" + EscapedXml(text) + "</text>\n";
}

std::string MapSvg::Finish() {
  m_text += "</svg>\n";
  return std::move(m_text);
}

}  // namespace orvex::tool
