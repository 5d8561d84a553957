#pragma once

/// Marks what the two shared libraries export; every other symbol is hidden.
#if defined(_WIN32)
#define DISPLAYLIST_EXPORT __declspec(dllexport)
#define DISPLAYLIST_IMPORT __declspec(dllimport)
#else
#define DISPLAYLIST_EXPORT __attribute__((visibility("default")))
#define DISPLAYLIST_IMPORT __attribute__((visibility("default")))
#endif

#if defined(DISPLAYLIST_BUILDING_DISPLAYLIST)
#define DISPLAYLIST_API DISPLAYLIST_EXPORT
#else
#define DISPLAYLIST_API DISPLAYLIST_IMPORT
#endif

#if defined(DISPLAYLIST_BUILDING_LUMEN)
#define LUMEN_API DISPLAYLIST_EXPORT
#else
#define LUMEN_API DISPLAYLIST_IMPORT
#endif
