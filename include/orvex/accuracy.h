/* The two ways to compute, for C++ and plain C. */
#ifndef ORVEX_ACCURACY_H
#define ORVEX_ACCURACY_H

#include <stdint.h>

#ifdef __cplusplus
namespace orvex {
/// How a projection or datum handle computes.
enum ProjAccuracy : std::int32_t {
#else
typedef enum ProjAccuracy {
#endif
  PA_STATED = 0, /**< as hosts have known it for years, oddities included; every new handle */
  PA_EXACT = 1   /**< the definition to rounding, both ways, wherever it covers a point; docs/accuracy.md */
#ifdef __cplusplus
};
}  // namespace orvex
#else
} ProjAccuracy;
#endif

#endif
