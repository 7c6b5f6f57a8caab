// orvex - the command-line host of the library.
#include <algorithm>
#include <cstdio>
#include <exception>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>

#include "Failure.h"
#include "commands/Commands.h"
#include "commands/Names.h"
#include "commands/SystemCommands.h"
#include "tables/Files.h"

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

bool TakesValue(const CLI::Option& option) {
  return option.get_items_expected_max() > 0;
}

/// An empty value is most often a variable of a script that was never set: it must not pass for an option that was not
/// given. Only a title may be empty.
void RefuseEmptyValues(CLI::App& app) {
  const auto notEmpty = [](const std::string& value) { return value.empty() ? "needs a value, not an empty one" : ""; };
  for (CLI::Option* option : app.get_options()) {
    if (TakesValue(*option) && !option->get_positional() && !option->check_lname("title")) {
      option->check(CLI::Validator(notEmpty, ""));
    }
  }
  for (CLI::App* command : app.get_subcommands([](CLI::App*) { return true; })) RefuseEmptyValues(*command);
}

/// The command of that name below another one; nullptr when there is none.
const CLI::App* FindCommand(const CLI::App& app, const std::string& name) {
  const auto found = app.get_subcommands([&](const CLI::App* command) { return command->check_name(name); });
  return found.empty() ? nullptr : found.front();
}

/// The arguments with each "--name=" taken apart into the name and an empty value: the parser would go on to the next
/// argument for one. Throws Failure for such a value of an option that takes none.
std::vector<std::string> WithEmptyValues(const CLI::App& app, const std::vector<std::string>& arguments) {
  std::vector<std::string> result;
  const CLI::App* command = &app;
  auto argument = arguments.begin();
  for (; argument != arguments.end() && *argument != "--"; ++argument) {
    const std::string name = argument->substr(0, argument->find('='));
    const bool isEmpty = name.size() + 1 == argument->size();
    const CLI::Option* const option = name.starts_with("-") ? command->get_option_no_throw(name) : nullptr;
    if (option == nullptr) {
      if (const CLI::App* const next = FindCommand(*command, *argument)) command = next;
      result.push_back(*argument);
    } else if (isEmpty) {
      if (!TakesValue(*option))
        throw orvex::tool::Failure(*argument + " has an empty value; leave the equals sign out");
      result.insert(result.end(), {name, ""});
    } else {
      result.push_back(*argument);
      const bool valueFollows = TakesValue(*option) && name == *argument;
      if (valueFollows && argument + 1 != arguments.end()) result.push_back(*++argument);
    }
  }
  result.insert(result.end(), argument, arguments.end());
  return result;
}

int Run(int argc, char** argv) {
  using namespace orvex::tool;
  CLI::App app{"Converts coordinates: map projections, state plane and UTM zones, datums, georeferencing, maps."};
  app.name("orvex");
  app.set_version_flag("-v,--version", "orvex " ORVEX_VERSION);
  app.require_subcommand(1);
  app.failure_message([](const CLI::App* command, const CLI::Error& e) {
    std::string path;
    Innermost(*command, path);
    return std::string("orvex: ") + e.what() + "\nTry: " + path + " --help\n";
  });
  app.footer("Exit status: 0, 1 when some points could not be converted, 2 for wrong usage or parameters.");
  int status = kSuccess;
  AddListCommand(app, status);
  AddProjectCommand(app, status);
  AddDatumCommand(app, status);
  AddConvertCommand(app, status);
  AddGeorefCommand(app, status);
  AddMapCommand(app, status);
  AddShowCommand(app, status);
  AddHelpCommands(app, status);
  RefuseEmptyValues(app);
  try {
    try {
      std::vector<std::string> arguments = WithEmptyValues(app, {argv + 1, argv + argc});
      std::reverse(arguments.begin(), arguments.end());  // as the parser takes them
      app.parse(std::move(arguments));
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
  orvex::tool::PrepareForFiles();
  std::cerr.tie(nullptr);  // a message does not push half a table out
  try {
    const int status = Run(argc, argv);
    orvex::tool::FlushStandardOutput();
    return status;
  } catch (const std::exception& e) {
    std::fflush(stdout);
    std::fprintf(stderr, "orvex: %s\n", e.what());
  } catch (...) {
    std::fputs("orvex: unknown error\n", stderr);
  }
  return orvex::tool::kUsage;
}
