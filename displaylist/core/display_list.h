#pragma once

#include <cstdint>

#include "displaylist/core/drawing_context.h"
#include "displaylist/core/geometry.h"
#include "displaylist/platform/export.h"
#include "displaylist/platform/memory.h"
#include "displaylist/platform/points.h"
#include "displaylist/platform/rendition.h"

class ZtFsStream;

namespace DL {

class DisplayList;
class DisplayListMultithread;
class Drawable;
class DrawableDisplayList;
class Group;
class OpenBottomGroup;
struct RecordChain;

/// Tells whether drawing may go on: false stops it. It may draw the list again and
/// add to its end, but it removes, moves and closes nothing that is being drawn.
using InterruptTest = bool (*)(void* context, DisplayList* list);

/// A retained drawing: drawables in 32-bit logical coordinates, kept in drawing
/// order in a tree of groups, and the transform that maps them to a device.
///
/// A new list is valid and empty: its root is an open bottom group over the
/// whole 32-bit plane. The client sets the public fields; the operations rely
/// on what each field's comment requires. A list owns its groups and through
/// them every drawable added; the destructor destroys them all. One thread at a
/// time uses a list; worker threads (m_pMultithread) only draw.
class DISPLAYLIST_API DisplayList : public DrawingContext {
 public:
  /// The capacity of the open group in a new list.
  static constexpr std::int32_t kDefaultCapacity = 40;
  /// The deepest level at which the open group of a new list still splits.
  static constexpr std::int32_t kDefaultDeepestLevel = 20;

  /// An empty list whose groups are allocated from `heap` (null: the default
  /// heap), which outlives the list.
  explicit DisplayList(LumenHeap* heap = nullptr);
  DisplayList(const DisplayList&) = delete;
  DisplayList& operator=(const DisplayList&) = delete;
  virtual ~DisplayList();

  // --- Building ---------------------------------------------------------

  /// Adds `drawable`, whose bounds are `bounds`, at the end of the drawing
  /// order and takes ownership of it. The bounds are trusted; they lie inside
  /// the root's, which in a new list are the whole plane. Returns the group that
  /// received it, or null, with the drawable still the caller's, when it is null
  /// or no group can be allocated.
  /// Flag bit 0 keeps the drawable's group on the calling thread when worker
  /// threads draw, bit 1 sends it to the first worker; others are the client's.
  virtual Group* add(Drawable* drawable, const BoundsTemplate<long>& bounds, unsigned long flags);

  /// Adds a drawable with its own bounds.
  Group* add(Drawable* drawable, unsigned long flags = 0);

  /// Inserts the chain of drawables that starts at `chain` (linked through
  /// m_pNext; `bounds` covers all of it) immediately before `before`, which
  /// lies in `hint` or in a group drawn after it. Takes ownership of the chain.
  /// Returns the group that received it, or null, with the chain still the
  /// caller's, when `before` is not found.
  Group* add_before(Group* hint, Drawable* before, Drawable* chain,
                    const BoundsTemplate<long>& bounds);

  // --- The transform ----------------------------------------------------
  //
  // device = logical * m_scale + m_offset, per axis, in double precision. "To
  // nearest" rounds ties to even. z is always 0. None of these allocates.

  /// Logical to device, to nearest. Values outside 32 bits saturate when
  /// m_bCheckOverflow is set, else give -2147483648.
  void transform_point(const PointTemplate<long>& logical, LM_DCI_Point& device) const;
  /// Logical to fractional device units. With m_bCheckOverflow the result is
  /// clamped between the smallest positive normal and the largest float, so
  /// that negative coordinates collapse to 1.1754943508222875e-38.
  void transform_point(const PointTemplate<long>& logical, LM_Point& device) const;
  /// The two operations above as with m_bCheckOverflow set.
  void transform_point_checking_overflow(const PointTemplate<long>& logical,
                                         LM_DCI_Point& device) const;
  void transform_point_checking_overflow(const PointTemplate<long>& logical,
                                         LM_Point& device) const;
  /// Fractional logical to device: clamped to 32 bits, then half-way values
  /// away from zero when positive and toward zero when negative.
  void transform_point(const PointTemplate<double>& logical, LM_DCI_Point& device) const;
  /// Screen to logical, to nearest, saturated.
  void transform_point(const PointTemplate<int>& screen, PointTemplate<long>& logical) const;

