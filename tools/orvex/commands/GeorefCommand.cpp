// GeorefCommand - orvex georef: a transform fitted to control points; its residuals, its coefficients, and points run
// through it.
#include <algorithm>
#include <array>
#include <atomic>
#include <cfloat>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>

#include "Failure.h"
#include "commands/Commands.h"
#include "georef/Fit.h"
#include "tables/Controls.h"
#include "tables/Files.h"
#include "tables/PointTable.h"

namespace orvex::tool {

namespace {

struct Options {
  std::string controls, method, worldFile;
  bool report = false, flipY = false, gcp = false, inverse = false;
  TableOptions table;
};

/// Fifteen digits: nanometres at map coordinates, and no noise behind them.
std::string Digits(double value) {
  char text[40];
  return {text, std::to_chars(text, text + sizeof text, value, std::chars_format::general, 15).ptr};
}

/// "3", or with its name "3 (spire)".
std::string PointName(const Controls& controls, std::size_t index) {
  const std::string number = std::to_string(controls.numbers[index]);
  return controls.names.empty() ? number : number + " (" + controls.names[index] + ")";
}

/// Ends the line of a point.
void EndLine(const Controls& controls, std::size_t index, std::FILE* out) {
  if (!controls.names.empty()) std::fprintf(out, "  %s", controls.names[index].c_str());
  std::fputc('\n', out);
}

/// What a fit reports that (nearly) passes through its controls: what it misses of each without it.
void ReportLeftOut(Fit& fit, int decimals, std::FILE* out) {
  const Controls& controls = fit.ControlPoints();
  const std::vector<std::optional<double>> errors = fit.ErrorsLeftOut();
  std::fprintf(out, "\neach point by the fit to the others:\n%5s %12s\n", "POINT", "ERROR");
  std::vector<double> known;
  for (std::size_t i = 0; i < errors.size(); ++i) {
    if (errors[i]) {
      known.push_back(*errors[i]);
      std::fprintf(out, "%5zu %12.*f", controls.numbers[i], decimals, *errors[i]);
    } else {
      std::fprintf(out, "%5zu %12s", controls.numbers[i], "-");
    }
    EndLine(controls, i, out);
  }
  if (!known.empty()) std::fprintf(out, "root mean square  %.*f\n", decimals, RootMeanSquare(known));
}

/// "a + x * b + y * c".
std::string Sum(double a, double b, double c) {
  return Digits(a) + " + x * " + Digits(b) + " + y * " + Digits(c);
}

void ReportCoefficients(Fit& fit, std::FILE* out) {
  if (fit.How().IsAffine()) {
    const std::array<double, 6> c = fit.Coefficients();
    std::fprintf(out, "\nX = %s\nY = %s\n", Sum(c[0], c[1], c[2]).c_str(), Sum(c[3], c[4], c[5]).c_str());
  } else if (fit.How().IsProjective()) {
    const auto [a, b, w] = fit.PerspectiveCoefficients();
    std::fprintf(out, "\nX = (%s) / w\nY = (%s) / w\nw = %s\n", Sum(a[0], a[1], a[2]).c_str(),
                 Sum(b[0], b[1], b[2]).c_str(), Sum(w[0], w[1], w[2]).c_str());
  }
}

void Report(Fit& fit, int decimals, std::FILE* out) {
  const Controls& controls = fit.ControlPoints();
  std::vector<GEOREFPOINT> images = controls.source;
  fit.Forward(images);
  const std::vector<double> errors = fit.Errors();
  std::fprintf(out, "method    %s\ncontrols  %d\n\n", fit.How().name, fit.Count());
  std::fprintf(out, "%5s %15s %15s %15s %15s %12s %12s %12s\n", "POINT", "SOURCE X", "SOURCE Y", "X", "Y", "DX", "DY",
               "ERROR");
  for (std::size_t i = 0; i < errors.size(); ++i) {
    const GEOREFPOINT from = controls.source[i], to = controls.destination[i];
    std::fprintf(out, "%5zu %15.*f %15.*f %15.*f %15.*f %12.*f %12.*f %12.*f", controls.numbers[i], decimals, from.x,
                 decimals, from.y, decimals, to.x, decimals, to.y, decimals, images[i].x - to.x, decimals,
                 images[i].y - to.y, decimals, errors[i]);
    EndLine(controls, i, out);
  }
  const auto worst = std::max_element(errors.begin(), errors.end());
  std::fprintf(out, "\ntotal error (root mean square)  %.*f\nlargest error                   %.*f at point %s\n",
               decimals, RootMeanSquare(errors), decimals, *worst,
               PointName(controls, static_cast<std::size_t>(worst - errors.begin())).c_str());
  if (fit.How().IsWarp() || fit.How().IsProjective()) ReportLeftOut(fit, decimals, out);
  ReportCoefficients(fit, out);
}

/// Rows of a raster as they are counted downwards.
double Row(const Controls& controls, double y) {
  return controls.rowsUp ? 0 - y : y;
}

/// Control points as the raster tools of GDAL take them: -gcp pixel line easting northing.
void PrintGcps(const Controls& controls, std::FILE* out) {
  for (std::size_t i = 0; i < controls.source.size(); ++i) {
    const GEOREFPOINT from = controls.source[i], to = controls.destination[i];
    std::fprintf(out, "-gcp %s %s %s %s\n", Digits(from.x).c_str(), Digits(Row(controls, from.y)).c_str(),
                 Digits(to.x).c_str(), Digits(to.y).c_str());
  }
}

/// What the options ask to be told about the fit.
void Print(Fit& fit, const Options& options, std::FILE* out) {
  const int decimals = options.table.format.decimals;
  if (options.report) Report(fit, decimals < 0 ? 4 : decimals, out);
  if (options.gcp) PrintGcps(fit.ControlPoints(), out);
}

/// The same where no points follow.
void PrintToOutput(Fit& fit, const Options& options) {
  if (!options.report && !options.gcp) return;
  OutputFile output(options.table.output);
  Print(fit, options, output.Stream());
  output.Commit();
}

/// Six lines: the steps of one column and of one row, and the position of the centre of the upper left pixel, which
/// lies half a pixel from its corner (0, 0).
void WriteWorldFile(Fit& fit, const Options& options) {
  if (!fit.How().IsAffine()) throw Failure("a world file holds an affine map: --method affine or helmert");
  RefuseSameFile(options.controls, options.worldFile);
  if (!options.table.file.empty()) RefuseSameFile(options.table.file, options.worldFile);
  std::array<double, 6> c = fit.Coefficients();
  c[2] = Row(fit.ControlPoints(), c[2]);
  c[5] = Row(fit.ControlPoints(), c[5]);
  OutputFile file(options.worldFile);
  for (const double value : {c[1], c[4], c[2], c[5], c[0] + (c[1] + c[2]) / 2, c[3] + (c[4] + c[5]) / 2}) {
    file.Write(Digits(value) + "\n");
  }
  file.Commit();
}

/// Runs the points of a table through a fit of its own, forwards or back.
struct Warper {
  std::shared_ptr<Fit> fit;
  bool inverse;
  std::atomic<std::uint64_t>* withoutWayBack;
  std::vector<GEOREFPOINT> block = {};

