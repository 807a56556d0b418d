// Contract: what a library does when it is loaded, when a thread ends and when it is unloaded.
//
// A library that links ondrel_library_entry defines the functions below, and the platform calls them. None of them may
// raise anything: there is nobody who could catch it.
//
// The objects that the library keeps between these calls must need neither a constructor nor a destructor of their own:
// AttachLibrary may run before the constructors of static objects, and DetachLibrary after their destructors when the
// process ends.
#pragma once

#include <ondrel/platform/types.h>

namespace ondrel::platform {

/// The library is loaded. A failing status refuses: the library is unloaded again, without DetachLibrary, and whoever
/// called AfxLoadLibrary is given the status. Of a program that is linked with the library nothing has run yet; it does
/// not start. Off Windows, a library that refuses one who loads it without AfxLoadLibrary ends the process, because the
/// system does not let it refuse.
HRESULT AttachLibrary(HINSTANCE instance) noexcept;

/// The calling thread ends. Called on Windows only, for every thread that ends while the library is loaded: elsewhere
/// the system tells no library of it, and the framework's data of a thread (thread_data.h) goes with the thread.
void DetachLibraryThread(HINSTANCE instance) noexcept;

/// The library is unloaded, or the process ends. Called only when AttachLibrary has succeeded.
void DetachLibrary(HINSTANCE instance) noexcept;

}  // namespace ondrel::platform
