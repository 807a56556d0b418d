// Texts that attack: entities that explode, entities that lead outside, chains of entities.
#include <gtest/gtest.h>

#include <chrono>

#include "support/open_watch.h"
#include "support/peak_memory.h"
#include "support/sanitizers.h"
#include "support/small_stack.h"
#include "support/temporary_folder.h"
#include "system/documents.h"
#include "system/xml_texts.h"

namespace ondrel::test {
namespace {

constexpr std::chrono::seconds kLongestTime{kSlowed ? 5 : 1};
constexpr long kMostKibibytes = 32 * 1024;

// The text must be refused quickly and without much memory.
void ExpectDefused(const std::string& text) {
  const CComPtr<IXMLDOMDocument> document = NewDocument();
  const CComBSTR wide(CString(text.c_str()));
  const long peakBefore = PeakKibibytes();
  const auto start = std::chrono::steady_clock::now();
  VARIANT_BOOL loaded = VARIANT_TRUE;
  EXPECT_EQ(Hex(platform::LoadDocument(document, wide, &loaded)), Hex(S_FALSE));
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

std::string Elements(int count) {
  std::string text;
  for (int element = 0; element < count; ++element) text += "<r/>";
  return text;
}

std::string DeclaredAttributes(int count, const std::string& kind) {
  std::string text = "<!DOCTYPE d [<!ATTLIST r";
  for (int index = 0; index < count; ++index) text += " a" + std::to_string(index) + ' ' + kind;
  return text + ">]>";
}

TEST(XmlEntities, ALongDefaultOfEveryElementIsDefused) {
  const std::string value(1'000'000, 'x');
  ExpectDefused("<!DOCTYPE d [<!ATTLIST r a CDATA '" + value + "'>]><d>" + Elements(200'000) + "</d>");
}

TEST(XmlEntities, ManyDefaultsOfEveryElementAreDefused) {
  ExpectDefused(DeclaredAttributes(128, "CDATA ''") + "<d>" + Elements(200'000) + "</d>");
}

TEST(XmlEntities, DefaultsOfEntitiesAreDefused) {
  std::string text =
      "<!DOCTYPE d [<!ENTITY e '" + Elements(1'000) + "'><!ATTLIST r a CDATA '" + std::string(1'000, 'x') + "'>]><d>";
  for (int count = 0; count < 200; ++count) text += "&e;";
  ExpectDefused(text + "</d>");
}

TEST(XmlEntities, ModestDefaultsAreAccepted) {
  const std::string value(1'000, 'x');
  EXPECT_TRUE(IsAccepted("<!DOCTYPE d [<!ATTLIST r a CDATA '" + value + "'>]><d>" + Elements(1'000) + "</d>"));
}

TEST(XmlEntities, MoreDeclaredAttributesThanAreAllowedAreRefused) {
  for (const std::string kind : {"CDATA #IMPLIED", "NMTOKEN #IMPLIED", "CDATA #REQUIRED", "CDATA ''"}) {
    EXPECT_TRUE(IsAccepted(DeclaredAttributes(128, kind) + "<d/>")) << kind;
    EXPECT_FALSE(IsAccepted(DeclaredAttributes(129, kind) + "<d/>")) << kind;
  }
  // One hundred thousand declarations, of which each is looked at for each other one, each element and each attribute.
  ExpectDefused(DeclaredAttributes(100'000, "CDATA ''") + "<d/>");
  ExpectDefused(DeclaredAttributes(100'000, "NMTOKEN #IMPLIED") + "<d>" + Elements(100'000) + "</d>");
}

TEST(XmlEntities, ThatNothingDeclaresAreRefusedBehindParameterEntitiesToo) {
  EXPECT_TRUE(IsAccepted("<!DOCTYPE r [<!ENTITY % p '<!ENTITY e \"x\">'>%p;]><r>&e;</r>"));
  EXPECT_FALSE(IsAccepted("<!DOCTYPE r [<!ENTITY % p ''>%p;]><r>&e;</r>"));
  EXPECT_FALSE(IsAccepted("<r>&e;</r>"));
}

TEST(XmlEntities, ModestExpansionIsAccepted) {
  std::string text = "<!DOCTYPE r [<!ENTITY e '" + std::string(1'000, 'x') + "'>]><r a='";
  for (int count = 0; count < 100; ++count) text += "&e;";
  const CComPtr<IXMLDOMDocument> document = Loaded(text + "'/>");
  EXPECT_EQ(AttributeOf(RootOf(document), _T("a")).GetLength(), 100'000);
}

TEST(XmlEntities, MoreThanAreAllowedAreRefusedBeforeTheyCanNest) {
  RunOnStack(kSmallStack, [] {
    EXPECT_FALSE(IsAccepted(EntityChain(129, "<r/>")));
    EXPECT_FALSE(IsAccepted(EntityChain(200'000, "<r a='&c199999;'>&c199999;</r>")));
  });
}

// Texts that lead to a file outside, in every way there is.
std::vector<std::string> TextsThatLeadTo(const std::string& address) {
  return {"<!DOCTYPE r [<!ENTITY e SYSTEM '" + address + "'>]><r>&e;</r>",
          "<!DOCTYPE r [<!ENTITY e PUBLIC 'p' '" + address + "'>]><r a='&e;'/>",
          "<!DOCTYPE r [<!ENTITY % e SYSTEM '" + address + "'>%e;]><r/>",
          "<!DOCTYPE r SYSTEM '" + address + "'><r>&e;</r>",
          "<!DOCTYPE r PUBLIC 'p' '" + address + "' [<!ENTITY f 'x'>]><r>&f;</r>",
          // declared by an internal parameter entity
          "<!DOCTYPE r [<!ENTITY % p '<!ENTITY e SYSTEM \"" + address + "\">'>%p;]><r>&e;</r>"};
}

std::vector<std::string> AddressesOf(const std::filesystem::path& file) {
  const std::string path = file.generic_string();
  return {file.string(), (path.starts_with('/') ? "file://" : "file:///") + path};
}

TEST(XmlEntities, NothingOutsideIsOpened) {
  const TemporaryFolder folder;
  const std::filesystem::path file = folder.Write("canary.txt", "<!ENTITY e 'sung'>");
  const OpenWatch watch(folder.Path());
  for (const std::string& address : AddressesOf(file)) {
    for (const std::string& text : TextsThatLeadTo(address)) EXPECT_FALSE(IsAccepted(text)) << text;
    EXPECT_TRUE(IsAccepted("<r xmlns:x='u' x:schemaLocation='u " + address + "'/>"));
  }
  EXPECT_FALSE(watch.HasSeen());
  ReadBytes(file);
  EXPECT_TRUE(watch.HasSeen()) << "the watch itself works";
}

TEST(XmlEntities, NothingOutsideIsOpenedByTheDocumentItself) {
  const TemporaryFolder folder;
  const std::filesystem::path file = folder.Write("canary.txt", "<!ENTITY e 'sung'>");
  const OpenWatch watch(folder.Path());
  for (const std::string& address : AddressesOf(file)) {
    for (const std::string& text : TextsThatLeadTo(address)) {
      VARIANT_BOOL loaded = VARIANT_FALSE;
      NewDocument()->loadXML(CComBSTR(CString(text.c_str())), &loaded);
      EXPECT_FALSE(watch.HasSeen()) << text;
    }
  }
}

}  // namespace
}  // namespace ondrel::test
