#include "displaylist/drawables/drawable_junk.h"

DrawableJunk::DrawableJunk() : Drawable(LM_RGB32{}) {}

void DrawableJunk::draw_unclipped(DL::DisplayList&) {}

void DrawableJunk::draw_clipped(DL::DisplayList&) {}

void DrawableJunk::add_bounds(DL::BoundsTemplate<long>&) const {}

bool DrawableJunk::remove(DL::Search&) {
  return false;
}

void* DrawableJunk::type() const {
  return nullptr;
}

DL::Drawable* DrawableJunk::clone() {
  return nullptr;
}

DL::Drawable* DrawableJunk::partial_clone(int, int) {
  return nullptr;
}

int DrawableJunk::get_vector_count() const {
  return 0;
}
