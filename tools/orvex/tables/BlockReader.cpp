// BlockReader - a file in blocks of whole lines.
#include "tables/BlockReader.h"

#include <algorithm>
#include <cerrno>
#include <string_view>

#include "Failure.h"
#include "tables/Files.h"

namespace orvex::tool {

namespace {

constexpr std::size_t kBlockBytes = 256 << 10;  // a longer line makes a longer block

}  // namespace

bool BlockReader::Read(Block& block) {
  std::string& text = block.text;
  text.swap(m_rest);
  m_rest.clear();
  std::size_t lineEnd = std::string::npos;
  while (!m_end && lineEnd == std::string::npos) {
    const std::size_t held = text.size();
    text.resize(held + kBlockBytes);
    const std::size_t read = std::fread(text.data() + held, 1, kBlockBytes, m_file);
    text.resize(held + read);
    m_end = read < kBlockBytes;
    m_bytes += read;
    const std::size_t newest = std::string_view(text).substr(held).rfind('\n');
    if (newest != std::string_view::npos) lineEnd = held + newest;
  }
  if (std::ferror(m_file) != 0) throw Failure(WithReason("cannot read the input to its end", errno));
  if (!m_end) {
    m_rest.assign(text, lineEnd + 1);
    text.resize(lineEnd + 1);
  }
  block.number = m_blocks++;
  block.firstLine = m_lines + 1;
  block.lines = static_cast<std::uint64_t>(std::count(text.begin(), text.end(), '\n'));
  if (!text.empty() && text.back() != '\n') ++block.lines;
  m_lines += block.lines;
  block.bytesRead = m_bytes - m_rest.size();
  return !text.empty();
}

}  // namespace orvex::tool
