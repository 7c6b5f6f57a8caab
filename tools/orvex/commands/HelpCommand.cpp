// HelpCommand - the manual page and the completions of shells, written from the commands and options themselves.
#include <memory>
#include <string>
#include <vector>

#include "Failure.h"
#include "commands/Commands.h"
#include "commands/Names.h"
#include "tables/Files.h"

namespace orvex::tool {

namespace {

/// A command with what was typed to get there: "orvex list datums".
struct Command {
  std::string path;
  const CLI::App* app;
};

std::vector<const CLI::App*> Children(const CLI::App& app) {
  return app.get_subcommands([](const CLI::App* child) { return !child->get_name().empty(); });
}

void Collect(const CLI::App& app, const std::string& path, std::vector<Command>& commands) {
  commands.push_back({path, &app});
  for (const CLI::App* child : Children(app)) Collect(*child, path + " " + child->get_name(), commands);
}

std::vector<Command> AllCommands(const CLI::App& root) {
  std::vector<Command> commands;
  Collect(root, root.get_name(), commands);
  return commands;
}

std::vector<const CLI::Option*> Options(const CLI::App& app, bool positional) {
  return app.get_options([positional](const CLI::Option* option) { return option->get_positional() == positional; });
}

bool TakesValue(const CLI::Option& option) {
  return option.get_items_expected_max() > 0;
}

/// "--output" and "-o" of an option.
std::vector<std::string> Spellings(const CLI::Option& option) {
  std::vector<std::string> spellings;
  for (const std::string& name : option.get_snames()) spellings.push_back("-" + name);
  for (const std::string& name : option.get_lnames()) spellings.push_back("--" + name);
  return spellings;
}

std::string Joined(const std::vector<std::string>& words, const std::string& between) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : between) + word;
  return text;
}

std::string ChildNames(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::App* child : Children(app)) names.push_back(child->get_name());
  return Joined(names, " ");
}

std::string OptionNames(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::Option* option : Options(app, false)) names.push_back(Joined(Spellings(*option), " "));
  return Joined(names, " ");
}

/// The paths below the program as patterns of a case: "orvex list"|"orvex list datums".
std::string PathPatterns(const std::vector<Command>& commands) {
  std::vector<std::string> patterns;
  for (const Command& command : commands) {
    if (command.path.find(' ') != std::string::npos) patterns.push_back("\"" + command.path + "\"");
  }
  return Joined(patterns, "|");
}

/// Options after a dash, commands otherwise, else files.
std::string Bash(const std::vector<Command>& commands) {
  std::string script =
      "# Completion of orvex for bash.\n_orvex() {\n  local cur=${COMP_WORDS[COMP_CWORD]} path=orvex word options= "
      "names=\n"
      "  for word in \"${COMP_WORDS[@]:1:COMP_CWORD-1}\"; do\n    case \"$path $word\" in\n      " +
      PathPatterns(commands) + ") path=\"$path $word\" ;;\n    esac\n  done\n  case $path in\n";
  for (const Command& command : commands) {
    script += "    \"" + command.path + "\") options='" + OptionNames(*command.app) + "' names='" +
              ChildNames(*command.app) + "' ;;\n";
  }
  return script +
         "  esac\n  [[ $cur == -* ]] && names=$options\n  COMPREPLY=($(compgen -W \"$names\" -- \"$cur\"))\n}\n"
         "complete -o default -F _orvex orvex\n";
}

std::string Zsh(const std::vector<Command>& commands) {
  std::string script =
      "#compdef orvex\n# Completion of orvex for zsh.\n_orvex() {\n  local at=orvex word\n"
      "  for word in ${words[2,CURRENT-1]}; do\n    case \"$at $word\" in\n      (" +
      PathPatterns(commands) + ") at=\"$at $word\" ;;\n    esac\n  done\n  case $at in\n";
  for (const Command& command : commands) {
    script += "    (\"" + command.path + "\")\n      if [[ $PREFIX == -* ]]; then compadd -- " +
              OptionNames(*command.app) + "; else compadd -- " + ChildNames(*command.app) + "; fi ;;\n";
  }
  return script + "  esac\n  [[ $PREFIX == -* ]] || _files\n}\n_orvex \"$@\"\n";
}

/// A text within single quotes, as fish wants it.
std::string FishQuoted(const std::string& text) {
  std::string quoted = "'";
  for (const char c : text) {
    if (c == '\'' || c == '\\') quoted += '\\';
    quoted += c;
  }
  return quoted + "'";
}

