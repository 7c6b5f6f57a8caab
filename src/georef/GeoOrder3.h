// GeoOrder3 - polynomials to the third order, chosen by an order code that is not the degree for the first two.
#pragma once

#include "georef/PlaneFit.h"

namespace orvex::detail {

enum class OrderCode : int {
  Bilinear = 0,  ///< 1, x, y, xy
  Affine = 1,    ///< 1, x, y
  Second = 2,    ///< all terms to degree 2
  Third = 3      ///< all terms to degree 3
};

/// Terms of an order code, which is also the least number of controls.
std::size_t TermCount(OrderCode order);

/// Least-squares fit. False when the controls do not determine the polynomial or are not finite.
bool InitializeOrder3(OrderCode order, const Controls& controls, PlaneFit& fit);

void Order3Forward(OrderCode order, const PlaneFit& fit, GEOREFPOINT* pts, int n);

}  // namespace orvex::detail
