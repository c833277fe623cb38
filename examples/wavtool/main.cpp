// wavtool: what the orpSP library does, on real recordings.
#include <CLI/CLI.hpp>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>
#include <new>

#include "commands.h"

int main(int argc, char** argv) {
  wavtool::Options options;
  CLI::App tool{"Works on recordings with the orpSP library, which it opens at run time.", "wavtool"};
  tool.require_subcommand(1);
  tool.fallthrough();
  tool.set_version_flag("--version", "wavtool " WAVTOOL_VERSION, "Print the program's version and exit");
  tool.add_option("--library", options.library,
                  "the library's file or the folder that holds it (default: the environment variable ORPSP_LIBRARY, "
                  "else beside the program, in ../lib, or where the system looks)");
  tool.failure_message([](const CLI::App* app, const CLI::Error& error) {
    const auto unknown = app->get_subcommands().empty() ? app->remaining() : std::vector<std::string>{};
    const std::string text = unknown.empty() ? error.what() : "there is no command " + unknown.front();
    return "wavtool: " + text + " (wavtool --help says more)\n";
  });
  wavtool::addInfo(tool, options);
  wavtool::addAudioCommands(tool, options);
  try {
    tool.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return tool.exit(error) == 0 ? 0 : 2;
  } catch (const std::bad_alloc&) {
    std::fprintf(stderr, "wavtool: there is not enough memory for this recording\n");
    return 1;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "wavtool: %s\n", error.what());
    return 1;
  }
  if (std::fflush(stdout) != 0 || std::ferror(stdout)) {
    std::fprintf(stderr, "wavtool: cannot print: %s\n", std::strerror(errno));
    return 1;
  }
  return 0;
}
