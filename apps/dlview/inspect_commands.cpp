#include "apps/dlview/inspect_commands.h"

#include <cstdio>
#include <filesystem>
#include <ostream>

#include "apps/dlview/list_statistics.h"
#include "apps/dlview/source_options.h"
#include "apps/dlview/standard_output.h"
#include "displaylist/core/group.h"
#include "displaylist/drawables/debug.h"
#include "files/drawing_file.h"

namespace dlview {

namespace {

using importers::Drawing;

void tell_extent(const Drawing& drawing) {
  const importers::Extent& extent = drawing.extent;
  std::printf("extent      %.10g %.10g to %.10g %.10g, %.10g wide, %.10g high\n", extent.min_x,
              extent.min_y, extent.max_x, extent.max_y, extent.width(), extent.height());
  std::printf("unit        1 of the drawing is %.10g logical units\n", drawing.mapping.scale);
}

/// The name with a sign in the place of each control character, which a terminal
/// would obey: those below the space, DEL, and in UTF-8 U+0080 to U+009F.
std::string printable(const std::string& name) {
  std::string text;
  for (std::size_t i = 0; i < name.size(); ++i) {
    const auto byte = static_cast<unsigned char>(name[i]);
    const auto next = static_cast<unsigned char>(i + 1 < name.size() ? name[i + 1] : '\0');
    const bool is_pair = byte == 0xC2 && next >= 0x80 && next < 0xA0;
    const bool is_control = byte < 0x20 || byte == 0x7F || is_pair;
    text += is_control ? '?' : name[i];
    if (is_pair) ++i;
  }
  return text;
}

void tell_layers(const Drawing& drawing) {
  std::printf("layers      %zu", drawing.layers.size());
  const char* between = ": ";
  for (const std::string& layer : drawing.layers) {
    std::printf("%s%s", between, printable(layer).c_str());
    between = ", ";
  }
  std::printf("\n");
}

/// "420, 3 of them hidden, 12 with a rendition of their own"
std::string count_text(const ClassCount& count) {
  std::string text = std::to_string(count.all);
  if (count.hidden != 0) text += ", hidden " + std::to_string(count.hidden);
  if (count.palettized != 0) text += ", palettized " + std::to_string(count.palettized);
  return text;
}

void tell_drawables(const ListStatistics& statistics) {
  std::printf("drawables   %s\n", count_text(statistics.drawables).c_str());
  for (const auto& [name, count] : statistics.classes) {
    std::printf("  %-26s %s\n", name.c_str(), count_text(count).c_str());
  }
  if (statistics.nested_lists != 0) {
    std::printf("nested      %zu lists with %zu drawables in all\n", statistics.nested_lists,
                statistics.nested_drawables);
  }
}

void tell_tree(const ListStatistics& statistics) {
  std::printf("groups      %zu, of them %zu with drawables, %zu hidden; %d deep\n",
              statistics.groups, statistics.leaves, statistics.hidden_groups, statistics.depth);
  if (statistics.leaves != 0) {
    const double fill =
        static_cast<double>(statistics.drawables.all) / static_cast<double>(statistics.leaves);
    std::printf("fill        %.1f drawables in a group, %.0f %% of its capacity of %d\n", fill,
                100 * fill / statistics.capacity, statistics.capacity);
  }
}

void tell_memory(const Drawing& drawing) {
  const std::size_t bytes = drawing.heap->bytes_in_use();
  std::printf("memory      %zu bytes, %.1f a drawable\n", bytes,
              drawing.drawables == 0
                  ? 0.0
                  : static_cast<double>(bytes) / static_cast<double>(drawing.drawables));
}

}  // namespace

InfoCommand::InfoCommand(CLI::App& program)
    : Command(program, "info", "Tell what a drawing file holds") {
  add_source_options(*m_command, m_source);
}

std::string InfoCommand::run() const {
  Drawing drawing;
  std::string problem = read(m_source, drawing);
  if (!problem.empty()) return problem;
  std::error_code error;
  std::printf("file        %s", m_source.path.c_str());
  const auto size = std::filesystem::file_size(m_source.path, error);
  if (!error) std::printf(", %ju bytes", static_cast<std::uintmax_t>(size));
  std::printf("\n");
  tell_extent(drawing);
  tell_layers(drawing);
  const ListStatistics statistics = statistics_of(*drawing.list);
  tell_drawables(statistics);
  tell_tree(statistics);
  tell_memory(drawing);
  return {};
}

DumpCommand::DumpCommand(CLI::App& program)
    : Command(program, "dump", "Print the groups and drawables of a drawing, for debugging") {
  add_source_options(*m_command, m_source);
}

std::string DumpCommand::run() const {
  Drawing drawing;
  std::string problem = read(m_source, drawing);
  if (!problem.empty()) return problem;
  DL::DisplayListDebug counts;
  StandardOutput output;
  std::ostream out(&output);
  drawing.list->m_pRootGroup->dump_subtree(out, 0, counts);
  out << counts.m_cGroups << " groups (those with drawables count twice), " << counts.m_cGroupBytes
      << " bytes; " << counts.m_cDrawables << " drawables, " << counts.m_cDrawableBytes
      << " bytes and " << counts.m_cEntryBytes << " bytes of entries\n";
  return {};
}

VerifyCommand::VerifyCommand(CLI::App& program)
    : Command(program, "verify", "Tell whether a .dlf file is whole") {
  m_command->add_option("FILE", m_path, "The .dlf file")->required();
}

std::string VerifyCommand::run() const {
  files::Contents contents;
  std::string problem = files::read_file(m_path, {}, contents);
  if (!problem.empty()) return problem;
  const ListStatistics statistics = statistics_of(*contents.list);
  std::printf("%s is whole: %zu drawables in %zu groups\n", m_path.c_str(),
              statistics.drawables.all, statistics.groups);
  return {};
}

}  // namespace dlview
