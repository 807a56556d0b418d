// Contract: a scan of XML text that tells lines, for tools that explain a file to people.
#pragma once

#include <string>
#include <vector>

#include <ondrel/platform/framework/string.h>
#include <ondrel/platform/xml_passage.h>

namespace ondrel::platform {

/// What ScanXml reports. Names and values are valid during the call only. Lines count from 1.
class XmlScanHandler {
 public:
  struct Attribute {
    CString name;
    CString value;
  };

  virtual ~XmlScanHandler() = default;
  virtual void OnStartElement(const CString& name, const std::vector<Attribute>& attributes, int line) = 0;
  virtual void OnEndElement(const CString& name, int line) = 0;
  /// A run of text is told once, where it begins to be more than blanks.
  virtual void OnPassage(XmlPassage /*passage*/, int /*line*/) {}
};

struct XmlFault {
  int line = 0;        ///< From 1; 0 when it is not known.
  std::string reason;  ///< In UTF-8, for people, without a closing stop.
};

/// Reads XML text with the same rules as loadXML and reports what it has in document order. S_OK, or S_FALSE for text
/// that loadXML refuses, with the reason in `fault`; what was reported before stays reported.
HRESULT ScanXml(const CString& text, XmlScanHandler& handler, XmlFault& fault);

}  // namespace ondrel::platform
