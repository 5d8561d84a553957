#pragma once

#include <cstdint>
#include <string_view>

#include "displaylist/drawables/drawable.h"
#include "displaylist/drawables/vector_iterator.h"

namespace DL {

/// A counted array of logical points: base of polylines, polygons and the like.
///
/// The array is copied at construction, to the heap named there (null: the
/// default heap), and owned. When it cannot be allocated
/// the object holds no points and draws nothing.
class DISPLAYLIST_API Polything : public Drawable {
 public:
  void add_bounds(BoundsTemplate<long>& bounds) const override;
  void* type() const override;
  /// The number of consecutive point pairs.
  int get_vector_count() const override;
  /// From point `index` to the next; true.
  bool get_vector(int index, VectorTemplate<long>& vector) const override;
  /// Requires two points at least to have a first vector.
  DrawableVectorIterator* create_vector_iterator(bool flag) override;
  ~Polything() override;
  void dump(std::ostream& os, int level, DisplayListDebug& statistics) const override;
  /// The record of the points; subclasses write their tag before it.
  void serialize_out(ZtFsStream* stream, DisplayList& list) override;
  void serialize_in(ZtFsStream* stream, DisplayList& list) override;

  static void* my_type();

  std::int32_t count = 0;
  PointTemplate<long>* points = nullptr;  ///< null only when count is 0 or less

  static void* _parent_type;

 protected:
  /// Copies `count` points to the heap; a count below 1 or a null array gives none.
  Polything(LM_RGB32 color, std::int32_t count, const PointTemplate<long>* points, LumenHeap* heap);
  explicit Polything(class_change::Unfilled unfilled) : Drawable(unfilled) {}

  /// Whether the other has the same points in the same order.
  [[nodiscard]] bool has_same_points(const Polything& other) const;
  /// Gives the points back, leaving none.
  void discard_points();
  /// Deletes a copy that did not get its points; returns the copy or null.
  static Drawable* complete_or_null(Polything* copy);

  void count_memory(DisplayListDebug& statistics) const;
  /// The dump line with the colour, or "Palettized" before the label and the
  /// rendition.
  void dump_colored(std::ostream& os, int level, std::string_view label,
                    DisplayListDebug& statistics) const;

 private:
  void read_points(ZtFsStream& stream, std::int32_t wanted, LumenHeap* heap);
  void grow_points(std::int32_t capacity, LumenHeap* heap);
};
static_assert(sizeof(void*) != 8 || sizeof(Polything) == 48);

/// Walks consecutive point pairs. Past the end it stays on the last vector, so
/// that prev() steps back from there.
class DISPLAYLIST_API DrawableVectorIteratorPolything : public DrawableVectorIterator {
 public:
  explicit DrawableVectorIteratorPolything(Polything& polything);

  VectorTemplate<long>* next() override;
  VectorTemplate<long>* prev() override;
  /// Loads vector `i` into m_vector.
  virtual void get_vector(int i);

  std::int32_t index = 0;
  std::int32_t last;
};

}  // namespace DL
