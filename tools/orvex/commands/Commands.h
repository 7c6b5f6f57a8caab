// Commands - one function per command: adds it to the program; when it was asked for, it runs and stores the exit
// status.
#pragma once

#include <CLI/CLI.hpp>

namespace orvex::tool {

void AddListCommand(CLI::App& app, int& status);
void AddProjectCommand(CLI::App& app, int& status);
void AddDatumCommand(CLI::App& app, int& status);
void AddConvertCommand(CLI::App& app, int& status);
void AddGeorefCommand(CLI::App& app, int& status);
void AddMapCommand(CLI::App& app, int& status);
/// The manual page and the completions of shells, about all commands that were added.
void AddHelpCommands(CLI::App& app, int& status);

}  // namespace orvex::tool
