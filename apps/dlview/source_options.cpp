#include "apps/dlview/source_options.h"

#include "apps/dlview/option_values.h"

namespace dlview {

void add_source_options(CLI::App& command, Source& source) {
  command
      .add_option("INPUT", source.path,
                  "The drawing: GeoJSON, TopoJSON, GeoPackage, Shapefile,\n"
                  "FlatGeobuf, KML, DXF, a .dlf that `dlview convert`\nwrote, or another vector "
                  "format that GDAL reads")
      ->required();
  command
      .add_option_function<std::string>(
          "--importer",
          [&source](const std::string& text) {
            source.importer = importer_value("--importer", text);
          },
          "Read with this importer: dxf, which has a .dxf drawn\nas it is meant to look, dlf, or "
          "ogr, which reads any\nother format and a .dxf as plain geometry; the one\nthat fits "
          "best "
          "if not given")
      ->type_name("NAME");
  command.add_option("--layer", source.layers, "Read this layer only; may be given several times")
      ->type_name("NAME")
      ->allow_extra_args(false);
  command.add_flag("--skip-unusable", source.skip_unusable,
                   "Leave out points whose coordinates are not finite or\n"
                   "beyond 1e15, instead of refusing the drawing");
}

void add_source_look_options(CLI::App& command, Source& source) {
  add_color(command, "--line-color", source.line_color,
            "Colour of all lines and outlines; one for each layer\nif not given; of no effect in a "
            ".dlf, which keeps its\nlook");
  add_pixels(command, "--point-size", source.point_size,
             "Side of point symbols in pixels, 1 to 1000; of no\neffect in a .dlf");
  command.add_flag_callback(
      "--no-fill", [&source] { source.fill = false; },
      "Draw outlines of areas only; of no effect in a .dlf");
  command.add_flag("--reorder", source.reorder,
                   "Order what is in a layer so that parts of the drawing\n"
                   "are drawn fast; what overlaps in the same layer may\n"
                   "change places, areas stay below their outlines; of no\n"
                   "effect in a .dxf or .dlf, which keep their order");
}

void add_color(CLI::App& command, const std::string& name, std::optional<LM_RGB32>& color,
               const std::string& description) {
  command
      .add_option_function<std::string>(
          name, [name, &color](const std::string& text) { color = color_value(name, text); },
          description)
      ->type_name("COLOR");
}

void add_pixels(CLI::App& command, const std::string& name, std::int32_t& pixels,
                const std::string& description) {
  command
      .add_option_function<std::string>(
          name,
          [name, &pixels](const std::string& text) { pixels = whole_value(name, text, 1, 1000); },
          description)
      ->type_name("PIXELS")
      ->default_str(std::to_string(pixels));
}

}  // namespace dlview
