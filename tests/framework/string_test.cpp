// CString: units, comparison, search, parts.
#include <gtest/gtest.h>

#include <map>

#include "support/print_text.h"
#include "support/raised.h"

#include <ondrel/platform/framework/exceptions.h>

namespace ondrel::test {
namespace {

TEST(String, BeginsEmptyFromNothingAndFromNull) {
  EXPECT_TRUE(CString().IsEmpty());
  EXPECT_EQ(CString(static_cast<LPCWSTR>(nullptr)).GetLength(), 0);
  EXPECT_EQ(CString(static_cast<const char*>(nullptr)).GetLength(), 0);
  EXPECT_EQ(CString(nullptr, 0).GetLength(), 0);
  EXPECT_EQ(CString().GetString()[0], 0);
}

TEST(String, CountsUnitsZeroUnitsAndLoneSurrogatesToo) {
  const WCHAR units[] = {'a', 0, 0xD800, 'b'};
  const CString text(units, 4);
  EXPECT_EQ(text.GetLength(), 4);
  EXPECT_EQ(text[1], 0);
  EXPECT_EQ(text.GetAt(2), 0xD800);
  EXPECT_EQ(text[4], 0);
  EXPECT_EQ(CString(_T("\U0001F600")).GetLength(), 2);
}

TEST(String, RepeatsAUnit) {
  EXPECT_EQ(CString('x', 3), _T("xxx"));
  EXPECT_EQ(CString('x', 0), CString());
}

TEST(String, RefusesLengthsThatAreNone) {
  EXPECT_TRUE(Raised<CInvalidArgException>([] { CString(_T("abc"), -1); }));
  EXPECT_TRUE(Raised<CInvalidArgException>([] { CString(nullptr, 1); }));
  EXPECT_TRUE(Raised<CInvalidArgException>([] { CString('x', -1); }));
}

TEST(String, TakesNarrowTextThroughTheNarrowCodePage) {
  EXPECT_EQ(CString("caf\xE9 \x80 \x81"), _T("caf\u00E9 \u20AC \x81"));
}

TEST(String, CopiesAreIndependent) {
  CString first(_T("text"));
  const CString second = first;
  first += 'x';
  EXPECT_EQ(first, _T("textx"));
  EXPECT_EQ(second, _T("text"));
}

TEST(String, Appends) {
  CString text(_T("a"));
  text += _T("bc");
  text += CString(_T("d"));
  text += 'e';
  text += text;
  text += text.GetString() + 5;
  EXPECT_EQ(text, _T("abcdeabcdeabcde"));
  EXPECT_EQ(CString(_T("a")) + _T("b"), _T("ab"));
  EXPECT_EQ(_T("a") + CString(_T("b")), _T("ab"));
  EXPECT_EQ(CString(_T("a")) + CString(_T("b")), _T("ab"));
}

TEST(String, ComparesUnitByUnit) {
  const WCHAR zeroFirst[] = {0, 'b'};
  EXPECT_EQ(CString(_T("ab")).Compare(_T("ab")), 0);
  EXPECT_LT(CString(_T("ab")).Compare(_T("abc")), 0);
  EXPECT_GT(CString(_T("b")).Compare(_T("abc")), 0);
  EXPECT_LT(CString(_T("A")).Compare(_T("a")), 0);
  EXPECT_GT(CString(0xFFFF, 1).Compare(_T("a")), 0);
  EXPECT_LT(CString(0xD800, 1).Compare(CString(0xE000, 1)), 0);  // by units, not by characters
  EXPECT_GT(CString(zeroFirst, 2).Compare(CString(zeroFirst, 1)), 0);
  EXPECT_NE(CString(zeroFirst, 2).Compare(CString()), 0);
}

TEST(String, ComparesTextsThatBeginAlike) {
  for (int length = 1; length <= 18; ++length) {
    const CString text(L'x', length);
    EXPECT_EQ(text.Compare(CString(_T('x'), length)), 0) << length;
    EXPECT_LT(CString(_T('x'), length - 1).Compare(text), 0) << length;
    for (int place = 0; place < length; ++place) {
      // What follows the first difference goes the other way.
      const CString larger = CString(_T('x'), place) + CString(_T('y'), 1) + CString(_T('a'), length - place - 1);
      EXPECT_LT(text.Compare(larger), 0) << length << ", " << place;
      EXPECT_GT(larger.Compare(text), 0) << length << ", " << place;
    }
  }
}

TEST(String, RelationsFollowCompare) {
  const CString a(_T("a"));
  const CString b(_T("b"));
  EXPECT_TRUE(a < b && b > a && a <= b && a <= a && b >= a && a >= a && a != b && a == a);
  EXPECT_FALSE(b < a || a > b || b <= a || a >= b || a == b || a != a);
  EXPECT_TRUE(a == _T("a"));
  EXPECT_TRUE(a != _T("A"));
}

TEST(String, CompareNoCaseFoldsTheLettersOfAsciiOnly) {
  EXPECT_EQ(CString(_T("AZaz09")).CompareNoCase(_T("azAZ09")), 0);
  EXPECT_NE(CString(_T("\u00C4")).CompareNoCase(_T("\u00E4")), 0);
  EXPECT_NE(CString(_T("\u0130")).CompareNoCase(_T("i")), 0);
  EXPECT_NE(CString(_T("@")).CompareNoCase(_T("`")), 0);
  EXPECT_NE(CString(_T("[")).CompareNoCase(_T("{")), 0);
  EXPECT_LT(CString(_T("a")).CompareNoCase(_T("B")), 0);
  EXPECT_GT(CString(_T("b")).CompareNoCase(_T("A")), 0);
  EXPECT_LT(CString(_T("Ab")).CompareNoCase(_T("aBc")), 0);
  EXPECT_GT(CString(_T("Abc")).CompareNoCase(_T("aB")), 0);
  EXPECT_LT(CString(_T("a_")).CompareNoCase(_T("aZ")), 0);  // letters count as small ones: "_" stands before them
}

TEST(String, CaselessKeysAreOneKeyInAnyCase) {
  std::map<CCaselessSortStringT<CString>, int> variables;
  variables[CString(_T("ProjectDir"))] = 1;
  variables[CString(_T("PROJECTDIR"))] = 2;
  variables[CString(_T("Other"))] = 3;
  EXPECT_EQ(variables.size(), 2U);
  EXPECT_EQ(variables[CString(_T("projectdir"))], 2);
  EXPECT_TRUE(CCaselessSortStringT<CString>(_T("a")) == CCaselessSortStringT<CString>(_T("A")));
}

TEST(String, Finds) {
  const CString text(_T("abcabc"));
  EXPECT_EQ(text.Find(_T("bc")), 1);
  EXPECT_EQ(text.Find(_T("bc"), 2), 4);
  EXPECT_EQ(text.Find(_T("bc"), 5), -1);
  EXPECT_EQ(text.Find(_T("x")), -1);
  EXPECT_EQ(text.Find('c'), 2);
  EXPECT_EQ(text.Find('c', 3), 5);
  EXPECT_EQ(text.Find('c', 6), -1);
  EXPECT_EQ(text.Find('c', -1), -1);
  EXPECT_EQ(text.Find(_T("a"), 100), -1);
  EXPECT_EQ(text.ReverseFind('b'), 4);
  EXPECT_EQ(text.ReverseFind('x'), -1);
  EXPECT_EQ(CString().ReverseFind('x'), -1);
}

TEST(String, PartsAreCutBackToTheText) {
  const CString text(_T("abcde"));
  EXPECT_EQ(text.Left(2), _T("ab"));
  EXPECT_EQ(text.Left(9), text);
  EXPECT_EQ(text.Left(-1), CString());
  EXPECT_EQ(text.Right(2), _T("de"));
  EXPECT_EQ(text.Right(9), text);
  EXPECT_EQ(text.Right(-1), CString());
  EXPECT_EQ(text.Mid(3), _T("de"));
  EXPECT_EQ(text.Mid(9), CString());
  EXPECT_EQ(text.Mid(-2), text);
  EXPECT_EQ(text.Mid(1, 3), _T("bcd"));
  EXPECT_EQ(text.Mid(4, 9), _T("e"));
  EXPECT_EQ(text.Mid(1, -1), CString());
  EXPECT_EQ(text.Mid(2, 0x7FFFFFFF), _T("cde"));
}

TEST(String, ReplacesUnits) {
  CString text(_T("a/b/c"));
  EXPECT_EQ(text.Replace('/', '\\'), 2);
  EXPECT_EQ(text, _T("a\\b\\c"));
  EXPECT_EQ(text.Replace('x', 'y'), 0);
}

TEST(String, EmptyDropsTheText) {
  CString text(_T("abc"));
  text.Empty();
  EXPECT_EQ(text, CString());
}

TEST(String, BecomesUtf8WithReplacementsForLoneSurrogates) {
  using platform::ToUtf8;
  EXPECT_EQ(ToUtf8(CString()), "");
  EXPECT_EQ(ToUtf8(_T("a\u00E9\u20AC\U0001F600")), "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
  const WCHAR broken[] = {'a', 0xD83D, 'b', 0xDE00, 0xD83D};
  EXPECT_EQ(ToUtf8(CString(broken, 5)),
            "a\xEF\xBF\xBD"
            "b\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(String, LongTextBecomesUtf8WithItsPairsWhole) {
  const int length = (1 << 20) + 1;  // an odd number of units in front, so that a pair meets every even boundary
  CString text('x', length - 2);
  text += _T("\U0001F600");
  EXPECT_TRUE(platform::ToUtf8(text) == std::string(static_cast<std::size_t>(length) - 2, 'x') + "\xF0\x9F\x98\x80");
}

}  // namespace
}  // namespace ondrel::test
