#pragma once

#include "lumen/geometry/coverage_p.h"
#include "lumen/geometry/marker_stamp_p.h"
#include "lumen/geometry/shape_p.h"
#include "lumen/geometry/stroker_p.h"
#include "lumen/raster/clip_mask_p.h"
#include "lumen/raster/shaded_line_p.h"
#include "lumen/raster/shaded_strip_p.h"
#include "lumen/raster/smooth_line_p.h"

namespace lumen {

/// What a thread keeps from one action to the next, so that drawing allocates
/// only until it has seen its largest shape.
struct RasterScratch {
  Shape shape;
  Stroker stroker;
  Strokes strokes{stroker, shape};
  MarkerStamp marker_stamp{strokes, shape};
  SmoothLine smooth_line;
  ClipMasks masks;
  ShadedLine shaded_line;
  ShadedStrip shaded_strip;
};

/// The calling thread's.
RasterScratch& scratch();

}  // namespace lumen
