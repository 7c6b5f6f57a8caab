// PointTable - streaming conversion of text tables.
#include "tables/PointTable.h"

#include <algorithm>
#include <array>
#include <cfloat>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string_view>

#include "Failure.h"
#include "commands/Names.h"
#include "geojson/GeoJson.h"
#include "tables/Columns.h"
#include "tables/Fields.h"
#include "tables/Files.h"
#include "tables/Progress.h"

namespace orvex::tool {

namespace {

constexpr std::size_t kBlockLines = 8192;
constexpr std::uint64_t kBlockBytes = 4 << 20;  // long lines make smaller blocks
constexpr std::uint64_t kMostReports = 100;

/// One line of the block. Without a point it is passed on as it is (blank lines, comments, the header).
struct Line {
  std::string text;
  bool carriageReturn = false;
  bool isPoint = false;
  bool readable = false;          // both coordinates were read
  std::array<Field, 2> fields{};  // x and y; empty fields at the end when the line is too short
};

/// The start of a text as a message can show it: control characters would disturb a terminal.
std::string Printable(const std::string& text) {
  std::string shown = text.substr(0, 40);
  std::replace_if(
      shown.begin(), shown.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; }, '?');
  return text.size() > shown.size() ? shown + "..." : shown;
}

std::optional<double> ParseAs(Kind kind, const std::string& text) {
  return kind == Kind::Geographic ? ParseAngle(text) : ParseNumber(text);
}

/// The conversion of one table.
class TableConverter {
 public:
  TableConverter(const TableOptions& options, Kind from, Kind to, const Converter& convert, std::istream& in,
                 std::ostream& out)
      : m_options(options), m_from(from), m_to(to), m_convert(convert), m_in(in), m_out(out) {}

  int Run(std::uint64_t totalBytes) {
    m_progress.emplace(totalBytes, !m_options.quiet, m_options.output == "-");
    std::vector<Line> block;
    block.reserve(kBlockLines);
    std::uint64_t blockStart = 0;
    for (Line line; ReadLine(line);) {
      block.push_back(std::move(line));
      line = {};
      if (block.size() == kBlockLines || m_bytes - blockStart >= kBlockBytes) {
        Convert(block);
        m_progress->Update(m_bytes, m_lineNumber);
        blockStart = m_bytes;
      }
    }
    Convert(block);
    m_progress.reset();
    m_out.flush();
    if (!m_out) throw Failure("cannot write the output");
    if (m_in.bad()) throw Failure("cannot read the input to its end");
    Summarise();
    return m_badLines + m_unplottable > 0 ? kSomePointsFailed : kSuccess;
  }

 private:
  bool ReadLine(Line& line) {
    if (!std::getline(m_in, line.text)) return false;
    ++m_lineNumber;
    m_bytes += line.text.size() + 1;
    if (m_lineNumber == 1 && line.text.starts_with(kByteOrderMark)) {
      line.text.erase(0, kByteOrderMark.size());
      m_text = kByteOrderMark;  // stays at the front of the output
    }
    line.carriageReturn = TakeCarriageReturn(line.text);
    if (IsIdle(line.text)) return true;
    if (!m_started) {
      Start(line);
    } else {
      ReadPoint(line);
    }
    return true;
  }

  /// Looks at the first line with content: finds delimiter, columns and whether it is a header.
  void Start(Line& line) {
    m_started = true;
    m_splitter = Splitter(ChooseDelimiter(m_options.delimiter, line.text));
    if (!m_splitter.Split(line.text, m_fields)) {
      throw Failure(DisplayName(m_options.file) + ":" + std::to_string(m_lineNumber) + ": a quote is not closed");
    }
    std::vector<std::string> names;
    for (const Field& field : m_fields) names.push_back(Lower(Unquoted(Text(line.text, field))));
    const Columns columns = ChooseColumns(m_options, m_from, names);
    m_columns = columns.place;
    if (columns.header) {
      WriteHeader(line);
    } else {
      ReadPoint(line);
    }
  }

  /// Replaces (or appends) the names of the coordinate columns.
  void WriteHeader(Line& line) {
    const std::array<std::string, 2> names =
        m_to == Kind::Geographic ? std::array<std::string, 2>{"lon", "lat"} : std::array<std::string, 2>{"x", "y"};
    for (std::size_t axis = 0; axis < 2; ++axis) line.fields[axis] = m_fields[m_columns[axis]];
    Splice(line, names);
  }

  void ReadPoint(Line& line) {
    line.isPoint = true;
    line.fields = {Field{line.text.size(), line.text.size()}, Field{line.text.size(), line.text.size()}};
    PROJPOINT point{};
    if (!m_splitter.Split(line.text, m_fields)) {
      Report("a quote is not closed");
    } else if (std::max(m_columns[0], m_columns[1]) >= m_fields.size()) {
      Report("fewer columns than the coordinates need");
    } else {
      std::array<std::optional<double>, 2> values;
      for (std::size_t axis = 0; axis < 2; ++axis) {
        line.fields[axis] = m_fields[m_columns[axis]];
        const std::string text = Unquoted(Text(line.text, line.fields[axis]));
        values[axis] = ParseAs(m_from, text);
        if (!values[axis]) Report("cannot read " + AxisName(axis) + " \"" + Printable(text) + "\"");
      }
      line.readable = values[0] && values[1];
      if (line.readable) point = {*values[0], *values[1]};
    }
    if (line.readable) {
      m_points.push_back(point);
    } else {
      ++m_badLines;
    }
  }

