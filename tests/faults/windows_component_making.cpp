// Patches the project's imports of the system's functions: every component, a document too, is made by one of them.
#include "faults/component_making.h"

#include <optional>
#include <utility>

#include "support/windows/import_patch.h"

namespace ondrel::test {
namespace {

ComponentMaking* current = nullptr;
std::optional<ImportPatch> componentImports;
std::optional<ImportPatch> streamImports;

HRESULT WINAPI MakeComponent(REFCLSID classId, IUnknown* outer, DWORD context, REFIID id, void** object) {
  const HRESULT status = current->OnMaking();
  if (FAILED(status)) return status;
  return componentImports->Original<decltype(::CoCreateInstance)>()(classId, outer, context, id, object);
}

HRESULT WINAPI MakeStream(HGLOBAL block, BOOL deleteOnRelease, IStream** stream) {
  HRESULT status = current->OnMaking();
  if (FAILED(status)) return status;
  CComPtr<IStream> made;
  status = streamImports->Original<decltype(::CreateStreamOnHGlobal)>()(block, deleteOnRelease, &made);
  if (SUCCEEDED(status)) *stream = current->OnStreamMade(std::move(made)).Detach();
  return status;
}

}  // namespace

ComponentMaking::ComponentMaking() {
  current = this;
  componentImports.emplace("CoCreateInstance", &MakeComponent);
  streamImports.emplace("CreateStreamOnHGlobal", &MakeStream);
}

ComponentMaking::~ComponentMaking() {
  streamImports.reset();
  componentImports.reset();
  current = nullptr;
}

}  // namespace ondrel::test
