// Text between UTF-16 and the narrow code pages.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <ondrel/platform/com.h>

namespace ondrel::test {
namespace {

using WideString = std::basic_string<WCHAR>;

// The upper half of code page 1252, sixteen a row from 0x80 on, as it is published; the five unassigned bytes are the
// control characters of the same number. The lower half is ASCII.
constexpr WCHAR kUpperHalf[128] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160, 0x2039, 0x0152,
    0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, 0x02DC, 0x2122,
    0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178, 0x00A0, 0x00A1, 0x00A2, 0x00A3, 0x00A4, 0x00A5, 0x00A6,
    0x00A7, 0x00A8, 0x00A9, 0x00AA, 0x00AB, 0x00AC, 0x00AD, 0x00AE, 0x00AF, 0x00B0, 0x00B1, 0x00B2, 0x00B3,
    0x00B4, 0x00B5, 0x00B6, 0x00B7, 0x00B8, 0x00B9, 0x00BA, 0x00BB, 0x00BC, 0x00BD, 0x00BE, 0x00BF, 0x00C0,
    0x00C1, 0x00C2, 0x00C3, 0x00C4, 0x00C5, 0x00C6, 0x00C7, 0x00C8, 0x00C9, 0x00CA, 0x00CB, 0x00CC, 0x00CD,
    0x00CE, 0x00CF, 0x00D0, 0x00D1, 0x00D2, 0x00D3, 0x00D4, 0x00D5, 0x00D6, 0x00D7, 0x00D8, 0x00D9, 0x00DA,
    0x00DB, 0x00DC, 0x00DD, 0x00DE, 0x00DF, 0x00E0, 0x00E1, 0x00E2, 0x00E3, 0x00E4, 0x00E5, 0x00E6, 0x00E7,
    0x00E8, 0x00E9, 0x00EA, 0x00EB, 0x00EC, 0x00ED, 0x00EE, 0x00EF, 0x00F0, 0x00F1, 0x00F2, 0x00F3, 0x00F4,
    0x00F5, 0x00F6, 0x00F7, 0x00F8, 0x00F9, 0x00FA, 0x00FB, 0x00FC, 0x00FD, 0x00FE, 0x00FF};

WCHAR Published(unsigned byte) { return byte < 0x80 ? static_cast<WCHAR>(byte) : kUpperHalf[byte - 0x80]; }

WideString Widened(UINT codePage, const std::string& bytes, DWORD flags = 0) {
  const int length = MultiByteToWideChar(codePage, flags, bytes.data(), static_cast<int>(bytes.size()), nullptr, 0);
  WideString text(static_cast<std::size_t>(length), 0);
  EXPECT_EQ(MultiByteToWideChar(codePage, flags, bytes.data(), static_cast<int>(bytes.size()), text.data(), length),
            length);
  return text;
}

std::string Narrowed(UINT codePage, const WideString& text) {
  const int length =
      WideCharToMultiByte(codePage, 0, text.data(), static_cast<int>(text.size()), nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<std::size_t>(length), 0);
  EXPECT_EQ(WideCharToMultiByte(codePage, 0, text.data(), static_cast<int>(text.size()), bytes.data(), length, nullptr,
                                nullptr),
            length);
  return bytes;
}

TEST(CodePage, NarrowBytesAreThoseOf1252InBothDirections) {
  for (const UINT codePage : {CP_ACP, CP_THREAD_ACP}) {
    for (unsigned byte = 0; byte < 256; ++byte) {
      const std::string bytes(1, static_cast<char>(byte));
      const WideString text(1, Published(byte));
      EXPECT_EQ(Widened(codePage, bytes), text) << "byte " << byte;
      EXPECT_EQ(Narrowed(codePage, text), bytes) << "byte " << byte;
    }
  }
}

TEST(CodePage, UnitsThatTheNarrowPageLacksBecomeTheDefault) {
  const WideString text = _T("a\u0416\u0080\u20ACz");
  char bytes[8] = {};
  BOOL usedDefault = FALSE;
  ASSERT_EQ(WideCharToMultiByte(CP_ACP, 0, text.data(), 5, bytes, sizeof bytes, nullptr, &usedDefault), 5);
  EXPECT_STREQ(bytes, "a??\x80z");
  EXPECT_NE(usedDefault, FALSE);
  ASSERT_EQ(WideCharToMultiByte(CP_ACP, 0, text.data(), 5, bytes, sizeof bytes, "_", nullptr), 5);
  EXPECT_STREQ(bytes, "a__\x80z");
  ASSERT_EQ(WideCharToMultiByte(CP_ACP, 0, _T("plain"), 5, bytes, sizeof bytes, nullptr, &usedDefault), 5);
  EXPECT_EQ(usedDefault, FALSE);
}

TEST(CodePage, ANegativeCountTakesTheZeroUnitAlong) {
  WCHAR text[8] = {};
  EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "abc", -1, text, 8), 4);
  EXPECT_EQ(WideString(text), _T("abc"));
  EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "abc", -1, nullptr, 0), 4);
  char bytes[8] = {};
  EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, _T("abc"), -1, bytes, 8, nullptr, nullptr), 4);
  EXPECT_STREQ(bytes, "abc");
  EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, _T("abc"), -1, nullptr, 0, nullptr, nullptr), 4);
}

TEST(CodePage, ZeroUnitsInsideACountAreText) {
  EXPECT_EQ(Widened(CP_ACP, std::string("a\0b", 3)), WideString(_T("a\0b"), 3));
  EXPECT_EQ(Narrowed(CP_UTF8, WideString(_T("a\0b"), 3)), std::string("a\0b", 3));
}

