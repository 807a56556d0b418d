#include "faults/outcome.h"

namespace ondrel::test {

void PrintTo(const Outcome& outcome, std::ostream* out) {
  switch (outcome.kind) {
    case Outcome::success:
      *out << "success";
      return;
    case Outcome::status:
      *out << "the status 0x" << std::hex << static_cast<DWORD>(outcome.detail) << std::dec;
      return;
    case Outcome::memoryException:
      *out << "CMemoryException";
      return;
    case Outcome::badAlloc:
      *out << "std::bad_alloc";
      return;
    case Outcome::oleException:
      *out << "COleException 0x" << std::hex << static_cast<DWORD>(outcome.detail) << std::dec;
      return;
    case Outcome::archiveException:
      *out << "CArchiveException of cause " << outcome.detail;
      return;
    case Outcome::fileException:
      *out << "CFileException of cause " << outcome.detail;
      return;
    case Outcome::notSupported:
      *out << "CNotSupportedException";
      return;
  }
}

}  // namespace ondrel::test
