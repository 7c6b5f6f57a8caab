// PointLoop - the one loop over points: lanes, markers, refusals, impossible points. What converts a point is an
// operation (Point<T>& -> Plot<T>); what happens to it before and after, a stage; neither knows of the other lanes.
#pragma once

#include <cfloat>

#include "points/Elementary.h"
#include "points/PointView.h"
#include "support/Errors.h"

namespace orvex::detail::ORVEX_LEVEL {

template <class T>
struct Point {
  T x, y;
};

/// What an operation answers for each lane: whether the point can be plotted, and whether it is one that asserts. Where
/// a lane is not plottable its coordinates mean nothing.
template <class T>
struct Plot {
  MaskOf<T> plottable;
  MaskOf<T> impossible = No<T>();
  int line = 0;  ///< that an impossible point reports; 0 where the operation never asserts

  ORVEX_INLINE Plot(MaskOf<T> m) : plottable(m) {}
  ORVEX_INLINE Plot(MaskOf<T> m, MaskOf<T> asserts, int at) : plottable(m), impossible(asserts), line(at) {}
};

/// The answer of operations that never refuse a point.
template <class T>
ORVEX_INLINE Plot<T> Plottable() {
  return Yes<T>();
}
/// The answer where the record alone refuses every point.
template <class T>
ORVEX_INLINE Plot<T> Unplottable() {
  return No<T>();
}
/// The answer where the record alone makes every point assert.
template <class T>
ORVEX_INLINE Plot<T> Impossible(int line) {
  return {No<T>(), Yes<T>(), line};
}

/// A formula that stops by itself, lane by lane: `while (it.Goes()) { ... it.Step(x, next); it.Settle(where); }`. A
/// lane that has settled or given up keeps its value; the loop ends when none is left or after `most` passes.
template <class T>
class Iteration {
 public:
  ORVEX_INLINE explicit Iteration(int most) : m_left(most), m_running(Yes<T>()), m_settled(No<T>()) {}

  ORVEX_INLINE bool Goes() { return m_left-- > 0 && Any(m_running); }
  ORVEX_INLINE void GiveUp(MaskOf<T> where) { m_running = m_running & !where; }
  ORVEX_INLINE void Step(T& value, T next) const { value = Select(m_running, next, value); }
  ORVEX_INLINE void Settle(MaskOf<T> where) {
    m_settled = m_settled | (m_running & where);
    m_running = m_running & !where;
  }
  /// Where the formula has settled.
  ORVEX_INLINE MaskOf<T> Settled() const { return m_settled; }
  /// Where it has neither settled nor given up.
  ORVEX_INLINE MaskOf<T> Running() const { return m_running; }

 private:
  int m_left;
  MaskOf<T> m_running, m_settled;
};

/// A number for each lane from what an operation answers for its index: values of tables.
template <class T, class ValueOfLane>
ORVEX_INLINE T Gather(const ValueOfLane& valueOfLane) {
  double values[kLaneCount<T>];
  for (int lane = 0; lane < kLaneCount<T>; ++lane) values[lane] = valueOfLane(lane);
  return Load<T>(values);
}

inline constexpr int kWidth = kLaneCount<Real>;

/// The marker in either coordinate.
ORVEX_INLINE bool IsMarked(double x, double y) {
  return x == DBL_MAX || y == DBL_MAX;
}

/// Marks a point of which a coordinate is not finite, and takes note of it.
ORVEX_INLINE void Screen(double& x, double& y, bool& flagged) {
  if (IsFinite(x) && IsFinite(y)) return;
  x = y = DBL_MAX;
  flagged = true;
}

// Neighbouring records to lanes and back: x0 y0 x1 y1 ... becomes two vectors. The lanes hold the points in whatever
// order costs least; the same shuffle brings them back.

ORVEX_INLINE void Deal(Lanes<2>& a, Lanes<2>& b) {
  const auto low = __builtin_shufflevector(a.v, b.v, 0, 2), high = __builtin_shufflevector(a.v, b.v, 1, 3);
  a.v = low;
  b.v = high;
}
#if defined(__AVX__)
ORVEX_INLINE void Deal(Lanes<4>& a, Lanes<4>& b) {
  const auto low = __builtin_shufflevector(a.v, b.v, 0, 4, 2, 6), high = __builtin_shufflevector(a.v, b.v, 1, 5, 3, 7);
  a.v = low;
  b.v = high;
}
#endif
#if defined(__AVX512F__)
ORVEX_INLINE void Deal(Lanes<8>& a, Lanes<8>& b) {
  const auto low = __builtin_shufflevector(a.v, b.v, 0, 8, 2, 10, 4, 12, 6, 14);
  const auto high = __builtin_shufflevector(a.v, b.v, 1, 9, 3, 11, 5, 13, 7, 15);
  a.v = low;
  b.v = high;
}
#endif

template <int N>
ORVEX_INLINE void LoadRecords(const double* from, Lanes<N>& x, Lanes<N>& y) {
  x = Load<Lanes<N>>(from);
  y = Load<Lanes<N>>(from + N);
  Deal(x, y);
}
template <int N>
ORVEX_INLINE void StoreRecords(double* to, Lanes<N> x, Lanes<N> y) {
  Deal(x, y);
  detail::ORVEX_LEVEL::Store(to, x);
  detail::ORVEX_LEVEL::Store(to + N, y);
}
template <class V>
ORVEX_INLINE void LoadRecords(const double* from, Pair<V>& x, Pair<V>& y) {
  LoadRecords(from, x.a, y.a);
  LoadRecords(from + 2 * kLaneCount<V>, x.b, y.b);
}
template <class V>
ORVEX_INLINE void StoreRecords(double* to, const Pair<V>& x, const Pair<V>& y) {
  StoreRecords(to, x.a, y.a);
  StoreRecords(to + 2 * kLaneCount<V>, x.b, y.b);
}

/// Up to kWidth neighbours of an array.
class Block {
 public:
  ORVEX_INLINE Block(const PointView& view, int first, int count)
      : m_points{view.x + first * view.stride, view.y + first * view.stride, view.stride,
                 view.fromX + first * view.stride, view.fromY + first * view.stride},
        m_count(count - first < kWidth ? count - first : kWidth),
        m_records(m_count == kWidth && view.stride == 2),
        m_columns(m_count == kWidth && view.stride == 1) {}

