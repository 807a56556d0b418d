// Drawing an icon with its transparent pixels in a key colour.
#pragma once

#include <ondrel/MMCObjectIcon.h>

namespace ondrel {

/// Draws the icon's large or small image into `target`, its left edge at column `left`. What lies outside the target is
/// cut off. A target that has not 32 bits per pixel stays as it is.
void DrawMasked(CMMCObjectBitmap& target, LONGLONG left, const CMMCObjectIcon& icon, bool large, DWORD colour);

}  // namespace ondrel
