// How this system marks a name as exported from, or imported into, a shared library.
#pragma once

#define ONDREL_OS_EXPORT __declspec(dllexport)
#define ONDREL_OS_IMPORT __declspec(dllimport)