/// The condition under which a command's own words are offered.
std::string FishCondition(const std::string& path) {
  std::string condition;
  for (std::size_t at = path.find(' '); at != std::string::npos; at = path.find(' ', at + 1)) {
    const std::string word = path.substr(at + 1, path.find(' ', at + 1) - at - 1);
    condition += (condition.empty() ? "" : "; and ") + ("__fish_seen_subcommand_from " + word);
  }
  return condition.empty() ? "__fish_use_subcommand" : condition;
}

std::string Fish(const std::vector<Command>& commands) {
  std::string script = "# Completion of orvex for fish.\n";
  for (const Command& command : commands) {
    const std::string start = "complete -c orvex -n " + FishQuoted(FishCondition(command.path));
    for (const CLI::App* child : Children(*command.app)) {
      script += start + " -a " + child->get_name() + " -d " + FishQuoted(child->get_description()) + "\n";
    }
    for (const CLI::Option* option : Options(*command.app, false)) {
      script += start;
      for (const std::string& name : option->get_snames()) script += " -s " + name;
      for (const std::string& name : option->get_lnames()) script += " -l " + name;
      script += (TakesValue(*option) ? " -r -d " : " -d ") + FishQuoted(option->get_description()) + "\n";
    }
  }
  return script;
}

/// A text for troff: hyphens that can be copied, no control lines.
std::string Troff(const std::string& text) {
  std::string escaped;
  for (const char c : text) {
    if (c == '\\') {
      escaped += "\\e";
    } else {
      if (c == '-') escaped += '\\';
      escaped += c;
    }
  }
  return (escaped.starts_with('.') || escaped.starts_with('\'') ? "\\&" : "") + escaped;
}

std::string ManualOptions(const CLI::App& app) {
  std::string text;
  for (const bool positional : {true, false}) {
    for (const CLI::Option* option : Options(app, positional)) {
      const std::string names = positional ? option->get_name(true) : Joined(Spellings(*option), ", ");
      text += ".TP\n.B " + Troff(names) + "\n" + Troff(option->get_description()) + "\n";
    }
  }
  return text;
}

std::string ManualPage(const CLI::App& root) {
  std::string page =
      ".TH ORVEX 1\n.SH NAME\norvex \\- " + Troff(root.get_description()) +
      "\n.SH SYNOPSIS\n.B orvex\n.I command\n[\\fIoptions\\fR] [\\fIFILE\\fR | \\fIX Y\\fR ...]\n.SH DESCRIPTION\n"
      "Converts tables of coordinates from files or standard input, or coordinates on the command line.\n"
      ".SH OPTIONS\n" +
      ManualOptions(root) + ".SH COMMANDS\n";
  for (const Command& command : AllCommands(root)) {
    if (command.app == &root) continue;
    page += ".SS " + Troff(command.path) + "\n" + Troff(command.app->get_description()) + ".\n" +
            ManualOptions(*command.app);
  }
  return page +
         ".SH ENVIRONMENT\n.TP\n.B ORVEX_GRIDS\nDirectory of grid files when \\-\\-grids names none.\n"
         ".SH EXIT STATUS\n0, 1 when some points could not be converted, 2 for wrong usage or parameters.\n";
}

void Write(const std::string& output, const std::string& text) {
  OutputFile file(output);
  file.Write(text);
  file.Commit();
}

using Script = std::string (*)(const std::vector<Command>&);

const std::vector<std::string> kShells{"bash", "zsh", "fish"};
constexpr Script kScripts[] = {Bash, Zsh, Fish};

}  // namespace

void AddHelpCommands(CLI::App& app, int& status) {
  const auto output = std::make_shared<std::string>("-");
  const auto shell = std::make_shared<std::string>();
  CLI::App* man = app.add_subcommand("man", "Write the manual page");
  CLI::App* completion = app.add_subcommand("completion", "Write the completion of a shell");
  completion->add_option("SHELL", *shell, "bash, zsh or fish")->required();
  for (CLI::App* command : {man, completion}) {
    command->add_option("-o,--output", *output, "File to write; - or none: standard output");
  }
  man->callback([&app, &status, output] {
    Write(*output, ManualPage(app));
    status = kSuccess;
  });
  completion->callback([&app, &status, output, shell] {
    Write(*output, kScripts[FindName(kShells, *shell, "shell")](AllCommands(app)));
    status = kSuccess;
  });
}

}  // namespace orvex::tool
