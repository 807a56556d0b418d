// An object image: loading bytes that nobody vouches for.

#include <cstddef>
#include <cstdint>

#include <ondrel/MMCObjectSet.h>

namespace {

bool LeaveToTheSet(const WCHAR*, CVellum&, CMMCObjectSet::Transform, CMMCObjectSet::Variables) { return false; }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  CMMCObjectSet set(LeaveToTheSet);
  CMemFile file(data, static_cast<UINT>(size));
  CVellum archive(&file, CArchive::load, 4096);
  try {
    set.SerializeObjects(archive, FALSE, FALSE);
  } catch (const CException&) {
    // Refused, as most inputs are.
  }
  return 0;
}
