// A scan of XML text that tells lines: the parser that loadXML has off Windows, with what it finds reported as
// wide strings.

#include <ondrel/platform/xml_scan.h>

#include <algorithm>
#include <limits>

#include <ondrel/platform/com.h>

#include "text/xml_text_parser.h"

namespace ondrel::platform {

namespace {

class ScanSink final : public XmlElementSink, public XmlPassageSink {
 public:
  explicit ScanSink(XmlScanHandler& handler) : m_handler(handler) {}

  void SetParser(const XmlTextParser& parser) { m_parser = &parser; }

  void OnStartElement(std::string_view name, std::span<const Attribute> attributes) override {
    m_open.emplace_back(name);
    m_attributes.clear();
    for (const Attribute& attribute : attributes) {
      m_attributes.push_back({Wide(attribute.name), Wide(attribute.value)});
    }
    m_isInText = false;
    m_handler.OnStartElement(Wide(name), m_attributes, Line());
  }

  void OnEndElement(std::string_view name) override {
    m_open.pop_back();
    m_isInText = false;
    m_handler.OnEndElement(Wide(name), Line());
  }

  void OnPassage(XmlPassage passage) override {
    const bool isText = passage == XmlPassage::text;
    if (!(isText && m_isInText)) m_handler.OnPassage(passage, Line());
    m_isInText = isText;
  }

  std::string OpenElement() const override { return m_open.empty() ? std::string() : m_open.back(); }

 private:
  CString Wide(std::string_view text) {
    if (text.empty()) return {};
    const int bytes = static_cast<int>(text.size());
    m_units.resize(text.size());  // UTF-16 never has more units than UTF-8 has bytes
    const int length = MultiByteToWideChar(CP_UTF8, 0, text.data(), bytes, m_units.data(), bytes);
    return CString(m_units.data(), length);
  }
  int Line() const;
  XmlScanHandler& m_handler;
  const XmlTextParser* m_parser = nullptr;
  bool m_isInText = false;          // what was reported last is text that may go on
  std::vector<std::string> m_open;  // the names of the elements that are open, outermost first
  std::vector<XmlScanHandler::Attribute> m_attributes;
  std::basic_string<WCHAR> m_units;
};

int IntLine(std::uint64_t line) {
  return static_cast<int>(std::min<std::uint64_t>(line, std::numeric_limits<int>::max()));
}

int ScanSink::Line() const { return IntLine(m_parser->Line()); }

}  // namespace

HRESULT ScanXml(const CString& text, XmlScanHandler& handler, XmlFault& fault) {
  ScanSink sink(handler);
  XmlTextParser parser(sink);
  sink.SetParser(parser);
  parser.ReportPassages(sink);
  XmlTextFault found;
  if (parser.Parse(text.View(), found)) return S_OK;
  fault.line = IntLine(found.line);
  fault.reason = std::move(found.reason);
  return S_FALSE;
}

}  // namespace ondrel::platform
