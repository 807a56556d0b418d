// What a reader reports of a document, and when it stops.
#include <gtest/gtest.h>

#include "system/recorder.h"

namespace ondrel::test {
namespace {

TEST(SaxReader, ReportsTheDocumentInOrder) {
  Recorder recorder;
  const CComPtr<ISAXXMLReader> reader = NewReader(&recorder);
  EXPECT_EQ(Parse(reader, Loaded("<a x='1' y='&#x20AC;'><b/><c><d/></c></a>")), S_OK);
  EXPECT_EQ(recorder.events, "start <a x=1 y=\xE2\x82\xAC> <b> </b> <c> <d> </d> </c> </a> end ");
}

TEST(SaxReader, StopsAtTheFirstFailureAndGivesItBack) {
  const std::vector<std::string> untilCall = {"start ",
                                              "start <a> ",
                                              "start <a> <b> ",
                                              "start <a> <b> </b> ",
                                              "start <a> <b> </b> </a> ",
                                              "start <a> <b> </b> </a> end "};
  for (std::size_t call = 1; call <= untilCall.size(); ++call) {
    Recorder recorder(static_cast<int>(call));
    EXPECT_EQ(Hex(Parse(NewReader(&recorder), Loaded("<a><b/></a>"))), Hex(E_NOTIMPL)) << "call " << call;
    EXPECT_EQ(recorder.events, untilCall[call - 1]);
    EXPECT_EQ(recorder.references, 0U);
  }
}

TEST(SaxReader, WithoutAHandlerHasNothingToDo) { EXPECT_EQ(Parse(NewReader(nullptr), Loaded("<a/>")), S_OK); }

TEST(SaxReader, LetsGoOfAHandlerThatIsReplaced) {
  Recorder first;
  Recorder second;
  {
    const CComPtr<ISAXXMLReader> reader = NewReader(&first);
    EXPECT_EQ(first.references, 1U);
    EXPECT_EQ(reader->putContentHandler(&second), S_OK);
    EXPECT_EQ(first.references, 0U);
    EXPECT_EQ(reader->putContentHandler(&second), S_OK);
    EXPECT_EQ(second.references, 1U);
  }
  EXPECT_EQ(second.references, 0U);
}

}  // namespace
}  // namespace ondrel::test
