// A stream that looks at the document while it is written.
#include <gtest/gtest.h>

#include "support/counted_stream.h"
#include "system/documents.h"

namespace ondrel::test {
namespace {

/// Asks for an attribute of the document's element at its first write.
class LookingStream final : public CountedStream {
 public:
  explicit LookingStream(IXMLDOMDocument* document) : m_document(document) {}
  std::string bytes;

  HRESULT STDMETHODCALLTYPE Read(void*, ULONG, ULONG*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Write(const void* buffer, ULONG count, ULONG* written) override {
    if (bytes.empty()) {
      EXPECT_EQ(AttributeOf(RootOf(m_document), _T("b")), _T("2"));
    }
    bytes.append(static_cast<const char*>(buffer), count);
    if (written != nullptr) *written = count;
    return S_OK;
  }

 private:
  IXMLDOMDocument* m_document;
};

TEST(PosixXmlWriterDirect, AStreamMayLookAtTheDocument) {
  const std::string value(70'000, 'v');
  const std::string text = "<r a=\"" + value + "\" b=\"2\"/>";
  const CComPtr<IXMLDOMDocument> document = Loaded(text);
  LookingStream stream(document);
  EXPECT_EQ(Write(document, &stream, kPlainWriter), S_OK);
  EXPECT_TRUE(stream.bytes == text) << stream.bytes.size() << " bytes";
}

}  // namespace
}  // namespace ondrel::test
