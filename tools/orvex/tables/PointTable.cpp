// PointTable - streaming conversion of text tables.
#include "tables/PointTable.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string_view>
#include <thread>
#include <utility>

#include "Failure.h"
#include "commands/Names.h"
#include "geojson/GeoJson.h"
#include "tables/BlockConverter.h"
#include "tables/Columns.h"
#include "tables/Files.h"
#include "tables/Pipeline.h"
#include "tables/Progress.h"

namespace orvex::tool {

namespace {

constexpr int kMostThreads = 256;

/// The conversion of one table.
class TableConverter {
 public:
  TableConverter(const TableOptions& options, Kind from, Kind to, const LabelConverterFactory& makeConverter,
                 std::FILE* input, OutputFile& output, std::uint64_t totalBytes)
      : m_options(options),
        m_from(from),
        m_to(to),
        m_makeConverter(makeConverter),
        m_reader(input),
        m_output(output),
        m_progress(totalBytes, !options.quiet, options.output == "-") {}

  int Run() {
    if (FindLayout()) ConvertBlocks();
    m_progress.Hide();
    m_output.Commit();
    Summarise();
    return m_badLines + m_unplottable > 0 ? kSomePointsFailed : kSuccess;
  }

 private:
  /// Passes on what stands before the first line with content and takes the layout from it; m_pending then holds the
  /// first block with points. False for a table without content.
  bool FindLayout() {
    for (Block& block = m_pending; m_reader.Read(block);) {
      if (block.number == 0) TakeByteOrderMark(block.text);
      std::uint64_t number = block.firstLine;
      for (std::size_t begin = 0; begin < block.text.size(); ++number) {
        const std::size_t lineEnd = std::min(block.text.find('\n', begin), block.text.size());
        if (!IsIdle(WithoutCarriageReturn(std::string_view(block.text).substr(begin, lineEnd - begin)))) {
          Start(begin, lineEnd, number);
          return true;
        }
        begin = lineEnd + 1;
      }
      m_output.Write(block.text);
      if (block.text.back() != '\n') m_output.Write("\n");
    }
    return false;
  }

  /// The mark stays at the front of the output.
  void TakeByteOrderMark(std::string& text) {
    if (!text.starts_with(kByteOrderMark)) return;
    m_output.Write(kByteOrderMark);
    text.erase(0, kByteOrderMark.size());
  }

  static std::string_view WithoutCarriageReturn(std::string_view line) {
    if (line.ends_with('\r')) line.remove_suffix(1);
    return line;
  }

  /// Looks at the first line with content: finds delimiter, columns and whether it is a header.
  void Start(std::size_t begin, std::size_t lineEnd, std::uint64_t number) {
    const std::string_view text = m_pending.text;
    const std::string_view line = WithoutCarriageReturn(text.substr(begin, lineEnd - begin));
    m_place = DisplayName(m_options.file) + ":" + std::to_string(number) + ": ";
    m_layout.splitter = Splitter(ChooseDelimiter(m_options.delimiter, line, m_options.decimalComma));
    std::vector<Field> fields;
    if (!m_layout.splitter.Split(line, fields)) throw Failure(m_place + "a quote is not closed");
    std::vector<std::string> names;
    names.reserve(fields.size());
    for (const Field& field : fields) names.push_back(Lower(Unquoted(Text(line, field))));
    const Columns columns = ChooseColumns(m_options, m_from, names);
    m_layout.columns = columns.place;
    m_layout.label = columns.label;
    if (!columns.header) {
      RefuseSwappedColumns(line, fields);
      return;
    }
    if (m_layout.splitter.Delimiter() == ',') m_layout.mostColumns = fields.size();
    m_output.Write(text.substr(0, begin));
    WriteHeader(line, fields);
    m_output.Write(line.size() < lineEnd - begin ? "\r\n" : "\n");
    m_pending.text.erase(0, lineEnd + 1);
    m_pending.lines -= number + 1 - m_pending.firstLine;
    m_pending.firstLine = number + 1;
  }

  /// Replaces (or appends) the names of the coordinate columns.
  void WriteHeader(std::string_view line, const std::vector<Field>& fields) {
    const std::array<std::string, 2> names =
        m_to == Kind::Geographic ? std::array<std::string, 2>{"lon", "lat"} : std::array<std::string, 2>{"x", "y"};
    std::string header;
    const bool alone = m_options.labelIn.use == Label::Alone;
    const Field none{line.size(), line.size()};
    const Field label = m_options.labelIn.use == Label::None ? none : fields[m_layout.label];
    const PointFields places = alone ? PointFields{label, none, none}
                                     : PointFields{fields[m_layout.columns[0]], fields[m_layout.columns[1]], label};
    LineSplicer(m_layout.splitter.Delimiter(), m_options)
        .Append(header, line, places, {names, m_options.labelOut.name});
    m_output.Write(header);
  }

