#include "apps/dlview/render_command.h"

#include <charconv>
#include <map>
#include <tuple>

#include "apps/dlview/color.h"
#include "lumen/picture.h"

namespace dlview {

namespace {

constexpr const char* footer =
    "The part of the drawing that is shown keeps its proportions: the window is widened until\n"
    "it fills the picture. Layers are drawn with areas below lines below points, coarse areas\n"
    "below fine ones; with --layer, in the order given.\n"
    "\n"
    "Examples:\n"
    "  dlview render world.json -o world.png\n"
    "  dlview render world.json -o europe.png --window -12 34 34 62 --size 1200x900\n"
    "  dlview render roads.gpkg -o roads.png --layer rivers --layer roads --line-width 2";

constexpr const char* statistics_help =
    "Print one line to standard output: the drawables\n"
    "drawn of those held, the groups visited (the root and\n"
    "the children of every group in which something is\n"
    "drawn, counted in a second drawing that paints\n"
    "nothing), the milliseconds that drawing took without\n"
    "reading and writing, and the file";

using Corners = std::tuple<double, double, double, double>;

const std::map<std::string, DrawForm>& draw_forms() {
  static const std::map<std::string, DrawForm> forms{{"unclipped", DrawForm::unclipped},
                                                     {"bounded", DrawForm::bounded},
                                                     {"circled", DrawForm::circled},
                                                     {"complex", DrawForm::complex}};
  return forms;
}

/// Reads "1920x1080".
bool parse_size(const std::string& text, PictureSize& size) {
  const char* end = text.data() + text.size();
  const auto [middle, width_error] = std::from_chars(text.data(), end, size.width);
  if (width_error != std::errc{} || middle == end || *middle != 'x') return false;
  const auto [stop, height_error] = std::from_chars(middle + 1, end, size.height);
  return height_error == std::errc{} && stop == end && size.width >= 2 && size.height >= 2 &&
         size.width <= lumen::Picture::max_side && size.height <= lumen::Picture::max_side;
}

}  // namespace

RenderCommand::RenderCommand(CLI::App& program)
    : m_command(program.add_subcommand("render", "Draw a drawing file into a picture file")) {
  m_command->footer(footer);
  add_files();
  add_view_options();
  add_look_options();
  m_command->add_flag("--stats", m_options.statistics, statistics_help);
}

void RenderCommand::add_files() {
  m_command
      ->add_option("INPUT", m_options.input,
                   "The drawing: GeoJSON, TopoJSON, GeoPackage, Shapefile,\n"
                   "FlatGeobuf, KML, DXF or another vector format that\nGDAL reads")
      ->required();
  m_command
      ->add_option("-o,--output", m_options.output,
                   "The picture, a .png file; replaced if it is there")
      ->type_name("OUT.png")
      ->required();
  m_command
      ->add_option("--layer", m_options.layers, "Draw this layer only; may be given several times")
      ->type_name("NAME")
      ->allow_extra_args(false);
  m_command->add_flag("--skip-unusable", m_options.skip_unusable,
                      "Leave out points whose coordinates are not finite or\n"
                      "beyond 1e15, instead of refusing the drawing");
}

void RenderCommand::add_view_options() {
  m_command
      ->add_option_function<std::string>(
          "--size",
          [this](const std::string& text) {
            if (parse_size(text, m_options.size)) return;
            throw CLI::ValidationError("--size", "'" + text + "' is not a size like 1920x1080");
          },
          "Size of the picture in pixels, 2x2 to 65535x65535")
      ->type_name("WxH")
      ->default_str("1920x1080");
  m_command
      ->add_option_function<Corners>(
          "--window",
          [this](const Corners& corners) {
            const auto& [min_x, min_y, max_x, max_y] = corners;
            m_options.window = importers::Extent{min_x, min_y, max_x, max_y};
          },
          "The part of the drawing to show, in drawing\ncoordinates; the whole drawing with a "
          "margin\n"
          "if not given")
      ->type_name("MINX MINY MAXX MAXY");
  m_command
      ->add_option_function<std::string>(
          "--form", [this](const std::string& name) { m_options.form = draw_forms().at(name); },
          "Draw through this form of the library: all of the\ndrawing, only what the window meets, "
          "clipped by a\ncircle, or clipped by a star")
      ->type_name("unclipped|bounded|circled|complex")
      ->default_str("bounded")
      ->check(CLI::IsMember(draw_forms()).description(""));
}

void RenderCommand::add_look_options() {
  add_color("--background", m_options.background,
            "Background, #RRGGBB or one of\n" + color_names() +
                ";\nsea for maps of filled areas, paper for other\ndrawings if not given");
  add_color("--line-color", m_options.line_color,
            "Colour of all lines and outlines; one for each layer\nif not given");
  m_command->add_option("--line-width", m_options.line_width, "Width of lines in pixels")
      ->type_name("PIXELS")
      ->capture_default_str()
      ->check(CLI::Range(1, 1000).description(""));
  m_command->add_option("--point-size", m_options.point_size, "Side of point symbols in pixels")
      ->type_name("PIXELS")
      ->capture_default_str()
      ->check(CLI::Range(1, 1000).description(""));
  m_command->add_flag_callback(
      "--no-fill", [this] { m_options.fill = false; }, "Draw outlines of areas only");
  m_command->add_flag_callback(
      "--aliased", [this] { m_options.antialiased = false; },
      "Draw with hard edges, which is faster; smooth ones\nif not given");
}

void RenderCommand::add_color(const std::string& name, std::optional<LM_RGB32>& color,
                              const std::string& description) {
  m_command
      ->add_option_function<std::string>(
          name,
          [name, &color](const std::string& text) {
            color = parse_color(text);
            if (color) return;
            throw CLI::ValidationError(
                name, "'" + text + "' is no colour; give #RRGGBB or one of " + color_names());
          },
          description)
      ->type_name("COLOR");
}

}  // namespace dlview
