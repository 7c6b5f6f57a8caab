// MapSheet - a whole picture: the map with its title, labels, scale bar and legend.
#include "maps/MapSheet.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "Failure.h"
#include "ProjectPoints.h"
#include "StatePlane.h"
#include "commands/ProjectionOptions.h"
#include "maps/MapFurniture.h"
#include "maps/MapGeoJson.h"
#include "maps/MapLabels.h"
#include "maps/MapPainter.h"
#include "maps/MapShading.h"
#include "maps/MapShapes.h"
#include "maps/MapSvg.h"
#include "maps/MapText.h"
#include "tables/Coordinate.h"

namespace orvex::tool {

namespace {

// Pixels.
constexpr int kDefaultSize = 1000, kSmallestMap = 20, kMargin = 6, kSideLabels = 46, kEndLabels = 22;
constexpr int kTitleSize = 21, kTitleLine = 28, kTitleMargin = 8, kFooter = 40;

const LabelStyle kOutside{105, 40, "class=\"graticule\" fill=\"#556\"", 120};
const LabelStyle kInside{95, 20,
                         "class=\"graticule\" fill=\"#556\" stroke=\"#fff\" stroke-opacity=\".7\" stroke-width=\"28\" "
                         "paint-order=\"stroke\""};
const LabelStyle kGridLabel{90, 25,
                            "class=\"grid\" fill=\"#1f5f7a\" stroke=\"#fff\" stroke-opacity=\".7\" stroke-width=\"28\" "
                            "paint-order=\"stroke\""};
const LabelStyle kPlaceLabel{115, 60,
                             "class=\"place\" fill=\"#222\" stroke=\"#fff\" stroke-opacity=\".85\" stroke-width=\"30\" "
                             "paint-order=\"stroke\" stroke-linejoin=\"round\""};

/// What stands around the map, pixels.
struct Margins {
  int left = kMargin, top = kMargin, right = kMargin, bottom = kMargin;
};

struct Picture {
  int width, height;
  Frame frame;
  std::vector<std::string> title;  ///< lines
};

/// Fits the map, drawn at another scale before, between the margins.
Picture Fit(const MapOptions& options, const BoxPen& area, const Frame& drawn, const Margins& margins) {
  const auto [least, most] = std::pair(area.least, area.most);
  const double w = most.x - least.x, h = most.y - least.y;
  if (!(w > 0) || !(h > 0)) throw Failure("nothing of the area lies in the projection's domain");
  Picture picture{options.width, options.height, {}, {}};
  if (picture.width == 0 && picture.height == 0) (w >= h * 0.8 ? picture.width : picture.height) = kDefaultSize;
  const auto side = [](double pixels) {
    return std::clamp(static_cast<int>(std::lround(pixels)), kSmallestSheet, kLargestSheet);
  };
  const int across = margins.left + margins.right, ends = margins.top + margins.bottom;
  if (picture.width == 0) picture.width = side((picture.height - ends) * w / h + across);
  picture.title = Wrapped(options.title, kTitleSize, picture.width - 2 * kMargin);
  const int lines = static_cast<int>(picture.title.size());
  const int heading = lines == 0 ? 0 : lines * kTitleLine + kTitleMargin, extra = ends + heading;
  if (picture.height == 0) picture.height = side((picture.width - across) * h / w + extra);
  if (picture.height - extra < kSmallestMap || picture.width - across < kSmallestMap) {
    throw Failure(lines > 0 ? "the title leaves no room for the map" : "the picture is too small for the map");
  }
  const double innerW = 10.0 * (picture.width - across), innerH = 10.0 * (picture.height - extra);
  const double factor = std::min(innerW / w, innerH / h);
  const double left = 10 * margins.left + (innerW - factor * w) / 2;
  const double top = 10 * (margins.top + heading) + (innerH - factor * h) / 2;
  picture.frame = {drawn.scale * factor, left + factor * (drawn.x0 - least.x), top + factor * (drawn.y0 - least.y)};
  return picture;
}

/// "W,S,E,N" as an area; nothing for "".
std::optional<Bounds> ParseBounds(const std::string& text) {
  if (text.empty()) return std::nullopt;
  const auto places = ParseTwoPlaces(text);
  if (!places || (*places)[1] >= (*places)[3]) {
    throw Failure("--bounds takes W,S,E,N in degrees with S below N, not \"" + text + "\"");
  }
  const auto [west, south, east, north] = *places;
  const std::optional<Bounds> box = WithinTurn({west, south, east, north});
  if (!box) throw Failure("--bounds: the longitudes must lie within one turn");
  return box;
}

Points GreatCircle(const std::string& text) {
  const auto places = ParseTwoPlaces(text);
  if (!places) throw Failure("--great-circle takes LON1,LAT1,LON2,LAT2 in degrees, not \"" + text + "\"");
  const auto [x1, y1, x2, y2] = *places;
  Points points{{x1, y1}};
  AddGreatCircle(points, {x2, y2});
  return points;
}

Shapes ShapesOf(const std::string& file) {
  return IsGeoJson(file) ? ReadGeoJson(file) : ReadShapes(file);
}

std::vector<Place> PlacesOf(const std::string& file) {
  if (file.empty()) return {};
  if (!IsGeoJson(file)) return ReadPlaces(file);
  std::vector<Place> places;
  for (const Feature& feature : ReadGeoJson(file)) {
    places.insert(places.end(), feature.places.begin(), feature.places.end());
  }
  return places;
}

/// What the user may have said wrongly, before anything is drawn.
void Check(const MapOptions& o) {
  const auto sizeOk = [](int size) { return size == 0 || (size >= kSmallestSheet && size <= kLargestSheet); };
  if (!sizeOk(o.width) || !sizeOk(o.height)) throw Failure("--width and --height take 50 to 20000 pixels");
  if (o.graticule != 0 && !(o.graticule >= 0.1 && o.graticule <= 180)) {
    throw Failure("--graticule takes a step of 0.1 to 180 degrees, or 0 for none");
  }
  if (o.tissot != 0 && !(o.tissot >= 1 && o.tissot <= 90)) throw Failure("--tissot takes a step of 1 to 90 degrees");
  if (!(o.grid >= 0) || !std::isfinite(o.grid)) throw Failure("--grid takes a step in map units");
  if (o.scaleBar != "auto" && o.scaleBar != "yes" && o.scaleBar != "no") {
    throw Failure("--scale-bar takes auto, yes or no");
  }
}

std::string Or(const std::string& given, const char* usual) {
  return EscapedXml(given.empty() ? usual : given);
}

/// The thin edge closes the joint at which the two ends of an oblique map of an ellipsoid meet.
std::string LandStyle(const std::string& color) {
  return "class=\"land\" fill=\"" + color + "\" stroke=\"" + color + "\" stroke-width=\"3\"";
}

std::string LineStyle(const FeatureStyle& style, const char* color, const char* width) {
  std::string attributes =
      "stroke=\"" + Or(style.stroke, color) + "\" stroke-width=\"" + Or(style.strokeWidth, width) + "\"";
  if (!style.strokeOpacity.empty()) attributes += " stroke-opacity=\"" + EscapedXml(style.strokeOpacity) + "\"";
  return attributes;
}

class Sheet {
 public:
  Sheet(const PROJDATA& record, const MapOptions& options)
      : m_record(record),
        m_options(options),
        m_projector(MakeProjector(m_record, IsStated())),
        m_area(ChooseArea(Informed(), ParseBounds(options.bounds), IsStated())),
        m_painter(m_projector, m_area),
        m_meter(m_projector, Figure()) {}

