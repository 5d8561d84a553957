#pragma once

#include "displaylist/core/geometry.h"
#include "displaylist/drawables/drawable.h"
#include "displaylist/drawables/drawable_junk.h"
#include "displaylist/platform/export.h"
#include "displaylist/platform/stack.h"

// Iterators over the drawables of a display list:
//
//     DL::DisplayListIterator at(&list);
//     for (DL::Drawable* d = at.current(); d != nullptr; d = at.next()) ...
//
// The first drawable is current after construction: m_pCurrent. Where the first
// group is empty that is the iterator's inert sentinel, which draws nothing and
// matches nothing; current() moves on from it. Bounds are logical and inclusive. An iterator owns
// nothing: adding or removing drawables or groups ends its use, and the list outlives it.

namespace DL {

class DisplayList;
class Group;

/// Walks all drawables in drawing order.
class DISPLAYLIST_API DisplayListIterator {
 public:
  explicit DisplayListIterator(DisplayList* list);
  /// Starts at a group and goes on to the end of its list.
  explicit DisplayListIterator(Group* start);
  DisplayListIterator(const DisplayListIterator&) = delete;
  DisplayListIterator& operator=(const DisplayListIterator&) = delete;
  virtual ~DisplayListIterator();

  /// Start anew. They return the first bottom group; null when there is none.
  Group* init(DisplayList* list);
  Group* init(Group* start);

  /// The next drawable, which becomes the current one; null at the end.
  virtual Drawable* next();
  /// Null: there is no way back.
  virtual Drawable* prev();
  /// Goes on in drawing order until `drawable` is current, which it may be
  /// already, and returns it; null, at the end, when it does not follow.
  virtual Drawable* next_until(Drawable* drawable);
  /// The bottom group after m_pGroup, which stays; null at the end.
  virtual Group* next_group();
  /// Null.
  virtual Drawable* reserved_step();

  /// The current drawable of the list; null at the end.
  Drawable* current() { return m_pCurrent == &m_sentinel ? next() : m_pCurrent; }
  /// Whether the current drawable is one of the list's.
  [[nodiscard]] bool is_at_drawable() const {
    return m_pCurrent != nullptr && m_pCurrent != &m_sentinel;
  }

  Group* m_pGroup = nullptr;       ///< the current bottom group; null at the end
  Drawable* m_pCurrent = nullptr;  ///< null at the end
  DrawableJunk m_sentinel;         ///< current where the first group has no drawables

 protected:
  DisplayListIterator() = default;
  /// Makes the first drawable of m_pGroup current, or the sentinel.
  Group* stand_at_group();
  /// Goes on to the next drawable of this walk's groups, of any kind.
  Drawable* step();
  Drawable* end();
};

/// Walks the drawables of the groups that meet a rectangle, in drawing order.
/// The drawables themselves are not tested, nor is the group it starts at.
class DISPLAYLIST_API DisplayListBoundedIterator : public DisplayListIterator {
 public:
  DisplayListBoundedIterator(DisplayList* list, const BoundsTemplate<long>& bounds);
  ~DisplayListBoundedIterator() override;
  Group* init(DisplayList* list, const BoundsTemplate<long>& bounds);

  Group* next_group() override;

  BoundsTemplate<long> m_bounds;

 protected:
  DisplayListBoundedIterator() = default;
};

/// Walks the drawables of one colour in drawing order: those whose colour data
/// has the same low 32 bits.
class DISPLAYLIST_API DisplayListColorIterator : public DisplayListIterator {
 public:
  DisplayListColorIterator(DisplayList* list, const Drawable::ColorData& color);
  ~DisplayListColorIterator() override;
  Group* init(DisplayList* list, const Drawable::ColorData& color);

  Drawable* next() override;

  Drawable::ColorData m_filterColor;
};

/// Walks the drawables of one colour in the groups that meet a rectangle.
class DISPLAYLIST_API DisplayListBoundedColorIterator : public DisplayListBoundedIterator {
 public:
  DisplayListBoundedColorIterator(DisplayList* list, const BoundsTemplate<long>& bounds,
                                  const Drawable::ColorData& color);
  ~DisplayListBoundedColorIterator() override;
  Group* init(DisplayList* list, const BoundsTemplate<long>& bounds,
              const Drawable::ColorData& color);

  Drawable* next() override;

  Drawable::ColorData m_filterColor;
};

/// Walks the drawables of the groups that meet a rectangle from the last drawn
/// to the first: the topmost comes first, as picking wants it. The drawables
/// themselves are not tested. Ends early when memory is exhausted. next_until
/// and next_group go forward here too.
class DISPLAYLIST_API DisplayListReverseIterator : public DisplayListIterator {
 public:
  DisplayListReverseIterator(DisplayList* list, const BoundsTemplate<long>& bounds);
  ~DisplayListReverseIterator() override;
  Group* init(DisplayList* list, const BoundsTemplate<long>& bounds);

  Drawable* next() override;

 private:
  /// A group that is still to be visited.
  struct GroupInfo {
    Group* group;
    bool inside;  ///< it lies inside the bounds, and so do its descendants
  };

  /// Pushes the children of an inner group that lie inside or meet the bounds;
  /// false, at the end, when memory is exhausted.
  bool expand(const GroupInfo& info);
  /// Makes the last drawable of a bottom group current and pushes the others;
  /// false, at the end, when memory is exhausted.
  bool load(Group* group);
  /// Goes on to the next bottom group that has drawables.
  Drawable* next_from_groups();
  /// Ends the walk, for want of memory; false.
  bool give_up();

  BoundsTemplate<long> m_bounds;
  LM_Stack<GroupInfo> m_groups;
  LM_Stack<Drawable*> m_drawables;  ///< of the current group, those not yet visited
};

/// Walks the drawables from one to another, both included, across the borders
/// of groups.
class DISPLAYLIST_API SubEntityIterator : public DisplayListIterator {
 public:
  /// Without drawables.
  SubEntityIterator();
  /// See init.
  SubEntityIterator(Drawable* from, Drawable* last, Group* start);
  ~SubEntityIterator() override;
  /// Looks for `from` in `start` and the groups after it; without it, or with a
  /// null group, there is nothing to walk. A `last` that does not follow leads
  /// to the end of the list.
  Group* init(Drawable* from, Drawable* last, Group* start);

  Drawable* next() override;

  Drawable* m_pLast = nullptr;
};

}  // namespace DL
