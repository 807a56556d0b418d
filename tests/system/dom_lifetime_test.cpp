// Who keeps a document's nodes alive. The address sanitizer finds what is used too late or never freed.
#include <gtest/gtest.h>

#include "system/documents.h"

namespace ondrel::test {
namespace {

TEST(DomLifetime, ANodeOutlivesItsDocument) {
  CComPtr<IXMLDOMNode> child;
  CComPtr<IXMLDOMNamedNodeMap> attributes;
  CComPtr<IXMLDOMNodeList> list;
  {
    const CComPtr<IXMLDOMDocument> document = Loaded("<r><c N='1'><d N='2'/></c></r>");
    ASSERT_EQ(RootOf(document)->selectSingleNode(CComBSTR(_T("c")), &child), S_OK);
    ASSERT_EQ(child->get_attributes(&attributes), S_OK);
    ASSERT_EQ(child->selectNodes(CComBSTR(_T("d")), &list), S_OK);
  }
  EXPECT_EQ(NameOf(child), _T("c"));
  child.Release();
  CComPtr<IXMLDOMNode> item;
  EXPECT_EQ(attributes->getNamedItem(CComBSTR(_T("N")), &item), S_OK);
  attributes.Release();
  item.Release();
  EXPECT_EQ(Listing(list), "d(2) ");
}

TEST(DomLifetime, ANodeOutlivesTheContentsItCameFrom) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<old N='1'/>");
  const CComPtr<IXMLDOMElement> old = RootOf(document);
  ASSERT_EQ(Load(document, CString(_T("<new/>"))), S_OK);
  EXPECT_EQ(AttributeOf(old, _T("N")), _T("1"));
}

TEST(DomLifetime, NodesThatStandNowhereGoWithTheDocument) {
  const CComPtr<IXMLDOMDocument> document = NewDocument();
  for (int number = 0; number < 100; ++number) {
    SetAttribute(document, NewElement(document, _T("lost")), _T("a"), CString('x', 5'000));
  }
  EXPECT_EQ(document->appendChild(NewElement(document, _T("kept")), nullptr), S_OK);
}

}  // namespace
}  // namespace ondrel::test
