#pragma once

#include "displaylist/platform/device_actions.h"
#include "displaylist/polythings/polytriangle.h"

namespace DL {

/// A strip of triangles covered with the texture pages of the rendition; see
/// LM_Textured_Strip_Action. It has no outline. Not stored in streams.
class DISPLAYLIST_API DLTexturedPolytriangle : public DLPolytriangle {
 public:
  /// What the strip has at each of its vertices: arrays as long as the points.
  struct Vertices {
    const LM_RGB32* colors = nullptr;                  ///< ground colours
    const LM_Vertex_Triple* triples = nullptr;         ///< places on texture pages
    const std::uint32_t* values = nullptr;             ///< modulation of the texture, or null
    const LM_Vertex_Triple* second_triples = nullptr;  ///< places on second pages, or null
  };

  /// Copies `count` points, 3 at least, and the arrays.
  DLTexturedPolytriangle(LM_RGB32 color, std::int32_t count, const PointTemplate<long>* points,
                         const Vertices& vertices, LumenHeap* heap = nullptr);
  explicit DLTexturedPolytriangle(class_change::Unfilled unfilled) : DLPolytriangle(unfilled) {}

  void draw_unclipped(DisplayList& list) override;
  void draw_clipped(DisplayList& list) override;
  /// Matches the first textured strip with the same points, whatever covers it.
  bool remove(Search& search) override;
  void* type() const override;
  Drawable* clone() override;
  void hide() override;
  ~DLTexturedPolytriangle() override;
  void dump(std::ostream& os, int level, DisplayListDebug& statistics) const override;
  /// Writes and reads nothing.
  void serialize_out(ZtFsStream* stream, DisplayList& list) override;
  void serialize_in(ZtFsStream* stream, DisplayList& list) override;

  static void* my_type();

  LM_RGB32* colors = nullptr;
  LM_Vertex_Triple* vertex_triples = nullptr;
  std::uint32_t* vertex_values = nullptr;        ///< null when there is none
  LM_Vertex_Triple* vertex_triples_2 = nullptr;  ///< null when there is none

  static void* _parent_type;

 private:
  void draw(DisplayList& list, bool clip);
};
static_assert(sizeof(void*) != 8 || sizeof(DLTexturedPolytriangle) == 80);

}  // namespace DL
