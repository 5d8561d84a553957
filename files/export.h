#pragma once

#include "displaylist/platform/export.h"

/// Marks what the library of files exports; every other symbol is hidden.
#if defined(DISPLAYLIST_BUILDING_FILES)
#define FILES_API DISPLAYLIST_EXPORT
#else
#define FILES_API DISPLAYLIST_IMPORT
#endif