  /// A first line whose letters say that the columns are the other way round condemns the whole table.
  void RefuseSwappedColumns(std::string_view line, const std::vector<Field>& fields) const {
    if (m_from != Kind::Geographic || m_options.labelIn.use == Label::Alone) return;
    const CoordinateReader reader(m_from, CommasIn(m_options.decimalComma, m_layout.splitter.Delimiter()));
    for (std::size_t axis = 0; axis < 2; ++axis) {
      const std::size_t column = m_layout.columns[axis];
      if (column >= fields.size() || !reader.BelongsElsewhere(Text(line, fields[column]), axis)) return;
    }
    throw Failure(m_place +
                  "the letters tell latitude before longitude; say --order lat,lon, or name the columns with "
                  "--x and --y");
  }

  void ConvertBlocks() {
    std::vector<BlockConverter> converters;
    const int threads = m_reader.AtEnd() ? 1 : ThreadCount(m_options);
    converters.reserve(static_cast<std::size_t>(threads));
    for (int i = 0; i < threads; ++i) {
      converters.emplace_back(m_options, m_from, m_to, m_layout, m_makeConverter());
    }
    bool pending = !m_pending.text.empty();
    const BlockSource source = [&](Block& block) {
      if (!std::exchange(pending, false)) return m_reader.Read(block);
      block = std::move(m_pending);
      return true;
    };
    RunPipeline(source, converters, [this](const Block& block, const BlockResult& result) { Take(block, result); });
  }

  void Take(const Block& block, const BlockResult& result) {
    for (const Complaint& complaint : result.complaints) {
      if (m_complaints + static_cast<std::uint64_t>(&complaint - result.complaints.data()) >= kMostComplaints) break;
      m_progress.Hide();
      std::cerr << "orvex: " << DisplayName(m_options.file) << ":" << complaint.line << ": " << complaint.text << "\n";
    }
    m_complaints += result.complaintCount;
    m_badLines += result.badLines;
    m_unplottable += result.unplottable;
    m_longLines += result.longLines;
    m_converted += result.converted;
    m_output.Write(result.text);
    m_progress.Update(block.bytesRead, block.firstLine + block.lines - 1);
  }

  void Summarise() const {
    if (m_complaints > kMostComplaints) {
      std::cerr << "orvex: " << m_complaints - kMostComplaints << " more such reports\n";
    }
    if (m_longLines > 0 && !m_options.quiet) {
      Warn("lines with more columns than the header: " + std::to_string(m_longLines) +
           "; decimal commas need quotes, or another delimiter and --decimal-comma");
    }
    if (m_options.quiet || m_badLines + m_unplottable == 0) return;
    std::cerr << "orvex: points converted: " << m_converted << ", unplottable: " << m_unplottable
              << ", unreadable lines: " << m_badLines << "\n";
  }

