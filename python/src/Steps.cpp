// Steps - what a conversion consists of.
#include "Steps.h"

#include <cfloat>
#include <cmath>
#include <tuple>
#include <utility>

#include <shr/exception.h>

#include "Failure.h"

namespace orvex::python {

namespace {

constexpr int kInconsistency = 20200;

class ProjectionStep : public Step {
 public:
  ProjectionStep(PROJDATA record, Direction direction, bool exact) : m_direction(direction), m_projector(&record) {
    if (!m_projector.SetAccuracy(exact ? PA_EXACT : PA_STATED)) {
      throw tool::Failure("these parameters cannot be computed exactly; accuracy=\"stated\" takes them");
    }
  }

  void Convert(const Block& from, const Block& to) override {
    bool done = false;
    try {
      done = to.AreRecords() ? ConvertRecords(from, to) : ConvertColumns(from, to);
    } catch (const shr::Exception& e) {
      if (e.MessageId() == kInconsistency) throw PointRefused{};
      throw;
    }
    if (!done) throw tool::Failure("the projection failed");
  }

 private:
  bool ConvertRecords(const Block& from, const Block& to) {
    Copy(from, to);
    auto* const points = to.Records<PROJPOINT>();
    return m_direction == Direction::Forward ? m_projector.Forward(points, to.Count())
                                             : m_projector.Inverse(points, to.Count());
  }
  bool ConvertColumns(const Block& from, const Block& to) {
    return m_direction == Direction::Forward
               ? m_projector.ForwardColumns(&from.X(0), &from.Y(0), &to.X(0), &to.Y(0), to.Count())
               : m_projector.InverseColumns(&from.X(0), &from.Y(0), &to.X(0), &to.Y(0), to.Count());
  }

  Direction m_direction;
  CProjector m_projector;
};

class DatumStep : public Step {
 public:
  DatumStep(const DATUMXFORM& xform, bool exact) : m_transform(&xform) {
    if (!m_transform.SetAccuracy(exact ? PA_EXACT : PA_STATED)) {
      throw tool::Failure("this change of datum cannot be computed exactly; accuracy=\"stated\" takes it");
    }
  }

  void Convert(const Block& from, const Block& to) override {
    try {
      if (to.AreRecords() ? ConvertRecords(from, to) : ConvertColumns(from, to)) return;
    } catch (const shr::Exception& e) {
      if (e.Source() != "DtmNadcon") throw;
      throw tool::Failure("the NADCON grids (conus.LAS and conus.LOS, prvi.LAS and prvi.LOS) cannot be read");
    }
    throw tool::Failure("the datum conversion failed");
  }

 private:
  bool ConvertRecords(const Block& from, const Block& to) {
    Copy(from, to);
    return m_transform.Convert(to.Records<DATUMPOINT>(), to.Count());
  }
  bool ConvertColumns(const Block& from, const Block& to) {
    return m_transform.ConvertColumns(&from.X(0), &from.Y(0), &to.X(0), &to.Y(0), to.Count());
  }

  CDatumTransform m_transform;
};

/// A formula of this package for the points that are not marked.
template <class Formula>
class FormulaStep : public Step {
 public:
  explicit FormulaStep(Formula formula) : m_formula(formula) {}

  void Convert(const Block& from, const Block& to) override {
    for (std::size_t i = 0; i < to.Size(); ++i) {
      PROJPOINT p{from.X(i), from.Y(i)};
      if (p.x != DBL_MAX && p.y != DBL_MAX) p = m_formula(p);
      to.X(i) = p.x;
      to.Y(i) = p.y;
    }
  }

 private:
  Formula m_formula;
};

double WithinHalfTurn(double longitude) {
  return std::abs(longitude) <= 180 ? longitude : std::remainder(longitude, 360);
}

class GeorefStep : public Step {
 public:
  explicit GeorefStep(const GEOREF& record) {
    if (!m_transform.Create(&record)) throw tool::Failure("the control points do not determine the transform");
  }

  void Convert(const Block& from, const Block& to) override {
    m_points.resize(to.Size());
    for (std::size_t i = 0; i < m_points.size(); ++i) m_points[i] = {from.X(i), from.Y(i)};
    if (!m_transform.Forward(m_points.data(), to.Count())) throw tool::Failure("the transform failed");
    for (std::size_t i = 0; i < m_points.size(); ++i) {
      to.X(i) = m_points[i].x;
      to.Y(i) = m_points[i].y;
    }
  }

 private:
  std::vector<GEOREFPOINT> m_points;  // the library has records only here
  CGeorefTransform m_transform;
};

/// Keeps what a step is made of.
template <class Made, class... Parts>
class RecipeOf : public Recipe {
 public:
  explicit RecipeOf(Parts... parts) : m_parts(std::move(parts)...) {}

  std::unique_ptr<Step> Make() const override {
    return std::apply([](const Parts&... parts) { return std::make_unique<Made>(parts...); }, m_parts);
  }

 private:
  std::tuple<Parts...> m_parts;
};

template <class Formula>
std::shared_ptr<Recipe> Apply(Formula formula) {
  return std::make_shared<RecipeOf<FormulaStep<Formula>, Formula>>(formula);
}

class GeorefRecipe : public Recipe {
 public:
  GeorefRecipe(TransformMethod method, std::vector<GEOREFPOINT> source, std::vector<GEOREFPOINT> destination)
      : m_method(method), m_source(std::move(source)), m_destination(std::move(destination)) {}

  std::unique_ptr<Step> Make() const override {
    auto source = m_source, destination = m_destination;  // the record's pointers are not to const
    GEOREF record{};
    record.Method = m_method;
    record.pSrc = source.data();
    record.pDst = destination.data();
    record.nControls = static_cast<std::int32_t>(source.size());
    return std::make_unique<GeorefStep>(record);  // copies the points
  }

 private:
  TransformMethod m_method;
  std::vector<GEOREFPOINT> m_source, m_destination;
};

}  // namespace

std::shared_ptr<Recipe> Project(const PROJDATA& record, Direction direction, bool exact) {
  return std::make_shared<RecipeOf<ProjectionStep, PROJDATA, Direction, bool>>(record, direction, exact);
}

std::shared_ptr<Recipe> ChangeDatum(const DATUMXFORM& xform, bool exact) {
  return std::make_shared<RecipeOf<DatumStep, DATUMXFORM, bool>>(xform, exact);
}

std::shared_ptr<Recipe> TransformPlane(const std::array<double, 6>& c) {
  return Apply([c](PROJPOINT p) { return PROJPOINT{c[0] + c[1] * p.x + c[2] * p.y, c[3] + c[4] * p.x + c[5] * p.y}; });
}

std::shared_ptr<Recipe> CountAngles(double unit, double meridian, Direction direction) {
  if (direction == Direction::Forward) {
    return Apply([=](PROJPOINT p) { return PROJPOINT{WithinHalfTurn(p.x * unit + meridian), p.y * unit}; });
  }
  return Apply([=](PROJPOINT p) { return PROJPOINT{WithinHalfTurn(p.x - meridian) / unit, p.y / unit}; });
}

std::shared_ptr<Recipe> Georeference(TransformMethod method, std::vector<GEOREFPOINT> source,
                                     std::vector<GEOREFPOINT> destination) {
  return std::make_shared<GeorefRecipe>(method, std::move(source), std::move(destination));
}

}  // namespace orvex::python
