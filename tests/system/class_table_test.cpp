// The classes that can be made by their identifier.
#include <gtest/gtest.h>

#include "system/documents.h"

namespace ondrel::test {
namespace {

template <class Interface>
HRESULT Create(const CLSID& id, DWORD context = CLSCTX_INPROC_SERVER) {
  CComPtr<Interface> object;
  const HRESULT status = object.CoCreateInstance(id, nullptr, context);
  EXPECT_EQ(SUCCEEDED(status), object != nullptr) << "the pointer is null exactly when the creation failed";
  return status;
}

TEST(ClassTable, MakesDocumentWriterAndReader) {
  EXPECT_EQ(Hex(Create<IXMLDOMDocument>(CLSID_DOMDocument)), Hex(S_OK));
  EXPECT_EQ(Hex(Create<IDispatch>(CLSID_DOMDocument)), Hex(S_OK));
  EXPECT_EQ(Hex(Create<IMXWriter>(CLSID_MXXMLWriter60, CLSCTX_ALL)), Hex(S_OK));
  EXPECT_EQ(Hex(Create<ISAXContentHandler>(CLSID_MXXMLWriter60, CLSCTX_ALL)), Hex(S_OK));
  EXPECT_EQ(Hex(Create<ISAXXMLReader>(CLSID_SAXXMLReader60, CLSCTX_ALL)), Hex(S_OK));
}

TEST(ClassTable, RefusesAnInterfaceThatTheClassLacks) {
  EXPECT_EQ(Hex(Create<IStream>(CLSID_DOMDocument)), Hex(E_NOINTERFACE));
  EXPECT_EQ(Hex(Create<IXMLDOMElement>(CLSID_DOMDocument)), Hex(E_NOINTERFACE));
}

TEST(ClassTable, RefusesUnknownClassesOtherProcessesAndAggregation) {
  const CLSID unknown{1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
  EXPECT_EQ(Hex(Create<IUnknown>(unknown)), Hex(REGDB_E_CLASSNOTREG));
  constexpr DWORD kLocalServer = 4;
  EXPECT_EQ(Hex(Create<IUnknown>(CLSID_DOMDocument, kLocalServer)), Hex(REGDB_E_CLASSNOTREG));
  const CComPtr<IXMLDOMDocument> outer = NewDocument();
  CComPtr<IXMLDOMDocument> inner;
  EXPECT_EQ(Hex(inner.CoCreateInstance(CLSID_DOMDocument, outer, CLSCTX_INPROC_SERVER)), Hex(CLASS_E_NOAGGREGATION));
  EXPECT_EQ(Hex(CoCreateInstance(CLSID_DOMDocument, nullptr, CLSCTX_ALL, platform::InterfaceId<IUnknown>(), nullptr)),
            Hex(E_POINTER));
}

}  // namespace
}  // namespace ondrel::test
