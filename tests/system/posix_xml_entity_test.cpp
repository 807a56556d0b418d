// Chains of entities as long as this system's own reader allows. Windows may nest fewer.
#include <gtest/gtest.h>

#include "support/small_stack.h"
#include "system/documents.h"
#include "system/xml_texts.h"

namespace ondrel::test {
namespace {

TEST(PosixXmlEntities, AChainOfAsManyAsAreAllowedFitsASmallStack) {
  RunOnStack(kSmallStack, [] {
    const CComPtr<IXMLDOMDocument> document = Loaded(EntityChain(128, "<r a='&c127;'>&c127;</r>"));
    EXPECT_EQ(AttributeOf(RootOf(document), _T("a")), _T("end"));
  });
}

}  // namespace
}  // namespace ondrel::test
