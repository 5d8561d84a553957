#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "displaylist/core/display_list.h"
#include "displaylist/drawables/drawable.h"
#include "displaylist/platform/rendition.h"
#include "files/export.h"
#include "lumen/packed_heap.h"

/// Files that keep a display list: all of its drawables, hidden ones and nested
/// lists too, in drawing order and in the groups that they are in, with the
/// renditions, fonts and images that they draw with. docs/files.md tells the
/// bytes.
///
/// What belongs to a view is not kept: renderer, screen bounds and transform,
/// clips, the selector data of renditions, drawable infos, callbacks.
namespace files {

/// What belongs to a drawing beside its list.
struct Properties {
  double unit_scale = 1.0;  ///< drawing = logical / unit_scale + origin
  double origin_x = 0.0;
  double origin_y = 0.0;
  std::vector<std::string> layers;  ///< names, UTF-8
  /// Keys and values of the client's own, UTF-8.
  std::vector<std::pair<std::string, std::string>> notes;

  friend bool operator==(const Properties&, const Properties&) = default;
};

/// What was read. The list uses the renditions and the heap as long as it
/// lives: keep all of it together.
struct FILES_API Contents {
  Contents() = default;
  Contents(Contents&&) = default;
  Contents& operator=(Contents&& other) noexcept;
  Contents(const Contents&) = delete;
  Contents& operator=(const Contents&) = delete;
  ~Contents() = default;

  // Declared before the list, which goes first.
  std::unique_ptr<lumen::PackedHeap> heap;
  std::vector<std::unique_ptr<LM_Rendition>> renditions;  ///< of the palettized drawables
  /// Without a renderer that draws; its logical bounds are those written.
  std::unique_ptr<DL::DisplayList> list;
  Properties properties;
};

struct WriteOptions {
  int compression = 3;  ///< a level of zstd, 1 (fast) to 19 (small)
};

struct ReadOptions {
  /// Makes a drawable of one of the client's own classes for its tag, to be
  /// filled by its serialize_in. Asked for tags that neither the library nor
  /// this one knows; null for one that the client does not know either.
  DL::Drawable* (*create_drawable)(void* context, int tag) = nullptr;
  void* context = nullptr;
};

/// Writes the list, which is the same afterwards, to a file that appears whole
/// or not at all; one that was there is replaced, or stays when the writing
/// fails. While it runs the drawables are not to be used in any other way, by
/// any thread. Empty on success, else one sentence that names the file and what
/// is to be done.
///
/// A drawable of a client's own class is kept by its record: see docs/files.md.
[[nodiscard]] FILES_API std::string write_file(const std::string& path, DL::DisplayList& list,
                                               const Properties& properties = {},
                                               const WriteOptions& options = {});

/// Reads what write_file wrote: the whole of it into `contents`, or nothing and
/// one sentence that names the file and says what is wrong with it. Bytes of any
/// kind do no harm; the memory taken is bounded by the size of the file.
[[nodiscard]] FILES_API std::string read_file(const std::string& path, const ReadOptions& options,
                                              Contents& contents);

/// The same with the bytes of the file in memory; the sentences name no file.
[[nodiscard]] FILES_API std::string write_bytes(std::vector<std::byte>& bytes,
                                                DL::DisplayList& list,
                                                const Properties& properties = {},
                                                const WriteOptions& options = {});
[[nodiscard]] FILES_API std::string read_bytes(std::span<const std::byte> bytes,
                                               const ReadOptions& options, Contents& contents);

/// Whether the file can be opened and starts like one that write_file wrote.
[[nodiscard]] FILES_API bool is_drawing_file(const std::string& path);

}  // namespace files