  std::string Draw() {
    const Shapes overlay = m_options.overlay.empty() ? Shapes() : ShapesOf(m_options.overlay);
    std::vector<Place> places = PlacesOf(m_options.points);
    std::vector<Points> circles;
    for (const std::string& text : m_options.greatCircles) circles.push_back(GreatCircle(text));
    LayOut();
    const Shapes land = m_options.land.empty() && IsLarge() ? ReadFineOutlines() : ShapesOf(m_options.land);
    MapSvg svg(m_picture.width, m_picture.height, m_picture.frame,
               m_options.title.empty() ? ProjectionNames()[static_cast<std::size_t>(m_record.Type)] : m_options.title);
    PathPen all;
    m_painter.FillAll(all);
    svg.AddArea(all.Data(), m_options.seaColor, "#7a8a94");
    if (m_shading) m_shading->Paint(svg);
    AddLand(svg, land);
    AddZoneArea(svg);
    AddGraticule(svg);
    for (const auto& [lines, style] : m_coasts) svg.AddLines(lines, LineStyle(style, "#6b6046", "6"));
    AddZoneLines(svg);
    if (m_options.grid > 0) AddGrid(svg);
    if (m_options.tissot > 0) AddTissot(svg, m_painter, m_meter, m_area, m_options.tissot);
    AddOverlay(svg, overlay);
    if (!circles.empty()) {
      PathPen pen;
      for (const Points& circle : circles) m_painter.Draw(circle, pen);
      svg.AddLines(pen.Data(), "class=\"great-circle\" stroke=\"#a8324a\" stroke-width=\"14\"");
    }
    AddLabels(svg);
    for (const Feature& feature : overlay) places.insert(places.end(), feature.places.begin(), feature.places.end());
    AddPlaces(svg, places);
    AddTitle(svg);
    AddFooter(svg);
    return svg.Finish();
  }

