// GeoOrder3 - polynomials to the third order, chosen by an order code that is not the degree for the first two.
#pragma once

#include "georef/PlaneFit.h"

namespace orvex::detail {

/// Terms of an order code, which is also the least number of controls.
std::size_t TermCount(OrderCode order);

/// Least-squares fit. False when the controls do not determine the polynomial or are not finite.
bool InitializeOrder3(OrderCode order, const Controls& controls, PlaneFit& fit);

}  // namespace orvex::detail
