// Lists of elements by name and by path, while the document is as it was loaded and after it has changed.
#include <gtest/gtest.h>

#include "system/documents.h"

namespace ondrel::test {
namespace {

CComPtr<IXMLDOMElement> ElementAt(IXMLDOMDocument* document, LPCWSTR path) {
  CComPtr<IXMLDOMNode> node;
  EXPECT_EQ(document->selectSingleNode(CComBSTR(path), &node), S_OK);
  CComPtr<IXMLDOMElement> element;
  EXPECT_EQ(node.QueryInterface(&element), S_OK);
  return element;
}

CComPtr<IXMLDOMNodeList> TagList(IXMLDOMElement* element, LPCWSTR name) {
  CComPtr<IXMLDOMNodeList> list;
  EXPECT_EQ(element->getElementsByTagName(CComBSTR(name), &list), S_OK);
  return list;
}

/// The attribute N of the next node, or "end".
CString NextOf(IXMLDOMNodeList* list) {
  CComPtr<IXMLDOMNode> node;
  return list->nextNode(&node) == S_OK ? AttributeOf(node, _T("N")) : CString(_T("end"));
}

TEST(DomLists, ByNameGoInDocumentOrder) {
  const CComPtr<IXMLDOMDocument> document =
      Loaded("<r><a N='1'><b N='2'><a N='3'><a N='4'/></a></b><a N='5'/></a><b N='6'/><a N='7'/></r>");
  EXPECT_EQ(Tagged(RootOf(document), _T("a")), "a(1) a(3) a(4) a(5) a(7) ");
  EXPECT_EQ(Tagged(RootOf(document), _T("b")), "b(2) b(6) ");
  EXPECT_EQ(Tagged(RootOf(document), _T("c")), "");
}

TEST(DomLists, ByNameLeaveOutTheElementThatIsAsked) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<a N='1'><a N='2'><a N='3'/></a><b><a N='4'/></b></a>");
  EXPECT_EQ(Tagged(RootOf(document), _T("a")), "a(2) a(3) a(4) ");
  EXPECT_EQ(Tagged(RootOf(Loaded("<a/>")), _T("a")), "");
}

TEST(DomLists, ByNameStayBelowAnInnerElement) {
  const CComPtr<IXMLDOMDocument> document =
      Loaded("<r><a N='1'/><s><a N='2'><a N='3'/></a><t><a N='4'/></t></s><a N='5'/></r>");
  EXPECT_EQ(Tagged(ElementAt(document, _T("r/s")), _T("a")), "a(2) a(3) a(4) ");
  EXPECT_EQ(Tagged(ElementAt(document, _T("r/s/a")), _T("a")), "a(3) ");
  EXPECT_EQ(Tagged(ElementAt(document, _T("r/a")), _T("a")), "");
}

TEST(DomLists, ByNameFollowAnElementThatMoved) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<r><s><a N='1'/></s><a N='2'/><t><a N='3'/></t></r>");
  ASSERT_EQ(ElementAt(document, _T("r/t"))->appendChild(ElementAt(document, _T("r/s/a")), nullptr), S_OK);
  EXPECT_EQ(Tagged(RootOf(document), _T("a")), "a(2) a(3) a(1) ");
  EXPECT_EQ(Tagged(ElementAt(document, _T("r/s")), _T("a")), "");
}

TEST(DomLists, ByNameHaveElementsThatCameLater) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<r><a N='1'><b/></a><a N='3'/></r>");
  const CComPtr<IXMLDOMElement> added = NewElement(document, _T("a"));
  SetAttribute(document, added, _T("N"), _T("2"));
  EXPECT_EQ(Tagged(RootOf(document), _T("a")), "a(1) a(3) ") << "stands nowhere yet";
  ASSERT_EQ(ElementAt(document, _T("r/a/b"))->appendChild(added, nullptr), S_OK);
  EXPECT_EQ(Tagged(RootOf(document), _T("a")), "a(1) a(2) a(3) ");
}