 private:
  /// A part of the Equidistant Cylindrical may lie anywhere on its strip, which goes on beyond half a turn; otherwise
  /// its formula is the same either way.
  bool IsStated() const { return m_options.stated || m_record.Type == PT_EQUICYLINDRICAL; }

  const PROJDATA& Informed() {
    m_projector.GetInfo(&m_record);
    return m_record;
  }

  /// The record with the figure that it is computed on.
  PROJDATA Figure() const {
    PROJDATA figure = Expanded(m_record);
    figure.Type = m_record.Type;
    return figure;
  }

  /// Where everything stands: the labels decide on the margins, which decide on the scale.
  void LayOut() {
    const Frame draft{10000 / m_area.radius, 0, 0};
    m_painter.SetFrame(draft);
    BoxPen extent;
    m_painter.FillAll(extent);
    Margins margins;
    const bool labelled = m_options.graticule != 0 && m_options.labels;
    if (labelled) margins = {kSideLabels, kEndLabels, kSideLabels, kEndLabels};
    SetUp(extent, draft, margins);
    if (labelled) {
      MeasureLabels();
      margins = LabelMargins();
    }
    if (HasFooter()) margins.bottom += kFooter;
    SetUp(extent, draft, margins);
    if (labelled) MeasureLabels();
    for (const Label& label : m_labels) m_board.Take(BoxOf(label, label.Upon() ? kInside : kOutside));
    if (!m_options.distortion.empty()) {
      m_shading.emplace(ParseDistortion(m_options.distortion), m_meter, m_projector, m_painter, m_picture.frame,
                        Spot{10.0 * m_picture.width, 10.0 * m_picture.height});
    }
  }

  /// As much room as the labels take beyond the map.
  Margins LabelMargins() const {
    BoxPen map, texts;
    for (const Polyline& piece : m_outline) {
      for (const Spot& spot : piece) map.Add(spot);
    }
    texts.least = map.least;
    texts.most = map.most;
    for (const Label& label : m_labels) {
      const TextBox box = BoxOf(label, kOutside);
      texts.Add({box.left, box.top});
      texts.Add({box.right, box.bottom});
    }
    const auto pixels = [](double tenths) { return kMargin + static_cast<int>(std::ceil(tenths / 10)); };
    return {pixels(map.least.x - texts.least.x), pixels(map.least.y - texts.least.y), pixels(texts.most.x - map.most.x),
            pixels(texts.most.y - map.most.y)};
  }

  void SetUp(const BoxPen& extent, const Frame& draft, const Margins& margins) {
    m_picture = Fit(m_options, extent, draft, margins);
    m_painter.SetFrame(m_picture.frame);
    LinePen outline;
    m_painter.FillAll(outline);
    m_outline = std::move(outline.lines);
    m_scaleBar = m_options.scaleBar == "no"
                     ? std::nullopt
                     : MeasureScale(m_projector, m_painter, m_meter, m_picture.frame,
                                    {10.0 * m_picture.width, 10.0 * m_picture.height}, m_options.scaleBar == "yes");
    m_note = m_options.zone ? ZoneNote(m_record) : "";
  }

