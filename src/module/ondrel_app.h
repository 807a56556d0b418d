// The library's application object.
#pragma once

#include <ondrel/platform/framework/application.h>

/// The application of the library's module state while the library is loaded. It has no name.
class COndrelApp : public CWinApp {
 public:
  /// TRUE, whatever the framework's own start says: nothing of the library depends on it.
  BOOL InitInstance() override;
};
