// The benchmarks of every topic in one program.
#include "Common.h"

int main(int argc, char** argv) {
  using namespace orvex::bench;
  RegisterProjections();
  RegisterDatums();
  RegisterZones();
  RegisterGeoref();
  RegisterPreclip();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
