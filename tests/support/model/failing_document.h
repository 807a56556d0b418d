// A document whose calls fail when a test says so: stand-ins for a real document and everything obtained from it, which
// count the calls that reach them, pass them on, and fail one.
#pragma once

#include <string>
#include <vector>

#include <ondrel/platform/xml.h>
#include "support/statuses.h"

namespace ondrel::test {

/// The calls to a document's stand-ins, and the one that fails. It outlives the stand-ins.
class DocumentCalls {
 public:
  /// Makes the call number `call` (from 1) fail with `status`; 0 for none. A failed call is not passed on.
  explicit DocumentCalls(std::size_t failing = 0, HRESULT status = kChosenFailure)
      : m_failing(failing), m_status(status) {}

  /// The calls so far: the operation, and the name that it was given, if any: "createElement Query", "put_value".
  const std::vector<std::string>& Log() const { return m_log; }
  /// Whether the call that was chosen has been made.
  bool HasFailed() const { return m_failing != 0 && m_log.size() >= m_failing; }

  /// Notes a call. The status with which it fails, or S_OK when it is to be passed on.
  HRESULT Note(std::string call);

 private:
  std::size_t m_failing;
  HRESULT m_status;
  std::vector<std::string> m_log;
};

/// Stand-ins. What is obtained from one is a stand-in too, and what is passed to one may be.
CComPtr<IXMLDOMDocument> Failing(IXMLDOMDocument* document, DocumentCalls& calls);
CComPtr<IXMLDOMElement> Failing(IXMLDOMElement* element, DocumentCalls& calls);
CComPtr<IXMLDOMNodeList> Failing(IXMLDOMNodeList* nodes, DocumentCalls& calls);

}  // namespace ondrel::test
