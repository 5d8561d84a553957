#include <CLI/CLI.hpp>
#include <algorithm>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <exception>
#include <initializer_list>
#include <new>
#include <string>

#include "apps/dlview/convert_command.h"
#include "apps/dlview/inspect_commands.h"
#include "apps/dlview/render_command.h"
#include "apps/dlview/standard_output.h"
#include "apps/dlview/usage.h"
#include "lumen/fonts.h"

namespace {

constexpr int success = 0;
constexpr int failure = 1;
constexpr int wrong_usage = 2;

int fail(const std::string& sentence, int status = failure) {
  std::fprintf(stderr, "dlview: %s.\n", sentence.c_str());
  return status;
}

void tell(const char* message) {
  std::fprintf(stderr, "dlview: %s\n", message);
}

int run(int argc, char** argv) {
  lumen::set_missing_font_handler(&tell);
  CLI::App program("Draws vector drawings: maps, plans, plots.", "dlview");
  program.set_version_flag("--version", "dlview " DLVIEW_VERSION);
  program.require_subcommand(1);
  program.footer(
      "`dlview COMMAND --help` tells more, for instance `dlview render --help`.\n"
      "Exit status: 0 done, 1 a file cannot be read, drawn or written, 2 wrong usage.");
  const dlview::RenderCommand render(program);
  const dlview::ConvertCommand convert(program);
  const dlview::InfoCommand info(program);
  const dlview::DumpCommand dump(program);
  const dlview::VerifyCommand verify(program);
  try {
    program.parse(argc, argv);
  } catch (const CLI::Success& help) {
    return program.exit(help);
  } catch (const CLI::ParseError& error) {
    return fail(dlview::usage_sentence(program, error), wrong_usage);
  }
  const std::initializer_list<const dlview::Command*> commands{&render, &convert, &info, &dump,
                                                               &verify};
  const auto* const* chosen = std::find_if(commands.begin(), commands.end(),
                                           [](const dlview::Command* c) { return c->is_chosen(); });
  std::string problem = (*chosen)->run();
  if (problem.empty()) problem = dlview::finish_output();
  return problem.empty() ? success : fail(problem);
}

}  // namespace

int main(int argc, char** argv) {
  // A picture beyond the limit of file sizes is then an error of writing.
  std::signal(SIGXFSZ, SIG_IGN);
  // Multibyte texts are in the character set of the locale.
  std::setlocale(LC_CTYPE, "");
  try {
    return run(argc, argv);
  } catch (const std::bad_alloc&) {
    return fail(
        "there is not enough memory; choose fewer layers, a smaller drawing or a smaller picture");
  } catch (const std::exception& error) {
    return fail(error.what());
  }
}
