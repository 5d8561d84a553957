#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>

#include "displaylist/core/class_change.h"
#include "displaylist/core/geometry.h"
#include "displaylist/platform/export.h"
#include "displaylist/platform/memory.h"

class ZtFsStream;

namespace DL {

class DisplayList;
class Drawable;
class Group;
struct DisplayListDebug;
struct Search;

/// A link to a child: a group below a Group, a drawable in a bottom group.
union ChildLink {
  Group* group = nullptr;
  Drawable* drawable;
};

/// A node of the spatial tree: a cell of the logical plane and what was added
/// in it, in drawing order. A plain Group holds groups, a BottomGroup drawables,
/// and the one OpenBottomGroup of a list takes new drawables.
///
/// 1. The root contains every drawable by its bounds; a group's level is its
///    parent's plus one, the root's is 0.
/// 2. Children follow each other in drawing order: child groups through their
///    m_pNext, drawables through theirs.
/// 3. A group changes class in place (closed, split, hidden, visible); pointers
///    to it stay good. See class_change.h.
///
/// Groups are created by the display list and owned by their parent. Bounds are
/// logical and inclusive. The tree is not changed while threads draw it, and its
/// links and bounds only by the operations of groups and lists: a group with many
/// children keeps an index of them.
class DISPLAYLIST_API Group {
 public:
  /// A group with no fields filled in but null links.
  explicit Group(class_change::Unfilled) : m_pDisplayList(nullptr) {}
  Group(const Group&) = delete;
  Group& operator=(const Group&) = delete;

  /// Whether the children are drawables.
  virtual bool contains_drawables() const;
  virtual bool is_open() const;
  /// Checks the subtree's links; in debug builds a broken invariant stops the program.
  virtual void assert_valid() const;
  /// Writes a line for this group and each group and drawable below it, indented
  /// by depth, and counts them. A leaf counts itself and is counted by its parent
  /// too; a root that is no leaf is not counted.
  virtual void dump_subtree(std::ostream& os, int level, DisplayListDebug& statistics) const;
  virtual ~Group();

  /// Adds a drawable below the nearest group, from this one upward, that
  /// contains its bounds. Returns the group that received it, null when none
  /// does or nothing can be allocated. DisplayList::add is the way in.
  virtual Group* add(Drawable* drawable, const BoundsTemplate<long>& bounds, DisplayList* list,
                     unsigned long flags);

  // Removal. What is removed is destroyed; groups that this empties are destroyed
  // with it, up to the root, which stays. A list whose open group was destroyed
  // opens another at the next add. Bounds do not shrink. No group may be queued
  // for worker threads meanwhile.

  /// Removes a drawable of this bottom group; `previous` is the one before it,
  /// null for the first. Returns this group, or where it was destroyed the
  /// nearest ancestor left; null, with nothing removed, when this is no bottom
  /// group or `previous` does not precede the drawable.
  virtual Group* remove(Drawable* drawable, Drawable* previous);
  /// Removes the first match below this group, when the search's bounds lie
  /// inside the group's. Returns what remove_fast does; null without a match.
  virtual Group* remove_inside(Search& search);
  /// Removes the first match below this group, looking into the children whose
  /// bounds contain the search's. Returns the group that held it or, where that
  /// was destroyed, its next sibling or else the nearest ancestor left; null
  /// without a match.
  virtual Group* remove_fast(Search& search);
  /// Removes every drawable that lies inside the logical rectangle, and this
  /// group if that leaves it empty and it is not the root.
  virtual void remove_bounded(const BoundsTemplate<long>& rectangle);
  /// The same, but this group stays.
  virtual void remove_bounded_worker(const BoundsTemplate<long>& rectangle);
  /// Destroys all children; the group stays.
  virtual void remove_all();
  /// As remove_fast, but the drawable is unlinked only: search.m_pDetached names
  /// it, and it is the caller's.
  Group* detach_fast(Search& search);

  /// Takes no more drawables and shrinks the bounds to what the group holds.
  /// Whoever closes the open group opens the next one, as DisplayList::add does.
  virtual void close();

