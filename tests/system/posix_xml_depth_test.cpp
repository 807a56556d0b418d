// Elements nested a million deep: parsed, walked, written, destroyed, on a small stack. Windows has its own limits and
// stacks for depth.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>

#include "support/small_stack.h"
#include "system/documents.h"
#include "system/written_size.h"

namespace ondrel::test {
namespace {

// A million, or fewer where a sanitizer makes every step slow: still far beyond what recursion on this stack could do.
constexpr int kDepth = kSanitized ? 200'000 : 1'000'000;
constexpr int kMostTabs = 64;

// `first` opens the outermost element, `start` the others.
CString Nested(int depth, LPCWSTR first = _T("<n>"), LPCWSTR start = _T("<n>"), LPCWSTR end = _T("</n>")) {
  std::basic_string<WCHAR> text = first;
  for (int level = 1; level < depth; ++level) text += start;
  for (int level = 0; level < depth; ++level) text += end;
  return CString(std::move(text));
}

int Count(IXMLDOMNodeList* list) {
  int count = 0;
  for (CComPtr<IXMLDOMNode> node; list->nextNode(&node) == S_OK;) ++count;
  return count;
}

TEST(PosixXmlDepth, DeeplyNestedElementsAreReadWalkedAndWritten) {
  RunOnStack(kSmallStack, [] {
    const CComPtr<IXMLDOMDocument> document = Loaded(Nested(kDepth));
    CComPtr<IXMLDOMNodeList> list;
    ASSERT_EQ(RootOf(document)->getElementsByTagName(CComBSTR(_T("n")), &list), S_OK);
    EXPECT_EQ(Count(list), kDepth - 1);

    // Each element but the innermost has a start and an end line; the indentation stops growing at the limit.
    ULONGLONG expected = 0;
    for (ULONGLONG level = 0; level < kDepth; ++level) {
      const ULONGLONG tabs = std::min<ULONGLONG>(level, kMostTabs);
      const bool isInnermost = level + 1 == kDepth;
      expected += isInnermost ? tabs + 4 + 2 : (tabs + 3 + 2) + (tabs + 4 + 2);
    }
    WrittenSize stream;
    EXPECT_EQ(Hex(Write(document, &stream, {VARIANT_TRUE, VARIANT_TRUE, VARIANT_TRUE})), Hex(S_OK));
    EXPECT_EQ(stream.Size(), expected);
  });
}

TEST(PosixXmlDepth, DeeplyNestedElementsAreSelectedByPathOneByOne) {
  RunOnStack(kSmallStack, [] {
    const CComPtr<IXMLDOMDocument> document = Loaded(Nested(kDepth));
    CComPtr<IXMLDOMNode> node = static_cast<IXMLDOMNode*>(RootOf(document));
    const CComBSTR path(_T("n"));
    int depth = 0;
    for (HRESULT status = S_OK; status == S_OK; ++depth) {
      CComPtr<IXMLDOMNode> child;
      status = node->selectSingleNode(path, &child);
      node = child;
    }
    EXPECT_EQ(depth, kDepth);
  });
}

TEST(PosixXmlDepth, DeeplyNestedElementsAreBuiltFromEitherEnd) {
  RunOnStack(kSmallStack, [] {
    for (const bool topDown : {true, false}) {
      const CComPtr<IXMLDOMDocument> document = NewDocument();
      CComPtr<IXMLDOMElement> current = NewElement(document, _T("n"));
      if (topDown) {
        ASSERT_EQ(document->appendChild(current, nullptr), S_OK);
      }
      for (int level = 1; level < kDepth; ++level) {
        CComPtr<IXMLDOMElement> next = NewElement(document, _T("n"));
        ASSERT_EQ(topDown ? current->appendChild(next, nullptr) : next->appendChild(current, nullptr), S_OK);
        current = next;
      }
      if (!topDown) {
        ASSERT_EQ(document->appendChild(current, nullptr), S_OK);
      }
      CComPtr<IXMLDOMNodeList> list;
      ASSERT_EQ(RootOf(document)->getElementsByTagName(CComBSTR(_T("n")), &list), S_OK);
      EXPECT_EQ(Count(list), kDepth - 1);
    }
  });
}

TEST(PosixXmlDepth, PrefixesInDeeplyNestedElementsTakeLinearTime) {
  RunOnStack(kSmallStack, [] {
    EXPECT_TRUE(IsAccepted(Nested(kDepth, _T("<p:n xmlns:p='u'>"), _T("<p:n>"), _T("</p:n>"))));
    EXPECT_FALSE(IsAccepted(Nested(kDepth, _T("<n xmlns:q='u'>"), _T("<p:n>"), _T("</p:n>"))));
  });
}

TEST(PosixXmlDepth, ATextThatEndsInTheDepthIsRefused) {
  RunOnStack(kSmallStack, [] { EXPECT_FALSE(IsAccepted(Nested(kDepth).Left(3 * kDepth + 1))); });
}

}  // namespace
}  // namespace ondrel::test
