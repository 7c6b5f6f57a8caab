// GeorefCommand - orvex georef: a transform fitted to control points; its residuals, its coefficients, and points run
// through it.
#include <algorithm>
#include <array>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstdio>
#include <iostream>
#include <memory>
#include <optional>

#include <orvex/georef.h>

#include "Failure.h"
#include "commands/Commands.h"
#include "commands/Names.h"
#include "tables/Controls.h"
#include "tables/Files.h"
#include "tables/PointTable.h"

namespace orvex::tool {

namespace {

struct Options {
  std::string controls, method, worldFile;
  bool report = false, flipY = false, gcp = false;
  TableOptions table;
};

struct Method {
  TransformMethod method;
  const char* shortName;
  int leastControls;
};

constexpr Method kMethods[] = {
    {RM_HELMERT, "helmert", 2},         {RM_AFFINEPOLYNOMIAL, "affine", 3},
    {RM_POLYNOMIAL1, "poly1", 4},       {RM_POLYNOMIAL2, "poly2", 6},
    {RM_POLYNOMIAL3, "poly3", 10},      {RM_THINPLATE, "tps", 3},
    {RM_NATURALCUBIC, "natural", 3},    {RM_MARCOV, "marcov", 3},
    {RM_EXPONENTIAL, "exponential", 3}, {RM_RATIONALQUADRATIC, "rational", 3},
    {RM_INVERSEDISTANCE, "idw", 3},
};

const Method& FindMethod(const std::string& text) {
  std::vector<std::string> names;
  for (const Method& method : kMethods) names.emplace_back(method.shortName);
  for (const Method& method : kMethods) names.emplace_back(RefMethodName(method.method));
  return kMethods[FindName(names, text, "method") % std::size(kMethods)];
}

std::string ShortNames() {
  std::string list;
  for (const Method& method : kMethods) list += std::string(list.empty() ? "" : ", ") + method.shortName;
  return list;
}

/// A fitted transform together with what it was fitted to. With `flipY` the sign of the source's y is changed before
/// anything else, so that it can be told apart from the user's own coordinates.
class Fit {
 public:
  Fit(const Method& method, const Options& options)
      : m_method(method), m_flipY(options.flipY), m_controls(ReadControls(options.controls, options.table.delimiter)) {
    Flipped source(m_controls.source, m_flipY);
    GEOREF record = Record(source.points);
    if (m_transform.Create(&record)) {
      if (method.method == RM_HELMERT) WarnOfMirror();
      return;
    }
    const std::string name = RefMethodName(method.method);
    const auto count = std::to_string(m_controls.source.size());
    if (Count() < method.leastControls) {
      throw Failure(name + " needs at least " + std::to_string(method.leastControls) + " control points, not " + count);
    }
    throw Failure("the " + count + " control points do not determine the transform: " + name + " needs at least " +
                  std::to_string(method.leastControls) + Conditions());
  }

  int Count() const { return static_cast<int>(m_controls.source.size()); }
  const Controls& ControlPoints() const { return m_controls; }
  const Method& How() const { return m_method; }

  void Forward(GEOREFPOINT* points, std::size_t count) {
    if (m_flipY) std::for_each(points, points + count, [](GEOREFPOINT& p) { p.y = -p.y; });
    if (!m_transform.Forward(points, static_cast<int>(count))) throw Failure("the transform failed");
  }

  double Errors(std::vector<double>& each) const {
    double total = 0;
    each.resize(m_controls.source.size());
    if (!m_transform.ComputeError(&total, each.data())) throw Failure("the errors cannot be computed");
    return total;
  }

  /// A warp passes through every control: how well it tells a place it does not know is seen without that place.
  bool IsWarp() const { return m_method.method >= RM_THINPLATE; }

  /// Distances by which the fit to the others misses each control; nothing where the others do not determine one.
  std::vector<std::optional<double>> ErrorsLeftOut() {
    Flipped all(m_controls.source, m_flipY);
    std::vector<std::optional<double>> errors(all.points.size());
    for (std::size_t i = 0; i < errors.size(); ++i) {
      std::vector<GEOREFPOINT> source = all.points, destination = m_controls.destination;
      source.erase(source.begin() + static_cast<std::ptrdiff_t>(i));
      destination.erase(destination.begin() + static_cast<std::ptrdiff_t>(i));
      GEOREF record = Record(source);
      record.nControls = Count() - 1;
      record.pDst = destination.data();
      CGeorefTransform others;
      GEOREFPOINT image = all.points[i];
      if (record.nControls < 1 || !others.Create(&record) || !others.Forward(&image, 1)) continue;
      errors[i] = std::hypot(image.x - m_controls.destination[i].x, image.y - m_controls.destination[i].y);
    }
    return errors;
  }

  /// True when the transform is a plane map with six coefficients.
  bool HasCoefficients() const { return m_method.method == RM_AFFINEPOLYNOMIAL || m_method.method == RM_HELMERT; }

