// Loading narrow text when memory runs short.
#include <gtest/gtest.h>

#include "support/failing_allocation.h"
#include "system/documents.h"

namespace ondrel::test {
namespace {

TEST(NarrowLoadMemory, ThatRunsShortIsAStatus) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<former/>");
  const platform::NarrowTextReader read = [](char* buffer, std::size_t) {
    std::copy_n("<r/>", 4, buffer);
    return std::size_t{4};
  };
  VARIANT_BOOL loaded = VARIANT_TRUE;
  HRESULT status = S_OK;
  {
    const FailingAllocation failing(0);
    status = platform::LoadNarrowDocument(document, read, &loaded);
  }
  EXPECT_EQ(Hex(status), Hex(E_OUTOFMEMORY));
  EXPECT_EQ(loaded, VARIANT_FALSE);
  EXPECT_EQ(NameOf(RootOf(document)), _T("former"));
}

}  // namespace
}  // namespace ondrel::test
