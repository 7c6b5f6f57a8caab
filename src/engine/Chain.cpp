// Chain - storage and value semantics of CPROJCHAIN.
#include "orvex/projection.h"
#include "support/Errors.h"

namespace orvex {

namespace {

constexpr int kCopyLine = 40;  // reported when memory for a copy runs out

void CopyChain(CPROJCHAIN& to, const CPROJCHAIN& from) {
  detail::WithinMemory("Orvex", kCopyLine, [&] {
    to.Points = from.Points;
    to.iValue = from.iValue;
    to.Counts = from.Counts;
  });
}

}  // namespace

CPROJCHAIN::CPROJCHAIN() : iValue(0) {}

CPROJCHAIN::CPROJCHAIN(const CPROJCHAIN& other) : iValue(0) {
  CopyChain(*this, other);
}

CPROJCHAIN& CPROJCHAIN::operator=(const CPROJCHAIN& other) {
  if (this != &other) CopyChain(*this, other);
  return *this;
}

CPROJCHAIN::~CPROJCHAIN() {
  iValue = 0;
  Counts = {};
  Points = {};
}

}  // namespace orvex
