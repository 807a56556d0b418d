// Texts of one thing without end: attributes, letters, elements, levels. Each is read in time and memory that grow with
// the text and no faster. Windows has its own parser behind ours, with limits of its own.
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

std::string Repeated(std::size_t times, const std::string& text) {
  std::string all;
  all.reserve(times * text.size());
  for (std::size_t time = 0; time < times; ++time) all += text;
  return all;
}

struct Kind {
  const char* name;
  std::size_t full;
  std::string (*make)(std::size_t size);
};

const Kind kKinds[] = {
    {"attributes of one element", 1'000'000,
     [](std::size_t size) {
       std::string text = "<r";
       for (std::size_t index = 0; index < size; ++index) text += " a" + std::to_string(index) + "=''";
       return text + "/>";
     }},
    {"declared prefixes of one element", 1'000'000,
     [](std::size_t size) {
       std::string text = "<r";
       for (std::size_t index = 0; index < size; ++index) text += " xmlns:a" + std::to_string(index) + "='u'";
       return text + "/>";
     }},
    {"letters of one attribute", 100'000'000, [](std::size_t size) { return "<r a='" + std::string(size, 'x') + "'/>"; }},
    {"entities of one attribute", 10'000'000, [](std::size_t size) { return "<r a='" + Repeated(size/5, "&amp;") + "'/>"; }},
    {"letters of text", 100'000'000, [](std::size_t size) { return "<r>" + std::string(size, 'x') + "</r>"; }},
    {"lines of text", 100'000'000, [](std::size_t size) { return "<r>" + std::string(size, '\n') + "</r>"; }},
    {"letters of a comment", 100'000'000, [](std::size_t size) { return "<r><!--" + std::string(size, 'x') + "--></r>"; }},
    {"letters of a name", 10'000'000, [](std::size_t size) { return "<" + std::string(size, 'x') + "/>"; }},
    {"elements beside each other", 1'000'000, [](std::size_t size) { return "<r>" + Repeated(size, "<e/>") + "</r>"; }},
    {"names", 1'000'000,
     [](std::size_t size) {
       std::string text = "<r>";
       for (std::size_t index = 0; index < size; ++index) text += "<e" + std::to_string(index) + "/>";
       return text + "</r>";
     }},
    {"levels", 1'000'000, [](std::size_t size) { return Repeated(size, "<e>") + Repeated(size, "</e>"); }},
};

TEST(PosixXmlSizes, Measure) {
  RunOnStack(kSmallStack, [] {
    for (const Kind& kind : kKinds) {
      for (const std::size_t size : {kind.full / 2, kind.full}) {
        const std::string text = kind.make(size);
        const CComBSTR wide(CString(text.c_str()));
        const MemoryPeak peak;
        const auto start = ThreadTime();
        bool ok = false;
        {
          CComPtr<IXMLDOMDocument> document;
          platform::CreateDocument(&document);
          VARIANT_BOOL loaded = VARIANT_FALSE;
          ok = platform::LoadDocument(document, wide, &loaded) == S_OK;
        }
        const auto taken = ThreadTime() - start;
        std::printf("%-35s %10zu bytes %d %6ld ms %8ld KiB: %.1f times\n", kind.name, text.size(), ok,
                    static_cast<long>(taken.count() / 1000000), peak.Kibibytes(),
                    double(peak.Kibibytes()) * 1024 / double(text.size()));
      }
    }
  });
}

}  // namespace
}  // namespace ondrel::test
