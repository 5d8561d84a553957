#include "apps/dlview/render_command.h"

#include "apps/dlview/color.h"
#include "apps/dlview/option_values.h"
#include "apps/dlview/source_options.h"

namespace dlview {

namespace {

constexpr const char* footer =
    "The part of the drawing that is shown keeps its proportions: the window is widened until\n"
    "it fills the picture. Layers are drawn with areas below lines below points, coarse areas\n"
    "below fine ones; with --layer, in the order given. A .dxf is drawn in its own order, with\n"
    "its own colours and line types, and a .dlf as it was converted.\n"
    "\n"
    "Examples:\n"
    "  dlview render world.json -o world.png\n"
    "  dlview render world.json -o europe.png --window -12 34 34 62 --size 1200x900\n"
    "  dlview render world.json -o world.pdf --form circled\n"
    "  dlview render roads.gpkg -o roads.png --layer rivers --layer roads --line-width 2";

constexpr const char* statistics_help =
    "Print one line to standard output: the drawables\n"
    "drawn of those held, the groups visited (the root and\n"
    "the children of every group in which something is\n"
    "drawn, counted in a second drawing that paints\n"
    "nothing), the milliseconds that drawing took without\n"
    "reading and writing, and the file";

constexpr const char* form_help =
    "Draw through this form of the library: unclipped, all\n"
    "of the drawing; bounded, only what the window meets;\n"
    "circled and complex, clipped by a circle or a star,\n"
    "and with --window only what the window meets";

}  // namespace

RenderCommand::RenderCommand(CLI::App& program)
    : Command(program, "render", "Draw a drawing file into a picture file") {
  m_command->footer(footer);
  add_source_options(*m_command, m_options.source);
  add_output();
  add_view_options();
  add_look_options();
  m_command->add_flag("--stats", m_options.statistics, statistics_help);
}

void RenderCommand::add_output() {
  m_command
      ->add_option("-o,--output", m_options.output,
                   "The picture: a .png file of pixels, or a .pdf or .svg\n"
                   "file of lines, areas and texts; replaced if it is there")
      ->type_name("FILE")
      ->required();
}

void RenderCommand::add_view_options() {
  m_command
      ->add_option_function<std::string>(
          "--size",
          [this](const std::string& text) { m_options.size = size_value("--size", text); },
          "Size of the picture in pixels, or in units of 1/96\ninch in a .pdf or .svg; 2x2 to "
          "65535x65535,\nat most " +
              most_pixels() + " pixels in all")
      ->type_name("WxH")
      ->default_str("1920x1080");
  m_command
      ->add_option_function<std::vector<std::string>>(
          "--window",
          [this](const std::vector<std::string>& texts) {
            m_options.window = window_value("--window", texts);
          },
          "The part of the drawing to show, in drawing\ncoordinates; the whole drawing with a "
          "margin\nif not given")
      ->type_name("MINX MINY MAXX MAXY")
      ->type_size(4)
      ->expected(1)
      ->allow_extra_args(false);
  m_command
      ->add_option_function<std::string>(
          "--form",
          [this](const std::string& text) { m_options.form = form_value("--form", text); },
          form_help)
      ->type_name("unclipped|bounded|circled|complex")
      ->default_str("bounded");
}

void RenderCommand::add_look_options() {
  add_color(*m_command, "--background", m_options.background,
            "Background, #RRGGBB or one of\n" + color_names() +
                ";\nsea for maps of filled areas, paper for other\ndrawings if not given");
  add_pixels(*m_command, "--line-width", m_options.line_width,
             "Width of lines in pixels, 1 to 1000");
  add_source_look_options(*m_command, m_options.source);
  m_command->add_flag_callback(
      "--aliased", [this] { m_options.antialiased = false; },
      "Draw with hard edges, which is faster; smooth ones\nif not given; of no effect in a .pdf or "
      ".svg");
}

}  // namespace dlview
