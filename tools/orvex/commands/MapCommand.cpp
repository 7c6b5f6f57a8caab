// MapCommand - orvex map: the world, or the user's own shapes, drawn in a projection as an SVG picture.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <memory>

#include "Failure.h"
#include "commands/Commands.h"
#include "commands/ProjectionOptions.h"
#include "maps/MapArea.h"
#include "maps/MapPainter.h"
#include "maps/MapShapes.h"
#include "maps/MapSvg.h"
#include "tables/Files.h"

namespace orvex::tool {

namespace {

constexpr int kDefaultSize = 1000, kLargestSize = 20000;  // pixels
constexpr int kHeading = 36, kMargin = 6;

struct Options {
  ProjectionOptions projection;
  std::string out = "-", land, overlay, bounds, title;
  std::string landColor = "#d9ceb0", seaColor = "#dcecf5";
  double graticule = 15;
  int width = 0, height = 0;
};

struct Picture {
  int width, height;
  Frame frame;
};

/// Fits the area, drawn at an arbitrary scale before, into the picture.
Picture Fit(const Options& options, const Path& area, const Frame& drawn) {
  Spot least{1e300, 1e300}, most{-1e300, -1e300};
  for (const auto& piece : area) {
    for (const Spot& s : piece) {
      least = {std::min(least.x, s.x), std::min(least.y, s.y)};
      most = {std::max(most.x, s.x), std::max(most.y, s.y)};
    }
  }
  const double w = most.x - least.x, h = most.y - least.y;
  if (!(w > 0) || !(h > 0)) throw Failure("nothing of the area lies in the projection's domain");
  const int heading = options.title.empty() ? 0 : kHeading, extra = 2 * kMargin + heading;
  Picture picture{options.width, options.height, {}};
  if (picture.width == 0 && picture.height == 0) (w >= h * 0.8 ? picture.width : picture.height) = kDefaultSize;
  const auto side = [](double pixels) { return std::clamp(static_cast<int>(std::lround(pixels)), 50, kLargestSize); };
  if (picture.height == 0) picture.height = side((picture.width - 2 * kMargin) * h / w + extra);
  if (picture.width == 0) picture.width = side((picture.height - extra) * w / h + 2 * kMargin);
  const double innerW = 10.0 * (picture.width - 2 * kMargin), innerH = 10.0 * (picture.height - extra);
  const double factor = std::min(innerW / w, innerH / h);
  const double left = 10 * kMargin + (innerW - factor * w) / 2;
  const double top = 10 * (kMargin + heading) + (innerH - factor * h) / 2;
  picture.frame = {drawn.scale * factor, left + factor * (drawn.x0 - least.x), top + factor * (drawn.y0 - least.y)};
  return picture;
}

/// Meridians and parallels at the multiples of a step.
std::vector<Shape> Graticule(const MapArea& area, double step) {
  std::vector<Shape> lines;
  const Bounds& b = area.box;
  const double most = area.turn == Turn::Periodic ? b.east - 1e-9 : b.east;  // both edges are one meridian there
  for (double k = std::ceil(b.west / step); k * step <= most; ++k) {
    lines.push_back({false, {{k * step, b.south}, {k * step, b.north}}});
  }
  for (double k = std::ceil(b.south / step); k * step <= b.north; ++k) {
    if (std::abs(k * step) < 90) lines.push_back({false, {{b.west, k * step}, {b.east, k * step}}});
  }
  return lines;
}

void Append(Path& path, Path more) {
  path.insert(path.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

struct Drawing {
  Path fill, lines;
};

Drawing DrawShapes(MapPainter& painter, const std::vector<Shape>& shapes) {
  Drawing drawing;
  for (const Shape& shape : shapes) {
    if (shape.ring) Append(drawing.fill, painter.Fill(shape));
    Append(drawing.lines, painter.Draw(shape));
  }
  return drawing;
}

void Write(const std::string& file, const std::string& text) {
  OutputFile out(file);
  out.Write(text);
  out.Commit();
}

void CheckOptions(const Options& o) {
  const auto sizeOk = [](int size) { return size == 0 || (size >= 50 && size <= kLargestSize); };
  if (!sizeOk(o.width) || !sizeOk(o.height)) throw Failure("--width and --height take 50 to 20000 pixels");
  if (o.graticule != 0 && !(o.graticule >= 0.1 && o.graticule <= 180)) {
    throw Failure("--graticule takes a step of 0.1 to 180 degrees, or 0 for none");
  }
}

int Run(const Options& options) {
  CheckOptions(options);
  PROJDATA record = MakeRecord(options.projection);
  record.Lon0 = std::remainder(record.Lon0, 360);  // preclipping knows longitudes from -360 to 360
  CProjector projector(&record);
  projector.GetInfo(&record);
  const MapArea area = ChooseArea(record, options.bounds);
  const std::vector<Shape> land = ReadShapes(options.land);

  MapPainter painter(projector, area);
  const Frame draft{10000 / area.radius, 0, 0};
  painter.SetFrame(draft);
  const Picture picture = Fit(options, painter.FillArea(), draft);
  painter.SetFrame(picture.frame);

  const std::string name = ProjectionNames()[static_cast<std::size_t>(record.Type)];
  MapSvg svg(picture.width, picture.height, picture.frame, options.title.empty() ? name : options.title);
  svg.AddArea(painter.FillArea(), options.seaColor, "#7a8a94");
  const Drawing world = DrawShapes(painter, land);
  const std::string color = EscapedXml(options.landColor);
  // The thin edge covers the tenths of a pixel by which boxes that lie side by side can part when rounded.
  svg.AddFill(world.fill, "fill=\"" + color + "\" stroke=\"" + color + "\" stroke-width=\"3\"");
  if (options.graticule != 0) {
    const Drawing lines = DrawShapes(painter, Graticule(area, options.graticule));
    svg.AddLines(lines.lines, "stroke=\"#667\" stroke-opacity=\".35\" stroke-width=\"5\"");
  }
  svg.AddLines(world.lines, "stroke=\"#6b6046\" stroke-width=\"6\"");
  if (!options.overlay.empty()) {
    const Drawing own = DrawShapes(painter, ReadShapes(options.overlay));
    svg.AddFill(own.fill, "fill=\"#c0392b\" fill-opacity=\".25\"");
    svg.AddLines(own.lines, "stroke=\"#c0392b\" stroke-width=\"15\"");
  }
  if (!options.title.empty()) svg.AddHeading(options.title, kHeading);
  Write(options.out, svg.Finish());
  return kSuccess;
}

}  // namespace

void AddMapCommand(CLI::App& app, int& status) {
  CLI::App* command = app.add_subcommand("map", "Draw the world or your own shapes in a projection as an SVG picture");
  const auto options = std::make_shared<Options>();
  AddProjectionOptions(*command, options->projection);
  command->add_option("-o,--out,--output", options->out, "File to write, - for standard output")->capture_default_str();
  command->add_option("--land", options->land, "File of rings and lines to draw instead of the world's land");
  command->add_option("--overlay", options->overlay, "File of rings and lines to draw over it");
  command->add_option("--bounds", options->bounds, "Part of the globe as W,S,E,N in degrees (default: by projection)");
  command->add_option("--graticule", options->graticule, "Step of meridians and parallels in degrees, 0 for none")
      ->capture_default_str();
  command->add_option("--title", options->title, "Heading of the map");
  command->add_option("--width", options->width, "Pixels (default 1000, or what the height asks for)");
  command->add_option("--height", options->height, "Pixels (default: what the width asks for)");
  command->add_option("--land-color", options->landColor, "Colour of the land")->capture_default_str();
  command->add_option("--sea-color", options->seaColor, "Colour of the sea")->capture_default_str();
  command->callback([options, &status] { status = Run(*options); });
}

}  // namespace orvex::tool
