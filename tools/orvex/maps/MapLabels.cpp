// MapLabels - texts on the map: where they find room, and those of meridians and parallels.
#include "maps/MapLabels.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <optional>

#include "maps/MapText.h"

namespace orvex::tool {

namespace {

constexpr double kOnFrame = 15;    // tenths of a pixel from the frame at which a line ends at it
constexpr double kTogether = 120;  // lines that end nearer to each other run together

double DistanceToChord(const Spot& p, const Spot& a, const Spot& b) {
  const double dx = b.x - a.x, dy = b.y - a.y, square = dx * dx + dy * dy;
  const double t = square > 0 ? std::clamp(((p.x - a.x) * dx + (p.y - a.y) * dy) / square, 0.0, 1.0) : 0;
  return Length(p.x - a.x - t * dx, p.y - a.y - t * dy);
}

/// Whether something holds for the cells of a grid that a box meets; asks no further where it does not.
template <class Test>
bool AllCells(const TextBox& box, Test test) {
  constexpr double kCell = 500, kFarthest = 1e6;  // tenths of a pixel; cells
  const auto cell = [=](double at) {
    return static_cast<std::int64_t>(std::clamp(std::floor(at / kCell), -kFarthest, kFarthest));
  };
  for (std::int64_t x = cell(box.left); x <= cell(box.right); ++x) {
    for (std::int64_t y = cell(box.top); y <= cell(box.bottom); ++y) {
      if (!test((x << 32) + y)) return false;
    }
  }
  return true;
}

bool IsInside(const Spot& p, const std::vector<Polyline>& frame) {
  bool odd = false;
  for (const Polyline& piece : frame) {
    for (std::size_t i = 0; i < piece.size(); ++i) {
      const Spot a = piece[i], b = piece[(i + 1) % piece.size()];
      if ((a.y > p.y) != (b.y > p.y) && p.x < a.x + (p.y - a.y) / (b.y - a.y) * (b.x - a.x)) odd = !odd;
    }
  }
  return odd;
}

/// The direction that leads straight out of the frame from a spot on it; nothing when the spot is not.
std::optional<Spot> OutwardAt(const Spot& spot, const std::vector<Polyline>& frame) {
  constexpr double kAway = 3;  // tenths of a pixel
  double least = kOnFrame;
  Spot middle{}, normal{};  // of the nearest side of the frame
  for (const Polyline& piece : frame) {
    for (std::size_t i = 0; i < piece.size(); ++i) {
      const Spot a = piece[i], b = piece[(i + 1) % piece.size()];
      const double length = Distance(a, b), distance = DistanceToChord(spot, a, b);
      if (distance >= least || length == 0) continue;
      least = distance;
      middle = {(a.x + b.x) / 2, (a.y + b.y) / 2};
      normal = {(b.y - a.y) / length, (a.x - b.x) / length};
    }
  }
  if (least == kOnFrame) return std::nullopt;
  const bool inwards = IsInside({middle.x + kAway * normal.x, middle.y + kAway * normal.y}, frame);
  return inwards ? Spot{-normal.x, -normal.y} : normal;
}

/// An end of a line at the frame, and the direction out of it.
struct LineEnd {
  std::size_t line;
  Spot at, outward;
};

std::vector<LineEnd> EndsAtFrame(const std::vector<GridLine>& lines, const std::vector<Polyline>& frame) {
  std::vector<LineEnd> ends;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    for (const Polyline& piece : lines[i].pieces) {
      if (piece.size() < 2) continue;
      const Spot a = piece.front(), b = piece.back();
      if (Distance(a, b) < kOnFrame) continue;  // a closed circle
      for (const Spot& end : {a, b}) {
        if (const auto outward = OutwardAt(end, frame)) ends.push_back({i, end, *outward});
      }
    }
  }
  return ends;
}

bool RunsTogether(const LineEnd& end, const std::vector<LineEnd>& ends, const std::vector<GridLine>& lines) {
  return std::any_of(ends.begin(), ends.end(), [&](const LineEnd& other) {
    return lines[other.line].meridian == lines[end.line].meridian && other.line != end.line &&
           Distance(other.at, end.at) < kTogether;
  });
}

/// Meridians are labelled below, parallels on the left, if they can be.
double Preference(const LineEnd& end, bool meridian) {
  constexpr double kMostly = 0.7;
  return meridian ? end.at.y + (end.outward.y > kMostly ? 1e6 : 0) : -end.at.x + (end.outward.x < -kMostly ? 1e6 : 0);
}

/// Where a line that reaches the frame nowhere by itself is labelled: a meridian half way up the picture, a parallel at
/// its lowest point.
std::optional<Spot> SpotInside(const GridLine& line, double middle) {
  std::optional<Spot> best;
  const auto merit = [&](const Spot& s) { return line.meridian ? -std::abs(s.y - middle) : s.y; };
  for (const Polyline& piece : line.pieces) {
    for (const Spot& spot : piece) {
      if (!best || merit(spot) > merit(*best)) best = spot;
    }
  }
  return best;
}

double MiddleOf(const std::vector<Polyline>& frame) {
  double least = 1e300, most = -1e300;
  for (const Polyline& piece : frame) {
    for (const Spot& spot : piece) {
      least = std::min(least, spot.y);
      most = std::max(most, spot.y);
    }
  }
  return (least + most) / 2;
}

/// One label for each line that can have one, with the number of the line.
std::vector<std::pair<std::size_t, Label>> Candidates(const std::vector<GridLine>& lines,
                                                      const std::vector<Polyline>& frame, bool meridians) {
  const std::vector<LineEnd> ends = EndsAtFrame(lines, frame);
  const double middle = MiddleOf(frame);
  std::vector<std::pair<std::size_t, Label>> labels;
  bool outside = false;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (lines[i].meridian != meridians || lines[i].pieces.empty()) continue;
    const std::string text = DegreeText(lines[i].degrees, meridians);
    const LineEnd* best = nullptr;
    for (const LineEnd& end : ends) {
      if (end.line != i || RunsTogether(end, ends, lines)) continue;
      if (best == nullptr || Preference(end, meridians) > Preference(*best, meridians)) best = &end;
    }
    if (best != nullptr) {
      outside = true;
      labels.push_back({i, {text, best->at, best->outward}});
    } else if (const auto spot = SpotInside(lines[i], middle)) {
      labels.push_back({i, {text, *spot}});
    }
  }
  if (outside) std::erase_if(labels, [](const auto& l) { return l.second.Upon(); });
  return labels;
}