  void operator()(std::vector<PROJPOINT>& points) {
    block.clear();
    for (const PROJPOINT& p : points) block.push_back({p.x, p.y});
    inverse ? fit->Inverse(block) : fit->Forward(block);
    for (std::size_t i = 0; i < points.size(); ++i) {
      if (inverse && block[i].x == DBL_MAX && points[i].x != DBL_MAX) ++*withoutWayBack;
      points[i] = {block[i].x, block[i].y};
    }
  }
};

/// Runs the points through the fit; each thread makes one of its own.
int TransformPoints(const FitMethod& method, const Controls& controls, const Options& options,
                    const TableOptions& table) {
  std::atomic<std::uint64_t> withoutWayBack = 0;
  const int status = ConvertTable(table, Kind::Projected, Kind::Projected, [&] {
    return Warper{std::make_shared<Fit>(method, controls, options.flipY), options.inverse, &withoutWayBack};
  });
  if (withoutWayBack > 0) {
    Warn("points without a way back: " + std::to_string(withoutWayBack) + "; no place is found that " + method.name +
         " carries to them");
  }
  return status;
}

int Run(const Options& options) {
  const FitMethod& method = FindFitMethod(options.method);
  // A report or a world file alone needs no points; FILE "-" asks for both.
  const bool points = !options.table.file.empty() || !options.table.coordinates.empty() ||
                      (!options.report && !options.gcp && options.worldFile.empty());
  TableOptions table = options.table;
  if (table.file.empty()) table.file = "-";
  if (points && table.coordinates.empty() && table.file == "-" && options.controls == "-")
    throw Failure("two inputs cannot be standard input");
  if (!points && !options.report && !options.gcp && table.output != "-") {
    throw Failure("--output is for points, --report and --gcp");
  }
  if (!points && options.inverse) throw Failure("--inverse is for points; name their file, or - for standard input");
  RefuseSameFile(options.controls, table.output);
  const Controls controls = ReadControls(options.controls, options.table.delimiter, options.table.decimalComma);
  Fit fit(method, controls, options.flipY);
  if (fit.IsMirrored()) {
    Warn(std::string("the source is the mirror image of the destination; try ") + (options.flipY ? "without" : "with") +
         " --flip-y");
  }
  if (options.inverse) fit.CheckInverse();
  if (!options.worldFile.empty()) WriteWorldFile(fit, options);
  if (!points) {
    PrintToOutput(fit, options);
    return kSuccess;
  }
  Print(fit, options, table.output == "-" ? stderr : stdout);
  return TransformPoints(method, controls, options, table);
}

}  // namespace

void AddGeorefCommand(CLI::App& app, int& status) {
  CLI::App* command = app.add_subcommand("georef", "Fit a transform to control points; transform points with it");
  const auto options = std::make_shared<Options>();
  command->add_option("--controls", options->controls, "Table of control points: source x, y, destination x, y")
      ->required();
  command->add_option("--method", options->method, "Method by name or short: " + FitMethodNames())->required();
  command->add_flag("--report", options->report,
                    "Print the residuals at the controls and, where the method has some, the coefficients");
  command->add_flag("-i,--inverse", options->inverse, "Transform the points back: from the destination to the source");
  command->add_option("--world-file", options->worldFile,
                      "Write a world file (affine, helmert); pixel (0, 0) of the controls is the raster's corner");
  command->add_flag("--gcp", options->gcp, "Print the control points as -gcp options of GDAL's raster tools");
  command->add_flag("--flip-y", options->flipY, "Change the sign of source y first: rows count downwards (helmert)");
  options->table.file.clear();
  AddTableOptions(*command, options->table);
  command->callback([options, &status] { status = Run(*options); });
}

}  // namespace orvex::tool
