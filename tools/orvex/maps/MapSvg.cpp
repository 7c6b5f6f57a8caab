// MapSvg - a small SVG file: paths in tenths of a pixel, written relative and without points that make no difference.
#include "maps/MapSvg.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>

namespace orvex::tool {

namespace {

constexpr double kTolerance = 0.6;  // tenths of a pixel that a dropped point may lie off the line

double DistanceToChord(Spot p, Spot a, Spot b) {
  const double dx = b.x - a.x, dy = b.y - a.y, length = std::hypot(dx, dy);
  if (length < 1e-9) return std::hypot(p.x - a.x, p.y - a.y);
  const double along = ((p.x - a.x) * dx + (p.y - a.y) * dy) / length;
  if (along < 0) return std::hypot(p.x - a.x, p.y - a.y);
  if (along > length) return std::hypot(p.x - b.x, p.y - b.y);
  return std::abs((p.x - a.x) * dy - (p.y - a.y) * dx) / length;
}

/// Douglas and Peucker's choice of points.
std::vector<Spot> Simplified(const std::vector<Spot>& spots) {
  std::vector<bool> keep(spots.size(), false);
  keep.front() = keep.back() = true;
  std::vector<std::pair<std::size_t, std::size_t>> spans{{0, spots.size() - 1}};
  while (!spans.empty()) {
    const auto [first, last] = spans.back();
    spans.pop_back();
    double farthest = kTolerance;
    std::size_t at = 0;
    for (std::size_t i = first + 1; i < last; ++i) {
      const double distance = DistanceToChord(spots[i], spots[first], spots[last]);
      if (distance > farthest) farthest = distance, at = i;
    }
    if (at == 0) continue;
    keep[at] = true;
    spans.push_back({first, at});
    spans.push_back({at, last});
  }
  std::vector<Spot> kept;
  for (std::size_t i = 0; i < spots.size(); ++i) {
    if (keep[i]) kept.push_back(spots[i]);
  }
  return kept;
}

void AppendPair(std::string& out, long x, long y) {
  if (x >= 0 && out.back() >= '0' && out.back() <= '9') out += ' ';
  out += std::to_string(x);
  if (y >= 0) out += ' ';
  out += std::to_string(y);
}

/// The data of a path; closed pieces lose their last point.
std::string PathData(const Path& path, bool closed) {
  std::string data;
  for (const std::vector<Spot>& piece : path) {
    if (piece.size() < 2) continue;
    std::string text;
    long x0 = 0, y0 = 0;
    int steps = 0;
    for (const Spot& spot : Simplified(piece)) {
      const long x = std::lround(spot.x), y = std::lround(spot.y);
      if (text.empty()) {
        text = "M";
        AppendPair(text, x, y);
        text += 'l';
      } else if (x != x0 || y != y0) {
        AppendPair(text, x - x0, y - y0);
        ++steps;
      }
      x0 = x;
      y0 = y;
    }
    if (steps < (closed ? 2 : 1)) continue;  // smaller than a tenth of a pixel
    data += text;
    if (closed) data += 'z';
  }
  return data;
}

/// Length of the UTF-8 sequence at the start of the text; 0 when it is none.
std::size_t SequenceLength(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text[0]);
  const std::size_t length = lead < 0x80   ? 1
                             : lead < 0xC2 ? 0
                             : lead < 0xE0 ? 2
                             : lead < 0xF0 ? 3
                             : lead < 0xF5 ? 4
                                           : 0;
  if (length > text.size()) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) return 0;
  }
  return length;
}

}  // namespace

std::string EscapedXml(std::string_view text) {
  std::string out;
  while (!text.empty()) {
    const std::size_t length = SequenceLength(text);
    const char c = text[0];
    if (length == 0)
      out += '?';
    else if (c == '&')
      out += "&amp;";
    else if (c == '<')
      out += "&lt;";
    else if (c == '>')
      out += "&gt;";
    else if (c == '"')
      out += "&quot;";
    else if (length == 1 && static_cast<unsigned char>(c) < ' ')
      out += ' ';
    else
      out += text.substr(0, length);
    text.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return out;
}

MapSvg::MapSvg(int width, int height, const Frame& frame, std::string_view title) : m_width(width) {
  const std::string w = std::to_string(width), h = std::to_string(height);
  m_text = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + w + "\" height=\"" + h + "\" viewBox=\"0 0 " + w +
           "0 " + h + "0\">\n<title>" + EscapedXml(title) + "</title>\n";
  char text[200];  // for hosts that lay the picture over other data
  std::snprintf(text, sizeof text, "<desc>One pixel is %.10g map units; x 0, y 0 lies at pixel %.3f, %.3f.</desc>\n",
                10 / frame.scale, frame.x0 / 10, frame.y0 / 10);
  m_text += text;
  m_text += "<rect width=\"100%\" height=\"100%\" fill=\"#fff\"/>\n";
}

void MapSvg::AddArea(const Path& path, std::string_view fill, std::string_view edge) {
  m_text += "<defs><path id=\"area\" fill-rule=\"evenodd\" d=\"" + PathData(path, true) + "\"/></defs>\n";
  m_text += "<use href=\"#area\" fill=\"none\" stroke=\"" + EscapedXml(edge) +
            "\" stroke-width=\"22\" stroke-linejoin=\"round\"/>\n<use href=\"#area\" fill=\"" + EscapedXml(fill) +
            "\"/>\n";
}

void MapSvg::AddFill(const Path& path, std::string_view style) {
  const std::string data = PathData(path, true);
  if (data.empty()) return;
  m_text += "<path fill-rule=\"evenodd\" ";
  m_text += style;
  m_text += " d=\"" + data + "\"/>\n";
}

void MapSvg::AddLines(const Path& path, std::string_view style) {
  const std::string data = PathData(path, false);
  if (data.empty()) return;
  m_text += "<path fill=\"none\" stroke-linejoin=\"round\" stroke-linecap=\"round\" ";
  m_text += style;
  m_text += " d=\"" + data + "\"/>\n";
}

void MapSvg::AddHeading(std::string_view text, int height) {
  m_text += "<text x=\"" + std::to_string(m_width * 5) + "\" y=\"" + std::to_string(height * 7) +
            "\" font-family=\"sans-serif\" font-size=\"" + std::to_string(height * 6) +
            "\" text-anchor=\"middle\" fill=\"#333\">" + EscapedXml(text) + "</text>\n";
}

std::string MapSvg::Finish() {
  return m_text + "</svg>\n";
}

}  // namespace orvex::tool
