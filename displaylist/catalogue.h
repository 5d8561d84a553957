#pragma once

/// The one place that sees every drawable class of the library.
#include "displaylist/drawables/dot.h"
#include "displaylist/drawables/drawable_junk.h"
#include "displaylist/drawables/image.h"
#include "displaylist/drawables/manifest.h"
#include "displaylist/drawables/polydot.h"
#include "displaylist/drawables/variants.h"
#include "displaylist/platform/export.h"
#include "displaylist/polythings/colorized_ellipse.h"
#include "displaylist/polythings/ellipse.h"
#include "displaylist/polythings/elliptical_arc.h"
#include "displaylist/polythings/elliptical_pie.h"
#include "displaylist/polythings/gouraud_polytriangle.h"
#include "displaylist/polythings/polygon.h"
#include "displaylist/polythings/polyline.h"
#include "displaylist/polythings/polymarker.h"
#include "displaylist/polythings/polysegment.h"
#include "displaylist/polythings/polytriangle.h"
#include "displaylist/polythings/row_of_dots.h"
#include "displaylist/polythings/textured_polytriangle.h"
#include "displaylist/text/drawable_display_list.h"
#include "displaylist/text/encoded_text.h"
#include "displaylist/text/text.h"
#include "displaylist/text/text_iterator.h"

namespace DL {

/// A factory for DisplayList::m_pfnCreateDrawable: constructs the library's
/// classes that streams hold and readers leave to the client, on the default
/// heap. Null for any other tag or when memory is exhausted, so that a client's
/// own factory can ask it first. The context is not looked at.
DISPLAYLIST_API Drawable* standard_factory(void* context, int tag);

/// A hook for DisplayList::m_pfnPostRead: gives the drawable, whose colour field
/// refers to a rendition, the colour of that rendition.
DISPLAYLIST_API void standard_post_read(Drawable* drawable);

/// Turns a drawable that is palettized, hidden or not, into the plain visible one
/// of its class, in the colour of its rendition. False, with nothing changed, for
/// any other. The drawable is of one of the library's own classes.
DISPLAYLIST_API bool make_plain(Drawable& drawable);

}  // namespace DL
