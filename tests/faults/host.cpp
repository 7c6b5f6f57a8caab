// A host with the library inside: what is written to the log when it is loaded is all that it does.
#include <orvex/orvex.h>

int main() {
  return orvex::ProjNumProjections() > 0 ? 0 : 1;
}
