// PointTable - streaming conversion of text tables.
#include "PointTable.h"

#include <algorithm>
#include <array>
#include <cfloat>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string_view>

#include "Failure.h"
#include "Names.h"
#include "Progress.h"

namespace orvex::tool {

namespace {

constexpr std::size_t kBlockLines = 8192;
constexpr std::uint64_t kMostReports = 100;

/// Place of one field in its line, quotes and blanks included.
struct Field {
  std::size_t begin, end;
};

/// One line of the block. Without a point it is passed on as it is (blank lines, comments, the header).
struct Line {
  std::string text;
  bool carriageReturn = false;
  bool isPoint = false;
  bool readable = false;          // both coordinates were read
  std::array<Field, 2> fields{};  // x and y; empty fields at the end when the line is too short
};

/// Splits lines by one delimiter. ' ' stands for runs of blanks and tabs; other delimiters honour double quotes.
class Splitter {
 public:
  explicit Splitter(char delimiter) : m_delimiter(delimiter) {}
  char Delimiter() const { return m_delimiter; }

  /// False for a quote that is not closed.
  bool Split(std::string_view line, std::vector<Field>& fields) const {
    fields.clear();
    return m_delimiter == ' ' ? SplitBlanks(line, fields) : SplitDelimited(line, fields);
  }

 private:
  static bool SplitBlanks(std::string_view line, std::vector<Field>& fields) {
    for (std::size_t begin = line.find_first_not_of(" \t"); begin != std::string_view::npos;) {
      const std::size_t end = std::min(line.find_first_of(" \t", begin), line.size());
      fields.push_back({begin, end});
      begin = line.find_first_not_of(" \t", end);
    }
    return true;
  }

  bool SplitDelimited(std::string_view line, std::vector<Field>& fields) const {
    std::size_t begin = 0;
    bool quoted = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
      // A quote opens a field only at its start: 45d30'15" is a number with a seconds sign.
      if (line[i] == '"' && (quoted || line.find_first_not_of(' ', begin) == i)) quoted = !quoted;
      if (line[i] != m_delimiter || quoted) continue;
      fields.push_back({begin, i});
      begin = i + 1;
    }
    fields.push_back({begin, line.size()});
    return !quoted;
  }

  char m_delimiter;
};

std::string Unquoted(std::string_view field) {
  const std::size_t first = field.find_first_not_of(' '), last = field.find_last_not_of(' ');
  if (first == std::string_view::npos || field[first] != '"' || field[last] != '"' || first == last) {
    return std::string(field);
  }
  std::string text;
  for (std::size_t i = first + 1; i < last; ++i) {
    text += field[i];
    if (field[i] == '"' && field[i + 1] == '"') ++i;
  }
  return text;
}

char DelimiterFromOption(const std::string& option) {
  if (option == "tab") return '\t';
  if (option == "blank") return ' ';
  if (option.size() == 1 && option != "\"") return option[0];
  throw Failure("the delimiter must be one character, tab or blank");
}

char GuessDelimiter(std::string_view line) {
  for (const char candidate : {',', ';', '\t', '|'}) {
    if (line.find(candidate) != std::string_view::npos) return candidate;
  }
  return ' ';
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
    Progress progress(totalBytes, !m_options.quiet);
    std::vector<Line> block;
    block.reserve(kBlockLines);
    for (Line line; ReadLine(line);) {
      block.push_back(std::move(line));
      line = {};
      if (block.size() == kBlockLines) {
        Convert(block);
        progress.Update(m_bytes, m_lineNumber);
      }
    }
    Convert(block);
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
    if (m_lineNumber == 1 && line.text.starts_with("\xEF\xBB\xBF")) line.text.erase(0, 3);
    line.carriageReturn = !line.text.empty() && line.text.back() == '\r';
    if (line.carriageReturn) line.text.pop_back();
    const std::size_t first = line.text.find_first_not_of(" \t");
    if (first == std::string::npos || line.text[first] == '#') return true;
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
    m_splitter =
        Splitter(m_options.delimiter.empty() ? GuessDelimiter(line.text) : DelimiterFromOption(m_options.delimiter));
    std::vector<std::string> names;
    if (!m_splitter.Split(line.text, m_fields)) throw Failure("line 1: a quote is not closed");
    for (const Field& field : m_fields) names.push_back(Lower(Unquoted(Text(line, field))));
    m_columns = {Column(m_options.xColumn, names, {"lon", "longitude", "long", "lng", "x", "easting", "e"}, 0),
                 Column(m_options.yColumn, names, {"lat", "latitude", "y", "northing", "n"}, 1)};
    if (m_columns[0] == m_columns[1]) throw Failure("x and y are the same column");
    const bool header =
        std::any_of(m_columns.begin(), m_columns.end(),
                    [&](std::size_t column) {
                      return column < names.size() && !names[column].empty() && !ParseAngle(names[column]);
                    }) &&
        std::none_of(m_fields.begin(), m_fields.end(),
                     [&](const Field& field) { return ParseNumber(Unquoted(Text(line, field))).has_value(); });
    if (header) {
      WriteHeader(line);
    } else {
      ReadPoint(line);
    }
  }