  /// X = c[0] + x*c[1] + y*c[2], Y = c[3] + x*c[4] + y*c[5].
  std::array<double, 6> Coefficients() {
    if (m_method.method == RM_AFFINEPOLYNOMIAL) {
      Flipped source(m_controls.source, m_flipY);
      GEOREF record = Record(source.points);
      if (!RefControlsToCoeff(&record)) throw Failure("the coefficients cannot be computed");
      const double sign = m_flipY ? -1 : 1;
      return {record.Coeff[0], record.Coeff[1], record.Coeff[2] * sign,
              record.Coeff[3], record.Coeff[4], record.Coeff[5] * sign};
    }
    constexpr double kSpan = 1048576;  // a power of two: the division is exact and the images' rounding shrinks by it
    GEOREFPOINT corners[3] = {{0, 0}, {kSpan, 0}, {0, kSpan}};
    Forward(corners, 3);
    return {corners[0].x, (corners[1].x - corners[0].x) / kSpan, (corners[2].x - corners[0].x) / kSpan,
            corners[0].y, (corners[1].y - corners[0].y) / kSpan, (corners[2].y - corners[0].y) / kSpan};
  }

 private:
  struct Flipped {
    Flipped(std::vector<GEOREFPOINT> from, bool flip) : points(std::move(from)) {
      if (flip) std::for_each(points.begin(), points.end(), [](GEOREFPOINT& p) { p.y = -p.y; });
    }
    std::vector<GEOREFPOINT> points;
  };

  /// A similarity cannot mirror: says so when the other sign of y fits very much better.
  void WarnOfMirror() {
    Flipped other(m_controls.source, !m_flipY);
    GEOREF record = Record(other.points);
    double error = 0, otherError = 0;
    if (!m_transform.ComputeError(&error, nullptr)) return;
    if (!CGeorefTransform(&record).ComputeError(&otherError, nullptr) || !(otherError * 10 < error)) return;
    std::cerr << "orvex: the source is the mirror image of the destination; try " << (m_flipY ? "without" : "with")
              << " --flip-y\n";
  }

  /// A record that borrows the arrays.
  GEOREF Record(std::vector<GEOREFPOINT>& source) {
    if (m_controls.source.size() > INT_MAX) throw Failure("too many control points");
    GEOREF record{};
    record.Method = m_method.method;
    record.nControls = Count();
    record.pSrc = source.data();
    record.pDst = m_controls.destination.data();
    return record;
  }

  const char* Conditions() const {
    switch (m_method.method) {
      case RM_HELMERT:
        return " in different places";
      case RM_AFFINEPOLYNOMIAL:
        return " that are not on one line";
      case RM_POLYNOMIAL1:
      case RM_POLYNOMIAL2:
      case RM_POLYNOMIAL3:
        return " that are not on one line or on one curve of its order";
      default:
        return ", not on one line and no two sources in (nearly) the same place";
    }
  }