  void Report(const std::string& what) {
    if (++m_reports > kMostReports) return;
    m_progress->Hide();
    std::cerr << "orvex: " << DisplayName(m_options.file) << ":" << m_lineNumber << ": " << what << "\n";
  }

  std::string AxisName(std::size_t axis) const {
    if (m_from == Kind::Geographic) return axis == 0 ? "longitude" : "latitude";
    return axis == 0 ? "x" : "y";
  }

  void Convert(std::vector<Line>& block) {
    if (!m_points.empty()) m_convert(m_points);
    std::size_t next = 0;
    for (Line& line : block) {
      if (line.isPoint) WritePoint(line, next);
      m_text += line.text;
      m_text += line.carriageReturn ? "\r\n" : "\n";
    }
    m_out.write(m_text.data(), static_cast<std::streamsize>(m_text.size()));
    if (!m_out) throw Failure("cannot write the output");
    m_text.clear();
    m_points.clear();
    block.clear();
  }

  /// A line that was not readable keeps everything when results are appended, else its coordinates become empty.
  void WritePoint(Line& line, std::size_t& next) {
    std::array<std::string, 2> results;
    if (line.readable) {
      const PROJPOINT point = m_points[next++];
      if (point.x == DBL_MAX || point.y == DBL_MAX) {
        ++m_unplottable;
      } else {
        ++m_converted;
        AppendCoordinate(results[0], point.x, m_to, false, m_options.format);
        AppendCoordinate(results[1], point.y, m_to, true, m_options.format);
      }
    }
    const bool placed = line.fields[0].begin != line.fields[1].begin;
    if (placed || m_options.keep) Splice(line, results);
  }

  void Splice(Line& line, std::array<std::string, 2> values) {
    const char delimiter = m_splitter.Delimiter();
    for (std::string& value : values) {
      if (value.empty() && delimiter == ' ') value = "*";  // an empty field would move the columns
      if (value.find('"') != std::string::npos && delimiter != ' ') value = Quoted(value);
    }
    if (m_options.keep) {
      for (const std::string& value : values) line.text += delimiter + value;
      return;
    }
    const std::size_t later = line.fields[0].begin > line.fields[1].begin ? 0 : 1;  // from the back: places stay valid
    for (const std::size_t axis : {later, 1 - later}) {
      const Field& field = line.fields[axis];
      line.text.replace(field.begin, field.end - field.begin, values[axis]);
    }
  }

  void Summarise() const {
    if (m_reports > kMostReports) {
      std::cerr << "orvex: " << m_reports - kMostReports << " more such reports\n";
    }
    if (m_options.quiet || m_badLines + m_unplottable == 0) return;
    std::cerr << "orvex: points converted: " << m_converted << ", unplottable: " << m_unplottable
              << ", unreadable lines: " << m_badLines << "\n";
  }

  const TableOptions& m_options;
  const Kind m_from, m_to;
  const Converter& m_convert;
  std::istream& m_in;
  std::ostream& m_out;
  std::optional<Progress> m_progress;
  bool m_started = false;
  Splitter m_splitter{','};
  std::array<std::size_t, 2> m_columns{};
  std::vector<Field> m_fields;      // of the line being read
  std::vector<PROJPOINT> m_points;  // of the readable lines of the block
  std::string m_text;               // output of the block
  std::uint64_t m_lineNumber = 0, m_bytes = 0, m_reports = 0, m_badLines = 0, m_unplottable = 0, m_converted = 0;
};

}  // namespace

void AddTableOptions(CLI::App& command, TableOptions& options) {
  command.add_option("FILE", options.file, "Table to convert: CSV or blank-separated; - or none: standard input");
  command.add_option("-o,--output", options.output, "File to write; - or none: standard output");
  command.add_option("--x", options.xColumn, "Column of longitude or x: name or number from 1");
  command.add_option("--y", options.yColumn, "Column of latitude or y: name or number from 1");
  command.add_option("--delimiter", options.delimiter, "Column delimiter: one character, tab or blank");
  command.add_option("--decimals", options.format.decimals, "Decimals of the results (9 for degrees, 4 for lengths)")
      ->check(CLI::Range(0, 17));
  command.add_flag("--dms", options.format.dms, "Write degrees as degree-minute-second text");
  command.add_flag("--keep", options.keep, "Keep the input coordinates and append the results");
  command.add_flag("--geojson", options.geoJson, "The input is GeoJSON (otherwise told by the name of the file)");
  command.add_flag("-q,--quiet", options.quiet, "No progress and no summary");
}

int ConvertTable(const TableOptions& options, Kind from, Kind to, const Converter& convert) {
  if (options.geoJson || IsGeoJsonName(options.file)) return ConvertGeoJson(options, from, to, convert);
  RefuseSameFile(options.file, options.output);
  std::ifstream file;
  std::uint64_t size = 0;
  if (options.file != "-") {
    OpenInput(options.file, file);
    std::error_code ignored;
    size = std::filesystem::file_size(options.file, ignored);
    if (ignored) size = 0;
  }
  std::ofstream target;
  if (options.output != "-") {
    target.open(options.output, std::ios::binary);
    if (!target) throw Failure("cannot write " + options.output);
  }
  std::ios::sync_with_stdio(false);
  TableConverter converter(options, from, to, convert, options.file == "-" ? std::cin : file,
                           options.output == "-" ? std::cout : target);
  return converter.Run(size);
}

}  // namespace orvex::tool
