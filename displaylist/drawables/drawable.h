#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>

#include "displaylist/core/class_change.h"
#include "displaylist/core/geometry.h"
#include "displaylist/platform/export.h"
#include "displaylist/platform/memory.h"
#include "displaylist/platform/points.h"

class LM_Rendition;
class ZtFsStream;

namespace DL {

class DisplayList;
class DrawableVectorIterator;
struct DisplayListDebug;
struct Search;

/// What a client may attach to a drawable. The library never copies, stores or
/// frees it.
class Extra_Drawable_Info {
 public:
  /// Whether the drawable is drawn at all; asked before every draw, on the
  /// thread that draws.
  virtual bool is_drawn() = 0;

 protected:
  Extra_Drawable_Info() = default;
  Extra_Drawable_Info(const Extra_Drawable_Info&) = default;
  Extra_Drawable_Info& operator=(const Extra_Drawable_Info&) = default;
  ~Extra_Drawable_Info() = default;
};

/// An element of a display list: geometry in logical coordinates that draws
/// itself through the list's renderer.
///
/// Clients derive from it with ordinary virtual functions. A drawable lies on
/// the library's heap (`new DLDot(...)`, `new (heap) DLDot(...)`; null when
/// memory is exhausted) and belongs to whoever holds it until DisplayList::add
/// takes it over; it is destroyed with `delete`. It is not used from two
/// threads at once, but for drawing.
///
/// A drawable may change its class in place between the visible, hidden and
/// palettized variants of what it was constructed as; see class_change.h. A
/// client's class that derives from one of the library's concrete classes
/// overrides `type`, `clone` and `hide` (with `become` its own hidden variant,
/// or with nothing): the inherited ones make its parent of it.
class DISPLAYLIST_API Drawable {
 public:
  /// The colour of a plain drawable, or the rendition of a palettized one.
  /// Which of the two is meant only the class tells (is_palettized).
  union ColorData {
    LM_Rendition* m_pRendition = nullptr;
    LM_RGB32 m_color;
  };
  static_assert(sizeof(ColorData) == 8);

  explicit Drawable(LM_RGB32 color);
  explicit Drawable(class_change::Unfilled) {}
  Drawable(const Drawable&) = delete;
  Drawable& operator=(const Drawable&) = delete;

  virtual Extra_Drawable_Info* drawable_info();
  virtual void set_drawable_info(Extra_Drawable_Info* info);

  /// Draws, choosing the clipped actions where the drawable leaves the
  /// rendition's clip rectangle.
  virtual void draw_unclipped(DisplayList& list) = 0;
  /// Draws with the clipped actions.
  virtual void draw_clipped(DisplayList& list) = 0;
  /// The same for a selection pass; as they stand they draw as usual.
  virtual void draw_unclipped_selection(DisplayList& list);
  virtual void draw_clipped_selection(DisplayList& list);

  /// Widens the logical bounds to cover the drawable.
  virtual void add_bounds(BoundsTemplate<long>& bounds) const = 0;
  virtual void set_margin(long margin);
  /// Whether this drawable is the one that the search describes. It may change
  /// itself and set `search.handled` to stay in its place.
  virtual bool remove(Search& search) = 0;
  /// The class's type token.
  virtual void* type() const = 0;

  /// A copy, unlinked and without drawable info; null when memory is exhausted.
  virtual Drawable* clone() = 0;
  /// A copy of a part; null when the class cannot be split. See each class.
  virtual Drawable* partial_clone(int first, int count);

  /// Stops or resumes drawing; the drawable keeps its place and everything else.
  /// It changes class: call it through a pointer, on an object made by `new`.
  virtual void hide();
  virtual void unhide();
  virtual bool is_hidden() const;
  virtual bool is_palettized() const;

  /// Whether the vectors are the same in every view.
  virtual bool has_fixed_representation() const;
  /// Whether get_vector answers by index.
  virtual bool supports_fast_vector_iterator() const;
  /// How many straight segments the outline has.
  virtual int get_vector_count() const;
  /// Segment `index` of the outline, in logical coordinates; false, with
  /// `vector` untouched, when there is none. The index is not checked.
  virtual bool get_vector(int index, VectorTemplate<long>& vector) const;
  virtual bool reserved_predicate() const;
  /// A new iterator over the outline, deleted by the caller; null when memory
  /// is exhausted. The drawable must outlive it.
  virtual DrawableVectorIterator* create_vector_iterator(bool flag);

  virtual ~Drawable();

  /// What the drawable draws with: the list's working rendition set to its
  /// colour, or a palettized drawable's own. Good until the next drawable asks.
  virtual LM_Rendition* rendition(DisplayList& list);

  /// Writes one line for debugging, indented by `level`, and counts the memory.
  virtual void dump(std::ostream& os, int level, DisplayListDebug& statistics) const;

  /// Writes the drawable's record, and with the base's record, which every
  /// override ends with, those of the drawables linked after it.
  virtual void serialize_out(ZtFsStream* stream, DisplayList& list);
  /// Reads what serialize_out wrote after the class tag. Bytes that make no
  /// sense end the reading; what was read so far stays valid.
  virtual void serialize_in(ZtFsStream* stream, DisplayList& list);

  /// Stores a rendition as the colour; for palettized drawables.
  virtual void set_color_data(LM_Rendition* rendition);
  virtual void restore_color_data(LM_Rendition* rendition);

  /// Null: the base class is no part of the chain of types.
  static void* my_type();
  /// Whether `token` is the type of this drawable's class or of an ancestor's.
  bool isKindOf(void* token) const;

  /// Null when memory is exhausted; a null heap is the default heap.
  static void* operator new(std::size_t size) noexcept;
  static void* operator new(std::size_t size, LumenHeap* heap) noexcept;
  static void operator delete(void* memory) noexcept;
  static void operator delete(void* memory, LumenHeap* heap) noexcept;

  Drawable* m_pNext = nullptr;  ///< the next drawable of the same bottom group
  ColorData m_colorData;
  Extra_Drawable_Info* m_pDrawableInfo = nullptr;

  static void* _parent_type;
};
static_assert(sizeof(void*) != 8 || sizeof(Drawable) == 32);

/// Whether the two hold the same 64 bits.
[[nodiscard]] DISPLAYLIST_API bool operator==(const Drawable::ColorData& a,
                                              const Drawable::ColorData& b);

}  // namespace DL
