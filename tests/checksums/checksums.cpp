// checksums - what the library makes of fixed points, to the last bit: a line of a 64-bit checksum and a name for every
// form of every projection in both directions, every datum both ways and every georeferencing method. The same on every
// machine, at every level of instructions and under every compiler.
//
// Inputs are integers scaled by powers of two, so that no runtime has a part in them. Points go through in batches of 1
// to 40 from every offset 0 to 39 of an array, and in one long array; results, flags and exceptions are summed. Grid
// files are written beside the program, which therefore runs from a directory of its own.
#include <array>
#include <cfloat>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <span>
#include <string>
#include <vector>

#include <orvex/orvex.h>
#include <shr/exception.h>

#include "support/Checksum.h"
#include "support/Forms.h"
#include "support/GridFiles.h"

namespace {

using namespace orvex;
using test::Checksum;

constexpr int kLargestBatch = 40, kOffsets = 40, kLong = 4099;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN(), kInf = std::numeric_limits<double>::infinity();

/// Whole multiples of a power of two between two limits.
class Numbers {
 public:
  double Between(double low, double high, double unit) {
    const auto first = static_cast<std::int64_t>(low / unit), last = static_cast<std::int64_t>(high / unit);
    m_state = m_state * 6364136223846793005u + 1442695040888963407u;
    const std::uint64_t bits = m_state ^ m_state >> 29;
    return static_cast<double>(first +
                               static_cast<std::int64_t>(bits % (static_cast<std::uint64_t>(last - first) + 1))) *
           unit;
  }

