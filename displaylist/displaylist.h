#pragma once

/// Everything that a client of the library needs.
#include "displaylist/catalogue.h"
#include "displaylist/core/display_list.h"
#include "displaylist/core/geometry.h"
#include "displaylist/core/group.h"
#include "displaylist/core/iterators.h"
#include "displaylist/core/multithread.h"
#include "displaylist/drawables/debug.h"
#include "displaylist/drawables/drawable.h"
#include "displaylist/drawables/search.h"
#include "displaylist/drawables/vector_iterator.h"
#include "displaylist/platform/memory.h"
#include "displaylist/platform/renderer.h"
#include "displaylist/platform/rendition.h"
#include "displaylist/platform/stream.h"