  const TableOptions& m_options;
  const Kind m_from, m_to;
  const LabelConverterFactory& m_makeConverter;
  BlockReader m_reader;
  OutputFile& m_output;
  Progress m_progress;
  Block m_pending;      // with the first points
  std::string m_place;  // of the first line with content
  Layout m_layout;
  std::uint64_t m_complaints = 0, m_badLines = 0, m_unplottable = 0, m_converted = 0, m_longLines = 0;
};

std::uint64_t SizeOf(const std::string& file) {
  std::error_code error;
  const std::uint64_t size = file == "-" ? 0 : std::filesystem::file_size(file, error);
  return error ? 0 : size;
}

/// One operand is a file, or a pair joined by a comma; more are coordinates.
void TakeOperands(const std::vector<std::string>& operands, TableOptions& options) {
  if (operands.size() == 1 && (operands[0].find(',') == std::string::npos || std::filesystem::exists(operands[0]))) {
    options.file = operands[0];
  } else {
    options.coordinates = operands;
  }
}

/// The operands with pairs like 13.4,52.5 taken apart.
std::vector<std::string> SingleCoordinates(const TableOptions& options) {
  std::vector<std::string> singles;
  for (const std::string& operand : options.coordinates) {
    const std::size_t comma = options.decimalComma ? std::string::npos : operand.find(',');
    singles.push_back(operand.substr(0, comma));
    if (comma != std::string::npos) singles.push_back(operand.substr(comma + 1));
  }
  if (singles.size() % 2 != 0) throw Failure("coordinates come in pairs; to convert a table name one file");
  return singles;
}

/// Converts the coordinates of the command line and writes a line for each point.
int ConvertCoordinates(const TableOptions& options, Kind from, Kind to, const LabelConverter& convert) {
  if (options.labelIn.use != Label::None) throw Failure("zones and references are read from tables only");
  const std::vector<std::string> singles = SingleCoordinates(options);
  const ColumnPlaces places = ChooseColumns(options, from, {"0", "0"}).place;  // two columns without a header
  const Splitter splitter(' ');
  const CoordinateReader reader(from, CommasIn(options.decimalComma, splitter.Delimiter()));
  std::string text;
  for (std::size_t i = 0; i < singles.size(); i += 2) {
    const std::array<std::string, 2> fields{Quoted(singles[i]), Quoted(singles[i + 1])};
    for (std::size_t axis = 0; axis < 2; ++axis) {
      double value = 0;
      const std::string& field = fields[places[axis]];
      if (!reader.Read(field, axis, value)) throw Failure(reader.Fault(field, axis));
    }
    text += fields[0] + " " + fields[1] + "\n";
  }
  BlockResult result;
  BlockConverter(options, from, to, {splitter, places, 0}, convert)
      .Convert({text, 0, 1, singles.size() / 2, 0}, result);
  OutputFile output(options.output);
  output.Write(result.text);
  output.Commit();
  if (result.unplottable == 0) return kSuccess;
  if (!options.quiet) {
    std::cerr << "orvex: points converted: " << result.converted << ", unplottable: " << result.unplottable << "\n";
  }
  return kSomePointsFailed;
}

}  // namespace

void AddTableOptions(CLI::App& command, TableOptions& options) {
  command
      .add_option_function<std::vector<std::string>>(
          "FILE", [&options](const std::vector<std::string>& operands) { TakeOperands(operands, options); },
          "Table to convert: CSV or blank-separated; - or none: standard input. Or coordinates in pairs")
      ->type_name("[FILE | X Y ...]");
  command.add_option("-o,--output", options.output, "File to write; - or none: standard output");
  command.add_option("--x", options.xColumn, "Column of longitude or x: name or number from 1");
  command.add_option("--y", options.yColumn, "Column of latitude or y: name or number from 1");
  command.add_option("--order", options.order, "Order of the first two columns: lon,lat (x,y) or lat,lon (y,x)");
  command.add_flag("--decimal-comma", options.decimalComma, "Numbers have a decimal comma, in and out");
  command.add_option("--delimiter", options.delimiter, "Column delimiter: one character, tab or blank");
  command.add_option("--decimals", options.format.decimals, "Decimals of the results (9 for degrees, 4 for lengths)")
      ->check(CLI::Range(0, 17));
  command.add_flag("--dms", options.format.dms, "Write degrees as degree-minute-second text");
  command.add_flag("--keep", options.keep, "Keep the input coordinates and append the results");
  command.add_option("--threads", options.threads, "Threads that convert (default: one for each processor)")
      ->check(CLI::Range(1, kMostThreads));
  command.add_flag("--geojson", options.geoJson, "The input is GeoJSON (otherwise told by the name of the file)");
  command.add_flag("-q,--quiet", options.quiet, "No progress and no summary");
}

int ThreadCount(const TableOptions& options) {
  if (options.threads > 0) return options.threads;
  return std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 1, kMostThreads);
}

int ConvertTable(const TableOptions& options, Kind from, Kind to, const ConverterFactory& makeConverter) {
  if (options.geoJson && !options.coordinates.empty()) {
    throw Failure("--geojson is for files; the coordinates on the command line are numbers");
  }
  if (options.geoJson || IsGeoJsonName(options.file)) return ConvertGeoJson(options, from, to, makeConverter);
  return ConvertLabelledTable(options, from, to, [&] {
    return LabelConverter(
        [convert = makeConverter()](std::vector<PROJPOINT>& points, std::vector<std::string>&) { convert(points); });
  });
}

int ConvertLabelledTable(const TableOptions& options, Kind from, Kind to, const LabelConverterFactory& makeConverter) {
  if (options.geoJson || IsGeoJsonName(options.file)) {
    throw Failure("zones and references by point belong to tables; the input is GeoJSON");
  }
  if (!options.coordinates.empty()) return ConvertCoordinates(options, from, to, makeConverter());
  RefuseSameFile(options.file, options.output);
  const FileHandle input = OpenInput(options.file);
  OutputFile output(options.output);
  return TableConverter(options, from, to, makeConverter, input.get(), output, SizeOf(options.file)).Run();
}

}  // namespace orvex::tool
