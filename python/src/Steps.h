// Steps - what a conversion consists of. A recipe can be used by all threads; the step that it makes holds a handle of
// the library and belongs to one thread at a time.
#pragma once

#include <array>
#include <memory>
#include <vector>

#include <orvex/datum.h>
#include <orvex/georef.h>
#include <orvex/projection.h>

#include "Points.h"

namespace orvex::python {

/// Thrown by a step for the points at which a formula of the library asserts; other points of the block may be done.
struct PointRefused {};

class Step {
 public:
  virtual ~Step() = default;
  /// Converts points into the other block, which is of the same layout, or in place where it is the same one; those
  /// that cannot be computed become the library's marker.
  virtual void Convert(const Block& from, const Block& to) = 0;
};

class Recipe {
 public:
  virtual ~Recipe() = default;
  /// Throws shr::Exception or tool::Failure when the library refuses the parameters.
  virtual std::unique_ptr<Step> Make() const = 0;
};

enum class Direction { Forward, Inverse };

std::shared_ptr<Recipe> Project(const PROJDATA& record, Direction direction, bool exact);
std::shared_ptr<Recipe> ChangeDatum(const DATUMXFORM& xform, bool exact);
/// x' = c[0] + c[1] x + c[2] y, y' = c[3] + c[4] x + c[5] y.
std::shared_ptr<Recipe> TransformPlane(const std::array<double, 6>& coefficients);
/// Degrees from units of an angle and a prime meridian (degrees east of Greenwich), or the other way.
std::shared_ptr<Recipe> CountAngles(double unit, double meridian, Direction direction);
std::shared_ptr<Recipe> Georeference(TransformMethod method, std::vector<GEOREFPOINT> source,
                                     std::vector<GEOREFPOINT> destination);

}  // namespace orvex::python
