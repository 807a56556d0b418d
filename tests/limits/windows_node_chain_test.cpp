// A chain of a million nodes as a document. Not as text: Wine's parser refuses elements that are nested so deep.
#include <gtest/gtest.h>

#include "node_chain.h"
#include "support/model/documents.h"
#include "support/model/set_forms.h"

namespace ondrel::test {
namespace {

TEST(WindowsNodeChain, PassesThroughADocumentAndBack) {
  RunOnStack(kChainStack, [] {
    const CComPtr<IXMLDOMDocument> document = NewDocument();
    const CComPtr<IXMLDOMElement> root = AddRoot(document, _T("P"));
    CComPtr<IXMLDOMElement> group;
    ASSERT_EQ(document->createElement(CComBSTR(_T("G")), &group), 0);
    ASSERT_EQ(root->appendChild(group, nullptr), 0);
    {
      CMMCObjectSet set(LeaveToSet);
      FillChain(set);
      ASSERT_EQ(CMMCObjectSetProbe::SerializeNode(set, 0, document, group), 0);
    }
    CMMCObjectSet set(LeaveToSet);
    ASSERT_EQ(CMMCObjectSetProbe::DeserializeNodes(set, CMMCObjectSet::RootNode, Select(root, _T("G"))), 1);
    ExpectChain(set);
  });
}

}  // namespace
}  // namespace ondrel::test