  // The draw forms. All draw in drawing order, through the list's renderer,
  // with every drawable that its info lets draw. `inner` is the rectangle
  // inside which nothing needs clipping, `outer` the one outside which nothing
  // is visible; both logical. The interruptible forms return false as soon as
  // the list's interrupt test asks to stop.
  virtual void draw_unclipped(DisplayList& list) const;
  virtual void draw_circled(DisplayList& list) const;
  virtual void draw_complex(DisplayList& list) const;
  virtual void draw_bounded(DisplayList& list, const BoundsTemplate<long>& inner,
                            const BoundsTemplate<long>& outer) const;
  virtual void draw_circled_bounded(DisplayList& list, const BoundsTemplate<long>& inner,
                                    const BoundsTemplate<long>& outer) const;
  virtual void draw_complex_bounded(DisplayList& list, const BoundsTemplate<long>& inner,
                                    const BoundsTemplate<long>& outer) const;
  virtual bool draw_unclipped_interrupt(DisplayList& list) const;
  virtual bool draw_circled_interrupt(DisplayList& list) const;
  virtual bool draw_complex_interrupt(DisplayList& list) const;
  virtual bool draw_bounded_interrupt(DisplayList& list, const BoundsTemplate<long>& inner,
                                      const BoundsTemplate<long>& outer) const;
  virtual bool draw_circled_bounded_interrupt(DisplayList& list, const BoundsTemplate<long>& inner,
                                              const BoundsTemplate<long>& outer) const;
  virtual bool draw_complex_bounded_interrupt(DisplayList& list, const BoundsTemplate<long>& inner,
                                              const BoundsTemplate<long>& outer) const;
  virtual void draw_unclipped_selection(DisplayList& list) const;
  virtual void draw_bounded_selection(DisplayList& list, const BoundsTemplate<long>& inner,
                                      const BoundsTemplate<long>& outer) const;
  virtual bool draw_unclipped_selection_interrupt(DisplayList& list) const;
  virtual bool draw_bounded_selection_interrupt(DisplayList& list,
                                                const BoundsTemplate<long>& inner,
                                                const BoundsTemplate<long>& outer) const;

  /// Widens `bounds` by every drawable below the group.
  virtual void add_bounds(BoundsTemplate<long>& bounds) const;
  /// Reopens a list for adding below or beside this group; nothing for a leaf
  /// that is the root. A root that was closed keeps its tight bounds and takes
  /// nothing outside them.
  virtual void create_open_bottom_group(DisplayList* list);
  virtual std::uint32_t level() const;

  /// Writes this group's record with those of its siblings after it and of
  /// everything below them.
  virtual void serialize_out(ZtFsStream* stream, DisplayList& list);
  /// Fills a group made for the tag that was read, and makes and fills what the
  /// stream holds beside and below it. Bytes that make no sense end the reading;
  /// what was read so far stays valid.
  virtual void serialize_in(ZtFsStream* stream, DisplayList& list, Group* parent);

  /// Hidden groups draw, take drawables and are removed from like visible ones;
  /// the flag is the client's.
  virtual void make_visible();
  virtual void make_hidden();
  virtual bool is_hidden() const;

  /// Destroys the empty `child`, and in turn this group if that leaves it empty,
  /// up to the root. Returns the lowest ancestor that still has children, or the
  /// root; null when `child` is not a child of this group.
  Group* empty_child_notify(Group* child);

  /// Links a group after the last child; this group and its ancestors up to the
  /// root, which stays, grow to contain it.
  void append_child(Group* child);
  /// Takes a child group out of the list of children; false when it is not in it.
  bool unlink_child(Group* child);

  static void* operator new(std::size_t size) noexcept;
  static void* operator new(std::size_t size, LumenHeap* heap) noexcept;
  static void operator delete(void* memory) noexcept;
  static void operator delete(void* memory, LumenHeap* heap) noexcept;

  Group* m_pNext = nullptr;  ///< next sibling
  /// The group's cell; once closed, the union of what it holds, or more.
  BoundsTemplate<long> m_bounds;
  union {
    std::uint32_t m_level;        ///< of a Group or BottomGroup
    DisplayList* m_pDisplayList;  ///< of an OpenBottomGroup, whose level the list keeps
    mutable std::uint32_t m_levelAndIndex[2];  ///< of a Group with many children: see below
  };
  ChildLink m_pFirst;
  ChildLink m_pLastChild;
  Group* m_pParent = nullptr;  ///< null for the root
  std::uint32_t m_flags = 0;   ///< all flags of the adds that ended here, or-ed

 private:
  friend class LeafIndex;

  /// The low half of the address of the index that bounded drawing makes of many
  /// children, and one; 0 without an index. The high half is beside the level.
  mutable std::uint32_t m_indexLow = 0;
};

/// A closed leaf: holds drawables and takes no more.
class DISPLAYLIST_API BottomGroup : public Group {
 public:
  explicit BottomGroup(class_change::Unfilled unfilled) : Group(unfilled) {}

  bool contains_drawables() const override;
  void assert_valid() const override;
  void dump_subtree(std::ostream& os, int level, DisplayListDebug& statistics) const override;
  ~BottomGroup() override;
  /// Null: a closed group takes no drawables.
  Group* add(Drawable* drawable, const BoundsTemplate<long>& bounds, DisplayList* list,
             unsigned long flags) override;
  Group* remove(Drawable* drawable, Drawable* previous) override;
  Group* remove_fast(Search& search) override;
  void remove_bounded_worker(const BoundsTemplate<long>& rectangle) override;
  void remove_all() override;
  Group* detach_fast(Search& search);
  void close() override;

