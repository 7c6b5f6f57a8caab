// Files - opening the files that a command reads, and writing those that it makes.
#include "tables/Files.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <random>
#include <system_error>

#if !defined(_WIN32)
#include <fcntl.h>
#endif

#include "Failure.h"

namespace orvex::tool {

namespace {

namespace fs = std::filesystem;

#if defined(_WIN32)
constexpr const char* kNewFile = "wb";
constexpr int kSignals[] = {SIGINT, SIGTERM};
#else
constexpr const char* kNewFile = "wbx";  // never one that is there
constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};
#endif

// The unfinished file, where a signal finds it.
char g_unfinished[4096];

extern "C" void RemoveUnfinished(int number) {
  if (g_unfinished[0] != '\0') std::remove(g_unfinished);
  std::signal(number, SIG_DFL);
  std::raise(number);
}

void Remember(const std::string& unfinished) {
  if (unfinished.size() >= sizeof g_unfinished) return;
  std::memcpy(g_unfinished, unfinished.c_str(), unfinished.size() + 1);
  for (const int number : kSignals) {
    if (std::signal(number, RemoveUnfinished) == SIG_IGN) std::signal(number, SIG_IGN);  // as nohup wants it
  }
}

void Forget() {
  g_unfinished[0] = '\0';
}

void RefuseDirectory(const std::string& file) {
  std::error_code ignored;
  if (fs::is_directory(file, ignored)) throw Failure(file + " is a directory");
}

}  // namespace

void PrepareForFiles() {
#if !defined(_WIN32)
  // A file that got the number of a closed stream would take what is printed there; /dev/null the wrong way round is no
  // more use than the closed stream.
  for (int stream = 0; stream <= 2; ++stream) {
    if (fcntl(stream, F_GETFD) < 0) open("/dev/null", stream == 0 ? O_WRONLY : O_RDONLY);
  }
  std::signal(SIGXFSZ, SIG_IGN);  // to write beyond the limit on the size of files fails all the same
#endif
}

std::string DisplayName(const std::string& file) {
  return file == "-" ? "standard input" : file;
}

std::string WithReason(const std::string& what, int error) {
  return error == 0 ? what : what + ": " + std::generic_category().message(error);
}

void FileCloser::operator()(std::FILE* file) const {
  if (file != stdin && file != stdout) std::fclose(file);
}

FileHandle OpenInput(const std::string& file) {
  if (file == "-") return FileHandle(stdin);
  RefuseDirectory(file);
  FileHandle handle(std::fopen(file.c_str(), "rb"));
  if (!handle) throw Failure(WithReason("cannot open " + file, errno));
  return handle;
}

void OpenInput(const std::string& file, std::ifstream& stream) {
  RefuseDirectory(file);
  errno = 0;
  stream.open(file, std::ios::binary);  // once: a pipe may have one writer only
  if (!stream) throw Failure(WithReason("cannot open " + file, errno));
}

std::string ReadAll(const std::string& file) {
  const FileHandle input = OpenInput(file);
  std::string text;
  char block[1 << 16];
  for (std::size_t count; (count = std::fread(block, 1, sizeof block, input.get())) > 0;) text.append(block, count);
  if (std::ferror(input.get()) != 0) throw Failure("cannot read " + DisplayName(file) + " to its end");
  return text;
}

void RequireEnd(const std::string& file, const std::istream& stream) {
  if (stream.bad() || (file == "-" && std::ferror(stdin) != 0)) throw Failure("cannot read " + DisplayName(file));
}

void RefuseSameFile(const std::string& input, const std::string& output) {
  // Where the system has no names for the standard streams a redirection goes unnoticed.
  const fs::path from = input == "-" ? "/dev/stdin" : input, to = output == "-" ? "/dev/stdout" : output;
  std::error_code ignored;
  if (fs::is_regular_file(from, ignored) && fs::equivalent(from, to, ignored)) {
    throw Failure("the output is the input");
  }
}

OutputFile::OutputFile(const std::string& name) : m_name(name) {
  if (name == "-") {
    m_file.reset(stdout);
    return;
  }
  std::error_code error;
  const fs::file_status status = fs::status(name, error);
  if (fs::is_directory(status)) throw Failure(name + " is a directory");
  if (!fs::exists(status) || fs::is_regular_file(status)) {
    OpenBeside();
    return;
  }
  m_file.reset(std::fopen(name.c_str(), "wb"));
  if (!m_file) Fail(errno);
}

/// Opens a file of its own in the directory of the target, where a link leads if it is one.
void OutputFile::OpenBeside() {
  std::error_code error;
  fs::path target = fs::weakly_canonical(m_name, error);
  if (error) target = m_name;
  m_target = target.string();
  const bool there = fs::exists(target, error);
  if (there && !FileHandle(std::fopen(m_target.c_str(), "r+b"))) Fail(errno);  // what is protected stays
  std::random_device random;
  m_temporary = m_target + "." + std::to_string(random()) + ".part";
  m_file.reset(std::fopen(m_temporary.c_str(), kNewFile));
  if (!m_file) {
    m_temporary.clear();
    Fail(errno);
  }
  Remember(m_temporary);
  if (there) fs::permissions(m_temporary, fs::status(target, error).permissions(), error);
}

OutputFile::~OutputFile() {
  if (m_temporary.empty()) return;
  m_file.reset();
  std::error_code ignored;
  fs::remove(m_temporary, ignored);
  Forget();
}

void OutputFile::Write(std::string_view text) {
  if (std::fwrite(text.data(), 1, text.size(), m_file.get()) != text.size()) Fail(errno);
}

void OutputFile::Commit() {
  if (std::fflush(m_file.get()) != 0 || std::ferror(m_file.get()) != 0) Fail(errno);
  if (m_name == "-") return;
  if (std::fclose(m_file.release()) != 0) Fail(errno);
  if (m_temporary.empty()) return;
  std::error_code error;
  fs::rename(m_temporary, m_target, error);
  if (error) Fail(error.value());
  m_temporary.clear();
  Forget();
}

void OutputFile::Fail(int error) const {
  throw Failure(WithReason("cannot write " + (m_name == "-" ? "to standard output" : m_name), error));
}

void FlushStandardOutput() {
  if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
    throw Failure(WithReason("cannot write to standard output", errno));
  }
}

}  // namespace orvex::tool
