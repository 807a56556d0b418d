// The marks of exported names, one for each library of the platform layer. A library's own build defines its
// ONDREL_BUILDING_... name; everyone else imports.
#pragma once

#include <ondrel/platform/os/export.h>

#ifdef ONDREL_BUILDING_FRAMEWORK
#define FRAMEWORK_API ONDREL_OS_EXPORT
#else
#define FRAMEWORK_API ONDREL_OS_IMPORT
#endif

#ifdef ONDREL_BUILDING_VELLUM
#define VELLUM_API ONDREL_OS_EXPORT
#else
#define VELLUM_API ONDREL_OS_IMPORT
#endif