  void draw_unclipped(DisplayList& list) const override;
  void draw_circled(DisplayList& list) const override;
  void draw_complex(DisplayList& list) const override;
  void draw_bounded(DisplayList& list, const BoundsTemplate<long>& inner,
                    const BoundsTemplate<long>& outer) const override;
  void draw_circled_bounded(DisplayList& list, const BoundsTemplate<long>& inner,
                            const BoundsTemplate<long>& outer) const override;
  void draw_complex_bounded(DisplayList& list, const BoundsTemplate<long>& inner,
                            const BoundsTemplate<long>& outer) const override;
  bool draw_unclipped_interrupt(DisplayList& list) const override;
  bool draw_circled_interrupt(DisplayList& list) const override;
  bool draw_complex_interrupt(DisplayList& list) const override;
  bool draw_bounded_interrupt(DisplayList& list, const BoundsTemplate<long>& inner,
                              const BoundsTemplate<long>& outer) const override;
  bool draw_circled_bounded_interrupt(DisplayList& list, const BoundsTemplate<long>& inner,
                                      const BoundsTemplate<long>& outer) const override;
  bool draw_complex_bounded_interrupt(DisplayList& list, const BoundsTemplate<long>& inner,
                                      const BoundsTemplate<long>& outer) const override;
  void draw_unclipped_selection(DisplayList& list) const override;
  void draw_bounded_selection(DisplayList& list, const BoundsTemplate<long>& inner,
                              const BoundsTemplate<long>& outer) const override;
  bool draw_unclipped_selection_interrupt(DisplayList& list) const override;
  bool draw_bounded_selection_interrupt(DisplayList& list, const BoundsTemplate<long>& inner,
                                        const BoundsTemplate<long>& outer) const override;

  void add_bounds(BoundsTemplate<long>& bounds) const override;
  void create_open_bottom_group(DisplayList* list) override;
  void make_hidden() override;

  /// Walks the chain of drawables, sets m_pLastChild to its end and returns its
  /// length; an empty chain leaves m_pLastChild as it is.
  std::int32_t count_and_set_last_drawable();
};

/// The leaf that takes new drawables. Draws nothing while it is empty.
class DISPLAYLIST_API OpenBottomGroup : public BottomGroup {
 public:
  explicit OpenBottomGroup(class_change::Unfilled unfilled) : BottomGroup(unfilled) {}
  /// Becomes the open group of `list`, of the given level and cell. Does not
  /// link itself to `parent`.
  OpenBottomGroup(DisplayList& list, Group* parent, std::uint32_t level,
                  const BoundsTemplate<long>& cell);

  /// The union of the cells of a level, 1 or deeper, that the corners of `seed`
  /// lie in: aligned squares of 2^(32 - level) logical units.
  static BoundsTemplate<long> cell_around(const BoundsTemplate<long>& seed, std::uint32_t level);
  /// Leaves the list without an open group.
  ~OpenBottomGroup() override;

  bool is_open() const override;
  void assert_valid() const override;
  Group* add(Drawable* drawable, const BoundsTemplate<long>& bounds, DisplayList* list,
             unsigned long flags) override;
  void close() override;

  /// As draw_complex_bounded: an open group knows no clip circle there.
  void draw_circled_bounded(DisplayList& list, const BoundsTemplate<long>& inner,
                            const BoundsTemplate<long>& outer) const override;
  bool draw_circled_bounded_interrupt(DisplayList& list, const BoundsTemplate<long>& inner,
                                      const BoundsTemplate<long>& outer) const override;

  void create_open_bottom_group(DisplayList* list) override;
  std::uint32_t level() const override;
  void make_hidden() override;

  /// Becomes the group of the list that takes drawables, as one without any. The
  /// fields of the group itself stay.
  void open_in(DisplayList& list, std::uint32_t level);

  /// Links the drawable after the last one and counts it; its bounds lie inside.
  void append(Drawable* drawable, const BoundsTemplate<long>& bounds, unsigned long flags);
  /// Links those at the head of a chain that fit into this group, which is empty,
  /// and returns the rest of the chain.
  Drawable* append_fitting(Drawable* chain, unsigned long flags);
};

/// The hidden twin of a group class: the same fields and the same behaviour,
/// but for what is_hidden tells.
template <class Visible>
class DISPLAYLIST_API HiddenGroup : public Visible {
 public:
  explicit HiddenGroup(class_change::Unfilled unfilled) : Visible(unfilled) {}

  void make_visible() override;
  void make_hidden() override {}
  bool is_hidden() const override { return true; }
};

using GroupHidden = HiddenGroup<Group>;
using BottomGroupHidden = HiddenGroup<BottomGroup>;
using OpenBottomGroupHidden = HiddenGroup<OpenBottomGroup>;

extern template class HiddenGroup<Group>;
extern template class HiddenGroup<BottomGroup>;
extern template class HiddenGroup<OpenBottomGroup>;

// The layout that the statistics tell and that memory is planned with:
//   table 8 | m_pNext 8 | m_bounds 16 | level or list 8 | m_pFirst 8 |
//   m_pLastChild 8 | m_pParent 8 | m_flags 4 | index 4
static_assert(sizeof(void*) != 8 || sizeof(Group) == 72);
static_assert(sizeof(BottomGroup) == sizeof(Group) && sizeof(OpenBottomGroup) == sizeof(Group));
static_assert(sizeof(OpenBottomGroupHidden) == sizeof(Group));

}  // namespace DL
