#pragma once

#include <cstdint>

#include "displaylist/core/draw_form_p.h"
#include "displaylist/core/geometry.h"
#include "displaylist/platform/rendition.h"

namespace DL {

class DisplayList;

/// How a group lies to the clip.
enum class ClipAnswer : std::uint8_t { inside, crossing, outside };

/// The test of the complex clip: crossing or outside. Inside is never told, so
/// that the clip always stays in force.
ClipAnswer test_complex_clip(DisplayList& list, const BoundsTemplate<long>& bounds);

/// The test that goes with a draw form's clip. A group may always cross the
/// clip circle: it is never drawn with the circle lifted.
template <draw::Clip C>
ClipAnswer test_clip(DisplayList& list, const BoundsTemplate<long>& bounds) {
  if constexpr (C == draw::Clip::complex) {
    return test_complex_clip(list, bounds);
  } else {
    return ClipAnswer::crossing;
  }
}

/// Takes the complex clip off the list's rendition for its own lifetime, for a
/// group that lies inside it.
class LiftedClip {
 public:
  explicit LiftedClip(LM_Rendition& rendition)
      : m_rendition(rendition), m_clip(rendition.complex_clip()) {
    m_rendition.set_complex_clip(nullptr, true);
  }
  LiftedClip(const LiftedClip&) = delete;
  LiftedClip& operator=(const LiftedClip&) = delete;
  ~LiftedClip() { m_rendition.set_complex_clip(m_clip, true); }

 private:
  LM_Rendition& m_rendition;
  LM_Contour_Set m_clip;
};

}  // namespace DL
