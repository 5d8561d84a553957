#include "lumen/raster/raster_scratch_p.h"

namespace lumen {

RasterScratch& scratch() {
  thread_local RasterScratch instance;
  return instance;
}

}  // namespace lumen
