/** \file
 * The two ways to compute, for C++ and plain C. */
#ifndef ORVEX_ACCURACY_H
#define ORVEX_ACCURACY_H

#include <stdint.h>

/** \defgroup accuracy Accuracy */

#if defined(__cplusplus) && __cplusplus >= 201103L
namespace orvex {
/** How a projection or datum handle computes.
 * \ingroup accuracy */
enum ProjAccuracy : int32_t {
#elif defined(__cplusplus)
namespace orvex {
enum ProjAccuracy {
#else
enum ProjAccuracy {
#endif
  PA_STATED = 0, /**< as hosts have known it for years, oddities included; every new handle */
  PA_EXACT = 1   /**< the definition to rounding, both ways, wherever it covers a point; docs/accuracy.md */
};
#ifdef __cplusplus
}
#endif

#endif
