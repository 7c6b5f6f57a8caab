// hashes - one number for each elementary function over a fixed set of arguments; all levels and widths have to give
// the one that is kept in hashes.txt. No library is needed, so it runs wherever the sources compile.
//   hashes            prints the numbers of the first level
//   hashes FILE       compares every level and width with FILE; status 1 where one differs
#include <cinttypes>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <map>
#include <string>

#include "Arguments.h"
#include "Levels.h"

namespace {

using namespace points_test;

constexpr std::size_t kArguments = 20000;  // of each row

std::uint64_t HashOf(const Function& function, Run run) {
  std::uint64_t hash = 0xcbf29ce484222325;
  std::vector<double> result;
  const auto take = [&](const Row& row) {
    const Arguments arguments(row, kArguments, 7);
    result.resize(arguments.x.size());
    run(arguments.x.data(), arguments.y.data(), result.data(), arguments.Count());
    for (const double value : result) {
      hash = (hash ^ (value != value ? 0x7ff8000000000000 : ToBits(value))) * 0x100000001b3;
      hash ^= hash >> 29;
    }
  };
  for (const Row& row : kRows) {
    if (std::strcmp(row.function, function.name) == 0) take(row);
  }
  take({function.name, "", 0, false, {Kind::Every, 0, 0}, {Kind::Every, 0, 0}});
  take({function.name, "", 0, false, {Kind::Powers, 0, 0}, {Kind::Powers, 0, 0}});
  return hash;
}

}  // namespace

int main(int count, char** arguments) {
  std::map<std::string, std::uint64_t> kept;
  if (count > 1) {
    std::ifstream file(arguments[1]);
    std::string name, number;
    while (file >> name >> number) kept[name] = std::stoull(number, nullptr, 16);
    if (kept.empty()) {
      std::fprintf(stderr, "nothing in %s\n", arguments[1]);
      return 1;
    }
  }
  int compared = 0, differ = 0;
  for (const Level& level : Levels()) {
    for (std::size_t i = 0; i < level.count; ++i) {
      const Function& function = level.functions[i];
      for (const Width* width = function.widths; width->name != nullptr; ++width) {
        const std::uint64_t hash = HashOf(function, width->run);
        if (count <= 1) {
          std::printf("%s %016" PRIx64 "\n", function.name, hash);
          break;
        }
        ++compared;
        if (const auto found = kept.find(function.name); found == kept.end() || found->second != hash) {
          ++differ;
          std::printf("%s differs at level %s, width %s: %016" PRIx64 "\n", function.name, level.name, width->name,
                      hash);
        }
      }
    }
    if (count <= 1) return 0;
  }
  std::printf("%d compared, %d differ\n", compared, differ);
  return differ == 0 ? 0 : 1;
}