 private:
  std::uint64_t m_state = 1;
};

constexpr double kAngleUnit = 0x1p-30, kMapUnit = 0x1p-20;

struct Box {
  double west, east, south, north, unit;
};

/// Points all over a box, some of them markers, no numbers, or at places where formulas have their corners.
template <class Point>
std::vector<Point> Places(const Box& box, int count) {
  static constexpr std::array<Point, 10> kOdd{{{DBL_MAX, DBL_MAX},
                                               {0, 0},
                                               {-180, 90},
                                               {12, DBL_MAX},
                                               {180, -90},
                                               {kNaN, 3},
                                               {DBL_MAX, -7},
                                               {1e300, -1e-310},
                                               {kInf, -kInf},
                                               {-0.0, 1e9}}};
  Numbers numbers;
  std::vector<Point> points;
  for (int i = 0; i < count; ++i) {
    const double x = numbers.Between(box.west, box.east, box.unit), y = numbers.Between(box.south, box.north, box.unit);
    if (i % 11 == 10) {
      points.push_back(kOdd[static_cast<std::size_t>(i / 11) % kOdd.size()]);
    } else {
      points.push_back({x, y});
    }
  }
  return points;
}

/// Batches of every size from every offset (or from one, where there is much to do), and a long array.
template <class Point, class Convert>
void AddBatches(Checksum& sum, const Box& box, bool everyOffset, Convert convert) {
  const auto run = [&](const std::vector<Point>& from, int offset, int count) {
    std::vector<Point> points = from;
    try {
      sum.Add(convert(points.data() + offset, count));
    } catch (const shr::Exception& e) {
      sum.Add(e.MessageId());
    }
    sum.AddPoints(points);
  };
  const auto few = Places<Point>(box, kOffsets + kLargestBatch);
  for (int count = 1; count <= kLargestBatch; ++count) {
    for (int offset = 0; offset < kOffsets; ++offset) {
      if (everyOffset || offset == count * 7 % kOffsets) run(few, offset, count);
    }
  }
  const auto many = Places<Point>(box, kLong);
  run(many, 0, kLong);
}

std::string Manner(ProjAccuracy accuracy) {
  return accuracy == PA_EXACT ? ", exactly" : "";
}

// ---- projections ----

/// A box about the images of a form's places, in whole kilometres.
Box MapOf(CProjector& projector, const test::ProjectionForm& form) {
  constexpr double kStep = 1024;
  Box box{0, 0, 0, 0, kMapUnit};
  for (int i = 0; i <= 16; ++i) {
    for (int j = 0; j <= 16; ++j) {
      PROJPOINT p = form.Place(i * 0x1p-4, j * 0x1p-4);
      if (!projector.Forward(&p, 1) || !(p.x < 1e8 && p.x > -1e8 && p.y < 1e8 && p.y > -1e8)) continue;
      const double x = static_cast<double>(static_cast<int>(p.x / kStep)) * kStep,
                   y = static_cast<double>(static_cast<int>(p.y / kStep)) * kStep;
      box.west = std::min(box.west, x - kStep);
      box.east = std::max(box.east, x + kStep);
      box.south = std::min(box.south, y - kStep);
      box.north = std::max(box.north, y + kStep);
    }
  }
  return box;
}

void SumProjection(const test::ProjectionForm& form, ProjAccuracy accuracy) {
  char name[64];
  ProjGetProjectionInfo(form.type, name);
  PROJDATA record = form.MakeRecord();
  CProjector projector(&record);
  const std::string title = std::string(name) + ", " + form.form + Manner(accuracy);
  if (!projector.SetAccuracy(accuracy)) {
    Checksum().Print(title + ", refused");
    return;
  }
  Checksum forward, inverse;
  AddBatches<PROJPOINT>(forward, {form.west, form.east, form.south, form.north, kAngleUnit}, true,
                        [&](PROJPOINT* pts, int count) {
                          const bool ok = projector.Forward(pts, count);
                          return projector.Result() * 2 + ok;
                        });
  forward.Print(title + ", forward");
  AddBatches<PROJPOINT>(inverse, MapOf(projector, form), true, [&](PROJPOINT* pts, int count) {
    const bool ok = projector.Inverse(pts, count);
    return projector.Result() * 2 + ok;
  });
  inverse.Print(title + ", inverse");
}

// ---- datums ----

void SumDatum(DatumType from, DatumType to, ProjAccuracy accuracy, const std::string& title, const Box& box,
              bool everyOffset) {
  DATUMXFORM record{};
  record.SrcDatum = from;
  record.DestDatum = to;
  CDatumTransform transform(&record);
  Checksum sum;
  if (!transform.SetAccuracy(accuracy)) sum.Add(-1);
  AddBatches<DATUMPOINT>(sum, box, everyOffset, [&](DATUMPOINT* pts, int count) {
    const bool ok = transform.Convert(pts, count);
    return transform.HadUnplottables() * 2 + ok;
  });
  sum.Print(title + Manner(accuracy));
}

/// Where a datum's grid lies; the whole world where it has none.
Box AreaOf(DatumType datum) {
  switch (datum) {
    case DT_NAD_1927_CONUS_NADCON:
      return {-131, -62, 19, 51, kAngleUnit};
    case DT_NAD_1927_PUERTO_RICO_AND_VIRGIN_ISLANDS_NADCON:
      return {-68.5, -63, 16.5, 19.5, kAngleUnit};
    case DT_NAD_1927_CANADA_NTV2:
      return {-131, -89, 39, 61, kAngleUnit};
    default:
      return {-185, 185, -90, 90, kAngleUnit};
  }
}

void SumDatums(ProjAccuracy accuracy) {
  std::array<bool, 8> seen{};
  for (int i = 1; i < DatNumDatums(); ++i) {
    const auto datum = static_cast<DatumType>(i);
    DatumMethod method = DM_NOXFORM;
    DatGetDatumMethod(datum, &method);
    bool& before = seen[static_cast<std::size_t>(method)];
    const bool everyOffset = !before || method == DM_NADCON || method == DM_NTV2;  // of each method one datum in full
    before = true;
    const std::string title = "Datum " + std::to_string(i);
    SumDatum(datum, DT_WORLD_GEODETIC_SYSTEM_1984, accuracy, title + " to WGS 84", AreaOf(datum), everyOffset);
    if (DatReversible(datum) || method == DM_NTV2) {  // NTv2 has a way back that the catalogue does not promise
      SumDatum(DT_WORLD_GEODETIC_SYSTEM_1984, datum, accuracy, title + " from WGS 84", AreaOf(datum), everyOffset);
    }
  }
}

/// Grids whose shifts are whole numbers of 1/256 second, without any regularity.
void WriteGrids(const std::filesystem::path& directory) {
  Numbers numbers;
  const auto shift = [&numbers] { return numbers.Between(-40, 40, 0x1p-8); };
  const auto nadcon = [&](const std::string& region, const test::NadconGrid& grid) {
    for (const char* suffix : {".LAS", ".LOS"}) {
      test::WriteFile(directory / (region + suffix), test::NadconFile(grid, [&](int, int) { return shift(); }));
    }
  };
  nadcon("conus", {64, 29, -130, 20, 1});
  nadcon("prvi", {22, 12, -68.25, 16.75, 0.25});
  const auto field = [&](double, double) {
    const double north = shift(), west = shift();
    return std::pair(north, west);
  };
  test::WriteFile(directory / "NTV2_0.GSB", test::Ntv2File({{"WHOLE", "NONE", -130, 40, -90, 60, 1, field},
                                                            {"PART", "WHOLE", -120, 45, -110, 55, 0.25, field}}));
}

// ---- georeferencing ----

void SumGeoref(TransformMethod method) {
  constexpr int kControls = 23;
  Numbers numbers;
  GEOREF record{};
  record.Method = method;
  RefAllocControls(&record, kControls);
  for (int i = 0; i < kControls; ++i) {
    const double x = i % 5 * 200 + numbers.Between(0, 150, 0x1p-10),
                 y = i / 5 * 200 + numbers.Between(0, 150, 0x1p-10);  // NOLINT(bugprone-integer-division)
    record.pSrc[i] = {x, y};
    record.pDst[i] = {4e5 + x * 1.25 - y * 0.125 + numbers.Between(-9, 9, 0x1p-10),
                      5e6 + x * 0.25 + y * 0.875 + numbers.Between(-9, 9, 0x1p-10)};
  }
  GEOREF affine = record;
  if (method == RM_AFFINECOEFFICIENTS) {
    affine.Method = RM_AFFINEPOLYNOMIAL;
    RefControlsToCoeff(&affine);
    for (int i = 0; i < 6; ++i) record.Coeff[i] = affine.Coeff[i];
  }
  CGeorefTransform transform(&record);
  Checksum sum;
  sum.Add(transform.IsCreated());
  GEOREF fitted{};
  transform.GetInfo(&fitted);
  for (int i = 0; i < 6; ++i) sum.Add(static_cast<double>(fitted.Coeff[i]));
  double total = 0;
  std::array<double, kControls> errors{};
  sum.Add(transform.ComputeError(&total, errors.data()));
  sum.Add(total);
  for (const double error : errors) sum.Add(error);
  AddBatches<GEOREFPOINT>(sum, {-100, 1100, -100, 1100, 0x1p-12}, true,
                          [&](GEOREFPOINT* pts, int count) { return int{transform.Forward(pts, count)}; });
  sum.Print(std::string("Georeferencing, ") + RefMethodName(method));
  RefFreeControls(&record);
}

}  // namespace

int main(int, char** argv) {
  WriteGrids(std::filesystem::path(argv[0]).parent_path());
  for (const ProjAccuracy accuracy : {PA_STATED, PA_EXACT}) {
    for (const test::ProjectionForm& form : test::AllProjections()) SumProjection(form, accuracy);
    SumDatums(accuracy);
  }
  for (int method = RM_HELMERT; method <= RM_INVERSEDISTANCE; ++method) {
    SumGeoref(static_cast<TransformMethod>(method));
  }
}
