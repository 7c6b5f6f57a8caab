// MapPath - curves in the picture, point by point: what takes them, and the data of an SVG path.
#pragma once

#include <cmath>
#include <string>
#include <utility>

#include <orvex/projection.h>

namespace orvex::tool {

/// Position in the picture, y downwards, in tenths of a pixel.
struct Spot {
  double x, y;
};

/// Without the care of std::hypot for numbers beyond any picture, which costs several times as much.
inline double Length(double dx, double dy) {
  return std::sqrt(dx * dx + dy * dy);
}
inline double Distance(const Spot& a, const Spot& b) {
  return Length(b.x - a.x, b.y - a.y);
}

/// From map units to the picture.
struct Frame {
  double scale = 1, x0 = 0, y0 = 0;

  Spot At(const PROJPOINT& p) const { return {x0 + scale * p.x, y0 - scale * p.y}; }
  PROJPOINT From(const Spot& s) const { return {(s.x - x0) / scale, (y0 - s.y) / scale}; }
};

/// Takes pieces of a drawing.
class Pen {
 public:
  Pen() = default;
  Pen(const Pen&) = delete;
  Pen& operator=(const Pen&) = delete;
  virtual ~Pen() = default;

  virtual void Add(const Spot& spot) = 0;
  /// Ends a piece; without points there is none.
  virtual void Finish(bool closed) = 0;
};

/// The box round all that is drawn.
class BoxPen final : public Pen {
 public:
  void Add(const Spot& spot) override;
  void Finish(bool) override {}

  Spot least{1e300, 1e300}, most{-1e300, -1e300};
};

/// The data of an SVG path, in whole tenths of a pixel, relative. Points that lie within a tolerance of the line
/// between those that are kept are dropped as they come, so that neither time nor memory grows faster than the data.
class PathPen final : public Pen {
 public:
  void Add(const Spot& spot) override;
  void Finish(bool closed) override;

  const std::string& Data() const { return m_data; }
  std::string Take() { return std::move(m_data); }

 private:
  void Narrow(const Spot& spot, double dx, double dy, double distance);
  void Keep(const Spot& spot);

  std::string m_data;
  std::size_t m_start = 0;    ///< of the piece in the data
  int m_steps = 0;            ///< of the piece, in the data
  long m_x = 0, m_y = 0;      ///< last position in the data
  bool m_open = false;        ///< a piece has begun
  Spot m_anchor{}, m_last{};  ///< last point kept, last point seen
  bool m_pending = false;     ///< the last point seen is not kept yet
  bool m_wedge = false;       ///< the directions below mean something
  double m_farthest = 0;      ///< from the anchor
  Spot m_right{}, m_left{};   ///< directions from the anchor between which the line may go on
};

}  // namespace orvex::tool
