// Texts that attack: entities that explode, entities that lead outside, chains of entities.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <poll.h>
#include <sys/inotify.h>
#include <sys/resource.h>
#include <unistd.h>

#include <chrono>

#include "support/small_stack.h"
#include "support/temporary_folder.h"
#include "system/documents.h"

namespace ondrel::test {
namespace {

constexpr std::chrono::seconds kLongestTime{1};
constexpr long kMostKibibytes = 32 * 1024;

long PeakKibibytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss;
}

// The text must be refused quickly and without much memory.
void ExpectDefused(const std::string& text) {
  const CComPtr<IXMLDOMDocument> document = NewDocument();
  const CComBSTR wide(CString(text.c_str()));
  const long peakBefore = PeakKibibytes();
  const auto start = std::chrono::steady_clock::now();
  VARIANT_BOOL loaded = VARIANT_TRUE;
  EXPECT_EQ(Hex(document->loadXML(wide, &loaded)), Hex(S_FALSE));
  const auto taken = std::chrono::steady_clock::now() - start;
  EXPECT_EQ(loaded, VARIANT_FALSE);
  EXPECT_LT(std::chrono::duration_cast<std::chrono::milliseconds>(taken).count(),
            std::chrono::milliseconds(kLongestTime).count());
  EXPECT_LT(PeakKibibytes() - peakBefore, kMostKibibytes);
}

std::string Laughs(const std::string& use) {
  std::string text = "<!DOCTYPE r [<!ENTITY l0 'lol'>";
  for (int level = 1; level < 30; ++level) {
    text += "<!ENTITY l" + std::to_string(level) + " '";
    for (int count = 0; count < 10; ++count) text += "&l" + std::to_string(level - 1) + ";";
    text += "'>";
  }
  return text + "]>" + use;
}

TEST(XmlEntities, ABillionLaughsAreDefused) {
  ExpectDefused(Laughs("<r>&l29;</r>"));
  ExpectDefused(Laughs("<r a='&l29;'/>"));
}

TEST(XmlEntities, ABillionLaughsOfNothingAreDefused) {
  std::string text = Laughs("<r>&l29;</r>");
  text.replace(text.find("'lol'"), 5, "''");
  ExpectDefused(text);
}

TEST(XmlEntities, AQuadraticBlowUpIsDefused) {
  std::string text = "<!DOCTYPE r [<!ENTITY e '" + std::string(100'000, 'x') + "'>]><r a='";
  for (int count = 0; count < 20'000; ++count) text += "&e;";
  ExpectDefused(text + "'/>");
}

TEST(XmlEntities, AnExplosionOfParameterEntitiesIsDefused) {
  std::string text = "<!DOCTYPE r [<!ENTITY % p0 '<!-- xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx -->'>";
  for (int level = 1; level < 30; ++level) {
    text += "<!ENTITY % p" + std::to_string(level) + " '";
    for (int count = 0; count < 10; ++count) text += "&#37;p" + std::to_string(level - 1) + ";";
    text += "'>";
  }
  ExpectDefused(text + "%p29;]><r/>");
}

TEST(XmlEntities, ExplodingDefaultsAreDefused) {
  std::string text = "<!DOCTYPE r [<!ENTITY e '" + std::string(1'000, 'x') + "'><!ATTLIST r a CDATA '";
  for (int count = 0; count < 20'000; ++count) text += "&e;";
  ExpectDefused(text + "'>]><r/>");
}

TEST(XmlEntities, ModestExpansionIsAccepted) {
  std::string text = "<!DOCTYPE r [<!ENTITY e '" + std::string(1'000, 'x') + "'>]><r a='";
  for (int count = 0; count < 100; ++count) text += "&e;";
  const CComPtr<IXMLDOMDocument> document = Loaded(text + "'/>");
  EXPECT_EQ(AttributeOf(RootOf(document), _T("a")).GetLength(), 100'000);
}

std::string Chain(int entities, const std::string& use) {
  std::string text = "<!DOCTYPE r [<!ENTITY c0 'end'>";
  for (int link = 1; link < entities; ++link) {
    text += "<!ENTITY c" + std::to_string(link) + " '&c" + std::to_string(link - 1) + ";'>";
  }
  return text + "]>" + use;
}

TEST(XmlEntities, AChainOfAsManyAsAreAllowedFitsASmallStack) {
  RunOnStack(kSmallStack, [] {
    const CComPtr<IXMLDOMDocument> document = Loaded(Chain(128, "<r a='&c127;'>&c127;</r>"));
    EXPECT_EQ(AttributeOf(RootOf(document), _T("a")), _T("end"));
  });
}

TEST(XmlEntities, MoreThanAreAllowedAreRefusedBeforeTheyCanNest) {
  RunOnStack(kSmallStack, [] {
    EXPECT_FALSE(IsAccepted(Chain(129, "<r/>")));
    EXPECT_FALSE(IsAccepted(Chain(200'000, "<r a='&c199999;'>&c199999;</r>")));
  });
}

/// Sees every opening of a file in a folder.
class OpenWatch {
 public:
  explicit OpenWatch(const std::filesystem::path& folder) : m_queue(inotify_init1(IN_NONBLOCK)) {
    m_isSet = inotify_add_watch(m_queue, folder.c_str(), IN_OPEN | IN_ACCESS) >= 0;
  }
  ~OpenWatch() { close(m_queue); }

  bool IsSet() const { return m_isSet; }
  bool HasSeen() const {
    pollfd queue{m_queue, POLLIN, 0};
    return poll(&queue, 1, 0) > 0;
  }

 private:
  int m_queue;
  bool m_isSet = false;
};

TEST(XmlEntities, NothingOutsideIsOpened) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("canary.txt", "<!ENTITY e 'sung'>").string();
  const OpenWatch watch(folder.Path());
  ASSERT_TRUE(watch.IsSet());
  for (const std::string& address : {path, "file://" + path}) {
    EXPECT_FALSE(IsAccepted("<!DOCTYPE r [<!ENTITY e SYSTEM '" + address + "'>]><r>&e;</r>"));
    EXPECT_FALSE(IsAccepted("<!DOCTYPE r [<!ENTITY e PUBLIC 'p' '" + address + "'>]><r a='&e;'/>"));
    EXPECT_FALSE(IsAccepted("<!DOCTYPE r [<!ENTITY % e SYSTEM '" + address + "'>%e;]><r/>"));
    EXPECT_FALSE(IsAccepted("<!DOCTYPE r SYSTEM '" + address + "'><r>&e;</r>"));
    EXPECT_FALSE(IsAccepted("<!DOCTYPE r PUBLIC 'p' '" + address + "' [<!ENTITY f 'x'>]><r>&f;</r>"));
    EXPECT_FALSE(IsAccepted("<!DOCTYPE r [<!ENTITY % p '<!ENTITY e SYSTEM \"" + address + "\">'>%p;]><r>&e;</r>"))
        << "declared by an internal parameter entity";
    EXPECT_TRUE(IsAccepted("<r xmlns:x='u' x:schemaLocation='u " + address + "'/>"));
  }
  EXPECT_FALSE(watch.HasSeen());
  ReadBytes(path);
  EXPECT_TRUE(watch.HasSeen()) << "the watch itself works";
}

}  // namespace
}  // namespace ondrel::test