  static std::size_t Column(const std::string& option, const std::vector<std::string>& names,
                            std::initializer_list<const char*> usual, std::size_t fallback) {
    if (option.empty()) {
      for (const char* name : usual) {
        const auto found = std::find(names.begin(), names.end(), name);
        if (found != names.end()) return static_cast<std::size_t>(found - names.begin());
      }
      return fallback;
    }
    if (option.find_first_not_of("0123456789") == std::string::npos) {
      const int number = ParseInteger(option, "column");
      if (number < 1) throw Failure("columns are counted from 1");
      return static_cast<std::size_t>(number - 1);
    }
    return FindName(names, option, "column");
  }

  /// Replaces (or appends) the names of the coordinate columns.
  void WriteHeader(Line& line) {
    const std::array<std::string, 2> names =
        m_to == Kind::Geographic ? std::array<std::string, 2>{"lon", "lat"} : std::array<std::string, 2>{"x", "y"};
    for (std::size_t axis = 0; axis < 2; ++axis) {
      if (m_columns[axis] >= m_fields.size()) throw Failure("the header has fewer columns than the coordinates need");
      line.fields[axis] = m_fields[m_columns[axis]];
    }
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
        const std::string text = Unquoted(Text(line, line.fields[axis]));
        values[axis] = ParseAs(m_from, text);
        if (!values[axis])
          Report(std::string("cannot read ") + (axis == 0 ? "x" : "y") + " \"" + text.substr(0, 40) + "\"");
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
    std::cerr << "orvex: " << (m_options.file == "-" ? "standard input" : m_options.file) << ":" << m_lineNumber << ": "
              << what << "\n";
  }

  void Convert(std::vector<Line>& block) {
    if (!m_points.empty()) m_convert(m_points);
    std::size_t next = 0;
    m_text.clear();
    for (Line& line : block) {
      if (line.isPoint) WritePoint(line, next);
      m_text += line.text;
      m_text += line.carriageReturn ? "\r\n" : "\n";
    }
    m_out.write(m_text.data(), static_cast<std::streamsize>(m_text.size()));
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

  static std::string Quoted(const std::string& text) {
    std::string quoted = "\"";
    for (const char c : text) quoted.append(c == '"' ? 2 : 1, c);
    return quoted + "\"";
  }

  static std::string_view Text(const Line& line, const Field& field) {
    return std::string_view(line.text).substr(field.begin, field.end - field.begin);
  }

  void Summarise() const {
    if (m_reports > kMostReports) {
      std::cerr << "orvex: " << m_reports - kMostReports << " more such reports\n";
    }
    if (m_options.quiet || m_badLines + m_unplottable == 0) return;
    std::cerr << "orvex: " << m_converted << " points converted, " << m_unplottable << " outside the projection, "
              << m_badLines << " lines not readable\n";
  }

  const TableOptions& m_options;
  const Kind m_from, m_to;
  const Converter& m_convert;
  std::istream& m_in;
  std::ostream& m_out;
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
  command.add_flag("-q,--quiet", options.quiet, "No progress and no summary");
}

int ConvertTable(const TableOptions& options, Kind from, Kind to, const Converter& convert) {
  std::ifstream file;
  std::uint64_t size = 0;
  if (options.file != "-") {
    file.open(options.file, std::ios::binary);
    if (!file) throw Failure("cannot open " + options.file);
    std::error_code ignored;
    size = std::filesystem::file_size(options.file, ignored);
    if (ignored) size = 0;
  }
  std::ofstream target;
  if (options.output != "-") {
    std::error_code ignored;
    if (options.file != "-" && std::filesystem::equivalent(options.file, options.output, ignored)) {
      throw Failure("the output is the input");
    }
    target.open(options.output, std::ios::binary);
    if (!target) throw Failure("cannot write " + options.output);
  }
  std::ios::sync_with_stdio(false);
  TableConverter converter(options, from, to, convert, options.file == "-" ? std::cin : file,
                           options.output == "-" ? std::cout : target);
  return converter.Run(size);
}

}  // namespace orvex::tool
