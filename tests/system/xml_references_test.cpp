// Which text of a document is written as references, and which stays.
#include <gtest/gtest.h>

#include <ondrel/platform/xml_references.h>

namespace ondrel::test {
namespace {

std::string Referenced(std::string_view text) { return platform::ReferenceValues(text).value_or("none: it is ASCII"); }

TEST(XmlReferences, AsciiStaysAsItIs) {
  EXPECT_EQ(platform::ReferenceValues("<a b='&#233;'>c</a>"), std::nullopt);
  EXPECT_EQ(platform::ReferenceValues(""), std::nullopt);
}

TEST(XmlReferences, ValuesOfAttributesBecomeReferencesOfTheirCharacters) {
  EXPECT_EQ(Referenced("<a b='\xC3\xA9' c=\"x\xE2\x82\xACy\"/>"), "<a b='&#233;' c=\"x&#8364;y\"/>");
  EXPECT_EQ(Referenced("<a b='\xF0\x9F\x92\xBE'/>"), "<a b='&#128190;'/>");   // one reference, not two surrogates
  EXPECT_EQ(Referenced("<a b='\xC2\x80'/>"), "<a b='&#128;'/>");              // the smallest
  EXPECT_EQ(Referenced("<a b='\xF4\x8F\xBF\xBF'/>"), "<a b='&#1114111;'/>");  // the largest
}

TEST(XmlReferences, TheOtherQuoteAndTagEndsBelongToAValue) {
  EXPECT_EQ(Referenced("<a b='\"\xC3\xA9>' c=\"'\xC3\xA9<\">\xC3\xA9</a>"),
            "<a b='\"&#233;>' c=\"'&#233;<\">\xC3\xA9</a>");
}

TEST(XmlReferences, ValuesOfEntitiesBecomeReferences) {
  EXPECT_EQ(Referenced("<!DOCTYPE a [<!ENTITY e '\xC3\xA9'><!-- '\xC3\xA9' -->]><a b='&e;\xC3\xA9'/>"),
            "<!DOCTYPE a [<!ENTITY e '&#233;'><!-- '\xC3\xA9' -->]><a b='&e;&#233;'/>");
}

TEST(XmlReferences, EverythingElseStays) {
  for (const char* const text :
       {"\xEF\xBB\xBF<a/>", "<!-- b='\xC3\xA9' --><a/>", "<?b c='\xC3\xA9'?><a/>",
        "<a><![CDATA[<b c='\xC3\xA9'>]]></a>", "<a>'\xC3\xA9'</a>", "<\xC3\xA9/>", "<a \xC3\xA9='b'/>"}) {
    EXPECT_EQ(Referenced(text), text);
  }
}

TEST(XmlReferences, BytesThatAreNoUtf8Stay) {
  EXPECT_EQ(Referenced("<a b='\xE9\xC3\xA9\xC0\x80\xED\xA0\x80\xF5'/>"), "<a b='\xE9&#233;\xC0\x80\xED\xA0\x80\xF5'/>");
  EXPECT_EQ(Referenced("<a b='\xC3'/>"), "<a b='\xC3'/>");
}

TEST(XmlReferences, TextThatEndsEarlyIsKeptWhole) {
  EXPECT_EQ(Referenced("<a b='\xC3\xA9"), "<a b='&#233;");
  for (const char* const text :
       {"\xC3\xA9", "<\xC3\xA9", "<!-- \xC3\xA9", "<![CDATA[\xC3\xA9", "<?\xC3\xA9", "<!DOCTYPE \xC3\xA9"}) {
    EXPECT_EQ(Referenced(text), text);
  }
}

}  // namespace
}  // namespace ondrel::test
