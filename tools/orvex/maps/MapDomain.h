// MapDomain - a part of the globe with one closed edge: which places it holds, where lines cross its edge, and the edge
// itself as a curve.
#pragma once

#include <array>
#include <span>
#include <vector>

#include <orvex/projection.h>

#include "maps/MapShapes.h"
#include "maps/Sphere.h"

namespace orvex::tool {

/// A place where a line enters or leaves a domain.
struct Crossing {
  PROJPOINT place;
  double position;  ///< along the edge
};

/// The few places of a step, as parts of it between 0 and 1, at which it may cross an edge.
class Roots {
 public:
  void Add(double t) {
    if (t > 0 && t < 1 && m_count < kMost) m_at[m_count++] = t;
  }
  /// In order, with 1 behind them.
  std::span<const double> Sorted();
  double First() const;

 private:
  static constexpr std::size_t kMost = 8;  // a step of up to half a turn crosses each of four sides once or twice
  std::array<double, kMost + 1> m_at{};
  std::size_t m_count = 0;
};

/// Positions along the edge of a rectangle, counted from its lower left corner anticlockwise.
class Perimeter {
 public:
  explicit Perimeter(const Bounds& box) : m_box(box) {}

  double Length() const { return 2 * (Width() + Height()); }
  PROJPOINT At(double position) const;
  /// Of the point of the edge that is nearest to a side.
  double Of(double x, double y) const;
  std::vector<double> Corners() const { return {0, Width(), Width() + Height(), 2 * Width() + Height()}; }
  const Bounds& Box() const { return m_box; }

 private:
  double Width() const { return m_box.east - m_box.west; }
  double Height() const { return m_box.north - m_box.south; }

  Bounds m_box;
};

class Domain {
 public:
  Domain() = default;
  Domain(const Domain&) = delete;
  Domain& operator=(const Domain&) = delete;
  virtual ~Domain() = default;

  /// Follows an edge of a line, straight in longitude and latitude: adds its crossings to the list. `inside` says on
  /// which side the line is, before the edge and then after it.
  virtual void Follow(const PROJPOINT& a, const PROJPOINT& b, bool& inside, std::vector<Crossing>& crossings) const = 0;
  /// Whether the line is inside where it starts with this edge.
  virtual bool StartsInside(const PROJPOINT& a, const PROJPOINT& b) const = 0;

  /// The edge, a closed curve: positions run from 0 to Length, then again from 0.
  virtual double Length() const = 0;
  virtual PROJPOINT EdgeAt(double position) const = 0;
  /// Of the point of the edge that is nearest to a place beside it.
  virtual double NearestPosition(const PROJPOINT& p) const = 0;
  /// Positions at which the edge has a corner.
  virtual std::vector<double> Corners() const { return {}; }
  /// The same place by the longitude that the projection needs.
  virtual PROJPOINT Brought(const PROJPOINT& p) const = 0;
};

/// Between two meridians and two parallels, less than a full turn wide.
class Box final : public Domain {
 public:
  explicit Box(const Bounds& bounds);

  void Follow(const PROJPOINT& a, const PROJPOINT& b, bool& inside, std::vector<Crossing>& crossings) const override;
  bool StartsInside(const PROJPOINT& a, const PROJPOINT& b) const override;
  double Length() const override { return m_edge.Length(); }
  PROJPOINT EdgeAt(double position) const override { return m_edge.At(position); }
  double NearestPosition(const PROJPOINT& p) const override;
  std::vector<double> Corners() const override { return m_edge.Corners(); }
  PROJPOINT Brought(const PROJPOINT& p) const override;

 private:
  bool Holds(const PROJPOINT& p) const;
  void FindRoots(const PROJPOINT& a, const PROJPOINT& b, Roots& roots) const;

  Perimeter m_edge;
};

/// Bounded by circles of the sphere: by parallels and meridians of a globe turned at will.
class TurnedDomain : public Domain {
 public:
  explicit TurnedDomain(const Aspect& aspect) : m_aspect(aspect) {}

  void Follow(const PROJPOINT& a, const PROJPOINT& b, bool& inside, std::vector<Crossing>& crossings) const override;
  bool StartsInside(const PROJPOINT& a, const PROJPOINT& b) const override;
  double NearestPosition(const PROJPOINT& p) const override { return PositionOf(m_aspect.To(p)); }
  PROJPOINT Brought(const PROJPOINT& p) const override;

 protected:
  const Aspect& Turned() const { return m_aspect; }
  /// Where the chord from a to b crosses the cone of a turned latitude whose sine is given.
  static void AddParallel(const Vector& a, const Vector& b, double sine, Roots& roots);

 private:
  /// In the turned frame; vectors of any length.
  virtual bool Holds(const Vector& v) const = 0;
  virtual double PositionOf(const Vector& v) const = 0;
  virtual void FindRoots(const Vector& a, const Vector& b, Roots& roots) const = 0;
  void FollowChord(const Vector& a, const Vector& b, double lon, bool& inside, std::vector<Crossing>& crossings) const;

  Aspect m_aspect;
};

/// All places within an arc of a centre.
class Cap final : public TurnedDomain {
 public:
  /// Degrees.
  Cap(const PROJPOINT& centre, double arc);

  double Length() const override { return 360; }
  PROJPOINT EdgeAt(double position) const override { return Turned().From(position, 90 - m_arc); }

 private:
  bool Holds(const Vector& v) const override;
  double PositionOf(const Vector& v) const override;
  void FindRoots(const Vector& a, const Vector& b, Roots& roots) const override;

  double m_arc, m_cosArc;
};

/// Between meridians and parallels of the turned globe, less than a full turn wide.
class TurnedBox final : public TurnedDomain {
 public:
  TurnedBox(const Aspect& aspect, const Bounds& bounds);

  double Length() const override { return m_edge.Length(); }
  PROJPOINT EdgeAt(double position) const override;
  std::vector<double> Corners() const override { return m_edge.Corners(); }

 private:
  bool Holds(const Vector& v) const override;
  double PositionOf(const Vector& v) const override;
  void FindRoots(const Vector& a, const Vector& b, Roots& roots) const override;

  Perimeter m_edge;
  std::array<double, 2> m_sines;    ///< of the latitudes in the south and in the north
  std::array<Vector, 2> m_normals;  ///< of the planes in the west and in the east
};

}  // namespace orvex::tool
