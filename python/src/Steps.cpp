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

  void Convert(std::span<PROJPOINT> points) override {
    const int count = static_cast<int>(points.size());
    bool done = false;
    try {
      done = m_direction == Direction::Forward ? m_projector.Forward(points.data(), count)
                                               : m_projector.Inverse(points.data(), count);
    } catch (const shr::Exception& e) {
      if (e.MessageId() == kInconsistency) throw PointRefused{};
      throw;
    }
    if (!done) throw tool::Failure("the projection failed");
  }

 private:
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

  void Convert(std::span<PROJPOINT> points) override {
    static_assert(sizeof(DATUMPOINT) == sizeof(PROJPOINT));
    try {
      if (m_transform.Convert(reinterpret_cast<DATUMPOINT*>(points.data()), static_cast<int>(points.size()))) return;
    } catch (const shr::Exception& e) {
      if (e.Source() != "DtmNadcon") throw;
      throw tool::Failure("the NADCON grids (conus.LAS and conus.LOS, prvi.LAS and prvi.LOS) cannot be read");
    }
    throw tool::Failure("the datum conversion failed");
  }

 private:
  CDatumTransform m_transform;
};

/// A formula of this package for the points that are not marked.
template <class Formula>
class FormulaStep : public Step {
 public:
  explicit FormulaStep(Formula formula) : m_formula(formula) {}

  void Convert(std::span<PROJPOINT> points) override {
    for (PROJPOINT& p : points) {
      if (p.x != DBL_MAX && p.y != DBL_MAX) p = m_formula(p);
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

  void Convert(std::span<PROJPOINT> points) override {
    static_assert(sizeof(GEOREFPOINT) == sizeof(PROJPOINT));
    auto* const first = reinterpret_cast<GEOREFPOINT*>(points.data());
    if (!m_transform.Forward(first, static_cast<int>(points.size()))) throw tool::Failure("the transform failed");
  }

 private:
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
