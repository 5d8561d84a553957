#pragma once

#include <cstdint>

#include "displaylist/core/geometry.h"
#include "displaylist/platform/renderer.h"
#include "displaylist/platform/rendition.h"

namespace DL {

/// What drawables draw through and with: the renderer, the transform from
/// logical to device coordinates and the working rendition. A display list has
/// one; each worker thread draws with a copy of it.
struct DrawingContext {
  /// The renderer drawn through. That of a new list draws nothing; no draw form
  /// may be called while it is null.
  LM_Handle<LM_Renderer> m_pRenderer;

  BoundsTemplate<long> m_logicalBounds;  ///< what is mapped onto the screen rectangle
  BoundsTemplate<int> m_screenBounds;    ///< the target; set_screen_bounds sets it
  BoundsTemplate<int> m_deviceBounds;    ///< screen rectangle times m_deviceRatio, truncated
  double m_yAspect = 1.0;                ///< factor of the vertical scale
  /// The logical rectangle that is on the screen, one screen unit wider on
  /// every side. Inverted along an axis with a negative scale.
  BoundsTemplate<long> m_visibleBounds;

  PointTemplate<double> m_scale{1.0, 1.0};         ///< logical to screen
  PointTemplate<double> m_offset{0.0, 0.0};        ///< logical to screen
  PointTemplate<double> m_deviceScale{1.0, 1.0};   ///< logical to device units
  PointTemplate<double> m_deviceOffset{0.0, 0.0};  ///< logical to device units
  PointTemplate<double> m_deviceRatio{1.0, 1.0};   ///< device units per screen unit
  bool m_bCheckOverflow = false;                   ///< transform_point saturates

  bool m_bGrayscale = false;
  /// Rotated logical-to-device transform: x' = r4 x + r1 y + r2,
  /// y' = r0 x + r5 y + r3.
  double m_rotation[6] = {0.0, 0.0, 0.0, 0.0, 1.0, 1.0};
  bool m_bRotated = false;
  /// Polylines clip always: no group test holds in a turned view.
  bool m_bRotationSecondary = false;
  bool m_bAlternateScale = false;  ///< text takes m_deviceScale for m_scale
  bool m_bWideDots = false;        ///< dots and collapsed lines are as wide as the line weight
  bool m_bComplexClipSupported = false;

  /// The working rendition: the state that drawables draw with. Its clip
  /// rectangle is the device clip rectangle.
  LM_Rendition m_rendition;
};

}  // namespace DL
