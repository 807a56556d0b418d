// Texts that are accepted and texts that are refused, for everything that reads XML.
#pragma once

#include <string>
#include <vector>

#include <ondrel/platform/framework/string.h>

namespace ondrel::test {

struct NamedText {
  std::string name;
  CString text;
};

inline std::vector<NamedText> AcceptedTexts() {
  const auto narrow = [](const char* text) { return CString(text); };
  return {
      {"the smallest document", narrow("<a/>")},
      {"a declaration", narrow("<?xml version=\"1.0\"?><a/>")},
      {"a declared encoding, which wide text ignores", narrow("<?xml version='1.0' encoding='utf-16'?><a/>")},
      {"an unknown declared encoding", narrow("<?xml version='1.0' encoding='klingon'?><a/>")},
      {"blanks before the declaration", narrow(" \r\n\t<?xml version='1.0'?><a/>")},
      {"a byte-order mark", CString(_T("\uFEFF<?xml version='1.0'?><a/>"))},
      {"comments, instructions, text and sections", narrow("<!--c--><?p q?><a>t<![CDATA[<x>]]><?p?></a><!--d-->")},
      {"an internal entity", narrow("<!DOCTYPE a [<!ENTITY e 'v'>]><a b='&e;'>&e;</a>")},
      {"an internal parameter entity", narrow("<!DOCTYPE a [<!ENTITY % p '<!ENTITY e \"v\">'>%p;]><a>&e;</a>")},
      {"a declared prefix", narrow("<p:a xmlns:p='u' p:b='1'><p:c/></p:a>")},
      {"a prefix declared again further in", narrow("<p:a xmlns:p='u'><p:b xmlns:p='v'/><p:c/></p:a>")},
      {"the built-in prefix", narrow("<a xml:lang='en'/>")},
      {"a default name space", narrow("<a xmlns='u'><b xmlns=''/></a>")},
      {"letters of other scripts", CString(_T("<\u0416 \u00E9='\U0001F4BE'/>"))},
  };
}

inline std::vector<NamedText> RefusedTexts() {
  const auto narrow = [](const char* text) { return CString(text); };
  std::vector<NamedText> texts = {
      {"nothing", narrow("")},
      {"blanks", narrow(" \r\n")},
      {"no element", narrow("<?xml version='1.0'?>")},
      {"plain text", narrow("hello")},
      {"an open element", narrow("<a>")},
      {"a cut tag", narrow("<a")},
      {"a cut comment", narrow("<a/><!--")},
      {"crossed tags", narrow("<a><b></a></b>")},
      {"a second root", narrow("<a/><b/>")},
      {"text behind the root", narrow("<a/>x")},
      {"an attribute twice", narrow("<a b='1' b='2'/>")},
      {"an attribute without quotes", narrow("<a b=1/>")},
      {"a bare ampersand", narrow("<a b='&'/>")},
      {"a less-than sign in an attribute", narrow("<a b='<'/>")},
      {"an entity that is not declared", narrow("<a>&e;</a>")},
      {"an entity that contains itself", narrow("<!DOCTYPE a [<!ENTITY e '&f;'><!ENTITY f '&e;'>]><a>&e;</a>")},
      {"a reference to a control character", narrow("<a b='&#1;'/>")},
      {"a control character", narrow("<a>\x01</a>")},
      {"a zero unit", CString(_T("<a/>\0"), 5)},
      {"a zero unit in an attribute", CString(_T("<a b='\0'/>"), 10)},
      {"U+FFFE", CString(_T("<a b='\uFFFE'/>"))},
      {"a declaration in the middle", narrow("<a><?xml version='1.0'?></a>")},
      {"a prefix that is not declared", narrow("<p:a/>")},
      {"an attribute's prefix that is not declared", narrow("<a p:b='1'/>")},
      {"a prefix out of its scope", narrow("<a><b xmlns:p='u'/><p:c/></a>")},
      {"a prefix declared on a sibling of an inner one", narrow("<a><b xmlns:p='u'><c xmlns:p='v'/></b><p:d/></a>")},
      {"a prefix without a name space", narrow("<a xmlns:p=''/>")},
      {"a colon in front", narrow("<:a/>")},
      {"a colon at the end", narrow("<a:/>")},
      {"two colons", narrow("<p:a:b xmlns:p='u'/>")},
      {"the reserved prefix as an element's", narrow("<xmlns:a/>")},
      {"an external entity", narrow("<!DOCTYPE a [<!ENTITY e SYSTEM 'e.txt'>]><a>&e;</a>")},
      {"an external entity that nobody uses", narrow("<!DOCTYPE a [<!ENTITY e SYSTEM 'e.txt'>]><a/>")},
      {"a public entity", narrow("<!DOCTYPE a [<!ENTITY e PUBLIC 'p' 'e.txt'>]><a/>")},
      {"an external parameter entity", narrow("<!DOCTYPE a [<!ENTITY % e SYSTEM 'e.txt'>%e;]><a/>")},
      {"an external parameter entity that nobody uses", narrow("<!DOCTYPE a [<!ENTITY % e SYSTEM 'e.txt'>]><a/>")},
      {"an unparsed entity", narrow("<!DOCTYPE a [<!NOTATION n SYSTEM 'n'><!ENTITY e SYSTEM 'e' NDATA n>]><a/>")},
      {"an external document type", narrow("<!DOCTYPE a SYSTEM 'a.dtd'><a/>")},
      {"a public document type", narrow("<!DOCTYPE a PUBLIC 'p' 'a.dtd'><a/>")},
  };
  const WCHAR high[] = {'<', 'a', ' ', 'b', '=', '\'', 0xD83D, '\'', '/', '>'};
  texts.push_back({"a lone high surrogate", CString(high, 10)});
  const WCHAR low[] = {'<', 'a', ' ', 'b', '=', '\'', 0xDCBE, '\'', '/', '>'};
  texts.push_back({"a lone low surrogate", CString(low, 10)});
  return texts;
}

/// A document type of entities each of which stands for the one before it, c0 to the last, then `use`.
inline std::string EntityChain(int entities, const std::string& use) {
  std::string text = "<!DOCTYPE r [<!ENTITY c0 'end'>";
  for (int link = 1; link < entities; ++link) {
    text += "<!ENTITY c" + std::to_string(link) + " '&c" + std::to_string(link - 1) + ";'>";
  }
  return text + "]>" + use;
}

}  // namespace ondrel::test
