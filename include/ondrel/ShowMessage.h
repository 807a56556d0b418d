// A message box for scripts, shown by the console that hosts them.
#pragma once

#include <ondrel/export.h>
#include <ondrel/platform/com.h>

/// Shows `text` through a console object and returns when the message is answered.
///
/// `console` holds the object, one that offers IConsole3 (console.h). It is converted to VT_UNKNOWN in place; when that
/// succeeds it stays so, whatever happens then. `type`, in any letter case, chooses the icon of "Error", "Warning" or
/// "Information", under the console's own caption; any other is the caption itself, without an icon. Null is allowed
/// for all three: no console shows nothing, no type has the console's own caption and no icon, no text is an empty one.
///
/// Failures show nothing and are told to nobody: a value that holds no console, a console that refuses.
extern "C" ONDREL_API void ShowMessage(VARIANT* console, const WCHAR* type, const WCHAR* text) noexcept;
