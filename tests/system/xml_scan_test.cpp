// The scan that tells lines and reasons.
#include <gtest/gtest.h>

#include <stdexcept>

#include <ondrel/platform/xml_scan.h>

#include "support/small_stack.h"
#include "system/documents.h"
#include "system/xml_texts.h"

namespace ondrel::test {
namespace {

using platform::ScanXml;
using platform::XmlFault;
using platform::XmlScanHandler;

class Recorder : public XmlScanHandler {
 public:
  void OnStartElement(const CString& name, const std::vector<Attribute>& attributes, int line) override {
    events.append(std::to_string(line)).append("<").append(platform::ToUtf8(name));
    for (const Attribute& attribute : attributes) {
      events.append(" ").append(platform::ToUtf8(attribute.name));
      events.append("=").append(platform::ToUtf8(attribute.value));
    }
    events.append("> ");
  }
  void OnEndElement(const CString& name, int line) override {
    events.append(std::to_string(line)).append("</").append(platform::ToUtf8(name)).append("> ");
  }

  std::string events;
};

std::string FaultOf(const CString& text) {
  Recorder recorder;
  XmlFault fault;
  if (ScanXml(text, recorder, fault) == S_OK) return "accepted";
  return std::to_string(fault.line) + ": " + fault.reason;
}

std::string FaultOf(const char* text) { return FaultOf(CString(text)); }

TEST(XmlScan, ReportsElementsWithTheirLines) {
  Recorder recorder;
  XmlFault fault;
  EXPECT_EQ(ScanXml(CString("<?xml version='1.0'?>\r\n<a>\r\n  <b x='1'\n y='2'/>\n\n</a>"), recorder, fault), S_OK);
  EXPECT_EQ(recorder.events, "2<a> 3<b x=1 y=2> 4</b> 6</a> ");
}

/// Tells what is no element, and the elements beside it.
class PassageRecorder : public Recorder {
 public:
  void OnPassage(platform::XmlPassage passage, int line) override {
    constexpr const char* kNames[] = {"text", "comment", "instruction", "type"};
    events.append(std::to_string(line)).append(kNames[static_cast<int>(passage)]).append(" ");
  }
};

std::string PassagesOf(const char* text) {
  PassageRecorder recorder;
  XmlFault fault;
  EXPECT_EQ(ScanXml(CString(text), recorder, fault), S_OK) << fault.reason;
  return recorder.events;
}

TEST(XmlScan, ReportsWhatIsNoElement) {
  EXPECT_EQ(PassagesOf("<?xml version='1.0'?>\n<!-- c -->\n<?go on?><a>\n<!-- c\n-->\n <b/>\n</a>\n<!-- c -->"),
            "2comment 3instruction 3<a> 4comment 6<b> 6</b> 7</a> 8comment ");
}

TEST(XmlScan, ReportsARunOfTextOnce) {
  EXPECT_EQ(PassagesOf("<a>\n  \n x &amp; y\nz<![CDATA[ ]]><b/>\t<!-- c -->\n<![CDATA[<x>]]>&#65;</a>"),
            "1<a> 3text 4<b> 4</b> 4comment 5text 5</a> ");
}

TEST(XmlScan, ReportsADocumentTypeAsAWhole) {
  EXPECT_EQ(PassagesOf("<!DOCTYPE a [<!-- c --><?go on?>\n<!ENTITY b '<c/>text'>]>\n<a>&b;</a>"),
            "1type 3<a> 3<c> 3</c> 3text 3</a> ");
}

TEST(XmlScan, CountsTheLinesBeforeTheDeclaration) {
  Recorder recorder;
  XmlFault fault;
  EXPECT_EQ(ScanXml(CString("\n\r\n\r<?xml version='1.0'?>\n<a/>"), recorder, fault), S_OK);
  EXPECT_EQ(recorder.events, "5<a> 5</a> ");
}

TEST(XmlScan, AgreesWithLoadingOnEveryText) {
  for (const NamedText& text : AcceptedTexts()) EXPECT_EQ(FaultOf(text.text), "accepted") << text.name;
  for (const NamedText& text : RefusedTexts()) {
    Recorder recorder;
    XmlFault fault;
    EXPECT_EQ(ScanXml(text.text, recorder, fault), S_FALSE) << text.name;
    EXPECT_GE(fault.line, 1) << text.name;
    EXPECT_NE(fault.reason, "") << text.name;
    EXPECT_EQ(fault.reason.find('\n'), std::string::npos) << text.name;
    EXPECT_NE(fault.reason.empty() ? '.' : fault.reason.back(), '.') << text.name;
  }
}

TEST(XmlScan, SaysWhatIsWrongAndWhere) {
  EXPECT_EQ(FaultOf(""), "1: there is no element");
  EXPECT_EQ(FaultOf("<a>\n<Node>\n"), "3: the element Node is not closed");
  EXPECT_EQ(FaultOf("<a>\n<Node>\n</a>"), "3: the element Node is not closed");
  EXPECT_EQ(FaultOf("<a>\n<p:b/></a>"), "2: the prefix of p:b is not declared");
  EXPECT_EQ(FaultOf("<a>\n<b p:c=''/></a>"), "2: the prefix of p:c is not declared");
  EXPECT_EQ(FaultOf("<a\n b:=''/>"), "1: the name b: has a colon out of place");
  EXPECT_EQ(FaultOf("<a xmlns:p=''/>"), "1: the prefix of xmlns:p is declared without a name space");
  EXPECT_EQ(FaultOf("<!DOCTYPE a [\n<!ENTITY e SYSTEM 'f'>]><a/>"),
            "2: an external entity is declared; nothing outside the file is opened");
  EXPECT_EQ(FaultOf("<!DOCTYPE a SYSTEM 'f'><a/>"),
            "1: an external document type is declared; nothing outside the file is opened");
  EXPECT_EQ(FaultOf(CString(_T("<a>\n\n")) + CString(static_cast<WCHAR>(0xD800), 1) + _T("</a>")),
            "3: a half of a surrogate pair stands alone");
}

TEST(XmlScan, NamesTheLimitThatABombBreaks) {
  std::string text = "<!DOCTYPE r [<!ENTITY e '" + std::string(100'000, 'x') + "'>]><r a='";
  for (int count = 0; count < 1'000; ++count) text += "&e;";
  EXPECT_EQ(FaultOf((text + "'/>").c_str()), "1: entities expand beyond the limit");
  std::string many = "<!DOCTYPE r [";
  for (int count = 0; count < 200; ++count) many += "<!ENTITY e" + std::to_string(count) + " ''>";
  EXPECT_EQ(FaultOf((many + "]><r/>").c_str()), "1: more entities are declared than are accepted");
}

TEST(XmlScan, KeepsWhatWasReportedBeforeTheFault) {
  Recorder recorder;
  XmlFault fault;
  EXPECT_EQ(ScanXml(CString("<a><b/><c>"), recorder, fault), S_FALSE);
  EXPECT_EQ(recorder.events, "1<a> 1<b> 1</b> 1<c> ");
}

TEST(XmlScan, LetsAHandlersExceptionThrough) {
  struct Raising : XmlScanHandler {
    void OnStartElement(const CString&, const std::vector<Attribute>&, int) override {
      ++calls;
      throw std::runtime_error("enough");
    }
    void OnEndElement(const CString&, int) override { ++calls; }
    int calls = 0;
  };
  Raising handler;
  XmlFault fault;
  EXPECT_THROW(ScanXml(CString("<a/><"), handler, fault), std::runtime_error);
  EXPECT_EQ(handler.calls, 1);
}

TEST(XmlScan, BearsAnyDepth) {
  RunOnStack(kSmallStack, [] {
    constexpr int kDepth = 1'000'000;
    struct Counter : XmlScanHandler {
      void OnStartElement(const CString&, const std::vector<Attribute>&, int) override { ++starts; }
      void OnEndElement(const CString&, int) override { ++ends; }
      int starts = 0;
      int ends = 0;
    };
    std::string text;
    for (int level = 0; level < kDepth; ++level) text += "<n>";
    for (int level = 0; level < kDepth; ++level) text += "</n>";
    Counter counter;
    XmlFault fault;
    EXPECT_EQ(ScanXml(CString(text.c_str()), counter, fault), S_OK) << fault.reason;
    EXPECT_EQ(counter.starts, kDepth);
    EXPECT_EQ(counter.ends, kDepth);
  });
}

}  // namespace
}  // namespace ondrel::test
