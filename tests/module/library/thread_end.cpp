// Lets the tests call what the library does at the end of a thread where the system does not.
#include <ondrel/platform/library_entry.h>

#include "module/recorder/call_recorder.h"

namespace {

struct Giver {
  Giver() { ondrel::test::GiveThreadEnd(&ondrel::platform::DetachLibraryThread); }
};
const Giver giver;

}  // namespace
