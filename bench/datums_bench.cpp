// One datum of each method to WGS 84 and, where there is a way, back. The grids are synthetic, 500 by 1000 nodes, and
// lie beside the program, where the library looks for them.
#include <cfloat>
#include <cmath>
#include <filesystem>

#include "Common.h"
#include "support/GridFiles.h"

namespace orvex::bench {

namespace {

struct Datum {
  const char* method;
  const char* name;
  bool back;
  double west, east, south, north;
};

constexpr Datum kDatums[] = {{"Molodensky", "European 1950 - Mean", true, -10, 30, 35, 70},
                             {"Bursa-Wolf", "Potsdam Rauenberg DHDN", true, 6, 15, 47, 55},
                             {"Regression equations", "", false, -125, -70, 25, 49},
                             {"NADCON", "NAD 1927 - CONUS (NADCON)", false, -120, -70, 25, 45},
                             {"NTv2", "NAD 1927 - Canada (NTV2)", true, -120, -70, 42, 60}};

/// Writes the grid files once.
void PrepareGrids() {
  static const bool once = [] {
    const auto directory = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    const test::NadconGrid nadcon{1000, 500, -125, 20, 0.0625};
    const auto word = [](int row, int column) { return 3 + std::sin(row * 0.05) + std::cos(column * 0.03); };
    test::WriteFile(directory / "conus.LAS", test::NadconFile(nadcon, word));
    test::WriteFile(directory / "conus.LOS", test::NadconFile(nadcon, word));
    const auto shift = [](double lon, double lat) { return std::pair(3 + std::sin(lat), 2 + std::cos(lon)); };
    const test::Ntv2SubGrid whole{"WHOLE", "NONE", -125, 40, -62.5625, 71.1875, 0.0625, shift};
    test::WriteFile(directory / "NTV2_0.GSB", test::Ntv2File({whole}));
    return true;
  }();
  benchmark::DoNotOptimize(once);
}

void Measure(benchmark::State& state, DATUMXFORM xform, const Datum& datum, std::size_t atOnce) {
  PrepareGrids();
  void* const handle = DatCreateDatum(&xform);
  const auto points = PointsIn<DATUMPOINT>(TotalPoints(atOnce), datum.west, datum.east, datum.south, datum.north);
  MeasureInPlace(state, points, atOnce, [&](DATUMPOINT* pts, int n) {
    if (!DatConvertDatum(handle, pts, n)) state.SkipWithError("conversion failed");
  });
  DatDeleteDatum(handle);
}

/// The datum with a name, or the first one of the method of regression equations.
DatumType Find(const Datum& datum) {
  DatumType type = DT_USER_DEFINED;
  if (*datum.name != '\0') {
    DatGetDatumFromName(&type, datum.name);
    return type;
  }
  DatumMethod method = DM_NOXFORM;
  int i = 1;
  while (i < DatNumDatums() && (!DatGetDatumMethod(static_cast<DatumType>(i), &method) || method != DM_MRE)) ++i;
  return static_cast<DatumType>(i);
}

}  // namespace

void RegisterDatums() {
  for (const Datum& datum : kDatums) {
    DATUMXFORM xform{};
    xform.SrcDatum = Find(datum);
    xform.DestDatum = DT_WORLD_GEODETIC_SYSTEM_1984;
    for (const bool back : {false, true}) {
      if (back && !datum.back) continue;
      if (back) std::swap(xform.SrcDatum, xform.DestDatum);
      for (const std::size_t size : Sizes()) {
        const std::string name = std::string(datum.method) + (back ? "|from WGS 84|" : "|to WGS 84|");
        benchmark::RegisterBenchmark((name + std::to_string(size)).c_str(),
                                     [=](benchmark::State& state) { Measure(state, xform, datum, size); });
      }
    }
  }
}

}  // namespace orvex::bench
