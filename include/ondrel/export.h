// The mark of the names that the library exports.
#pragma once

#include <ondrel/platform/export.h>

#ifdef ONDREL_BUILDING_ONDREL
#define ONDREL_API ONDREL_OS_EXPORT
#else
#define ONDREL_API ONDREL_OS_IMPORT
#endif
