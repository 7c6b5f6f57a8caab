// Files - opening the tables that a command reads, and not writing over them.
#include "tables/Files.h"

#include <filesystem>

#include "Failure.h"

namespace orvex::tool {

std::string DisplayName(const std::string& file) {
  return file == "-" ? "standard input" : file;
}

void OpenInput(const std::string& file, std::ifstream& stream) {
  std::error_code ignored;
  if (std::filesystem::is_directory(file, ignored)) throw Failure(file + " is a directory");
  stream.open(file, std::ios::binary);
  if (!stream) throw Failure("cannot open " + file);
}

void RefuseSameFile(const std::string& input, const std::string& output) {
  // Where the system has no names for the standard streams a redirection goes unnoticed.
  const std::filesystem::path from = input == "-" ? "/dev/stdin" : input, to = output == "-" ? "/dev/stdout" : output;
  std::error_code ignored;
  if (std::filesystem::is_regular_file(from, ignored) && std::filesystem::equivalent(from, to, ignored)) {
    throw Failure("the output is the input");
  }
}

}  // namespace orvex::tool
