#include "apps/dlview/source.h"

#include <unistd.h>

#include <cstdio>

#include "apps/dlview/progress_line.h"
#include "importers/loader.h"

namespace dlview {

namespace {

std::string read_file(const Source& source, importers::Drawing& drawing) {
  ProgressLine line("reading " + source.path, isatty(STDERR_FILENO) != 0);
  importers::ReadOptions reading;
  reading.importer = source.importer;
  reading.layers = source.layers;
  reading.fill = source.fill;
  reading.line_color = source.line_color;
  reading.point_size = source.point_size;
  reading.reorder = source.reorder;
  reading.progress = [&](const importers::Progress& progress) {
    line.show(progress);
    return true;
  };
  return importers::read_drawing(source.path, reading, drawing);
}

}  // namespace

std::string read(const Source& source, importers::Drawing& drawing) {
  std::string problem = read_file(source, drawing);
  if (!problem.empty()) return problem;
  if (drawing.unusable_points != 0 && !source.skip_unusable) {
    return "the drawing '" + source.path +
           "' has coordinates that are not finite or beyond 1e15 (" +
           std::to_string(drawing.unusable_points) + " of its points, the first in " +
           drawing.first_unusable + "); repair them, or leave them out with --skip-unusable";
  }
  if (!drawing.remarks.empty()) {
    std::fprintf(stderr, "dlview: of '%s' %s.\n", source.path.c_str(), drawing.remarks.c_str());
  }
  return {};
}

}  // namespace dlview
