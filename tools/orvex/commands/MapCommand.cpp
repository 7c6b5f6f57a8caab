// MapCommand - orvex map: the world, or the user's own shapes, drawn in a projection as an SVG picture.
#include <cstdio>
#include <memory>

#include "Failure.h"
#include "commands/Commands.h"
#include "commands/ProjectionOptions.h"
#include "maps/MapSheet.h"
#include "tables/Files.h"

namespace orvex::tool {

namespace {

struct Options {
  ProjectionOptions projection;
  MapOptions map;
  std::string out = "-";
  bool noLabels = false, noZone = false;
};

void Write(const std::string& file, const std::string& text) {
  OutputFile out(file);
  out.Write(text);
  out.Commit();
}

int Run(Options& options) {
  options.map.labels = !options.noLabels;
  options.map.zone = !options.noZone;
  Write(options.out, DrawMap(MakeRecord(options.projection), options.map));
  return kSuccess;
}

void AddContents(CLI::App& command, MapOptions& map) {
  command.add_option("--land", map.land, "File of rings and lines to draw instead of the world's land");
  command.add_option("--overlay", map.overlay, "File of rings and lines to draw over it");
  command.add_option("--points", map.points, "Table of points with names (lon, lat, name)");
  command.add_option("--great-circle", map.greatCircles, "Shortest way between two places: LON1,LAT1,LON2,LAT2")
      ->allow_extra_args(false);
  command.add_option("--graticule", map.graticule, "Step of meridians and parallels in degrees, 0 for none")
      ->capture_default_str();
  command.add_option("--grid", map.grid, "Step of lines of equal projected coordinates, map units");
  command.add_option("--tissot", map.tissot, "Tissot's ellipses at the multiples of a step in degrees");
  command.add_option("--distortion", map.distortion, "Shade the map by its distortion: scale, area or angle");
  command.add_option("--scale-bar", map.scaleBar, "auto (where the scale is steady), yes or no")->capture_default_str();
}

}  // namespace

void AddMapCommand(CLI::App& app, int& status) {
  CLI::App* command = app.add_subcommand("map", "Draw the world or your own shapes in a projection as an SVG picture");
  const auto options = std::make_shared<Options>();
  MapOptions& map = options->map;
  AddProjectionOptions(*command, options->projection);
  command->add_option("-o,--output,--out", options->out, "File to write, - for standard output")->capture_default_str();
  AddStatedOption(*command, map.stated);
  AddContents(*command, map);
  command->add_option("--bounds", map.bounds, "Part of the globe as W,S,E,N in degrees (default: by projection)");
  command->add_flag("--no-labels", options->noLabels, "No degrees at meridians and parallels");
  command->add_flag("--no-zone", options->noZone, "Do not mark a zone and its axes");
  command->add_option("--title", map.title, "Heading of the map");
  command->add_option("--width", map.width, "Pixels (default 1000, or what the height asks for)");
  command->add_option("--height", map.height, "Pixels (default: what the width asks for)");
  command->add_option("--land-color", map.landColor, "Colour of the land")->capture_default_str();
  command->add_option("--sea-color", map.seaColor, "Colour of the sea")->capture_default_str();
  command->callback([options, &status] { status = Run(*options); });
}

}  // namespace orvex::tool
