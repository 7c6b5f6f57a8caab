// preclip - draws a graticule, an area and a route over the antimeridian on two maps, as SVG on standard output.
#include <cstdio>
#include <vector>

#include <orvex/orvex.h>

namespace {

using namespace orvex;

/// One map on the drawing: the callbacks find it through their first argument.
struct Map {
  CProjector projector;
  double left, top, unit;  // where the map's origin lies, in pixels, and metres per pixel
  const char* style = "";
};

/// Projects what the library has cut, in place, and writes it as one path.
bool Draw(Map& map, int nParts, const int* counts, PROJPOINT* pts, const char* end) {
  std::printf("<path %s d=\"", map.style);
  for (int part = 0; part < nParts; pts += counts[part++]) {
    if (!map.projector.Forward(pts, counts[part]) || map.projector.Result() != 0) return false;
    for (int i = 0; i < counts[part]; ++i) {
      std::printf("%c%.1f %.1f", i == 0 ? 'M' : 'L', map.left + pts[i].x / map.unit, map.top - pts[i].y / map.unit);
    }
    std::printf("%s", end);
  }
  std::printf("\"/>\n");
  return true;
}

bool ORVEX_CALL DrawLine(void* user, int nPts, PROJPOINT* pts) {
  return Draw(*static_cast<Map*>(user), 1, &nPts, pts, "");
}

bool ORVEX_CALL DrawArea(void* user, int nParts, const int* counts, PROJPOINT* pts) {
  return Draw(*static_cast<Map*>(user), nParts, counts, pts, "Z");
}

/// Points every degree or so: clipping and projecting see nothing of what lies between two points.
std::vector<PROJPOINT> Dense(const std::vector<PROJPOINT>& corners) {
  constexpr int kSteps = 60;
  std::vector<PROJPOINT> line{corners[0]};
  for (std::size_t i = 1; i < corners.size(); ++i) {
    const PROJPOINT a = corners[i - 1], b = corners[i];
    for (int k = 1; k <= kSteps; ++k) line.push_back({a.x + (b.x - a.x) * k / kSteps, a.y + (b.y - a.y) * k / kSteps});
  }
  return line;
}

bool Line(Map& map, const std::vector<PROJPOINT>& corners) {
  const std::vector<PROJPOINT> line = Dense(corners);
  return map.projector.LLPreclipPolyline(&map, static_cast<int>(line.size()), line.data(), DrawLine);
}

bool Area(Map& map, const std::vector<PROJPOINT>& corners) {
  const std::vector<PROJPOINT> ring = Dense(corners);
  const int count = static_cast<int>(ring.size());
  return map.projector.LLPreclipPolygon(&map, 1, &count, ring.data(), DrawArea, nullptr);
}

bool DrawMap(Map& map) {
  bool ok = true;
  map.style = "fill='#9cf'";
  ok = Area(map, {{150, -40}, {230, -40}, {230, 40}, {150, 40}, {150, -40}}) && ok;
  map.style = "fill='none' stroke='#888'";
  for (int lon = -170; lon < 180; lon += 20) {
    ok = Line(map, {{static_cast<double>(lon), -89}, {static_cast<double>(lon), 89}}) && ok;
  }
  for (int lat = -80; lat <= 80; lat += 20) {
    ok = Line(map, {{-179.99, static_cast<double>(lat)},
                    {0, static_cast<double>(lat)},
                    {179.99, static_cast<double>(lat)}}) &&
         ok;
  }
  map.style = "fill='none' stroke='#c00' stroke-width='2'";
  return Line(map, {{139.7, 35.7}, {237.6, 37.8}}) && ok;  // Tokyo to San Francisco, eastward all the way
}

CProjector Projection(ProjType type, double lat0, double lon0) {
  PROJDATA record{};
  record.Type = type;
  record.Lat0 = lat0;
  record.Lon0 = lon0;
  record.Ellipsoid = ET_WGS_84;
  return CProjector(&record);
}

}  // namespace

int main() {
  Map globe{Projection(PT_ORTHOGRAPHIC, 25, 170), 210, 210, 32000};
  Map world{Projection(PT_SINUSOIDAL, 0, 0), 760, 210, 64000};
  std::printf("<svg xmlns='http://www.w3.org/2000/svg' width='1100' height='420'>\n");
  const bool ok = DrawMap(globe) && DrawMap(world);
  std::printf("</svg>\n");
  return ok ? 0 : 1;
}