  /// Whether a pixel is so small that the coasts of 1:110m look angular.
  bool IsLarge() const {
    constexpr double kFineDegrees = 0.07;
    return 10 / m_picture.frame.scale / m_area.radius / kRadians < kFineDegrees;
  }

  bool HasFooter() const { return m_scaleBar || !m_options.distortion.empty() || !m_note.empty(); }

  void MeasureLabels() {
    std::vector<GridLine> lines;
    for (const double degrees : Meridians(m_options.graticule)) {
      LinePen pen;
      m_painter.Draw(Meridian(degrees), pen);
      lines.push_back({degrees, true, std::move(pen.lines)});
    }
    for (const double degrees : Parallels(m_options.graticule)) {
      LinePen pen;
      m_painter.Draw(Parallel(degrees), pen);
      lines.push_back({degrees, false, std::move(pen.lines)});
    }
    m_labels = GraticuleLabels(lines, m_outline, kOutside);
  }

  void AddLand(MapSvg& svg, const Shapes& land) {
    for (const Feature& feature : land) {
      const std::vector<std::string> fills = Fills(feature.areas);
      const std::string color = EscapedXml(feature.style.fill.empty() ? m_options.landColor : feature.style.fill);
      if (m_shading && feature.style.fill.empty()) {
        svg.AddFills(fills, "class=\"land\" fill=\"#4a3d28\" opacity=\".16\"");
      } else {
        svg.AddFills(fills, LandStyle(color));
      }
      m_coasts.push_back({Outlines(feature), feature.style});
    }
  }

  void AddOverlay(MapSvg& svg, const Shapes& overlay) {
    for (const Feature& f : overlay) {
      svg.AddFills(Fills(f.areas), "class=\"overlay\" fill=\"" + Or(f.style.fill, "#c0392b") + "\" opacity=\"" +
                                       Or(f.style.fillOpacity, ".25") + "\"");
      svg.AddLines(Outlines(f), LineStyle(f.style, "#c0392b", "15"));
    }
  }

  std::vector<std::string> Fills(const std::vector<Area>& areas) {
    std::vector<std::string> fills;
    for (const Area& area : areas) {
      PathPen pen;
      m_painter.Fill(area, pen);
      fills.push_back(pen.Take());
    }
    return fills;
  }

  std::string Outlines(const Feature& feature) {
    PathPen pen;
    for (const Area& area : feature.areas) {
      for (const Points& ring : area) m_painter.Draw(ring, pen);
    }
    for (const Points& line : feature.lines) m_painter.Draw(line, pen);
    return pen.Take();
  }

  void AddGraticule(MapSvg& svg) {
    if (m_options.graticule == 0) return;
    PathPen pen;
    for (const double degrees : Meridians(m_options.graticule)) m_painter.Draw(Meridian(degrees), pen);
    for (const double degrees : Parallels(m_options.graticule)) m_painter.Draw(Parallel(degrees), pen);
    svg.AddLines(pen.Data(), "stroke=\"#667\" stroke-opacity=\".35\" stroke-width=\"5\"");
  }

  void AddZoneArea(MapSvg& svg) {
    if (!m_options.zone) return;
    if (const auto area = ZoneArea(m_record)) {
      svg.AddFills(Fills({*area}), "class=\"zone\" fill=\"#f2b705\" opacity=\".14\"");
    }
  }

  void AddZoneLines(MapSvg& svg) {
    if (!m_options.zone) return;
    const ZoneLines zone = LinesOfZone(m_record);
    const auto draw = [&](const std::vector<Points>& lines, const char* style) {
      PathPen pen;
      for (const Points& line : lines) m_painter.Draw(line, pen);
      svg.AddLines(pen.Data(), style);
    };
    draw(zone.borders, "class=\"zone\" stroke=\"#b07a00\" stroke-width=\"9\" stroke-dasharray=\"50 40\"");
    draw(zone.axes, "class=\"zone\" stroke=\"#b07a00\" stroke-width=\"9\"");
  }

  void AddGrid(MapSvg& svg) {
    const ProjectedGrid grid = DrawGrid(m_outline, m_picture.frame, m_options.grid);
    svg.Add("<g class=\"grid\" clip-path=\"url(#frame)\">\n");
    svg.AddLines(grid.lines, "stroke=\"#1f5f7a\" stroke-opacity=\".55\" stroke-width=\"5\"");
    svg.Add("</g>\n");
    for (const Label& label : grid.labels) {
      const TextBox box = BoxOf(label, kGridLabel);
      if (!m_board.Free(box) || !InPicture(box)) continue;
      m_board.Take(box);
      AddLabel(svg, label, kGridLabel);
    }
  }

