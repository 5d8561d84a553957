#include "apps/dlview/convert_command.h"

#include "apps/dlview/option_values.h"
#include "apps/dlview/output_file.h"
#include "apps/dlview/source_options.h"
#include "files/drawing_file.h"
#include "importers/drawing_file.h"

namespace dlview {

namespace {

constexpr const char* footer =
    "The .dlf keeps everything that is drawn, as it is drawn, and opens many times faster than\n"
    "the file it came from. All commands that read drawings read it.\n"
    "\n"
    "Examples:\n"
    "  dlview convert roads.gpkg roads.dlf --layer rivers --layer roads\n"
    "  dlview render roads.dlf -o roads.png";

}  // namespace

ConvertCommand::ConvertCommand(CLI::App& program)
    : Command(program, "convert", "Keep a drawing in a .dlf file, which opens fast") {
  m_command->footer(footer);
  add_source_options(*m_command, m_source);
  m_command->add_option("OUTPUT", m_output, "The .dlf file; replaced, all at once, if it is there")
      ->required();
  add_source_look_options(*m_command, m_source);
  m_command
      ->add_option_function<std::string>(
          "--compression",
          [this](const std::string& text) {
            m_compression = whole_value("--compression", text, 1, 19);
          },
          "How hard to compress, 1 (fast) to 19 (small)")
      ->type_name("LEVEL")
      ->default_str(std::to_string(m_compression));
}

std::string ConvertCommand::run() const {
  std::string problem = check_output(m_output, m_source.path, {"drawings that are kept", {".dlf"}});
  if (!problem.empty()) return problem;
  importers::Drawing drawing;
  problem = read(m_source, drawing);
  if (!problem.empty()) return problem;
  return files::write_file(m_output, *drawing.list, importers::properties_of(drawing),
                           {m_compression});
}

}  // namespace dlview
