// SystemCommands - listing and explaining registered coordinate systems.
#pragma once

#include <CLI/CLI.hpp>

namespace orvex::tool {

/// Adds "crs" to orvex list.
void AddListSystems(CLI::App& list, int& status);

/// Adds orvex show.
void AddShowCommand(CLI::App& app, int& status);

}  // namespace orvex::tool
