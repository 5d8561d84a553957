#pragma once

#include "displaylist/drawables/drawable.h"
#include "displaylist/platform/counted.h"
#include "displaylist/platform/image.h"

namespace DL {

/// A raster image at its own pixel size, whatever the view: its left upper
/// pixel stands on the rectangle's (min x, max y) corner, which is left above
/// where y grows upwards. The rectangle serves for bounds, removal and
/// vectors. Not stored in streams.
class DISPLAYLIST_API DLImage : public Drawable {
 public:
  /// Shares the image; with none, or without memory for the cell that holds
  /// it, nothing is drawn. `rectangle` is logical.
  DLImage(LM_RGB32 color, const BoundsTemplate<long>& rectangle, const LM_Handle<LM_Image>& image);
  explicit DLImage(class_change::Unfilled unfilled) : Drawable(unfilled) {}

  void draw_unclipped(DisplayList& list) override;
  void draw_clipped(DisplayList& list) override;
  void add_bounds(BoundsTemplate<long>& bounds) const override;
  /// Matches the first image with the same rectangle, whatever it shows.
  bool remove(Search& search) override;
  void* type() const override;
  /// Shares the image with the copy.
  Drawable* clone() override;
  void hide() override;
  int get_vector_count() const override;
  /// The edges: along min y, along max x, back along max y and min x; false for
  /// an index that is none of 0 to 3.
  bool get_vector(int index, VectorTemplate<long>& vector) const override;
  ~DLImage() override;
  void dump(std::ostream& os, int level, DisplayListDebug& statistics) const override;
  /// Writes and reads nothing.
  void serialize_out(ZtFsStream* stream, DisplayList& list) override;
  void serialize_in(ZtFsStream* stream, DisplayList& list) override;

  static void* my_type();

  /// The shared image; null when there is none.
  [[nodiscard]] LM_Image* image() const { return m_pImageRef == nullptr ? nullptr : *m_pImageRef; }

  BoundsTemplate<long> m_rect;  ///< logical
  /// The cell that device actions get: it holds the image and one reference on
  /// it. Owned; null when there was no memory for it.
  LM_Image** m_pImageRef = nullptr;

  static void* _parent_type;

 private:
  /// Where the left upper pixel stands.
  [[nodiscard]] LM_DCI_Point device_corner(const DisplayList& list) const;
  [[nodiscard]] bool lies_inside(const LM_Clip_Rectangle& clip, const LM_DCI_Point& corner) const;
};
static_assert(sizeof(void*) != 8 || sizeof(DLImage) == 56);

}  // namespace DL
