// Files - opening the files that a command reads, and writing those that it makes.
#pragma once

#include <cstdio>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>

namespace orvex::tool {

/// Readies the program, before it opens any file, for closed standard streams and for a limit on the size of files.
void PrepareForFiles();

/// How a file is called in messages: "-" is standard input.
std::string DisplayName(const std::string& file);

/// "what: No such file or directory", by the runtime's error number.
std::string WithReason(const std::string& what, int error);

struct FileCloser {
  void operator()(std::FILE* file) const;
};
using FileHandle = std::unique_ptr<std::FILE, FileCloser>;

/// Opens a file ("-": standard input) for reading; throws Failure when that is impossible or it is a directory.
FileHandle OpenInput(const std::string& file);
void OpenInput(const std::string& file, std::ifstream& stream);

/// The whole text of a file ("-": standard input).
std::string ReadAll(const std::string& file);

/// Throws Failure when a file ("-": standard input) was not read to its end, although its stream has ended.
void RequireEnd(const std::string& file, const std::istream& stream);

/// Throws Failure when both names ("-" for the standard streams) lead to one and the same regular file.
void RefuseSameFile(const std::string& input, const std::string& output);

/// A file that stands under its name only when it is complete: until then it is written beside it, and a failure or a
/// signal leaves what was there before. "-" is standard output; devices and pipes are written to as they are.
class OutputFile {
 public:
  explicit OutputFile(const std::string& name);
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  void Write(std::string_view text);
  /// For text that is printed; Commit tells its faults.
  std::FILE* Stream() { return m_file.get(); }
  /// Completes the file. Both throw Failure when something could not be written.
  void Commit();

 private:
  void OpenBeside();
  [[noreturn]] void Fail(int error) const;

  std::string m_name;
  std::string m_target, m_temporary;  // empty: written in place
  FileHandle m_file;
};

/// Throws Failure when what was printed to standard output did not get there.
void FlushStandardOutput();

}  // namespace orvex::tool