  /// A logical length per axis to device units, to nearest; no offset.
  void scale_point(const PointTemplate<long>& length, LM_DCI_Point& device) const;
  void scale_point(const PointTemplate<long>& length, LM_Point& device) const;

  /// Logical to device through m_rotation when m_bRotated is set, else the
  /// unchecked transform_point.
  void transform_point_with_rotation(const PointTemplate<long>& logical,
                                     LM_DCI_Point& device) const;
  /// Screen to logical, truncated; what does not fit gives -2147483648.
  void transform_point_with_rotation(const PointTemplate<int>& screen,
                                     PointTemplate<long>& logical) const;

  /// Stores the screen rectangle, derives the device rectangle and the
  /// transform from it. The rectangle already stored changes nothing. A minimum
  /// y above the maximum y turns the picture upside down.
  void set_screen_bounds(const BoundsTemplate<int>& bounds);
  /// Derives scale, offset and visible bounds from the logical and screen
  /// bounds; nothing when one of them is empty. Call it after changing
  /// m_logicalBounds. A logical width or height of 0 gives infinite scales.
  void recompute_transform();

  // --- Drawing ----------------------------------------------------------

  /// Whether the rendition's complex clip is close enough to a circle for the
  /// circled draw forms; stores the circle when it is. Vertices may lie 2 device
  /// units apart in their distance from the centre, edges 5.
  bool circular_complex_clip();

  /// Grayscale drawing: stored here for drawables to read.
  virtual void set_grayscale(bool on);
  virtual bool is_grayscale();

  /// What a new drawable is constructed as when a stream holds `tag`: the
  /// library's own classes, else what m_pfnCreateDrawable makes; null when the
  /// tag is no class tag or nothing can be allocated.
  Drawable* create_drawable(std::uint32_t tag);

  /// Whether m_pOpenGroup takes drawables. It does not once a client has closed
  /// it, and may then be gone; the next add opens another.
  [[nodiscard]] bool has_open_group() const {
    return m_pOpenGroup != nullptr && !m_bOpenGroupClosed;
  }

  // --- Storing ----------------------------------------------------------

  /// Writes the tree with the drawables of the classes that streams hold; the
  /// others, hidden states, the transform and other fields are not written.
  /// `rendition_to_index` tells the index that stands for the rendition of a
  /// palettized drawable. The callback stays in its field.
  virtual void serialize_out(ZtFsStream* stream,
                             int (*rendition_to_index)(void* context, LM_Rendition* rendition),
                             void* index_context);

  /// Replaces the tree by what serialize_out wrote. Of an old one only the open
  /// group and an empty root are destroyed: remove the contents first, or keep
  /// the root, which is yours then. The callbacks are those of the fields below,
  /// where they stay. Colours come back as palette indices, the words of plain
  /// ones too. Bytes that make no sense end the reading; what was read until
  /// then is a valid list, without a root if there was not even one.
  /// The next add goes on where the stream ended; the open group that was read,
  /// whose level counts as 0, is as large when closed as what is added then.
  virtual void serialize_in(ZtFsStream* stream,
                            LM_Rendition* (*index_to_rendition)(void* context, int index),
                            void* rendition_context, Drawable* (*factory)(void* context, int tag),
                            void* factory_context, void (*post_read)(Drawable* drawable));

  /// The rendition, for a drawable that changes it while it draws: on a worker
  /// thread a private copy of one that others may draw with, good until the next
  /// call.
  LM_Rendition& changeable(LM_Rendition& rendition) {
    return m_pPrivateRendition == nullptr || &rendition == &m_rendition ? rendition
                                                                        : private_copy(rendition);
  }

  // --- Fields, beside those of the drawing context ------------------------

