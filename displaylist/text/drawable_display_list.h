#pragma once

#include <cstdint>

#include "displaylist/core/geometry.h"
#include "displaylist/drawables/drawable.h"
#include "displaylist/platform/export.h"

namespace DL {

/// A whole display list, the child, as one drawable of another, the parent:
///
///     parent = child * scale + offset
///
/// per axis, in logical units. While it is drawn the child borrows the parent's
/// renderer and rendition and a transform composed from the parent's; a child
/// is drawn in one parent at a time, never from two threads, and is no ancestor
/// of its parent. Views so close that the child reaches beyond the 32-bit device
/// coordinates need the child's m_bCheckOverflow.
///
/// The drawable and its clones own the child together: the last of them that is
/// destroyed destroys it. A negative scale mirrors; boxes are then those that
/// the mapped corners span.
class DISPLAYLIST_API DrawableDisplayList : public Drawable {
 public:
  /// With the scale (1, 1) and the offset (0, 0). `list` may be null. `bounds`
  /// are the child's content in the child's units; null takes them from its
  /// drawables. The rendition is the client's; nothing is drawn with it.
  DrawableDisplayList(LM_Rendition* rendition, DisplayList* list,
                      const BoundsTemplate<long>* bounds);
  explicit DrawableDisplayList(class_change::Unfilled unfilled) : Drawable(unfilled) {}
  ~DrawableDisplayList() override;

  void draw_unclipped(DisplayList& parent) override;
  void draw_clipped(DisplayList& parent) override;
  /// Widens the bounds by the placed ones.
  void add_bounds(BoundsTemplate<long>& bounds) const override;
  /// Matches the first one with the same child, scale and offset.
  bool remove(Search& search) override;
  void* type() const override;
  /// Shares the child.
  Drawable* clone() override;
  void hide() override;
  /// Writes and reads nothing.
  void serialize_out(ZtFsStream* stream, DisplayList& list) override;
  void serialize_in(ZtFsStream* stream, DisplayList& list) override;

  /// Prepares the child for drawing in the parent: its transform, renderer and
  /// rendition. True, also when nothing of it is visible.
  virtual bool push_view(DisplayList& parent);
  /// Composes the child's transform and finds the part that is visible, in
  /// `clip` in device units. False when nothing is; the child's screen and
  /// logical bounds then stay as they were.
  virtual bool push_transform(DisplayList& parent, BoundsTemplate<int>& clip);
  /// Ends what push_view began: the child has no renderer then.
  virtual void pop_view(DisplayList& parent);
  virtual void pop_transform(DisplayList& parent);

  [[nodiscard]] DisplayList* display_list() { return m_pChild; }
  /// Replaces the child; the old one is the caller's, where no clone has it too.
  void set_display_list(DisplayList* list, const BoundsTemplate<long>* bounds);

  /// The child's content, in the child's units.
  [[nodiscard]] const BoundsTemplate<long>& bounds() { return m_bounds; }
  /// Takes the box, or where null that of all drawables of the child.
  void set_bounds(const BoundsTemplate<long>* bounds);
  [[nodiscard]] const PointTemplate<double>& scale() { return m_scale; }
  void set_scale(const PointTemplate<double>& scale);
  [[nodiscard]] const PointTemplate<double>& offset() { return m_offset; }
  void set_offset(const PointTemplate<double>& offset);

  /// Between the child's units and the parent's.
  [[nodiscard]] PointTemplate<double> drawable_to_display(const PointTemplate<double>& point);
  [[nodiscard]] PointTemplate<double> display_to_drawable(const PointTemplate<double>& point);
  /// Between the child's units and the screen, as the child's transform stands.
  /// There must be a child.
  [[nodiscard]] PointTemplate<double> drawable_to_screen(const PointTemplate<double>& point);
  [[nodiscard]] PointTemplate<double> screen_to_drawable(const PointTemplate<double>& point);

  static void* my_type();
  static void* _parent_type;

 protected:
  /// Takes over everything but the place in the list; shares the child.
  void copy(const DrawableDisplayList& other);

 private:
  void own(DisplayList* list);
  /// Gives the child up; true when it has no other owner.
  bool disown();
  [[nodiscard]] bool can_be_drawn() const;
  void compose_transform(const DisplayList& parent);
  /// The part of the child that is to be seen on the screen, in device and in
  /// the child's units; false when there is none.
  [[nodiscard]] bool visible_part(const BoundsTemplate<int>& screen, BoundsTemplate<int>& clip,
                                  BoundsTemplate<long>& logical) const;
  static bool is_selector(const DisplayList& parent);

  DisplayList* m_pChild = nullptr;
  BoundsTemplate<long> m_bounds;
  BoundsTemplate<long> m_placedBounds;  ///< m_bounds in the parent's units
  PointTemplate<double> m_scale{1.0, 1.0};
  PointTemplate<double> m_offset{0.0, 0.0};
  std::uint32_t m_bSelector = 0;  ///< draw the selection pass
  std::uint32_t m_reserved = 0;
};
static_assert(sizeof(void*) != 8 || sizeof(DrawableDisplayList) == 112);

}  // namespace DL
