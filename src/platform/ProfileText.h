// ProfileText - the text of INI files: lines, sections and entries, as the Windows profile calls see them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace orvex::platform {

/// Bytes of the largest file that is read. A host's settings are far smaller; what is larger, or all hole, would take a
/// host's memory.
constexpr std::size_t kLargestProfile = std::size_t{16} << 20;

/// Cuts the next line off a text that is not empty, its line end included.
std::string_view TakeLine(std::string_view& text);

/// The entry of a line as it is handed out; empty for lines that hold none.
std::string Entry(std::string_view line);

std::string_view KeyOf(std::string_view entry);

/// A file's text in three parts: up to and with the section's header line, the section's lines, the rest.
struct Parts {
  std::string_view before, section, after;
  bool found = false;
};

/// The first section of that name counts. A byte order mark is passed over.
Parts Split(std::string_view text, std::string_view section);

}  // namespace orvex::platform
