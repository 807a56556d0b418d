// Documents that open nothing outside themselves.
#include <ondrel/platform/com.h>
#include <ondrel/platform/xml.h>

namespace ondrel::platform {

HRESULT CreateDocument(IXMLDOMDocument** document) {
  CComPtr<IXMLDOMDocument> created;
  HRESULT status = created.CoCreateInstance(CLSID_DOMDocument, nullptr, CLSCTX_INPROC_SERVER);
  // This version of the document would fetch what the text of a stranger names.
  if (SUCCEEDED(status)) status = created->put_resolveExternals(VARIANT_FALSE);
  if (SUCCEEDED(status)) *document = created.Detach();
  return status;
}

}  // namespace ondrel::platform
