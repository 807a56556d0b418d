// The read of a script element without a file, which does not end.

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <string_view>

#include "support/deadline.h"
#include "support/model/documents.h"
#include "support/model/failing_document.h"
#include "support/model/sets.h"

namespace ondrel::test {
namespace {

using std::chrono::milliseconds;

constexpr std::string_view kWithFiles =
    R"(<R Cookie="1" Name="n" Icon="0" Type="List"><MenuScript/><Scripts><Script File="4"/><Script File="5"/></Scripts></R>)";
constexpr std::string_view kWithoutFile =
    R"(<R Cookie="1" Name="n" Icon="0" Type="List"><MenuScript/><Scripts><Script File="4"/><Script/></Scripts></R>)";

void Read(std::string_view xml) {
  const CComPtr<IXMLDOMDocument> document = ParseDocument(xml);
  CMMCObjectParams record;
  record.Deserialize(CComPtr<IXMLDOMNode>(RootOf(document)));
}

TEST(ParamsXmlEndless, AScriptWithoutAFileIsReadForEver) {
  EXPECT_TRUE(EndsWithin([] { Read(kWithFiles); }, milliseconds(20000)));
  EXPECT_FALSE(EndsWithin([] { Read(kWithoutFile); }, milliseconds(500)));
}

TEST(ParamsXmlEndless, ARecordThatTheWriterMadeWithAScriptOfZeroIsReadForEver) {
  EXPECT_FALSE(EndsWithin(
      [] {
        const CComPtr<IXMLDOMDocument> document = NewDocument();
        const CComPtr<IXMLDOMElement> root = AddRoot(document, _T("R"));
        if (MakeRecord({.scripts = {0}}).Serialize(document, root) != 0) return;
        CMMCObjectParams record;
        record.Deserialize(CComPtr<IXMLDOMNode>(root));
      },
      milliseconds(500)));
}

TEST(ParamsXmlEndless, TheWalkStaysAtTheElementAndAddsNothing) {
  // A failure far down the walk ends it, so that what it did until then can be seen.
  constexpr std::size_t kFar = 10000;
  const CComPtr<IXMLDOMDocument> document = ParseDocument(kWithoutFile);
  DocumentCalls calls(kFar);
  CMMCObjectParams record;
  EXPECT_EQ(record.Deserialize(CComPtr<IXMLDOMNode>(Failing(RootOf(document), calls))), 0)
      << "a failure in the walk over the scripts is not reported";
  EXPECT_EQ(calls.Log().size(), kFar) << "nothing is read after it";
  EXPECT_TRUE(SameRecord(record, {.cookie = 1, .name = _T("n"), .scripts = {4}}));
  EXPECT_EQ(std::count(calls.Log().begin(), calls.Log().end(), "nextNode"), 3)
      << "one step that ends the child queries, and the steps to the two scripts";
  EXPECT_GT(std::count(calls.Log().begin(), calls.Log().end(), "getNamedItem File"), std::ptrdiff_t{kFar} / 4);
}

}  // namespace
}  // namespace ondrel::test
