// The images of an icon: those that its handle is made of.
#include <ondrel/platform/graphics.h>

namespace ondrel::platform {

BOOL GetIconImages(HICON icon, UniqueBitmap& colour, UniqueBitmap& mask) {
  ICONINFO info = {};
  if (!GetIconInfo(icon, &info)) return FALSE;
  colour.reset(info.hbmColor);
  mask.reset(info.hbmMask);
  return TRUE;
}

}  // namespace ondrel::platform
