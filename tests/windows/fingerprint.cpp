// fingerprint - what every projection and every datum makes of a fixed set of places, to the last bit, for comparing
// platforms: one line a point, "group;direction;input;output" with the coordinates as hexadecimal images of the
// doubles.
#include <bit>
#include <cstdint>
#include <cstdio>
#include <vector>

#include <orvex/orvex.h>
#include <shr/exception.h>

#include "support/Forms.h"

namespace {

using namespace orvex;

constexpr int kPlaces = 200;

/// Fractions of 2^-32, which every platform computes exactly.
class Places {
 public:
  double Fraction() {
    m_state = m_state * 6364136223846793005u + 1442695040888963407u;
    return static_cast<double>(m_state >> 32) * 0x1p-32;
  }

 private:
  std::uint64_t m_state = 1;
};

void Print(const char* group, const char* form, char direction, double inX, double inY, double outX, double outY) {
  const auto image = [](double v) { return static_cast<unsigned long long>(std::bit_cast<std::uint64_t>(v)); };
  std::printf("%s, %s;%c;%016llx %016llx;%016llx %016llx\n", group, form, direction, image(inX), image(inY),
              image(outX), image(outY));
}

/// The low bits off, so that both platforms nearly always run the inverse from the same place.
double Coarse(double value) {
  return std::bit_cast<double>(std::bit_cast<std::uint64_t>(value) & ~std::uint64_t{0xFFFFF});
}

void PrintProjection(const test::ProjectionForm& form) {
  char name[64];
  ProjGetProjectionInfo(form.type, name);
  PROJDATA record = form.MakeRecord();
  CProjector projector(&record);
  Places places;
  std::vector<PROJPOINT> in(kPlaces);
  for (PROJPOINT& p : in) {
    const double u = places.Fraction(), v = places.Fraction();
    p = form.Place(u, v);
  }
  std::vector<PROJPOINT> out = in;
  projector.Forward(out.data(), kPlaces);
  for (std::size_t i = 0; i < in.size(); ++i) Print(name, form.form, 'F', in[i].x, in[i].y, out[i].x, out[i].y);
  for (PROJPOINT& p : out) p = {Coarse(p.x), Coarse(p.y)};
  in = out;
  projector.Inverse(out.data(), kPlaces);
  for (std::size_t i = 0; i < in.size(); ++i) Print(name, form.form, 'I', in[i].x, in[i].y, out[i].x, out[i].y);
}

/// Both ways where the datum has a way back. Grid datums have no grids here and are left out.
void PrintDatum(DatumType from, DatumType to, const char* method, char direction) {
  DATUMXFORM record{};
  record.SrcDatum = from;
  record.DestDatum = to;
  try {
    CDatumTransform transform(&record);
    Places places;
    for (int i = 0; i < 20; ++i) {
      const double u = places.Fraction(), v = places.Fraction();
      const DATUMPOINT in{u * 358 - 179, v * 176 - 88};
      DATUMPOINT out = in;
      transform.Convert(&out, 1);
      Print("Datum", method, direction, in.x, in.y, out.x, out.y);
    }
  } catch (const shr::Exception& e) {
    std::printf("Datum, %s;%c;%d;%s\n", method, direction, static_cast<int>(from), e.what());
  }
}

}  // namespace

int main() {
  for (const test::ProjectionForm& form : test::AllProjections()) PrintProjection(form);
  for (int i = 1; i < DatNumDatums(); ++i) {
    const auto datum = static_cast<DatumType>(i);
    DatumMethod method = DM_NOXFORM;
    DatGetDatumMethod(datum, &method);
    if (method == DM_NADCON || method == DM_NTV2) continue;
    static constexpr const char* kNames[] = {"none", "NADCON", "Bursa-Wolf", "Molodensky", "HARN", "MRE", "NTv2"};
    PrintDatum(datum, DT_WORLD_GEODETIC_SYSTEM_1984, kNames[method], 'F');
    if (DatReversible(datum)) PrintDatum(DT_WORLD_GEODETIC_SYSTEM_1984, datum, kNames[method], 'I');
  }
}
