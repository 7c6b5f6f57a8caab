// grid_host - converts one point with the NTv2 grid beside the program; status 0 when it was shifted, else the number
// of the exception less 20000.
#include <cmath>

#include <orvex/orvex.h>
#include <shr/exception.h>

int main() {
  orvex::DATUMXFORM record{};
  record.SrcDatum = orvex::DT_NAD_1927_CANADA_NTV2;
  record.DestDatum = orvex::DT_NORTH_AMERICAN_DATUM_1983;
  try {
    orvex::CDatumTransform transform(&record);
    orvex::DATUMPOINT p{-100, 50};
    return transform.Convert(&p, 1) && std::fabs(p.y - 50.01) < 1e-9 && std::fabs(p.x + 100) < 1e-9 ? 0 : 1;
  } catch (const shr::Exception& e) {
    return e.MessageId() - 20000;
  }
}
