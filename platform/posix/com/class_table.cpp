// The classes that can be made by their identifier.

#include <ondrel/platform/os/xml.h>

#include "xml/classes.h"

namespace {

using namespace ondrel::platform;

struct ComponentClass {
  CLSID id;
  HRESULT (*create)(REFIID id, void** object);
};

constexpr ComponentClass kClasses[] = {
    {CLSID_DOMDocument, CreateDomDocument},
    {CLSID_MXXMLWriter60, CreateXmlWriter},
    {CLSID_SAXXMLReader60, CreateSaxReader},
};

}  // namespace

HRESULT CoCreateInstance(REFCLSID classId, IUnknown* outer, DWORD context, REFIID id, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if ((context & CLSCTX_INPROC_SERVER) == 0) return REGDB_E_CLASSNOTREG;  // all of them live in the caller's process
  for (const ComponentClass& known : kClasses) {
    if (known.id == classId) return outer != nullptr ? CLASS_E_NOAGGREGATION : known.create(id, object);
  }
  return REGDB_E_CLASSNOTREG;
}
