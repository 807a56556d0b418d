// Texts of one thing without end: attributes, letters, elements, levels. Each is read in time and memory that grow with
// the text and no faster; the largest are read as projects. Windows has its own parser behind ours, with limits of its
// own.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <string>

#include "support/posix/memory_peak.h"
#include "support/posix/thread_time.h"
#include "support/sanitizers.h"
#include "support/small_stack.h"

#include <ondrel/platform/xml.h>

namespace ondrel::test {
namespace {

using Text = std::basic_string<WCHAR>;

// The sanitizers take ten times as long.
constexpr std::size_t kShare = kSanitized ? 10 : 1;

// A text twice as long takes twice as long; a half more is for caches that no longer hold it all.
constexpr double kMostTimesForTwice = 3;

// What a text may take, in bytes for each of its own. The shortest element or attribute is a few bytes of text, and
// becomes a node of about a hundred bytes with its name; a long piece of text is held by the parser, which doubles its
// buffer while it grows, and by the document.
constexpr double kMostForNodes = 40;
constexpr double kMostForLetters = 8;

Text Repeated(std::size_t times, const Text& part) {
  Text all;
  all.reserve(times * part.size());
  for (std::size_t time = 0; time < times; ++time) all += part;
  return all;
}

Text Numbered(const Text& before, std::size_t number, const Text& behind) {
  const std::string digits = std::to_string(number);
  return before + Text(digits.begin(), digits.end()) + behind;
}

struct Kind {
  const char* name;
  std::size_t count;
  Text (*make)(std::size_t count);
  double mostMemory;
};

void PrintTo(const Kind& kind, std::ostream* out) { *out << kind.name; }

const Kind kKinds[] = {
    {"AttributesOfOneElement", 300'000,
     [](std::size_t count) {
       Text text = _T("<r");
       for (std::size_t index = 0; index < count; ++index) text += Numbered(_T(" a"), index, _T("=''"));
       return text + _T("/>");
     },
     kMostForNodes},
    {"PrefixesOfOneElement", 200'000,
     [](std::size_t count) {
       Text text = _T("<r");
       for (std::size_t index = 0; index < count; ++index) text += Numbered(_T(" xmlns:a"), index, _T("='u'"));
       return text + _T("/>");
     },
     kMostForNodes},
    {"LettersOfOneAttribute", 20'000'000, [](std::size_t count) { return _T("<r a='") + Text(count, 'x') + _T("'/>"); },
     kMostForLetters},
    {"ReferencesInOneAttribute", 1'000'000,
     [](std::size_t count) { return _T("<r a='") + Repeated(count, _T("&#120;")) + _T("'/>"); }, kMostForLetters},
    {"LettersOfText", 20'000'000, [](std::size_t count) { return _T("<r>") + Text(count, 'x') + _T("</r>"); },
     kMostForLetters},
    {"LettersOfOneComment", 20'000'000,
     [](std::size_t count) { return _T("<r><!--") + Text(count, 'x') + _T("--></r>"); }, kMostForLetters},
    {"LettersOfOneName", 10'000'000, [](std::size_t count) { return _T("<") + Text(count, 'x') + _T("/>"); },
     kMostForLetters},
    {"ElementsBesideEachOther", 1'000'000,
     [](std::size_t count) { return _T("<r>") + Repeated(count, _T("<e/>")) + _T("</r>"); }, kMostForNodes},
    {"Names", 500'000,
     [](std::size_t count) {
       Text text = _T("<r>");
       for (std::size_t index = 0; index < count; ++index) text += Numbered(_T("<e"), index, _T("/>"));
       return text + _T("</r>");
     },
     kMostForNodes},
    {"Levels", 1'000'000, [](std::size_t count) { return Repeated(count, _T("<e>")) + Repeated(count, _T("</e>")); },
     kMostForNodes},
};

struct Cost {
  std::chrono::nanoseconds time;
  double bytes;
};

/// What it costs to read a text into a document and to destroy that.
Cost CostOf(const Text& text) {
  const CComBSTR wide{CString(text)};
  const MemoryPeak peak;
  const auto start = ThreadTime();
  {
    CComPtr<IXMLDOMDocument> document;
    EXPECT_EQ(platform::CreateDocument(&document), S_OK);
    VARIANT_BOOL loaded = VARIANT_FALSE;
    EXPECT_EQ(platform::LoadDocument(document, wide, &loaded), S_OK);
  }
  return {ThreadTime() - start, 1024.0 * static_cast<double>(peak.Kibibytes())};
}

class XmlSize : public testing::TestWithParam<Kind> {};

TEST_P(XmlSize, CostsNoMoreThanItsShare) {
  const Kind& kind = GetParam();
  RunOnStack(kSmallStack, [&] {
    const Text half = kind.make(kind.count / kShare / 2);
    const Text whole = kind.make(kind.count / kShare);
    double times = 0;
    // Once more where the first comparison was disturbed: by other programs, or by the first touch of the memory.
    for (int attempt = 0; attempt < 3 && (attempt == 0 || times > kMostTimesForTwice); ++attempt) {
      const Cost ofHalf = CostOf(half);
      const Cost ofWhole = CostOf(whole);
      times = static_cast<double>(ofWhole.time.count()) / static_cast<double>(ofHalf.time.count());
      if (!kSanitized) {
        EXPECT_LE(ofWhole.bytes, kind.mostMemory * static_cast<double>(whole.size()));
      }
    }
    EXPECT_LE(times, kMostTimesForTwice);
  });
}

INSTANTIATE_TEST_SUITE_P(Kinds, XmlSize, testing::ValuesIn(kKinds),
                         [](const testing::TestParamInfo<Kind>& kind) { return kind.param.name; });

}  // namespace
}  // namespace ondrel::test