  ORVEX_INLINE int Count() const { return m_count; }

  /// The points, as LanesOf hands them out: a block of less than kWidth repeats its last one.
  ORVEX_INLINE void Load(Point<Real>& p) const {
    if (m_records) {
      LoadRecords(m_points.fromX, p.x, p.y);
      return;
    }
    if (m_columns) {
      p.x = detail::ORVEX_LEVEL::Load<Real>(m_points.fromX);
      p.y = detail::ORVEX_LEVEL::Load<Real>(m_points.fromY);
      return;
    }
    double x[kWidth], y[kWidth];
    for (int i = 0; i < m_count; ++i) Get(i, x[i], y[i]);
    for (int i = m_count; i < kWidth; ++i) {
      x[i] = x[m_count - 1];
      y[i] = y[m_count - 1];
    }
    p.x = detail::ORVEX_LEVEL::Load<Real>(x);
    p.y = detail::ORVEX_LEVEL::Load<Real>(y);
  }
  /// Writes back what Load has read.
  ORVEX_INLINE void Store(const Point<Real>& p) const {
    if (m_records) {
      StoreRecords(m_points.x, p.x, p.y);
      return;
    }
    if (m_columns) {
      detail::ORVEX_LEVEL::Store(m_points.x, p.x);
      detail::ORVEX_LEVEL::Store(m_points.y, p.y);
      return;
    }
    double x[kWidth], y[kWidth];
    detail::ORVEX_LEVEL::Store(x, p.x);
    detail::ORVEX_LEVEL::Store(y, p.y);
    for (int i = 0; i < m_count; ++i) Put(i, x[i], y[i]);
  }

  /// One point of the block.
  ORVEX_INLINE void Get(int i, double& x, double& y) const { m_points.Get(i, x, y); }
  ORVEX_INLINE void Put(int i, double x, double y) const { m_points.Put(i, x, y); }

 private:
  PointView m_points;
  int m_count;
  bool m_records, m_columns;  // whole vectors can be loaded from neighbouring records, or from columns
};

/// A block that needs a closer look: it holds markers, coordinates that are not finite or out of range, or a point that
/// asserts. Its points are taken one by one. Lanes without a point to convert repeat one that has, so that they neither
/// raise what no point raises nor keep an iteration running.
class OddBlock {
 public:
  /// Takes the points of a block through the first half of a stage; false when none is to be converted.
  template <class Stage>
  [[gnu::noinline]] bool Enter(const Block& block, const Stage& stage, bool& flagged) {
    int some = -1;
    for (int i = 0; i < block.Count(); ++i) {
      block.Get(i, m_x[i], m_y[i]);
      m_live[i] = stage.EnterOne(m_x[i], m_y[i], flagged);
      if (m_live[i]) {
        some = i;
      } else {
        m_restX[i] = m_x[i];
        m_restY[i] = m_y[i];
      }
    }
    for (int i = 0; some >= 0 && i < kWidth; ++i) {
      if (i < block.Count() && m_live[i]) continue;
      m_x[i] = m_x[some];
      m_y[i] = m_y[some];
    }
    if (some < 0) Rest(block, block.Count());
    return some >= 0;
  }

