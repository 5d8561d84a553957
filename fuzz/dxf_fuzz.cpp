// A DXF file: read by the importer, and what came of it drawn.

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <string>

#include "displaylist/displaylist.h"
#include "importers/importer.h"

// The importer's own sources are linked in.
extern "C" const importers::Importer* displaylist_importer();

namespace {

/// A file in memory, which has a path while it exists.
class MemoryFile {
 public:
  MemoryFile(const std::uint8_t* data, std::size_t size) : m_file(memfd_create("input", 0)) {
    while (size > 0) {
      const ssize_t written = write(m_file, data, size);
      if (written <= 0) std::abort();
      data += written;
      size -= static_cast<std::size_t>(written);
    }
  }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;
  ~MemoryFile() { close(m_file); }

  [[nodiscard]] std::string path() const { return "/proc/self/fd/" + std::to_string(m_file); }

 private:
  int m_file;
};

void draw(DL::DisplayList& list) {
  list.m_pRenderer = LM_Create<LM_Renderer>();
  DL::BoundsTemplate<long> whole;
  list.m_pRootGroup->add_bounds(whole);
  list.m_logicalBounds = whole;
  list.set_screen_bounds({0, 599, 799, 0});
  list.m_rendition.set_clip_rectangle({0, 799, 0, 599});
  list.m_pRootGroup->draw_unclipped(list);
  list.m_pRootGroup->draw_bounded(list, whole, whole);
  list.m_pRootGroup->draw_bounded_selection(list, whole, whole);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const MemoryFile file(data, size);
  importers::Drawing drawing;
  const std::string problem = displaylist_importer()->read(file.path(), {}, drawing);
  if (!problem.empty()) return 0;
  if (drawing.list == nullptr) std::abort();
  draw(*drawing.list);
  return 0;
}
