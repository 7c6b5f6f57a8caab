// BlockConverter - the lines of a block with their coordinates converted.
#include "tables/BlockConverter.h"

#include <algorithm>
#include <cfloat>

namespace orvex::tool {

BlockConverter::BlockConverter(const TableOptions& options, Kind from, Kind to, const Layout& layout,
                               LabelConverter convert)
    : m_options(options),
      m_to(to),
      m_layout(layout),
      m_reader(from, CommasIn(options.decimalComma, layout.splitter.Delimiter())),
      m_splicer(layout.splitter.Delimiter(), options),
      m_convert(std::move(convert)) {}

void BlockConverter::Convert(const Block& block, BlockResult& result) {
  m_result = &result;
  m_lines.clear();
  m_points.clear();
  m_labels.clear();
  const std::string_view text = block.text;
  std::uint64_t number = block.firstLine;
  for (std::size_t begin = 0; begin < text.size(); ++number) {
    const std::size_t lineEnd = std::min(text.find('\n', begin), text.size());
    ReadLine(text, begin, lineEnd, number);
    begin = lineEnd + 1;
  }
  if (!m_points.empty()) m_convert(m_points, m_labels);
  WriteLines(text);
}

void BlockConverter::ReadLine(std::string_view text, std::size_t begin, std::size_t end, std::uint64_t number) {
  if (end > begin && text[end - 1] == '\r') --end;  // the line end of a file from elsewhere
  const std::string_view line = text.substr(begin, end - begin);
  if (IsIdle(line)) return;
  PointLine place{begin, end, {}, false};
  place.fields.fill({line.size(), line.size()});
  place.readable = ReadPoint(line, place.fields, number);
  if (!place.readable) ++m_result->badLines;
  m_lines.push_back(place);
}

/// The coordinates and the label of a line, as far as the table has them, or complaints.
bool BlockConverter::ReadPoint(std::string_view line, PointFields& fields, std::uint64_t number) {
  if (!m_layout.splitter.Split(line, m_fields)) {
    Complain(number, "a quote is not closed");
    return false;
  }
  if (m_layout.mostColumns < m_fields.size() && !Text(line, m_fields.back()).empty()) ++m_result->longLines;
  const Label label = m_options.labelIn.use;
  const std::size_t lastCoordinate = label == Label::Alone ? 0 : std::max(m_layout.columns[0], m_layout.columns[1]);
  if (std::max(lastCoordinate, label == Label::None ? 0 : m_layout.label) >= m_fields.size()) {
    Complain(number, "fewer columns than the coordinates need");
    return false;
  }
  PROJPOINT point{};
  if (label == Label::Alone) {
    fields[0] = m_fields[m_layout.label];
  } else if (!ReadCoordinates(fields, line, number, point)) {
    return false;
  }
  if (label != Label::None) {
    std::string text = Unquoted(Text(line, m_fields[m_layout.label]));
    if (m_options.labelIn.readable && !m_options.labelIn.readable(text)) {
      Complain(number, "cannot read " + m_options.labelIn.name + " \"" + text + "\"");
      return false;
    }
    if (label == Label::Beside) fields[2] = m_fields[m_layout.label];
    m_labels.push_back(std::move(text));
  }
  m_points.push_back(point);
  return true;
}

bool BlockConverter::ReadCoordinates(PointFields& fields, std::string_view line, std::uint64_t number,
                                     PROJPOINT& point) {
  std::array<double, 2> values{};
  bool readable = true;
  for (std::size_t axis = 0; axis < 2; ++axis) {
    fields[axis] = m_fields[m_layout.columns[axis]];
    const std::string_view field = Text(line, fields[axis]);
    if (m_reader.Read(field, axis, values[axis])) continue;
    Complain(number, m_reader.Fault(field, axis));
    readable = false;
  }
  point = {values[0], values[1]};
  return readable;
}

void BlockConverter::Complain(std::uint64_t line, std::string text) {
  if (m_result->complaintCount++ < kMostComplaints) m_result->complaints.push_back({line, std::move(text)});
}

/// What lies between the points goes out as it came in.
void BlockConverter::WriteLines(std::string_view text) {
  std::string& out = m_result->text;
  out.reserve(text.size() + text.size() / 4);
  std::size_t written = 0, next = 0;
  for (const PointLine& place : m_lines) {
    out += text.substr(written, place.begin - written);
    WriteLine(text.substr(place.begin, place.end - place.begin), place, next);
    written = place.end;
  }
  out += text.substr(written);
  if (!out.empty() && out.back() != '\n') out += '\n';
}

/// A line that was not readable keeps everything when results are appended, else its coordinates become empty.
void BlockConverter::WriteLine(std::string_view line, const PointLine& place, std::size_t& next) {
  for (std::string& value : m_values.coordinates) value.clear();
  m_values.label.clear();
  if (place.readable) {
    Format(m_points[next], m_labels.empty() ? m_values.label : m_labels[next]);
    ++next;
  }
  m_splicer.Append(m_result->text, line, place.fields, m_values);
}

/// A point that has no place may have a label that says why.
void BlockConverter::Format(const PROJPOINT& point, const std::string& label) {
  m_values.label = label;
  if (point.x == DBL_MAX || point.y == DBL_MAX) {
    ++m_result->unplottable;
    return;
  }
  ++m_result->converted;
  if (m_options.labelOut.use == Label::Alone) return;
  AppendCoordinate(m_values.coordinates[0], point.x, m_to, false, m_options.format);
  AppendCoordinate(m_values.coordinates[1], point.y, m_to, true, m_options.format);
  if (!m_options.decimalComma) return;
  for (std::string& value : m_values.coordinates) std::replace(value.begin(), value.end(), '.', ',');
}

}  // namespace orvex::tool
