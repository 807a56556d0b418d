// Loading text of the narrow code page, which is handed over piece by piece.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include <ondrel/platform/framework.h>

#include "system/documents.h"

namespace ondrel::test {
namespace {

using platform::LoadNarrowDocument;

constexpr std::size_t kPiece = std::size_t{32} * 1024;  // the most that is asked for at first

/// Hands a text over, and raises a file's exception instead of the piece that was told to fail.
class NarrowText {
 public:
  explicit NarrowText(std::string text, int failing = 0) : m_text(std::move(text)), m_failing(failing) {}

  std::size_t operator()(char* buffer, std::size_t size) {
    if (++m_reads == m_failing) AfxThrowFileException(CFileException::hardIO, -1, _T("narrow.xml"));
    const std::size_t count = std::min(size, m_text.size() - m_place);
    std::copy_n(m_text.begin() + static_cast<std::ptrdiff_t>(m_place), count, buffer);
    m_place += count;
    return count;
  }

 private:
  std::string m_text;
  std::size_t m_place = 0;
  int m_reads = 0;
  int m_failing;
};

HRESULT LoadNarrow(IXMLDOMDocument* document, const std::string& text) {
  VARIANT_BOOL loaded = VARIANT_TRUE;
  const HRESULT status = LoadNarrowDocument(document, NarrowText(text), &loaded);
  EXPECT_EQ(loaded, status == S_OK ? VARIANT_TRUE : VARIANT_FALSE);
  return status;
}

CString ValueOf(const std::string& text) {
  const CComPtr<IXMLDOMDocument> document = NewDocument();
  if (LoadNarrow(document, text) != S_OK) return _T("(refused)");
  return AttributeOf(RootOf(document), _T("v"));
}

/// The units of the bytes 0x80 to 0x9F.
constexpr std::array<WCHAR, 32> kSpecialUnits = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                 0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

std::string SpecialBytes() {
  std::string bytes;
  for (int byte = 0x80; byte < 0xA0; ++byte) bytes += static_cast<char>(byte);
  return bytes;
}

CString SpecialUnits() { return CString(kSpecialUnits.data(), static_cast<int>(kSpecialUnits.size())); }

TEST(NarrowLoad, ReadsEveryByteByTheCodePage) {
  for (int byte = 0; byte < 0x100; ++byte) {
    const std::string raw(1, static_cast<char>(byte));
    const std::string reference = "&#" + std::to_string(byte) + ";";
    const bool isBlank = byte == '\t' || byte == '\n' || byte == '\r';
    const bool isMark = byte == '&' || byte == '<' || byte == '\'';
    const auto unit =
        static_cast<WCHAR>(byte >= 0x80 && byte < 0xA0 ? kSpecialUnits[static_cast<unsigned>(byte - 0x80)] : byte);
    if (byte < ' ' && !isBlank) {
      EXPECT_EQ(ValueOf("<r v='" + raw + "'/>"), _T("(refused)")) << byte;
      EXPECT_EQ(ValueOf("<r v='" + reference + "'/>"), _T("(refused)")) << byte;
    } else if (isBlank || isMark) {
      EXPECT_EQ(ValueOf("<r v='x" + reference + "y'/>"), _T("x") + CString(unit, 1) + _T("y")) << byte;
      EXPECT_EQ(ValueOf("<r v='x" + raw + "y'/>"), isBlank ? _T("x y") : _T("(refused)")) << byte;
    } else {
      EXPECT_EQ(ValueOf("<r v='x" + raw + "y'/>"), _T("x") + CString(unit, 1) + _T("y")) << byte;
    }
  }
}

TEST(NarrowLoad, ReadsSpecialBytesOnBothSidesOfABorder) {
  const std::string start = "<r v='";
  for (const std::size_t border : {kPiece, 2 * kPiece}) {
    for (std::size_t before = 0; before <= SpecialBytes().size(); ++before) {
      const std::size_t padding = border - before - start.size();
      const CString value = ValueOf(start + std::string(padding, 'p') + SpecialBytes() + "'/>");
      EXPECT_TRUE(value == CString('p', static_cast<int>(padding)) + SpecialUnits()) << before << " before " << border;
    }
  }
}

TEST(NarrowLoad, NamesMayHaveBytesBeyondAscii) {
  const CComPtr<IXMLDOMDocument> document = NewDocument();
  ASSERT_EQ(LoadNarrow(document, "<\xE9t\xE9 \x8A='1'/>"), S_OK);
  EXPECT_EQ(NameOf(RootOf(document)), _T("\u00E9t\u00E9"));
  EXPECT_EQ(AttributeOf(RootOf(document), _T("\u0160")), _T("1"));
}

TEST(NarrowLoad, TakesBytesOfUtf8ForLettersOfTheCodePage) {
  EXPECT_EQ(ValueOf("<?xml version='1.0' encoding='utf-8'?><r v='\xC3\xA9'/>"), _T("\u00C3\u00A9"));
  EXPECT_EQ(ValueOf("\xEF\xBB\xBF<r v=''/>"), _T("(refused)")) << "no byte-order mark";
}

TEST(NarrowLoad, AllowsAnyNumberOfBlanksBeforeTheDeclaration) {
  for (const std::size_t blanks : {std::size_t{1}, kPiece - 1, kPiece, kPiece + 1, 3 * kPiece + 5}) {
    std::string start;
    for (std::size_t blank = 0; blank < blanks; ++blank) start += " \t\r\n"[blank % 4];
    EXPECT_EQ(ValueOf(start + "<?xml version='1.0'?>\r\n<r v='1'/>"), _T("1")) << blanks;
    EXPECT_EQ(LoadNarrow(NewDocument(), start), S_FALSE) << blanks;
    EXPECT_EQ(ValueOf(start + "x<r v='1'/>"), _T("(refused)")) << blanks;
  }
}

TEST(NarrowLoad, ReadsTextThatEndsWithAPiece) {
  const std::string end = "'/>";
  for (const std::size_t size : {kPiece - 1, kPiece, kPiece + 1, 2 * kPiece, 7 * kPiece}) {
    const std::string start = "<r v='";
    const std::size_t padding = size - start.size() - end.size();
    EXPECT_TRUE(ValueOf(start + std::string(padding, 'p') + end) == CString('p', static_cast<int>(padding))) << size;
    EXPECT_EQ(LoadNarrow(NewDocument(), start + std::string(padding + 1, 'p') + "'/"), S_FALSE) << size;
  }
}

TEST(NarrowLoad, RefusedTextKeepsTheFormerContents) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<former/>");
  const std::string longText = "<r>" + std::string(3 * kPiece, ' ');
  for (const std::string& text : {std::string(), std::string(" \r\n"), std::string("<r>"), std::string("x"),
                                  std::string("<r/>\0", 5), longText, longText + "</s>", longText + "</r>x"}) {
    EXPECT_EQ(LoadNarrow(document, text), S_FALSE) << text.substr(0, 10) << ", " << text.size() << " bytes";
    EXPECT_EQ(NameOf(RootOf(document)), _T("former"));
  }
  EXPECT_EQ(LoadNarrow(document, longText + "</r>"), S_OK);
  EXPECT_EQ(NameOf(RootOf(document)), _T("r"));
}

TEST(NarrowLoad, LetsTheReadersExceptionThroughAndKeepsTheFormerContents) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<former/>");
  const std::string text = "<r>" + std::string(std::size_t{4} << 20, ' ') + "</r>";
  for (const int failing : {1, 2}) {
    VARIANT_BOOL loaded = VARIANT_FALSE;
    try {
      LoadNarrowDocument(document, NarrowText(text, failing), &loaded);
      ADD_FAILURE() << "nothing was raised by piece " << failing;
    } catch (const CFileException& raised) {
      EXPECT_EQ(raised.m_cause, CFileException::hardIO);
      EXPECT_EQ(raised.m_strFileName, _T("narrow.xml"));
    }
    EXPECT_EQ(loaded, VARIANT_FALSE);
    EXPECT_EQ(NameOf(RootOf(document)), _T("former"));
  }
  EXPECT_EQ(LoadNarrow(document, text), S_OK);
}

TEST(NarrowLoad, NeedsADocumentAndAFlag) {
  VARIANT_BOOL loaded = VARIANT_FALSE;
  EXPECT_EQ(Hex(LoadNarrowDocument(nullptr, NarrowText("<r/>"), &loaded)), Hex(E_INVALIDARG));
  EXPECT_EQ(Hex(LoadNarrowDocument(NewDocument(), NarrowText("<r/>"), nullptr)), Hex(E_INVALIDARG));
}

}  // namespace
}  // namespace ondrel::test
