// Documents of their own on several threads: the parser, the tree, the writer and the records' XML form.

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include <ondrel/MMCObjectSet.h>

#include "support/model/documents.h"
#include "support/model/set_forms.h"
#include "support/model/sets.h"
#include "support/raised_status.h"
#include "threads/on_threads.h"

namespace ondrel::test {
namespace {

constexpr int kDocuments = 40;

TEST(DocumentsOfThreads, AreReadAndToldEachForItself) {
  OnThreads([](int thread) {
    for (int round = 0; round < kDocuments; ++round) {
      const std::string number = std::to_string(thread) + "." + std::to_string(round);
      const auto document = ParseDocument("<A X='" + number + "&#33;'><B Y='&lt;" + number + "'/><B/></A>");
      EXPECT_EQ(XmlOf(document), "<A X=\"" + number + "!\"><B Y=\"&lt;" + number + "\"/><B/></A>");
      const auto found = Select(RootOf(document), _T("B"));
      for (const HRESULT status : {S_OK, S_OK, S_FALSE}) {
        CComPtr<IXMLDOMNode> node;
        EXPECT_EQ(found->nextNode(&node), status);
      }
      EXPECT_THROW(ParseDocument("<A>" + number), std::invalid_argument);
    }
  });
}

TEST(DocumentsOfThreads, CarryRecordsThereAndBack) {
  OnThreads([](int thread) {
    for (int round = 0; round < kDocuments; ++round) {
      RecordFields fields = FullRecord(CMMCObjectParams::eHTML);
      fields.cookie = thread * kDocuments + round;
      fields.name.Format(_T("<%d & %d>"), thread, round);
      const auto document = NewDocument();
      const auto element = AddRoot(document, _T("Node"));
      EXPECT_EQ(MakeRecord(fields).Serialize(document, element), S_OK);
      CMMCObjectParams read;
      EXPECT_EQ(read.Deserialize(CComPtr<IXMLDOMNode>(element)), S_OK);
      EXPECT_TRUE(SameRecord(read, fields));
    }
  });
}

TEST(DocumentsOfThreads, AreRefusedEachForItself) {
  OnThreads([](int thread) {
    CMMCObjectSet set(LeaveToSet);
    for (int round = 0; round < kDocuments; ++round) {
      // Half of the threads load what is refused while the others load what is not.
      const std::string dialog =
          R"(<Dialog Cookie="7" Name="d" Icon="0" Type="Dialog"><MenuScript/><StyleSheet/></Dialog>)";
      const std::string twice = thread % 2 == 0 ? dialog : "";
      const std::string project = "<Project><DialogGroup>" + dialog + twice + "</DialogGroup></Project>";
      EXPECT_EQ(RaisedStatus([&] { LoadProject(set, project); }), thread % 2 == 0 ? "0x800700B7" : "nothing");
      EXPECT_EQ(set.GetDialogs().size(), thread % 2 == 0 ? 0U : 1U);
    }
  });
}

}  // namespace
}  // namespace ondrel::test