TextBox Widened(const TextBox& box, double room) {
  return {box.left - room / 2, box.top - room / 4, box.right + room / 2, box.bottom + room / 4};
}

/// Those of every n-th line, for the least n that leaves room between them.
std::vector<Label> Thinned(const std::vector<std::pair<std::size_t, Label>>& labels, const std::vector<GridLine>& lines,
                           double step, const LabelStyle& style) {
  std::vector<Label> kept;
  for (const int every : {1, 2, 3, 4, 6, 12}) {
    kept.clear();
    LabelBoard board;
    bool room = true;
    for (const auto& [line, label] : labels) {
      if (std::llround(lines[line].degrees / step) % every != 0) continue;
      const TextBox box = Widened(BoxOf(label, style), style.room);
      room = room && board.Free(box);
      board.Take(box);
      kept.push_back(label);
    }
    if (room) break;
  }
  return kept;
}

double StepOf(const std::vector<GridLine>& lines) {
  double step = 360;
  for (std::size_t i = 0; i + 1 < lines.size(); ++i) {
    if (lines[i].meridian == lines[i + 1].meridian) {
      step = std::min(step, std::abs(lines[i + 1].degrees - lines[i].degrees));
    }
  }
  return step;
}

}  // namespace

void LinePen::Add(const Spot& spot) {
  m_line.push_back(spot);
}

void LinePen::Finish(bool) {
  if (m_line.size() > 1) lines.push_back(std::move(m_line));
  m_line.clear();
}

TextBox BoxOf(const Label& label, const LabelStyle& style) {
  const double width = TextWidth(label.text, style.size), height = style.size;
  const double x = label.at.x + label.side.x * (style.gap + width / 2);
  const double y = label.at.y + label.side.y * (style.gap + height / 2);
  return {x - width / 2, y - height / 2, x + width / 2, y + height / 2};
}

void AddLabel(MapSvg& svg, const Label& label, const LabelStyle& style) {
  const TextBox box = BoxOf(label, style);
  const char* anchor = "middle";
  double x = (box.left + box.right) / 2;
  constexpr double kSideways = 0.9;  // there the text keeps its distance, however wide the font
  if (label.side.x < -kSideways) {
    anchor = "end";
    x = box.right;
  } else if (label.side.x > kSideways) {
    anchor = "start";
    x = box.left;
  }
  constexpr double kBaseline = 0.15;  // of the size, above the lower edge of the box
  svg.AddText({x, box.bottom - kBaseline * style.size}, style.size,
              "text-anchor=\"" + std::string(anchor) + "\" " + style.attributes, label.text);
}

bool LabelBoard::Free(const TextBox& box) const {
  return AllCells(box, [&](std::int64_t key) {
    const auto cell = m_cells.find(key);
    return cell == m_cells.end() || std::none_of(cell->second.rbegin(), cell->second.rend(),  // texts are behind dots
                                                 [&](const TextBox& taken) { return taken.Meets(box); });
  });
}

void LabelBoard::Take(const TextBox& box) {
  AllCells(box, [&](std::int64_t key) {
    m_cells[key].push_back(box);
    return true;
  });
}

std::vector<Label> GraticuleLabels(const std::vector<GridLine>& lines, const std::vector<Polyline>& frame,
                                   const LabelStyle& style) {
  std::vector<Label> labels;
  LabelBoard board;
  for (const bool meridians : {true, false}) {
    for (const Label& label : Thinned(Candidates(lines, frame, meridians), lines, StepOf(lines), style)) {
      const TextBox box = BoxOf(label, style);
      if (!board.Free(box)) continue;
      board.Take(box);
      labels.push_back(label);
    }
  }
  return labels;
}

std::string DegreeText(double degrees, bool longitude) {
  char text[40];
  std::snprintf(text, sizeof text, "%.6g\xC2\xB0", std::abs(degrees));
  if (degrees == 0 || (longitude && std::abs(degrees) == 180)) return text;
  return text + std::string(longitude ? (degrees < 0 ? "W" : "E") : (degrees < 0 ? "S" : "N"));
}

}  // namespace orvex::tool
