// Projects a point, meets an exception and a datum: enough to see that headers, library and runtime belong together.
#include <orvex/orvex.h>
#include <shr/exception.h>
#include <shr/image_registration.h>

#include <cmath>
#include <cstdio>

int main() {
  orvex::PROJDATA record{};
  record.Type = orvex::PT_UTM;
  record.Lon0 = 15;
  record.Ellipsoid = orvex::ET_WGS_84;
  orvex::CProjector utm(&record);
  orvex::PROJPOINT point{15, 0};
  if (!utm.Forward(&point, 1) || point.x != 500000 || std::fabs(point.y) > 1e-6) return 1;

  record.Scale = -1;
  try {
    orvex::ProjCreateProjection(&record);
    return 2;
  } catch (const shr::Exception& e) {
    if (e.MessageId() != 20231) return 3;
    std::printf("%s\n", e.what());
  }
  return orvex::DatNumDatums() == 254 && shr::RPoints().Count() == 0 ? 0 : 4;
}
