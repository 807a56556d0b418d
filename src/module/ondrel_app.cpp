// The library's application object.

#include "module/ondrel_app.h"

BOOL COndrelApp::InitInstance() {
  CWinApp::InitInstance();
  return TRUE;
}
