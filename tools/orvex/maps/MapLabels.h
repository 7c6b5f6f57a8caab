// MapLabels - texts on the map: where they find room, and those of meridians and parallels.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "maps/MapPainter.h"
#include "maps/MapSvg.h"

namespace orvex::tool {

using Polyline = std::vector<Spot>;

/// Keeps what is drawn.
class LinePen final : public Pen {
 public:
  void Add(const Spot& spot) override;
  void Finish(bool closed) override;

  std::vector<Polyline> lines;

 private:
  Polyline m_line;
};

constexpr Spot kLeft{-1, 0}, kRight{1, 0}, kAbove{0, -1}, kBelow{0, 1};

struct Label {
  std::string text;
  Spot at;      ///< what is labelled
  Spot side{};  ///< direction in which the text stands beside it, of length 1; 0, 0: upon it

  bool Upon() const { return side.x == 0 && side.y == 0; }
};

/// Tenths of a pixel.
struct TextBox {
  double left, top, right, bottom;

  bool Meets(const TextBox& b) const { return left < b.right && b.left < right && top < b.bottom && b.top < bottom; }
};

/// The size and distance of a kind of labels, tenths of a pixel.
struct LabelStyle {
  double size, gap;
  std::string attributes;  ///< of the text element
  double room = 0;         ///< left free between neighbours
};

TextBox BoxOf(const Label& label, const LabelStyle& style);
void AddLabel(MapSvg& svg, const Label& label, const LabelStyle& style);

/// The room that texts have taken.
class LabelBoard {
 public:
  bool Free(const TextBox& box) const;
  void Take(const TextBox& box);

 private:
  std::unordered_map<std::int64_t, std::vector<TextBox>> m_cells;  ///< of a grid, each with the boxes that meet it
};

/// One meridian or parallel as it is drawn.
struct GridLine {
  double degrees;
  bool meridian;
  std::vector<Polyline> pieces;
};

/// Labels outside of the frame where lines end at it apart from each other, else on the lines themselves; as many as
/// have room: every line, every second one and so on.
std::vector<Label> GraticuleLabels(const std::vector<GridLine>& lines, const std::vector<Polyline>& frame,
                                   const LabelStyle& style);

/// "30 W" with a sign of degree.
std::string DegreeText(double degrees, bool longitude);

}  // namespace orvex::tool