TEST(CodePage, TooLittleRoomFails) {
  WCHAR text[2];
  char bytes[2];
  EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "abc", 3, text, 2), 0);
  EXPECT_EQ(GetLastError(), ERROR_INSUFFICIENT_BUFFER);
  EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "abc", 3, text, 2), 0);
  EXPECT_EQ(GetLastError(), ERROR_INSUFFICIENT_BUFFER);
  EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, _T("abc"), 3, bytes, 2, nullptr, nullptr), 0);
  EXPECT_EQ(GetLastError(), ERROR_INSUFFICIENT_BUFFER);
  EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, _T("\u20AC"), 1, bytes, 2, nullptr, nullptr), 0);
  EXPECT_EQ(GetLastError(), ERROR_INSUFFICIENT_BUFFER);
}

TEST(CodePage, ArgumentsThatMakeNoSenseFail) {
  WCHAR text[4];
  char bytes[4];
  const auto lastError = [](int result) { return result == 0 ? GetLastError() : ERROR_SUCCESS; };
  EXPECT_EQ(lastError(MultiByteToWideChar(CP_ACP, 0, nullptr, 1, text, 4)), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(lastError(MultiByteToWideChar(CP_ACP, 0, "a", 0, text, 4)), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(lastError(MultiByteToWideChar(CP_ACP, 0, "a", 1, nullptr, 4)), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(lastError(MultiByteToWideChar(CP_ACP, 0, "a", 1, text, -1)), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(lastError(MultiByteToWideChar(12345, 0, "a", 1, text, 4)), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(lastError(WideCharToMultiByte(CP_ACP, 0, _T("a"), 0, bytes, 4, nullptr, nullptr)), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(lastError(WideCharToMultiByte(12345, 0, _T("a"), 1, bytes, 4, nullptr, nullptr)), ERROR_INVALID_PARAMETER);
}

TEST(CodePage, ArgumentsThatOneConversionDoesNotTakeFail) {
  WCHAR text[4] = {};
  char bytes[4];
  const auto lastError = [](int result) { return result == 0 ? GetLastError() : ERROR_SUCCESS; };
  EXPECT_EQ(lastError(MultiByteToWideChar(CP_ACP, 0, reinterpret_cast<char*>(text), 1, text, 4)),
            ERROR_INVALID_PARAMETER);
  EXPECT_EQ(lastError(MultiByteToWideChar(CP_UTF8, 1, "a", 1, text, 4)), ERROR_INVALID_FLAGS);
  EXPECT_EQ(lastError(WideCharToMultiByte(CP_UTF8, 0, _T("a"), 1, bytes, 4, "?", nullptr)), ERROR_INVALID_PARAMETER);
  BOOL usedDefault = FALSE;
  EXPECT_EQ(lastError(WideCharToMultiByte(CP_UTF8, 0, _T("a"), 1, bytes, 4, nullptr, &usedDefault)),
            ERROR_INVALID_PARAMETER);
}

TEST(CodePage, Utf8HasOneToFourBytes) {
  const WideString text = _T("A\u00E9\u20AC\U0001F4BE");
  const std::string bytes = "A\xC3\xA9\xE2\x82\xAC\xF0\x9F\x92\xBE";
  EXPECT_EQ(Narrowed(CP_UTF8, text), bytes);
  EXPECT_EQ(Widened(CP_UTF8, bytes), text);
}

TEST(CodePage, BytesThatAreNoUtf8BecomeReplacementCharacters) {
  EXPECT_EQ(Widened(CP_UTF8, "a\x80z"), _T("a\uFFFDz")) << "a lone continuation";
  EXPECT_EQ(Widened(CP_UTF8, "\xC0\xAF"), _T("\uFFFD\uFFFD")) << "an overlong form";
  EXPECT_EQ(Widened(CP_UTF8, "\xE2\x82"), _T("\uFFFD")) << "a cut character is one";
  EXPECT_EQ(Widened(CP_UTF8, "\xE2\x82zz"), _T("\uFFFDzz"));
  for (const char* const bytes : {"\xED\xA0\x80", "\xF4\x90\x80\x80"}) {
    const WideString text = Widened(CP_UTF8, bytes);  // of a surrogate, and beyond the last character
    EXPECT_FALSE(text.empty());
    EXPECT_EQ(text, WideString(text.size(), 0xFFFD)) << "whatever their number";
  }
  EXPECT_EQ(Widened(CP_UTF8, "\xFF"), _T("\uFFFD"));
  constexpr DWORD kFailOnInvalid = 8;
  WCHAR text[4];
  EXPECT_EQ(MultiByteToWideChar(CP_UTF8, kFailOnInvalid, "a\x80", 2, text, 4), 0);
  EXPECT_EQ(GetLastError(), ERROR_NO_UNICODE_TRANSLATION);
}

TEST(CodePage, LoneSurrogatesBecomeReplacementCharacters) {
  const WCHAR lone[] = {'a', 0xD800, 'b', 0xDC00, 0xD83D};
  EXPECT_EQ(Narrowed(CP_UTF8, WideString(lone, 5)),
            "a\xEF\xBF\xBD"
            "b\xEF\xBF\xBD\xEF\xBF\xBD");
  constexpr DWORD kFailOnInvalid = 0x80;
  char bytes[16];
  EXPECT_EQ(WideCharToMultiByte(CP_UTF8, kFailOnInvalid, lone, 5, bytes, 16, nullptr, nullptr), 0);
  EXPECT_EQ(GetLastError(), ERROR_NO_UNICODE_TRANSLATION);
}

}  // namespace
}  // namespace ondrel::test
