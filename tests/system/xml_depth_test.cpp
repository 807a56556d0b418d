// Elements nested as deep as every system takes them.
#include <gtest/gtest.h>

#include "system/documents.h"

namespace ondrel::test {
namespace {

constexpr int kManyLevels = 200;

TEST(XmlDepth, NestedElementsAreReadWalkedAndWritten) {
  std::string text;
  for (int level = 0; level < kManyLevels; ++level) text += "<n>";
  for (int level = 0; level < kManyLevels; ++level) text += "</n>";
  const std::string again = Written(Loaded(text));
  for (const CComPtr<IXMLDOMDocument>& document : {Loaded(text), Loaded(again)}) {
    CComPtr<IXMLDOMNodeList> list;
    ASSERT_EQ(RootOf(document)->getElementsByTagName(CComBSTR(_T("n")), &list), S_OK);
    int below = 0;
    for (CComPtr<IXMLDOMNode> node; list->nextNode(&node) == S_OK;) ++below;
    EXPECT_EQ(below, kManyLevels - 1);

    CComPtr<IXMLDOMNode> node = static_cast<IXMLDOMNode*>(RootOf(document));
    int depth = 0;
    for (HRESULT status = S_OK; status == S_OK; ++depth) {
      CComPtr<IXMLDOMNode> child;
      status = node->selectSingleNode(CComBSTR(_T("n")), &child);
      node = child;
    }
    EXPECT_EQ(depth, kManyLevels);
  }
}

}  // namespace
}  // namespace ondrel::test