  LumenHeap* m_heap = nullptr;  ///< of groups and read-in points; outlives them; null: default heap

  Group* m_pRootGroup = nullptr;
  /// Follows the open group as long as insertion does not have to climb.
  Group* m_pInsertHint = nullptr;
  OpenBottomGroup* m_pOpenGroup = nullptr;              ///< the one group that takes drawables
  std::int32_t m_cMaxOpenDrawables = kDefaultCapacity;  ///< capacity of the open group, 1 at least
  std::int32_t m_cMaxLevel = kDefaultDeepestLevel;      ///< deepest level that splits, 1 to 31
  std::int32_t m_openLevel = 0;
  std::int32_t m_cOpenDrawables = 0;
  BoundsTemplate<long> m_openBounds;  ///< union of what the open group holds

  InterruptTest m_pfnInterrupt = nullptr;  ///< of the interruptible draw forms; null: never stops
  void* m_pInterruptContext = nullptr;
  InterruptTest m_pfnSelInterrupt = nullptr;  ///< of the interruptible selection forms
  void* m_pSelInterruptContext = nullptr;
  std::int32_t m_cInterruptCounter = 0;     ///< visits since the last poll
  std::int32_t m_cSelInterruptCounter = 0;  ///< the same for selection
  struct {
    float x, y;
  } m_circleCenter{0.0F, 0.0F};  ///< centre of the clip circle, device units
  std::uint32_t m_circleReserved = 0;
  float m_circleRadiusSquared = 0.0F;
  /// Draws closed bottom groups when set; see multithread.h.
  DisplayListMultithread* m_pMultithread = nullptr;

  // Callbacks of the stream operations. Each is called with its context.
  int (*m_pfnRenditionToIndex)(void*, LM_Rendition*) = nullptr;
  void* m_pRenditionToIndexContext = nullptr;
  /// Never returns null: an unknown index gets some rendition.
  LM_Rendition* (*m_pfnIndexToRendition)(void*, int) = nullptr;
  void* m_pIndexToRenditionContext = nullptr;
  /// Constructs what streams hold and the library does not itself; null, or no
  /// factory, ends the reading. See standard_factory in catalogue.h.
  Drawable* (*m_pfnCreateDrawable)(void*, int) = nullptr;
  void* m_pCreateDrawableContext = nullptr;
  /// Told of a drawable that was read with a palette colour and whose class
  /// has no palettized variant.
  void (*m_pfnPostRead)(Drawable*) = nullptr;
  /// How many groups are visited between two polls of the interrupt test.
  static std::int32_t m_cInterruptCount;
  static std::int32_t m_cSelInterruptCount;

 private:
  friend struct RecordChain;
  friend class DisplayListMultithread;
  friend class DrawableDisplayList;
  friend class OpenBottomGroup;

  struct WithoutTree {};
  /// For drawing on a worker thread only.
  explicit DisplayList(WithoutTree);
  /// Takes over all that drawing needs from the list that is drawn. The working
  /// rendition is then a copy of this list's own; `private_rendition`, which
  /// outlives the drawing, is what drawables change in the place of others.
  void draw_for(const DisplayList& list, LM_Rendition& private_rendition);
  /// Lets go of what was taken over.
  void rest();
  LM_Rendition& private_copy(const LM_Rendition& rendition);

  bool ensure_open_group();
  /// Lets the tree go, before another one is read.
  void forget_tree();
  Group* split_open_group_and_add(Drawable* drawable, const BoundsTemplate<long>& bounds,
                                  unsigned long flags);

  RecordChain* m_pRecordChain = nullptr;  ///< being written or read
  bool m_bOpenGroupClosed = false;        ///< m_pOpenGroup was closed, and may be gone since
  bool m_bReadingEnded = false;           ///< by bytes that make no sense
  std::int32_t m_cNestings = 0;           ///< how many drawables own this list
  /// Of the worker that draws with this list; null on the calling thread.
  LM_Rendition* m_pPrivateRendition = nullptr;
};

}  // namespace DL
