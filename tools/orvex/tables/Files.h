// Files - opening the tables that a command reads, and not writing over them.
#pragma once

#include <fstream>
#include <string>

namespace orvex::tool {

/// How a file is called in messages: "-" is standard input.
std::string DisplayName(const std::string& file);

/// Opens a file for reading; throws Failure when that is impossible or it is a directory.
void OpenInput(const std::string& file, std::ifstream& stream);

/// Throws Failure when both names ("-" for the standard streams) lead to one and the same regular file.
void RefuseSameFile(const std::string& input, const std::string& output);

}  // namespace orvex::tool
