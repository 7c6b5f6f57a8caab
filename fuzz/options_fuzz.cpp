// Fuzzer of the command line: each line of the input is an argument. The program ends with one of its statuses,
// whatever it is given; files that it may write lie in a directory of their own.
#include <unistd.h>

#include <vector>

#include "Files.h"
#include "Input.h"

int OrvexMain(int argc, char** argv);

namespace {

constexpr std::size_t kMostArguments = 24;

/// What leads elsewhere, or costs time by wish of the user.
bool IsLeftOut(const std::string& argument) {
  return argument.find('/') != std::string::npos || argument.find("..") != std::string::npos || argument == "man" ||
         argument.find("thread") != std::string::npos;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace orvex;
  fuzz::Silence();
  if (chdir(fuzz::Files().Path().c_str()) != 0) return 0;
  fuzz::Files().Clear();  // what an earlier input wrote
  fuzz::Files().Write("points.csv", "lon,lat\n13.4,52.5\n-97.75,30.25\n");
  fuzz::Files().Write("controls.csv", "0,0,10,20\n1,0,12,20\n0,1,10,23\n1,1,12,23\n");
  fuzz::Input in(data, size);
  std::vector<std::string> texts{"orvex"};
  while (!in.Empty() && texts.size() < kMostArguments) {
    texts.emplace_back(in.Line().c_str());
    if (IsLeftOut(texts.back())) return 0;
  }
  std::vector<char*> arguments;
  arguments.reserve(texts.size() + 1);
  for (std::string& text : texts) arguments.push_back(text.data());
  arguments.push_back(nullptr);
  const int status = OrvexMain(static_cast<int>(texts.size()), arguments.data());
  fuzz::Expect(status >= 0 && status <= 2, "one of the exit statuses");
  return 0;
}
