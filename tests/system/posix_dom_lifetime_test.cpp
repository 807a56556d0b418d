// Documents of this system's own when memory runs short, which can be made to happen in every allocation here; and
// nodes whose contents were replaced.
#include <gtest/gtest.h>

#include "support/failing_allocation.h"
#include "system/documents.h"

namespace ondrel::test {
namespace {

TEST(PosixDomLifetime, ANodeOfReplacedContentsIsOfNoDocument) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<old N='1'/>");
  const CComPtr<IXMLDOMElement> old = RootOf(document);
  ASSERT_EQ(Load(document, CString(_T("<new/>"))), S_OK);
  EXPECT_EQ(Hex(RootOf(document)->appendChild(old, nullptr)), Hex(E_INVALIDARG));
}

// Makes every allocation of `operation` fail once, the first, the second and so on, until it gets through.
template <class Operation>
void ExpectOutOfMemoryThenSuccess(Operation operation) {
  constexpr long kMostAllocations = 2'000;
  for (long index = 0; index < kMostAllocations; ++index) {
    HRESULT status = S_OK;
    bool failed = false;
    {
      FailingAllocation failing(index);
      status = operation();
      failed = failing.HasFailed();
    }
    if (!failed) {
      EXPECT_EQ(Hex(status), Hex(S_OK)) << "without a failing allocation";
      EXPECT_GT(index, 0) << "the operation allocates nothing, so this proves nothing";
      return;
    }
    EXPECT_EQ(Hex(status), Hex(E_OUTOFMEMORY)) << "allocation " << index;
  }
  FAIL() << "more allocations than expected";
}

std::string ManyElements() {
  std::string text = "<r xmlns:p='u'>";
  for (int number = 0; number < 300; ++number) {
    text += "<p:e" + std::to_string(number) + " a='" + std::string(200, 'v') + "'/>";
  }
  return text + "</r>";
}

TEST(PosixDomLifetime, OutOfMemoryWhileLoadingKeepsTheContents) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<first/>");
  const CComBSTR text(CString(ManyElements().c_str()));
  ExpectOutOfMemoryThenSuccess([&] {
    VARIANT_BOOL loaded = VARIANT_TRUE;
    const HRESULT status = document->loadXML(text, &loaded);
    if (FAILED(status)) {
      EXPECT_EQ(loaded, VARIANT_FALSE);
    }
    return status;
  });
  EXPECT_EQ(NameOf(RootOf(document)), _T("r"));
}

TEST(PosixDomLifetime, OutOfMemoryIsAStatusOfEveryOperation) {
  const CComBSTR name(_T("a_name_that_is_longer_than_a_short_string"));
  // A path that was asked for before takes no memory.
  const CComBSTR longerPath(_T("a_name_that_is_longer_than_a_short_string/b"));
  const CComPtr<IXMLDOMDocument> document = Loaded(
      "<r><a_name_that_is_longer_than_a_short_string><b/>"
      "</a_name_that_is_longer_than_a_short_string></r>");
  const CComPtr<IXMLDOMElement> root = RootOf(document);
  ExpectOutOfMemoryThenSuccess([&] {
    CComPtr<IXMLDOMNodeList> list;
    return root->selectNodes(name, &list);
  });
  ExpectOutOfMemoryThenSuccess([&] {
    CComPtr<IXMLDOMNodeList> list;
    return root->getElementsByTagName(name, &list);
  });
  ExpectOutOfMemoryThenSuccess([&] {
    CComPtr<IXMLDOMNode> node;
    return root->selectSingleNode(longerPath, &node);
  });
  ExpectOutOfMemoryThenSuccess([&] {
    CComPtr<IXMLDOMElement> element;
    return document->createElement(name, &element);
  });
  const CComPtr<IXMLDOMAttribute> attribute = NewAttribute(document, _T("a"), _T(""));
  const CComVariant value(CString('v', 50'000));
  ExpectOutOfMemoryThenSuccess([&] { return attribute->put_value(value); });
  ExpectOutOfMemoryThenSuccess([&] {
    CComPtr<IXMLDOMDocument> another;
    return another.CoCreateInstance(CLSID_DOMDocument, nullptr, CLSCTX_INPROC_SERVER);
  });
}

TEST(PosixDomLifetime, OutOfMemoryWhileWritingIsAStatus) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<r a_long_attribute_name='and a long value beside it'><c/></r>");
  ExpectOutOfMemoryThenSuccess([&]() -> HRESULT {
    CComPtr<IStream> stream;
    HRESULT status = CreateStreamOnHGlobal(nullptr, TRUE, &stream);
    CComPtr<IMXWriter> writer;
    if (SUCCEEDED(status)) status = writer.CoCreateInstance(CLSID_MXXMLWriter60, nullptr, CLSCTX_ALL);
    CComPtr<ISAXXMLReader> reader;
    if (SUCCEEDED(status)) status = reader.CoCreateInstance(CLSID_SAXXMLReader60, nullptr, CLSCTX_ALL);
    if (FAILED(status)) return status;
    CComPtr<ISAXContentHandler> handler;
    status = platform::GetContentHandler(writer, &handler);
    if (SUCCEEDED(status)) status = writer->put_output(CComVariant(static_cast<IUnknown*>(stream)));
    if (SUCCEEDED(status)) status = reader->putContentHandler(handler);
    return SUCCEEDED(status) ? reader->parse(CComVariant(static_cast<IDispatch*>(document))) : status;
  });
}

}  // namespace
}  // namespace ondrel::test
