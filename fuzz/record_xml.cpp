// A record's XML form: a record is read from an element that nobody vouches for, written onto another one and read
// again; and through the binary form, too.

#include <string>
#include <vector>

#include "expect.h"
#include "input.h"
#include "support/archive_bytes.h"
#include "text.h"

#include <ondrel/MMCObjectParams.h>

namespace {

using namespace ondrel::fuzz;
using Params = CMMCObjectParams;

constexpr HRESULT kInvalidData = HRESULT_FROM_WIN32(ERROR_INVALID_DATA);

CComPtr<IXMLDOMDocument> NewDocument() {
  CComPtr<IXMLDOMDocument> document;
  AtlThrowIfFailed(ondrel::platform::CreateDocument(&document));
  return document;
}

/// The document's element, or null for text that is refused.
CComPtr<IXMLDOMElement> Parse(IXMLDOMDocument* document, const CString& text) {
  VARIANT_BOOL loaded = VARIANT_FALSE;
  const HRESULT status = ondrel::platform::LoadDocument(document, CComBSTR(text), &loaded);
  Expect(status == (loaded == VARIANT_FALSE ? S_FALSE : S_OK), "the status of a load agrees with its flag");
  CComPtr<IXMLDOMElement> element;
  const HRESULT found = document->get_documentElement(&element);
  Expect((found == S_OK) == (status == S_OK), "a document has an element when its text was taken");
  return element;
}

/// A Script without a File makes the read endless, which is stated.
bool HasEndlessScript(IXMLDOMElement* element) {
  CComPtr<IXMLDOMNodeList> scripts;
  AtlThrowIfFailed(element->selectNodes(CComBSTR(_T("Scripts/Script")), &scripts));
  CComPtr<IXMLDOMNode> script;
  while (scripts->nextNode(&script) == S_OK) {
    CComPtr<IXMLDOMNamedNodeMap> attributes;
    CComPtr<IXMLDOMNode> file;
    AtlThrowIfFailed(script->get_attributes(&attributes));
    if (attributes->getNamedItem(CComBSTR(_T("File")), &file) != S_OK) return true;
  }
  return false;
}

bool IsView(const Params& record) {
  return record.GetNodeType() == Params::eHTML || record.GetNodeType() == Params::eDialog;
}

/// The same record without what its type does not carry in a form.
Params Carried(const Params& record, bool inXml) {
  Params carried = record;
  if (inXml && record.GetNodeType() == Params::eDialog) carried.SetChildQueries({});
  if (!IsView(record)) {
    carried.SetStyleSheet(0);
    carried.SetRenderQueries({});
  }
  return carried;
}

void ExpectSame(const Params& actual, const Params& expected) {
  Expect(actual.GetCookie() == expected.GetCookie(), "the cookie survives");
  Expect(actual.GetName() == expected.GetName(), "the name survives");
  Expect(actual.GetIcon() == expected.GetIcon(), "the icon survives");
  Expect(actual.GetNodeType() == expected.GetNodeType(), "the type survives");
  Expect(actual.GetChildQueries() == expected.GetChildQueries(), "the child queries survive");
  Expect(actual.GetMenuScript() == expected.GetMenuScript(), "the menu script survives");
  Expect(actual.GetScripts() == expected.GetScripts(), "the scripts survive");
  Expect(actual.GetStyleSheet() == expected.GetStyleSheet(), "the style sheet survives");
  Expect(actual.GetRenderQueries() == expected.GetRenderQueries(), "the render queries survive");
}

template <class List>
List Twice(const List& once) {
  List twice = once;
  twice.insert(twice.end(), once.begin(), once.end());
  return twice;
}

void CheckXmlForm(const Params& record) {
  const CComPtr<IXMLDOMDocument> document = NewDocument();
  CComPtr<IXMLDOMElement> element;
  AtlThrowIfFailed(document->createElement(CComBSTR(_T("Node")), &element));
  Expect(record.Serialize(document, element) == S_OK, "a record is written");
  if (HasEndlessScript(element)) return;  // of cookie 0
  Params again;
  Expect(again.Deserialize(element.p) == S_OK, "what was written is read");
  ExpectSame(again, Carried(record, true));

  // The lists are added to, and everything else is replaced.
  Expect(again.Deserialize(element.p) == S_OK, "what was written is read again");
  Params expected = Carried(record, true);
  expected.SetChildQueries(Twice(expected.GetChildQueries()));
  expected.SetScripts(Twice(expected.GetScripts()));
  expected.SetRenderQueries(Twice(expected.GetRenderQueries()));
  ExpectSame(again, expected);
}

void CheckBinaryForm(const Params& record, int bufferSize) {
  const std::string stored =
      ondrel::test::Stored([&record](CVellum& archive) { record.Serialize(archive); }, bufferSize);
  ondrel::test::LoadingArchive archive(stored, bufferSize);
  Params again;
  again.Deserialize(*archive);
  Expect(archive.Unused() == 0, "a load takes exactly what was stored");
  ExpectSame(again, Carried(record, false));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input(data, size);
  const std::uint8_t choice = input.TakeLast();
  const bool isUtf8 = (choice & 0x08) != 0;  // as the library reads files, or with all characters there are
  const CComPtr<IXMLDOMDocument> document = NewDocument();
  const CComPtr<IXMLDOMElement> element = Parse(document, Widen(input.Left(), isUtf8 ? CP_UTF8 : CP_THREAD_ACP));
  if (element == nullptr || HasEndlessScript(element)) return 0;
  Params record;
  const HRESULT status = record.Deserialize(element.p);
  Expect(status == S_OK || status == kInvalidData || status == DISP_E_TYPEMISMATCH || status == DISP_E_OVERFLOW,
         "a record is read, or something is missing or no number");
  // What was read before a failure is a record, too.
  CheckXmlForm(record);
  CheckBinaryForm(record, ChooseBufferSize(choice & 0x07));
  return 0;
}
