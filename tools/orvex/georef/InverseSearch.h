// InverseSearch - the place that a transform of the plane carries to a given one.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include <orvex/georef.h>

namespace orvex::tool {

/// Searches by Newton's method, from where the inverse of the affine transform fitted to the same controls leads.
/// Places where the plane is folded over are not taken: there a neighbour has the same image.
class InverseSearch {
 public:
  /// Transforms points in place.
  using Transform = std::function<void(std::vector<GEOREFPOINT>&)>;

  /// `line`: the method of the transform to start from, affine or Helmert. Throws Failure when the destinations lie on
  /// one line.
  InverseSearch(Transform transform, TransformMethod line, const std::vector<GEOREFPOINT>& source,
                const std::vector<GEOREFPOINT>& destination);

  /// Nothing where the search does not settle.
  std::optional<GEOREFPOINT> Find(const GEOREFPOINT& target);

 private:
  /// How the image changes: columns for x and y of the source.
  struct Slopes {
    GEOREFPOINT x, y;
    double Determinant() const { return x.x * y.y - x.y * y.x; }
    /// The change of the source that changes the image so.
    GEOREFPOINT Solve(const GEOREFPOINT& image) const;
  };
  static Slopes Between(const std::vector<GEOREFPOINT>& cross, double step);

  GEOREFPOINT Image(const GEOREFPOINT& place);
  Slopes SlopesAt(const GEOREFPOINT& place);
  bool IsFolded(const Slopes& slopes) const;

  Transform m_transform;
  double m_step, m_tolerance;    // for slopes, in source units; in destination units
  GEOREFPOINT m_from{}, m_to{};  // a place and its image by the transform to start from
  Slopes m_start{};              // of that transform
  std::vector<GEOREFPOINT> m_points;
};

}  // namespace orvex::tool
