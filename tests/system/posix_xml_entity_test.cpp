// Chains of entities as long as this system's own reader allows. Windows may nest fewer.
#include <gtest/gtest.h>

#include "support/small_stack.h"
#include "system/documents.h"

namespace ondrel::test {
namespace {

std::string Chain(int entities, const std::string& use) {
  std::string text = "<!DOCTYPE r [<!ENTITY c0 'end'>";
  for (int link = 1; link < entities; ++link) {
    text += "<!ENTITY c" + std::to_string(link) + " '&c" + std::to_string(link - 1) + ";'>";
  }
  return text + "]>" + use;
}

TEST(PosixXmlEntities, AChainOfAsManyAsAreAllowedFitsASmallStack) {
  RunOnStack(kSmallStack, [] {
    const CComPtr<IXMLDOMDocument> document = Loaded(Chain(128, "<r a='&c127;'>&c127;</r>"));
    EXPECT_EQ(AttributeOf(RootOf(document), _T("a")), _T("end"));
  });
}

}  // namespace
}  // namespace ondrel::test
