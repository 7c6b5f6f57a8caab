// BlockReader - a file in blocks of whole lines.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

namespace orvex::tool {

/// Some whole lines of a file; the last line of the file may lack its end.
struct Block {
  std::string text;
  std::uint64_t number = 0;     ///< of the block, from 0
  std::uint64_t firstLine = 1;  ///< number of its first line
  std::uint64_t lines = 0;
  std::uint64_t bytesRead = 0;  ///< of the file up to its end
};

class BlockReader {
 public:
  explicit BlockReader(std::FILE* file) : m_file(file) {}

  /// The next block; false at the end of the file. Throws Failure when reading fails.
  bool Read(Block& block);
  /// True when nothing follows the blocks that were read.
  bool AtEnd() const { return m_end && m_rest.empty(); }

 private:
  std::FILE* m_file;
  std::string m_rest;  // the start of a line that the next block holds
  std::uint64_t m_blocks = 0, m_lines = 0, m_bytes = 0;
  bool m_end = false;
};

}  // namespace orvex::tool
