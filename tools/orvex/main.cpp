// orvex - the command-line host of the library.
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "Failure.h"
#include "commands/Commands.h"
#include "commands/Names.h"
#include "commands/SystemCommands.h"

namespace {

/// The innermost command that was asked for, and what was typed to get there: "orvex list params".
const CLI::App* Innermost(const CLI::App& app, std::string& path) {
  const CLI::App* command = &app;
  path = app.get_name();
  while (!command->get_subcommands().empty()) {
    command = command->get_subcommands().front();
    path += " " + command->get_name();
  }
  return command;
}

/// Throws a Failure that names what was typed or what can be, when the innermost command lacks one of its own commands.
void ExplainMissingCommand(const CLI::App& app) {
  using namespace orvex::tool;
  std::string path;
  const CLI::App* command = Innermost(app, path);
  if (command->get_require_subcommand_min() == 0) return;
  std::vector<std::string> names;
  std::string list;
  for (const CLI::App* choice : command->get_subcommands([](const CLI::App*) { return true; })) {
    names.push_back(choice->get_name());
    list += (list.empty() ? "" : ", ") + choice->get_name();
  }
  const std::vector<std::string> typed = command->remaining();
  if (!typed.empty() && !typed.front().starts_with("-")) FindName(names, typed.front(), "command");
  throw Failure(path + " needs one of: " + list);
}

int Run(int argc, char** argv) {
  using namespace orvex::tool;
  CLI::App app{"Converts coordinates: map projections, state plane and UTM zones, datums, georeferencing, maps."};
  app.name("orvex");
  app.set_version_flag("--version", "orvex " ORVEX_VERSION);
  app.require_subcommand(1);
  app.failure_message([](const CLI::App* command, const CLI::Error& e) {
    std::string path;
    Innermost(*command, path);
    return std::string("orvex: ") + e.what() + "\nTry: " + path + " --help\n";
  });
  app.footer("Exit status: 0, 1 when some points could not be converted, 2 for wrong usage or parameters.");
  int status = kSuccess;
  AddListCommand(app, status);
  AddShowCommand(app, status);
  AddProjectCommand(app, status);
  AddDatumCommand(app, status);
  AddConvertCommand(app, status);
  AddGeorefCommand(app, status);
  AddMapCommand(app, status);
  try {
    try {
      app.parse(argc, argv);
    } catch (const CLI::RequiredError&) {
      ExplainMissingCommand(app);
      throw;
    }
  } catch (const CLI::ParseError& e) {
    return app.exit(e) == 0 ? kSuccess : kUsage;
  }
  return status;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Run(argc, argv);
  } catch (const std::exception& e) {
    std::fflush(stdout);
    std::fprintf(stderr, "orvex: %s\n", e.what());
  } catch (...) {
    std::fputs("orvex: unknown error\n", stderr);
  }
  return orvex::tool::kUsage;
}
