// MapCommand - orvex map: the world, or the user's own shapes, drawn in a projection as an SVG picture.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <memory>

#include "Failure.h"
#include "commands/Commands.h"
#include "commands/ProjectionOptions.h"
#include "maps/MapArea.h"
#include "maps/MapPainter.h"
#include "maps/MapShapes.h"
#include "maps/MapSvg.h"
#include "maps/MapText.h"

namespace orvex::tool {

namespace {

constexpr int kDefaultSize = 1000, kLargestSize = 20000, kSmallestMap = 20;  // pixels
constexpr int kMargin = 6, kTitleSize = 21, kTitleLine = 28, kTitleMargin = 8;

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
  std::vector<std::string> title;  ///< lines
};

/// Fits the area, drawn at an arbitrary scale before, into the picture.
Picture Fit(const Options& options, const BoxPen& area, const Frame& drawn) {
  const auto [least, most] = std::pair(area.least, area.most);
  const double w = most.x - least.x, h = most.y - least.y;
  if (!(w > 0) || !(h > 0)) throw Failure("nothing of the area lies in the projection's domain");
  Picture picture{options.width, options.height, {}, {}};
  if (picture.width == 0 && picture.height == 0) (w >= h * 0.8 ? picture.width : picture.height) = kDefaultSize;
  const auto side = [](double pixels) { return std::clamp(static_cast<int>(std::lround(pixels)), 50, kLargestSize); };
  if (picture.width == 0) picture.width = side((picture.height - 2 * kMargin) * w / h + 2 * kMargin);
  picture.title = Wrapped(options.title, kTitleSize, picture.width - 2 * kMargin);
  const int lines = static_cast<int>(picture.title.size());
  const int heading = lines == 0 ? 0 : lines * kTitleLine + kTitleMargin, extra = 2 * kMargin + heading;
  if (picture.height == 0) picture.height = side((picture.width - 2 * kMargin) * h / w + extra);
  if (picture.height - extra < kSmallestMap) throw Failure("the title leaves no room for the map");
  const double innerW = 10.0 * (picture.width - 2 * kMargin), innerH = 10.0 * (picture.height - extra);
  const double factor = std::min(innerW / w, innerH / h);
  const double left = 10 * kMargin + (innerW - factor * w) / 2;
  const double top = 10 * (kMargin + heading) + (innerH - factor * h) / 2;
  picture.frame = {drawn.scale * factor, left + factor * (drawn.x0 - least.x), top + factor * (drawn.y0 - least.y)};
  return picture;
}

/// Meridians and parallels at the multiples of a step.
std::vector<Points> Graticule(double step) {
  std::vector<Points> lines;
  for (double lon = step * std::ceil(-180 / step); lon < 180; lon += step) {
    lines.push_back({{lon, -90}, {lon, 90}});
  }
  for (double lat = step * std::ceil(-90 / step); lat < 90; lat += step) {
    if (lat > -90) lines.push_back({{-180, lat}, {0, lat}, {180, lat}});
  }
  return lines;
}

struct Drawing {
  std::vector<std::string> fills;
  std::string lines;
};

std::string DrawLines(MapPainter& painter, const std::vector<Points>& lines) {
  PathPen pen;
  for (const Points& line : lines) painter.Draw(line, pen);
  return pen.Data();
}

Drawing DrawShapes(MapPainter& painter, const Shapes& shapes) {
  Drawing drawing;
  PathPen outlines;
  for (const Area& area : shapes.areas) {
    PathPen fill;
    painter.Fill(area, fill);
    drawing.fills.push_back(fill.Data());
    for (const Points& ring : area) painter.Draw(ring, outlines);
  }
  for (const Points& line : shapes.lines) painter.Draw(line, outlines);
  drawing.lines = outlines.Data();
  return drawing;
}

void AddTitle(MapSvg& svg, const Picture& picture) {
  for (std::size_t i = 0; i < picture.title.size(); ++i) {
    svg.AddText({5.0 * picture.width, 10.0 * (kMargin + kTitleLine * static_cast<double>(i) + kTitleSize)},
                10 * kTitleSize, "class=\"title\" text-anchor=\"middle\" fill=\"#333\"", picture.title[i]);
  }
}

void Write(const std::string& file, const std::string& text) {
  if (file == "-") {
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size() || std::fflush(stdout) != 0) {
      throw Failure("cannot write to standard output");
    }
    return;
  }
  std::ofstream out(file, std::ios::binary);
  out << text;
  out.close();
  if (!out) throw Failure("cannot write " + file);
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
  const Shapes land = ReadShapes(options.land);

  MapPainter painter(projector, area);
  const Frame draft{10000 / area.radius, 0, 0};
  painter.SetFrame(draft);
  BoxPen extent;
  painter.FillAll(extent);
  const Picture picture = Fit(options, extent, draft);
  painter.SetFrame(picture.frame);

  const std::string name = ProjectionNames()[static_cast<std::size_t>(record.Type)];
  MapSvg svg(picture.width, picture.height, picture.frame, options.title.empty() ? name : options.title);
  PathPen all;
  painter.FillAll(all);
  svg.AddArea(all.Data(), options.seaColor, "#7a8a94");
  const Drawing world = DrawShapes(painter, land);
  // The thin edge closes the joint at which the two ends of an oblique map of an ellipsoid meet.
  const std::string color = EscapedXml(options.landColor);
  svg.AddFills(world.fills, "class=\"land\" fill=\"" + color + "\" stroke=\"" + color + "\" stroke-width=\"3\"");
  if (options.graticule != 0) {
    svg.AddLines(DrawLines(painter, Graticule(options.graticule)),
                 "stroke=\"#667\" stroke-opacity=\".35\" stroke-width=\"5\"");
  }
  svg.AddLines(world.lines, "stroke=\"#6b6046\" stroke-width=\"6\"");
  if (!options.overlay.empty()) {
    const Drawing own = DrawShapes(painter, ReadShapes(options.overlay));
    svg.AddFills(own.fills, "class=\"overlay\" fill=\"#c0392b\" opacity=\".25\"");
    svg.AddLines(own.lines, "stroke=\"#c0392b\" stroke-width=\"15\"");
  }
  AddTitle(svg, picture);
  Write(options.out, svg.Finish());
  return kSuccess;
}

}  // namespace

void AddMapCommand(CLI::App& app, int& status) {
  CLI::App* command = app.add_subcommand("map", "Draw the world or your own shapes in a projection as an SVG picture");
  const auto options = std::make_shared<Options>();
  AddProjectionOptions(*command, options->projection);
  command->add_option("-o,--output,--out", options->out, "File to write, - for standard output")->capture_default_str();
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
