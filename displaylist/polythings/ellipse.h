#pragma once

#include <cstdint>

#include "displaylist/drawables/drawable.h"
#include "displaylist/drawables/vector_iterator.h"

namespace DL {

/// A rotated ellipse: the points center + R(rotation) (major cos t, minor sin t)
/// in logical coordinates. Angles of the family are this t, in radians, before
/// the rotation. The stroke follows the rendition's line style.
///
/// Radii of any sign and angles of any size are taken as the formula has them.
/// A NaN among the angles and an infinite rotation draw nothing, nor does a
/// centre that has a 32-bit limit for a coordinate; an infinite end of an arc
/// counts as 0, or makes it whole.
class DISPLAYLIST_API DLEllipse : public Drawable {
 public:
  /// `display_list`, whose device scale tells how finely vectors divide the
  /// outline, outlives the ellipse; without one the scale is 1.
  DLEllipse(LM_RGB32 color, PointTemplate<long> center, std::int32_t major, std::int32_t minor,
            float rotation, DisplayList* display_list);
  explicit DLEllipse(class_change::Unfilled unfilled) : Drawable(unfilled) {}

  void draw_unclipped(DisplayList& list) override;
  void draw_clipped(DisplayList& list) override;
  /// Widens by the square around the circle of the larger radius.
  void add_bounds(BoundsTemplate<long>& bounds) const override;
  /// Matches the first ellipse with the same centre, radii and rotation.
  bool remove(Search& search) override;
  void* type() const override;
  Drawable* clone() override;
  void hide() override;
  /// False: the vectors depend on the scale of the list.
  bool has_fixed_representation() const override;
  bool supports_fast_vector_iterator() const override;
  /// The number of vectors of the outline, 2 at least: for a whole turn about 4
  /// times the root of the larger of major and minor, each times the device
  /// scale of its axis, sign included: in a view with y upwards that is major.
  int get_vector_count() const override;
  DrawableVectorIterator* create_vector_iterator(bool flag) override;
  void dump(std::ostream& os, int level, DisplayListDebug& statistics) const override;
  void serialize_out(ZtFsStream* stream, DisplayList& list) override;
  /// Sets display_list to `list`.
  void serialize_in(ZtFsStream* stream, DisplayList& list) override;

  virtual float start_angle() const;
  virtual float end_angle() const;

  /// The outline in logical coordinates: `n` points, one more than there are
  /// vectors, evenly spaced on the device. The caller frees them with delete[];
  /// without memory they are null and `n` is 0.
  void generateVectors(LM_DCI_Point*& points, int& n) const;
  /// Whether the direction, seen from the centre, lies within the angles of the
  /// arc, turned by the rotation. From 2 pi - 0.01 on an arc has all directions.
  [[nodiscard]] bool isWithinBounds(const LM_Vector& direction) const;

  static void* my_type();

  PointTemplate<long> center{};         ///< logical
  std::int32_t major = 0;               ///< radius along the rotated x axis, logical
  std::int32_t minor = 0;               ///< radius along the rotated y axis, logical
  float rotation = 0.0F;                ///< radians
  std::uint32_t reserved = 0;           ///< kept by records
  DisplayList* display_list = nullptr;  ///< tells the scale of vectors; not owned, not stored

  static void* _parent_type;

 protected:
  /// Whether the centre is a place, not a 32-bit limit.
  [[nodiscard]] bool has_center() const;
  [[nodiscard]] bool has_same_axes(const DLEllipse& other) const;
  void draw_arc(DisplayList& list, const LM_RGB32* fill);

 private:
  [[nodiscard]] PointTemplate<double> vector_scale() const;
};
static_assert(sizeof(void*) != 8 || sizeof(DLEllipse) == 64);

/// Walks the outline of an ellipse, which is generated for the first vector.
/// Past the end it stays there; prev() never gives vector 0.
class DISPLAYLIST_API DrawableVectorIteratorEllipse : public DrawableVectorIterator {
 public:
  explicit DrawableVectorIteratorEllipse(DLEllipse& drawable);
  ~DrawableVectorIteratorEllipse() override;

  VectorTemplate<long>* next() override;
  VectorTemplate<long>* prev() override;
  /// Loads vector `i` into m_vector; nothing where there is none.
  virtual void get_vector(int i);

  std::int32_t index = 0;
  std::int32_t vector_count;
  LM_DCI_Point* points = nullptr;  ///< owned
  DLEllipse* ellipse;
};

}  // namespace DL
