// Expressions that select more than paths of names do. Windows knows many of them.
#include <gtest/gtest.h>

#include "system/documents.h"

namespace ondrel::test {
namespace {

TEST(PosixDomSelection, OtherExpressionsAreRefused) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<r><a/></r>");
  for (const LPCWSTR path : {_T(""), _T("/a"), _T("a/"), _T("a//b"), _T("//a"), _T("*"), _T("@a"), _T("a[1]"), _T("."),
                             _T(".."), _T("a | b"), _T("a b"), _T("x:a")}) {
    CComPtr<IXMLDOMNodeList> list;
    CComPtr<IXMLDOMNode> node;
    EXPECT_EQ(Hex(RootOf(document)->selectNodes(CComBSTR(path), &list)), Hex(E_FAIL)) << platform::ToUtf8(path);
    EXPECT_EQ(Hex(RootOf(document)->selectSingleNode(CComBSTR(path), &node)), Hex(E_FAIL)) << platform::ToUtf8(path);
    EXPECT_EQ(list.p, nullptr);
  }
}

// Under Wine, a list by name that was begun does not see what comes later.
TEST(PosixDomSelection, AWalkByNameGoesOnWhenSomethingIsAppended) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<r><a N='1'/><a N='2'><b/></a><a N='3'/></r>");
  CComPtr<IXMLDOMNodeList> list;
  ASSERT_EQ(RootOf(document)->getElementsByTagName(CComBSTR(_T("a")), &list), S_OK);
  CComPtr<IXMLDOMNode> node;
  ASSERT_EQ(list->nextNode(&node), S_OK);
  EXPECT_EQ(AttributeOf(node, _T("N")), _T("1"));
  for (const WCHAR* const path : {_T("r/a/b"), _T("r")}) {
    const CComPtr<IXMLDOMElement> added = NewElement(document, _T("a"));
    SetAttribute(document, added, _T("N"), _T("new"));
    CComPtr<IXMLDOMNode> parent;
    ASSERT_EQ(document->selectSingleNode(CComBSTR(path), &parent), S_OK);
    ASSERT_EQ(parent->appendChild(added, nullptr), S_OK);
  }
  EXPECT_EQ(Listing(list), "a(2) a(new) a(3) a(new) ");
}

}  // namespace
}  // namespace ondrel::test
