// orvex - the command-line host of the library.
#include <cstdio>
#include <exception>

#include <CLI/CLI.hpp>

#include "Commands.h"
#include "Failure.h"

int main(int argc, char** argv) {
  using namespace orvex::tool;
  CLI::App app{"Converts coordinates: map projections, state plane and UTM zones, datums, georeferencing, maps."};
  app.name("orvex");
  app.set_version_flag("--version", "orvex " ORVEX_VERSION);
  app.require_subcommand(1);
  app.failure_message(CLI::FailureMessage::simple);
  app.footer("Exit status: 0, 1 when some points could not be converted, 2 for wrong usage or parameters.");
  int status = kSuccess;
  AddListCommand(app, status);
  AddProjectCommand(app, status);
  AddDatumCommand(app, status);
  AddConvertCommand(app, status);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& e) {
    return app.exit(e) == 0 ? kSuccess : kUsage;
  } catch (const std::exception& e) {
    std::fflush(stdout);
    std::fprintf(stderr, "orvex: %s\n", e.what());
    return kUsage;
  }
  return status;
}
