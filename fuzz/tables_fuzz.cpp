// Fuzzer of the tool's tables: any text with options of any kind is converted there and back without a failure other
// than the tool's own, and the same by one thread and by three.
#include <fstream>
#include <iterator>

#include "Failure.h"
#include "Files.h"
#include "Input.h"
#include "tables/PointTable.h"

using namespace orvex;
using namespace orvex::tool;

namespace {

std::string Choose(fuzz::Input& in, std::initializer_list<const char*> choices) {
  return *(choices.begin() + in.Below(static_cast<int>(choices.size())));
}

TableOptions ReadOptions(fuzz::Input& in) {
  TableOptions options;
  options.delimiter = Choose(in, {"", "", ",", ";", "tab", "blank", "|", "xx"});
  options.xColumn = Choose(in, {"", "", "lon", "1", "2", "x", "0", "99999999999"});
  options.yColumn = options.xColumn.empty() ? "" : Choose(in, {"lat", "2", "3", "y"});
  options.order = Choose(in, {"", "", "lat,lon", "x,y"});
  const int flags = in.Byte();
  options.decimalComma = (flags & 1) != 0;
  options.keep = (flags & 2) != 0;
  options.format.dms = (flags & 4) != 0;
  options.quiet = (flags & 8) != 0;
  options.format.decimals = in.Below(20) - 1;
  if ((flags & 16) != 0) options.labelOut = {(flags & 32) != 0 ? Label::Alone : Label::Beside, "zone"};
  if ((flags & 64) != 0) options.labelIn = {(flags & 32) != 0 ? Label::Alone : Label::Beside, "zone"};
  return options;
}

void Swap(std::vector<PROJPOINT>& points, std::vector<std::string>& labels) {
  for (std::size_t i = 0; i < points.size(); ++i) {
    PROJPOINT& p = points[i];
    p = p.x > 90 ? PROJPOINT{DBL_MAX, DBL_MAX} : PROJPOINT{p.y, p.x};
    if (i < labels.size()) labels[i] += "\"z,\"";
  }
}

/// The status and the text that came out.
std::string Convert(TableOptions options, Kind from, Kind to, int threads) {
  options.threads = threads;
  try {
    const int status = ConvertLabelledTable(options, from, to, [] { return Swap; });
    std::ifstream out(options.output, std::ios::binary);
    return std::to_string(status) + std::string(std::istreambuf_iterator<char>(out), {});
  } catch (const Failure& e) {
    return e.what();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Silence();
  fuzz::Input in(data, size);
  TableOptions options = ReadOptions(in);
  const Kind from = in.Bit() ? Kind::Projected : Kind::Geographic, to = in.Bit() ? Kind::Projected : Kind::Geographic;
  const bool compare = in.Below(16) == 0;  // threads cost more than the rest
  options.file = fuzz::Files().Write("in.csv", in.Rest());
  options.output = fuzz::Files() / "out.csv";
  const std::string once = Convert(options, from, to, 1);
  if (compare) fuzz::Expect(Convert(options, from, to, 3) == once, "threads change nothing");
  return 0;
}
