// Contract: the management console, in the one call that the model makes.
//
//   IConsole3          what a console gives to those it hosts; QueryInterface finds it
//     MessageBox(text, caption, style, button)
//                      shows a message and returns when it is answered. The texts are not null, but for a caption that
//                      is null: the console supplies its own. `button`, which may be null, receives the button that was
//                      pressed. A negative status when nothing was shown.
//
// A style is MB_SETFOREGROUND with at most one of the icons MB_ICONERROR, MB_ICONWARNING and MB_ICONINFORMATION.
#pragma once

#include <ondrel/platform/os/console.h>
