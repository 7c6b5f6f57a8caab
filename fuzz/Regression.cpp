// Feeds a fuzz target the files of a kept corpus, each as it is and then damaged at random: what the fuzzers found
// stays found, without a fuzzer.
//
//   NAME_regression EXECUTIONS DIRECTORY...     damaged inputs in all, from a fixed seed
#include <cstdlib>
#include <iterator>

#include "Input.h"
#include "support/GridFiles.h"

namespace {

void Run(const std::string& bytes) {
  // A block of its own size, so that a byte read too many is seen.
  const std::vector<std::uint8_t> block(bytes.begin(), bytes.end());
  LLVMFuzzerTestOneInput(block.data(), block.size());
}

std::vector<std::string> ReadCorpus(int count, char** directories) {
  std::vector<std::filesystem::path> paths;
  for (int i = 0; i < count; ++i) {
    for (const auto& entry : std::filesystem::directory_iterator(directories[i])) paths.push_back(entry.path());
  }
  std::sort(paths.begin(), paths.end());
  std::vector<std::string> corpus;
  corpus.reserve(paths.size());
  for (const auto& path : paths) corpus.push_back(orvex::test::ReadWholeFile(path));
  return corpus;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) return 2;
  const std::vector<std::string> corpus = ReadCorpus(argc - 2, argv + 2);
  if (corpus.empty()) return 2;
  for (const std::string& input : corpus) Run(input);
  std::mt19937 random(20240611);
  for (long left = std::atol(argv[1]); left > 0; --left) {
    Run(orvex::test::Damaged(corpus[random() % corpus.size()], random));
  }
  std::fprintf(stderr, "%zu inputs\n", corpus.size());
  return 0;
}
