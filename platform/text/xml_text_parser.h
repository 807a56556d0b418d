// XML text, parsed: the only place that speaks with the Expat library.
//
// The text is UTF-16, so an encoding that it declares is ignored. A U+FEFF at its start and blanks before the
// declaration are allowed, as Windows allows them. Beyond what makes a document well-formed, a text is refused when
//   - a name's prefix is not declared (xmlns:prefix) at its place, or a name is no qualified name;
//   - it declares an external entity, general or parameter, or an external document type: nothing outside is opened;
//   - it declares more entities or more attributes, or entities and the default values of attributes expand further,
//   than
//     the limits in the implementation allow.
#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <ondrel/platform/narrow_text_reader.h>
#include <ondrel/platform/types.h>
#include <ondrel/platform/xml_passage.h>

struct XML_ParserStruct;

namespace ondrel::platform {

/// Receives a document's elements. Names and values are UTF-8, valid during the call. What is thrown stops the parsing
/// and comes out of Parse.
class XmlElementSink {
 public:
  struct Attribute {
    std::string_view name;
    std::string_view value;  ///< As XML normalises it, entities expanded.
  };

  virtual void OnStartElement(std::string_view name, std::span<const Attribute> attributes) = 0;
  virtual void OnEndElement(std::string_view name) = 0;
  /// The name of the element that is open, for messages to people; empty when the sink does not keep it.
  virtual std::string OpenElement() const { return {}; }

 protected:
  ~XmlElementSink() = default;
};

/// Receives what a document has beside its elements; a run of text may come in several pieces. What is thrown stops the
/// parsing and comes out of Parse.
class XmlPassageSink {
 public:
  virtual void OnPassage(XmlPassage passage) = 0;

 protected:
  ~XmlPassageSink() = default;
};

/// Why a text is refused.
struct XmlTextFault {
  std::uint64_t line = 0;  ///< From 1.
  std::string reason;      ///< In UTF-8, for people, without a closing stop.
};

/// What becomes of blanks and line ends between two tags, which no element is made of.
enum class XmlLayout {
  kept,    ///< The parser sees them, and knows the line that it has come to.
  dropped  ///< They are left out, which is faster where most of a text's lines are indented; a fault's line means
           ///< nothing.
};

/// Parses one text. No depth of nesting uses the stack.
class XmlTextParser {
 public:
  explicit XmlTextParser(XmlElementSink& sink, XmlLayout layout = XmlLayout::kept);
  ~XmlTextParser();
  XmlTextParser(const XmlTextParser&) = delete;
  XmlTextParser& operator=(const XmlTextParser&) = delete;

  /// Has `sink` told of what else there is, too, which takes time. To be called before Parse.
  void ReportPassages(XmlPassageSink& sink);

  /// True when the whole text is accepted. Otherwise `fault` says why; what was reported before stays reported. To be
  /// called once. Raises std::bad_alloc and what the sink raises.
  bool Parse(std::basic_string_view<WCHAR> text, XmlTextFault& fault);
  /// The same for text in code page 1252, which comes piece by piece. Raises what `read` raises, too.
  bool Parse1252(const NarrowTextReader& read, XmlTextFault& fault);

  /// The line of what is being reported, from 1, where the layout is kept. The parser counts the lines only when it is
  /// asked.
  std::uint64_t Line() const;

 private:
  struct Callbacks;

  /// Parses a piece of the text; false when it is refused. `converted` receives the units up to a half of a surrogate
  /// pair that stands alone, or all.
  template <class Unit>
  bool Feed(std::basic_string_view<Unit> block, bool isLast, std::size_t& converted);
  /// Tells why the text is refused, when it is; the result of the whole.
  bool Finish(bool accepted, XmlTextFault& fault);
  void StartElement(const char* name, const char** attributes);
  void TellPassage(XmlPassage passage);
  void EndElement(const char* name);
  void DeclareEntity(bool external);
  void DeclareAttribute();
  void CountDefaults();
  void Refuse(std::string reason);
  void Stop();
  std::string ReasonOfError() const;
  void OpenPrefixes();
  void CheckPrefix(std::string_view name, std::size_t colon, bool isElement);
  bool IsPrefixDeclared(std::string_view prefix) const;
  void ClosePrefixes();

  XmlElementSink& m_sink;
  XmlPassageSink* m_passageSink = nullptr;  // null unless it is asked for
  XmlLayout m_layout;
  XML_ParserStruct* m_parser;
  std::vector<XmlElementSink::Attribute> m_attributes;  // of the element that is being reported
  // The text is converted piece by piece into the parser's own buffer. A piece this small stays in the cache; pieces
  // grow when a single token is longer than one, so that the parser need not look at a long token again and again.
  std::size_t m_blockUnits = std::size_t{32} * 1024;
  std::uint64_t m_fedBytes = 0;
  std::uint64_t m_depth = 0;
  std::uint64_t m_linesBefore = 0;    // lines that were skipped before the parser's first
  unsigned m_entities = 0;            // declared so far
  unsigned m_declaredAttributes = 0;  // likewise
  std::uint64_t m_defaultBytes = 0;   // that default values would have taken, had they been written
  bool m_hasDoctype = false;
  bool m_isInDoctype = false;  // known only where passages are reported
  bool m_stopped = false;
  std::string m_refusal;  // the reason when it is this class that refuses, not the library
  std::uint64_t m_refusalLine = 0;
  std::exception_ptr m_raised;

  // Prefix declarations in force: how many of each, and at which depth each was made, innermost last.
  struct DeclaredPrefix {
    std::uint64_t depth;
    std::string prefix;
  };
  std::map<std::string, std::uint64_t, std::less<>> m_declarations;
  std::vector<DeclaredPrefix> m_openPrefixes;
};

}  // namespace ondrel::platform