  Method m_method;
  bool m_flipY;
  Controls m_controls;
  CGeorefTransform m_transform;
};

/// Fifteen digits: nanometres at map coordinates, and no noise behind them.
std::string Digits(double value) {
  char text[40];
  return {text, std::to_chars(text, text + sizeof text, value, std::chars_format::general, 15).ptr};
}

/// What warps report: their residuals are 0 at every control, what they miss without it is not.
void ReportLeftOut(Fit& fit, int decimals, std::FILE* out) {
  std::fprintf(out, "\neach point by the fit to the others:\n%5s %12s\n", "POINT", "ERROR");
  double squares = 0;
  std::size_t count = 0, point = 0;
  for (const std::optional<double>& error : fit.ErrorsLeftOut()) {
    ++point;
    if (!error) {
      std::fprintf(out, "%5zu %12s\n", point, "-");
      continue;
    }
    std::fprintf(out, "%5zu %12.*f\n", point, decimals, *error);
    squares += *error * *error;
    ++count;
  }
  if (count > 0) {
    std::fprintf(out, "root mean square  %.*f\n", decimals, std::sqrt(squares / static_cast<double>(count)));
  }
}

void Report(Fit& fit, int decimals, std::FILE* out) {
  const Controls& controls = fit.ControlPoints();
  std::vector<GEOREFPOINT> images = controls.source;
  fit.Forward(images.data(), images.size());
  std::vector<double> errors;
  const double total = fit.Errors(errors);
  std::fprintf(out, "method    %s\ncontrols  %d\n\n", RefMethodName(fit.How().method), fit.Count());
  std::fprintf(out, "%5s %15s %15s %15s %15s %12s %12s %12s\n", "POINT", "SOURCE X", "SOURCE Y", "X", "Y", "DX", "DY",
               "ERROR");
  for (std::size_t i = 0; i < errors.size(); ++i) {
    const GEOREFPOINT from = controls.source[i], to = controls.destination[i];
    std::fprintf(out, "%5zu %15.*f %15.*f %15.*f %15.*f %12.*f %12.*f %12.*f", i + 1, decimals, from.x, decimals,
                 from.y, decimals, to.x, decimals, to.y, decimals, images[i].x - to.x, decimals, images[i].y - to.y,
                 decimals, errors[i]);
    if (!controls.names.empty()) std::fprintf(out, "  %s", controls.names[i].c_str());
    std::fputc('\n', out);
  }
  const auto worst = std::max_element(errors.begin(), errors.end());
  std::fprintf(out, "\ntotal error (root mean square)  %.*f\nlargest error                   %.*f at point %td\n",
               decimals, total, decimals, *worst, worst - errors.begin() + 1);
  if (fit.IsWarp()) ReportLeftOut(fit, decimals, out);
  if (!fit.HasCoefficients()) return;
  const std::array<double, 6> c = fit.Coefficients();
  std::fprintf(out, "\nX = %s + x * %s + y * %s\nY = %s + x * %s + y * %s\n", Digits(c[0]).c_str(),
               Digits(c[1]).c_str(), Digits(c[2]).c_str(), Digits(c[3]).c_str(), Digits(c[4]).c_str(),
               Digits(c[5]).c_str());
}

/// Control points as the raster tools of GDAL take them: -gcp pixel line easting northing.
void PrintGcps(const Controls& controls) {
  for (std::size_t i = 0; i < controls.source.size(); ++i) {
    const GEOREFPOINT from = controls.source[i], to = controls.destination[i];
    std::printf("-gcp %s %s %s %s\n", Digits(from.x).c_str(), Digits(from.y).c_str(), Digits(to.x).c_str(),
                Digits(to.y).c_str());
  }
}

/// Six lines: the steps of one column and of one row, and the position of the centre of the upper left pixel, which
/// lies half a pixel from its corner (0, 0).
void WriteWorldFile(Fit& fit, const Options& options) {
  if (!fit.HasCoefficients()) throw Failure("a world file holds an affine map: --method affine or helmert");
  RefuseSameFile(options.controls, options.worldFile);
  if (!options.table.file.empty()) RefuseSameFile(options.table.file, options.worldFile);
  const std::array<double, 6> c = fit.Coefficients();
  OutputFile file(options.worldFile);
  for (const double value : {c[1], c[4], c[2], c[5], c[0] + (c[1] + c[2]) / 2, c[3] + (c[4] + c[5]) / 2}) {
    file.Write(Digits(value) + "\n");
  }
  file.Commit();
}

/// Runs the points of a table through a fit of its own.
struct Warper {
  Fit fit;
  std::vector<GEOREFPOINT> block;

  void operator()(std::vector<PROJPOINT>& points) {
    block.resize(points.size());
    std::transform(points.begin(), points.end(), block.begin(), [](const PROJPOINT& p) {
      return GEOREFPOINT{p.x, p.y};
    });
    fit.Forward(block.data(), block.size());
    std::transform(block.begin(), block.end(), points.begin(), [](const GEOREFPOINT& p) {
      return PROJPOINT{p.x, p.y};
    });
  }
};

int Run(const Options& options) {
  const Method& method = FindMethod(options.method);
  // A report or a world file alone needs no points; FILE "-" asks for both.
  const bool points = !options.table.file.empty() || !options.table.coordinates.empty() ||
                      (!options.report && !options.gcp && options.worldFile.empty());
  TableOptions table = options.table;
  if (table.file.empty()) table.file = "-";
  if (points && table.file == "-" && options.controls == "-") throw Failure("two inputs cannot be standard input");
  Fit fit(method, options);
  if (!options.worldFile.empty()) WriteWorldFile(fit, options);
  if (options.report) {
    const int decimals = table.format.decimals < 0 ? 4 : table.format.decimals;
    Report(fit, decimals, points && table.output == "-" ? stderr : stdout);
  }
  if (options.gcp) PrintGcps(fit.ControlPoints());
  if (!points) return kSuccess;
  std::fflush(stdout);
  return ConvertTable(table, Kind::Projected, Kind::Projected, ConverterFactory([&] { return Warper{fit, {}}; }));
}

}  // namespace

void AddGeorefCommand(CLI::App& app, int& status) {
  CLI::App* command = app.add_subcommand("georef", "Fit a transform to control points; transform points with it");
  const auto options = std::make_shared<Options>();
  command->add_option("--controls", options->controls, "Table of control points: source x, y, destination x, y")
      ->required();
  command->add_option("--method", options->method, "Method by name or short: " + ShortNames())->required();
  command->add_flag("--report", options->report,
                    "Print the residuals at the controls and, for affine and helmert, the coefficients");
  command->add_option("--world-file", options->worldFile,
                      "Write a world file (affine, helmert); pixel (0, 0) of the controls is the raster's corner");
  command->add_flag("--gcp", options->gcp, "Print the control points as -gcp options of GDAL's raster tools");
  command->add_flag("--flip-y", options->flipY, "Change the sign of source y first: rows count downwards (helmert)");
  options->table.file.clear();
  AddTableOptions(*command, options->table);
  command->callback([options, &status] { status = Run(*options); });
}

}  // namespace orvex::tool