TEST(DomLists, ByNameOfAnElementThatWasTakenIntoAnother) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<r><s><a N='1'/></s><a N='2'/></r>");
  const CComPtr<IXMLDOMElement> outside = NewElement(document, _T("o"));
  ASSERT_EQ(outside->appendChild(ElementAt(document, _T("r/s")), nullptr), S_OK);
  EXPECT_EQ(Tagged(RootOf(document), _T("a")), "a(2) ");
  EXPECT_EQ(Tagged(outside, _T("a")), "a(1) ");
}

TEST(DomLists, OfContentsThatWereReplacedGoOn) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<r><a N='1'/><a N='2'/></r>");
  const CComPtr<IXMLDOMNodeList> list = TagList(RootOf(document), _T("a"));
  EXPECT_EQ(NextOf(list), _T("1"));
  ASSERT_EQ(Load(document, CString("<r><a N='5'/></r>")), S_OK);
  EXPECT_EQ(NextOf(list), _T("2"));
  EXPECT_EQ(NextOf(list), _T("end"));
  EXPECT_EQ(Tagged(RootOf(document), _T("a")), "a(5) ");
}

TEST(DomLists, ByPathHaveNamesThatCameAfterThePathWasAskedFor) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<r><s N='1'/></r>");
  const CComPtr<IXMLDOMElement> root = RootOf(document);
  for (const WCHAR* const path : {_T("t"), _T("s/t"), _T("t/s"), _T("s/u/t")}) {
    EXPECT_EQ(Selected(root, path), "");
    EXPECT_EQ(Selected(root, path), "");
  }
  const CComPtr<IXMLDOMElement> added = NewElement(document, _T("t"));
  SetAttribute(document, added, _T("N"), _T("2"));
  EXPECT_EQ(Selected(root, _T("t")), "") << "stands nowhere yet";
  ASSERT_EQ(root->appendChild(added, nullptr), S_OK);
  EXPECT_EQ(Selected(root, _T("t")), "t(2) ");
  EXPECT_EQ(Selected(root, _T("s/t")), "");
  ASSERT_EQ(ElementAt(document, _T("r/s"))->appendChild(NewElement(document, _T("t")), nullptr), S_OK);
  EXPECT_EQ(Selected(root, _T("s/t")), "t((none)) ");
  ASSERT_EQ(added->appendChild(NewElement(document, _T("s")), nullptr), S_OK);
  EXPECT_EQ(Selected(root, _T("t/s")), "s((none)) ");
  EXPECT_EQ(Selected(root, _T("s/u/t")), "");
}

TEST(DomLists, ByPathOfManyPathsAreKeptApart) {
  constexpr int kPaths = 60;
  std::string text = "<r>";
  for (int number = 0; number < kPaths; ++number) {
    const std::string digits = std::to_string(number);
    text += "<n" + digits + " N='" + digits + "'><m N='" + digits + "'/></n" + digits + ">";
  }
  const CComPtr<IXMLDOMDocument> document = Loaded(text + "</r>");
  for (int round = 0; round < 3; ++round) {
    for (int number = 0; number < kPaths; ++number) {
      const std::string digits = std::to_string(number);
      const std::string name = "n" + digits;
      EXPECT_EQ(Selected(RootOf(document), CString(name.c_str())), name + "(" + digits + ") ");
      EXPECT_EQ(Selected(RootOf(document), CString((name + "/m").c_str())), "m(" + digits + ") ");
      EXPECT_EQ(Selected(document, CString(("r/" + name).c_str())), name + "(" + digits + ") ");
    }
  }
}

TEST(DomLists, ByPathGoOnWhileManyOthersAreAskedFor) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<r><s><a N='1'/></s><s><a N='2'/></s></r>");
  CComPtr<IXMLDOMNodeList> list;
  ASSERT_EQ(RootOf(document)->selectNodes(CComBSTR(_T("s/a")), &list), S_OK);
  EXPECT_EQ(NextOf(list), _T("1"));
  for (int number = 0; number < 200; ++number) {
    EXPECT_EQ(Selected(RootOf(document), CString(("x" + std::to_string(number)).c_str())), "");
  }
  EXPECT_EQ(NextOf(list), _T("2"));
  EXPECT_EQ(NextOf(list), _T("end"));
}

}  // namespace
}  // namespace ondrel::test