  bool InPicture(const TextBox& box) const {
    return box.left >= 0 && box.top >= 0 && box.right <= 10 * m_picture.width && box.bottom <= 10 * m_picture.height;
  }

  void AddLabels(MapSvg& svg) {
    for (const Label& label : m_labels) {
      const LabelStyle& style = label.Upon() ? kInside : kOutside;
      AddLabel(svg, label, style);
    }
  }

  /// All dots first, then the names that find room beside theirs.
  void AddPlaces(MapSvg& svg, const std::vector<Place>& places) {
    constexpr double kDot = 32;
    std::vector<std::pair<Spot, const Place*>> shown;
    std::string dots;
    for (const auto& place : places) {
      const auto spot = m_painter.Locate(place.at);
      if (!spot) continue;
      dots += "<circle cx=\"" + std::to_string(std::lround(spot->x)) + "\" cy=\"" +
              std::to_string(std::lround(spot->y)) + "\" r=\"" + std::to_string(std::lround(kDot)) + "\"";
      if (!place.color.empty()) dots += " fill=\"" + EscapedXml(place.color) + "\"";
      dots += "/>\n";
      m_board.Take({spot->x - kDot, spot->y - kDot, spot->x + kDot, spot->y + kDot});
      if (!place.name.empty()) shown.push_back({*spot, &place});
    }
    if (!dots.empty())
      svg.Add("<g class=\"places\" fill=\"#b03a2e\" stroke=\"#fff\" stroke-width=\"8\">\n" + dots + "</g>\n");
    for (const auto& [spot, place] : shown) {
      for (const Spot& side : {kRight, kLeft, kAbove, kBelow}) {
        const Label label{place->name, spot, side};
        const TextBox box = BoxOf(label, kPlaceLabel);
        if (!InPicture(box) || !m_board.Free(box)) continue;
        m_board.Take(box);
        AddLabel(svg, label, kPlaceLabel);
        break;
      }
    }
  }

  void AddTitle(MapSvg& svg) {
    for (std::size_t i = 0; i < m_picture.title.size(); ++i) {
      svg.AddText({5.0 * m_picture.width, 10.0 * (kMargin + kTitleLine * static_cast<double>(i) + kTitleSize)},
                  10 * kTitleSize, "class=\"title\" text-anchor=\"middle\" fill=\"#333\"", m_picture.title[i]);
    }
  }

  void AddFooter(MapSvg& svg) {
    const double bottom = 10.0 * (m_picture.height - kMargin), right = 10.0 * (m_picture.width - 2 * kMargin);
    const double left = 20.0 * kMargin;
    double from = left;
    if (m_scaleBar) from = AddScaleBar(svg, *m_scaleBar, left, bottom);
    if (!m_note.empty()) {
      svg.AddText({m_shading ? from : right, bottom - 20}, 105,
                  std::string("class=\"note\" fill=\"#444\" text-anchor=\"") + (m_shading ? "start\"" : "end\""),
                  m_note);
    }
    if (m_shading) m_shading->PaintLegend(svg, right, bottom - 10);
  }

  PROJDATA m_record;
  const MapOptions& m_options;
  CProjector m_projector;
  MapArea m_area;
  MapPainter m_painter;
  DistortionMeter m_meter;
  Picture m_picture{};
  std::vector<Polyline> m_outline;
  std::vector<Label> m_labels;
  std::vector<std::pair<std::string, FeatureStyle>> m_coasts;
  std::optional<ScaleBar> m_scaleBar;
  std::optional<MapShading> m_shading;
  std::string m_note;
  LabelBoard m_board;
};

}  // namespace

std::string DrawMap(PROJDATA record, const MapOptions& options) {
  Check(options);
  if (!options.distortion.empty()) ParseDistortion(options.distortion);
  record.Lon0 = std::remainder(record.Lon0, 360);
  return Sheet(record, options).Draw();
}

}  // namespace orvex::tool
