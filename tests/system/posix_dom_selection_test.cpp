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

}  // namespace
}  // namespace ondrel::test
