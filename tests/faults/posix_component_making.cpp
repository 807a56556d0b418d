// Functions of the program's own before those of the system's library, which the model's library then calls: on these
// systems the program comes first.
#include "faults/component_making.h"

#include <utility>

#include <ondrel/platform/xml.h>

#include "support/posix/next_function.h"

namespace {

ondrel::test::ComponentMaking* current = nullptr;

HRESULT Ask() { return current != nullptr ? current->OnMaking() : S_OK; }

}  // namespace

HRESULT CoCreateInstance(REFCLSID classId, IUnknown* outer, DWORD context, REFIID id, void** object) {
  static const auto system = reinterpret_cast<decltype(&CoCreateInstance)>(
      ondrel::test::NextFunction("_Z16CoCreateInstanceRK4GUIDP8IUnknownjS1_PPv"));
  const HRESULT status = Ask();
  return FAILED(status) ? status : system(classId, outer, context, id, object);
}

HRESULT CreateStreamOnHGlobal(HGLOBAL block, BOOL deleteOnRelease, IStream** stream) {
  static const auto system = reinterpret_cast<decltype(&CreateStreamOnHGlobal)>(
      ondrel::test::NextFunction("_Z21CreateStreamOnHGlobalPN6ondrel8platform11GlobalBlockEiPP7IStream"));
  HRESULT status = Ask();
  if (FAILED(status)) return status;
  CComPtr<IStream> made;
  status = system(block, deleteOnRelease, &made);
  if (FAILED(status)) return status;
  *stream = (current != nullptr ? current->OnStreamMade(std::move(made)) : std::move(made)).Detach();
  return status;
}

namespace ondrel::platform {

HRESULT CreateDocument(IXMLDOMDocument** document) {
  static const auto system = reinterpret_cast<decltype(&CreateDocument)>(
      test::NextFunction("_ZN6ondrel8platform14CreateDocumentEPP15IXMLDOMDocument"));
  const HRESULT status = Ask();
  return FAILED(status) ? status : system(document);
}

}  // namespace ondrel::platform

namespace ondrel::test {

ComponentMaking::ComponentMaking() { current = this; }
ComponentMaking::~ComponentMaking() { current = nullptr; }

}  // namespace ondrel::test