  ORVEX_INLINE void Load(Point<Real>& p) const {
    p.x = detail::ORVEX_LEVEL::Load<Real>(m_x);
    p.y = detail::ORVEX_LEVEL::Load<Real>(m_y);
  }

  /// Number of points before the first one that asserts; all of them where none does.
  ORVEX_INLINE int Before(const Block& block, MaskOf<Real> impossible) const {
    for (int i = 0; i < block.Count(); ++i) {
      if (m_live[i] && Get(impossible, i)) return i;
    }
    return block.Count();
  }

  /// Writes the first `count` points back.
  ORVEX_INLINE void Store(const Block& block, const Point<Real>& p, int count) const {
    double x[kWidth], y[kWidth];
    detail::ORVEX_LEVEL::Store(x, p.x);
    detail::ORVEX_LEVEL::Store(y, p.y);
    for (int i = 0; i < count; ++i) {
      if (m_live[i]) block.Put(i, x[i], y[i]);
    }
    Rest(block, count);
  }

 private:
  /// Writes back those of the first `count` points that were not to be converted.
  void Rest(const Block& block, int count) const {
    for (int i = 0; i < count; ++i) {
      if (!m_live[i]) block.Put(i, m_restX[i], m_restY[i]);
    }
  }

  double m_x[kWidth], m_y[kWidth];          // to be converted
  double m_restX[kWidth], m_restY[kWidth];  // what becomes of the points that are not
  bool m_live[kWidth];
};

/// Stage of points that are handed over as they are; those that hold a marker stay so.
struct AsTheyAre {
  ORVEX_INLINE MaskOf<Real> IsPlain(const Point<Real>& p) const {
    return (p.x != Real(DBL_MAX)) & (p.y != Real(DBL_MAX));
  }
  ORVEX_INLINE void Enter(Point<Real>&) const {}
  bool EnterOne(const double& x, const double& y, bool&) const { return !IsMarked(x, y); }
  ORVEX_INLINE void Leave(Point<Real>&, MaskOf<Real>&) const {}
};

/// The same for transforms of the plane: what has no finite image is marked.
struct ScreenedImages : AsTheyAre {
  ORVEX_INLINE void Leave(Point<Real>& p, MaskOf<Real>& plottable) const {
    plottable = plottable & IsFinite(p.x) & IsFinite(p.y);
  }
};

/// Stage of points without markers: whatever comes out stands.
struct WithoutMarkers {
  ORVEX_INLINE MaskOf<Real> IsPlain(const Point<Real>&) const { return Yes<Real>(); }
  ORVEX_INLINE void Enter(Point<Real>&) const {}
  bool EnterOne(const double&, const double&, bool&) const { return true; }
  ORVEX_INLINE void Leave(Point<Real>&, MaskOf<Real>&) const {}
};

/// Takes points through a stage and an operation to their place, and answers whether one is flagged: refused by the
/// operation, or by the stage. Refused points become the marker. The first impossible point asserts in the name of
/// `source`; those before it are converted then, it and those behind it are as they were given.
///
/// A stage has IsPlain (of a block's points as they stand: whether Enter will do for all), Enter, Leave (which may take
/// lanes out of the plottable ones), and EnterOne for a single point: it answers whether the point is to be converted,
/// else leaves in it what becomes of it.
template <class Stage, class Operation>
[[gnu::flatten]] bool ConvertPoints(const PointView& view, int count, const Stage& stage, const Operation& operation,
                                    const char* source) {
  MaskOf<Real> refused = No<Real>();
  bool flagged = false;
  for (int first = 0; first < count; first += kWidth) {
    const Block block(view, first, count);
    Point<Real> p;
    block.Load(p);
    bool odd = !All(stage.IsPlain(p));
    OddBlock points;
    for (;;) {
      if (!odd) {
        stage.Enter(p);
      } else if (points.Enter(block, stage, flagged)) {
        points.Load(p);
      } else {
        break;
      }
      const Plot<Real> plot = operation(p);
      int before = block.Count();
      if (plot.line != 0 && Any(plot.impossible)) {
        if (!odd) {
          odd = true;  // once more, point by point
          continue;
        }
        before = points.Before(block, plot.impossible);
      }
      MaskOf<Real> plottable = plot.plottable;
      stage.Leave(p, plottable);
      refused = refused | !plottable;
      p.x = Select(plottable, p.x, Real(DBL_MAX));
      p.y = Select(plottable, p.y, Real(DBL_MAX));
      if (!odd) {
        block.Store(p);
      } else {
        points.Store(block, p, before);
        if (before < block.Count()) Assert(source, plot.line);
      }
      break;
    }
  }
  return flagged || Any(refused);
}

}  // namespace orvex::detail::ORVEX_LEVEL
