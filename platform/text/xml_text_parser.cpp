// XML text, parsed with Expat.

#include "text/xml_text_parser.h"

// The library has the limits on expansion, but its header declares them only under this name.
#define XML_DTD
#include <expat.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

#include "text/code_page_1252.h"
#include "text/unicode.h"

namespace ondrel::platform {

namespace {

// A definition's text uses no entities of its own at all, so what its entities may become can be small: until this many
// bytes they may expand freely, beyond it the document may grow to so many times its own size. The bomb that stays just
// below costs a few megabytes and milliseconds.
constexpr unsigned long long kFreeExpansionBytes = 1 << 20;
constexpr float kLargestAmplification = 8.0F;

// Expat expands an entity inside an entity by calling itself. A chain of entities cannot be longer than the number of
// them, so a limit on the number bounds the stack: 128 levels take about 60 KiB.
constexpr unsigned kMostEntities = 128;

// Expat looks at every declared attribute of an element's name again and again: for each further declaration, for each
// element of that name, and for each attribute of it that is no plain text. A definition declares none.
constexpr unsigned kMostDeclaredAttributes = 128;

constexpr std::size_t kLargestBlockUnits = std::size_t{1} << 28;  // times 3 bytes: fits the parser's int

constexpr std::string_view kXmlns = "xmlns";
constexpr std::string_view kXmlnsColon = "xmlns:";

constexpr char kExternalEntity[] = "an external entity is declared; nothing outside the file is opened";
constexpr char kExternalDoctype[] = "an external document type is declared; nothing outside the file is opened";
constexpr char kTooManyEntities[] = "more entities are declared than are accepted";
constexpr char kExpansion[] = "entities expand beyond the limit";
constexpr char kTooManyAttributes[] = "more attributes are declared than are accepted";
constexpr char kDefaults[] = "the declared values of attributes expand beyond the limit";
constexpr char kLoneSurrogate[] = "a half of a surrogate pair stands alone";

bool IsBlank(char32_t unit) { return unit == ' ' || unit == '\t' || unit == '\r' || unit == '\n'; }

template <class Unit>
std::uint64_t CountLines(std::basic_string_view<Unit> text) {
  std::uint64_t lines = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\n' || (text[i] == '\r' && (i + 1 == text.size() || text[i + 1] != '\n'))) ++lines;
  }
  return lines;
}

/// The number of units, at most `wanted`, that can be converted without the rest: no pair is cut in two.
std::size_t BlockLength(std::basic_string_view<WCHAR> text, std::size_t wanted) {
  if (text.size() <= wanted) return text.size();
  return IsHighSurrogate(text[wanted - 1]) ? wanted - 1 : wanted;
}

/// The character at `unit`, which moves behind it; false for half of a pair that stands alone.
bool Take(const WCHAR*& unit, const WCHAR* end, char32_t& character) {
  const WCHAR* const start = unit;
  character = TakeUtf16(unit, end);
  if (IsSurrogate(character)) unit = start;
  return unit != start;
}
bool Take(const char*& byte, const char*, char32_t& character) {
  character = UnitOf1252(*byte++);
  return true;
}

struct Converted {
  std::size_t units;  // how much of the text was converted: all of it unless a surrogate stands alone
  std::size_t bytes;
};

/// Where the blanks end that begin at `unit` and lie between two tags; `unit` itself when what follows is no tag, or is
/// not there to be seen.
template <class Unit>
const Unit* BehindLayout(const Unit* unit, const Unit* end) {
  static constexpr Unit kFourTabs[] = {'\t', '\t', '\t', '\t'};
  const Unit* next = unit;
  while (next != end && IsBlank(*next)) {
    ++next;
    while (end - next >= 4 && std::memcmp(next, kFourTabs, sizeof kFourTabs) == 0) next += 4;
  }
  return next != end && *next == '<' ? next : unit;
}

/// With `DropsLayout`, blanks between two tags that begin with a line end are left out.
template <bool DropsLayout, class Unit>
Converted ToUtf8(std::basic_string_view<Unit> text, char* bytes) {
  const Unit* unit = text.data();
  const Unit* const end = unit + text.size();
  char* byte = bytes;
  while (unit != end) {
    const std::size_t ascii = CopyAscii<DropsLayout>(unit, static_cast<std::size_t>(end - unit), byte);
    unit += ascii;
    byte += ascii;
    while (unit != end && *unit >= ' ' && *unit <= '~') *byte++ = static_cast<char>(*unit++);
    if (unit == end) break;
    const bool isBehindTag = DropsLayout && byte != bytes && byte[-1] == '>' && IsBlank(*unit);
    if (isBehindTag) {
      if (const Unit* const next = BehindLayout(unit, end); next != unit) {
        unit = next;
        continue;
      }
    }
    char32_t character = 0;
    if (!Take(unit, end, character)) break;
    byte += PutUtf8(character, byte);
  }
  return {static_cast<std::size_t>(unit - text.data()), static_cast<std::size_t>(byte - bytes)};
}

}  // namespace

// Expat is C: nothing may be thrown through it.
struct XmlTextParser::Callbacks {
  template <class Action>
  static void Run(void* user, Action&& action) noexcept {
    auto& parser = *static_cast<XmlTextParser*>(user);
    if (parser.m_stopped) return;  // an empty element's end is still reported after its start stopped the parser
    try {
      action(parser);
    } catch (...) {
      parser.m_raised = std::current_exception();
      parser.Stop();
    }
  }

  static void XMLCALL StartElement(void* user, const XML_Char* name, const XML_Char** attributes) {
    Run(user, [=](XmlTextParser& parser) { parser.StartElement(name, attributes); });
  }
  static void XMLCALL EndElement(void* user, const XML_Char* name) {
    Run(user, [=](XmlTextParser& parser) { parser.EndElement(name); });
  }
  static void XMLCALL StartDoctype(void* user, const XML_Char*, const XML_Char* systemId, const XML_Char* publicId,
                                   int) {
    Run(user, [=](XmlTextParser& parser) {
      parser.m_hasDoctype = true;
      parser.TellPassage(XmlPassage::documentType);
      parser.m_isInDoctype = parser.m_passageSink != nullptr;
      if (systemId != nullptr || publicId != nullptr) parser.Refuse(kExternalDoctype);
    });
  }
  static void XMLCALL Entity(void* user, const XML_Char*, int, const XML_Char* value, int, const XML_Char*,
                             const XML_Char*, const XML_Char*, const XML_Char*) {
    Run(user, [=](XmlTextParser& parser) { parser.DeclareEntity(value == nullptr); });
  }
  static void XMLCALL AttributeDeclaration(void* user, const XML_Char*, const XML_Char*, const XML_Char*,
                                           const XML_Char*, int) {
    Run(user, [](XmlTextParser& parser) { parser.DeclareAttribute(); });
  }
  static void XMLCALL EndDoctype(void* user) {
    Run(user, [](XmlTextParser& parser) { parser.m_isInDoctype = false; });
  }
  static void XMLCALL Text(void* user, const XML_Char* text, int length) {
    const std::string_view piece(text, static_cast<std::size_t>(length));
    if (std::all_of(piece.begin(), piece.end(), IsBlank)) return;
    Run(user, [](XmlTextParser& parser) { parser.TellPassage(XmlPassage::text); });
  }
  static void XMLCALL Comment(void* user, const XML_Char*) {
    Run(user, [](XmlTextParser& parser) { parser.TellPassage(XmlPassage::comment); });
  }
  static void XMLCALL Instruction(void* user, const XML_Char*, const XML_Char*) {
    Run(user, [](XmlTextParser& parser) { parser.TellPassage(XmlPassage::instruction); });
  }
  static int XMLCALL ExternalEntity(XML_Parser, const XML_Char*, const XML_Char*, const XML_Char*, const XML_Char*) {
    return XML_STATUS_ERROR;  // never reached, since declarations are refused; should it be, nothing is opened
  }
  static void XMLCALL SkippedEntity(void* user, const XML_Char* name, int) {
    Run(user, [=](XmlTextParser& parser) { parser.Refuse("the entity " + std::string(name) + " is not declared"); });
  }
};

XmlTextParser::XmlTextParser(XmlElementSink& sink, XmlLayout layout)
    : m_sink(sink), m_layout(layout), m_parser(XML_ParserCreate("UTF-8")) {
  if (m_parser == nullptr) throw std::bad_alloc();
  XML_SetUserData(m_parser, this);
  XML_SetElementHandler(m_parser, Callbacks::StartElement, Callbacks::EndElement);
  XML_SetStartDoctypeDeclHandler(m_parser, Callbacks::StartDoctype);
  XML_SetEntityDeclHandler(m_parser, Callbacks::Entity);
  XML_SetAttlistDeclHandler(m_parser, Callbacks::AttributeDeclaration);
  XML_SetSkippedEntityHandler(m_parser, Callbacks::SkippedEntity);
  XML_SetExternalEntityRefHandler(m_parser, Callbacks::ExternalEntity);
  // Without this the parser would skip internal parameter entities too, and with them the declarations they hold.
  XML_SetParamEntityParsing(m_parser, XML_PARAM_ENTITY_PARSING_ALWAYS);
  XML_SetBillionLaughsAttackProtectionActivationThreshold(m_parser, kFreeExpansionBytes);
  XML_SetBillionLaughsAttackProtectionMaximumAmplification(m_parser, kLargestAmplification);
}

XmlTextParser::~XmlTextParser() { XML_ParserFree(m_parser); }

void XmlTextParser::ReportPassages(XmlPassageSink& sink) {
  m_passageSink = &sink;
  XML_SetCharacterDataHandler(m_parser, Callbacks::Text);
  XML_SetCommentHandler(m_parser, Callbacks::Comment);
  XML_SetProcessingInstructionHandler(m_parser, Callbacks::Instruction);
  XML_SetEndDoctypeDeclHandler(m_parser, Callbacks::EndDoctype);
}

std::uint64_t XmlTextParser::Line() const { return m_linesBefore + XML_GetCurrentLineNumber(m_parser); }

bool XmlTextParser::Parse(std::basic_string_view<WCHAR> text, XmlTextFault& fault) {
  std::size_t start = !text.empty() && text.front() == 0xFEFF ? 1 : 0;
  while (start < text.size() && IsBlank(text[start])) ++start;
  m_linesBefore = CountLines(text.substr(0, start));

  std::basic_string_view<WCHAR> rest = text.substr(start);
  bool accepted = true;
  do {
    const std::basic_string_view<WCHAR> block = rest.substr(0, BlockLength(rest, m_blockUnits));
    rest.remove_prefix(block.size());
    std::size_t converted = 0;
    accepted = Feed(block, rest.empty(), converted);
    if (accepted && converted < block.size()) {
      fault.line = 1 + CountLines(text.substr(0, text.size() - rest.size() - block.size() + converted));
      fault.reason = kLoneSurrogate;
      return false;
    }
  } while (accepted && !rest.empty());
  return Finish(accepted, fault);
}

bool XmlTextParser::Parse1252(const NarrowTextReader& read, XmlTextFault& fault) {
  std::string block;
  bool isStart = true;
  bool isLast = false;
  bool accepted = true;
  while (accepted && !isLast) {
    block.resize(m_blockUnits);
    const std::size_t size = read(block.data(), block.size());
    isLast = size < block.size();
    std::string_view rest(block.data(), size);
    if (isStart) {
      const auto blanks = static_cast<std::size_t>(std::find_if_not(rest.begin(), rest.end(), IsBlank) - rest.begin());
      m_linesBefore += CountLines(rest.substr(0, blanks));
      rest.remove_prefix(blanks);
      isStart = rest.empty();
    }
    if (!rest.empty() || isLast) {
      std::size_t converted = 0;
      accepted = Feed(rest, isLast, converted);
    }
  }
  return Finish(accepted, fault);
}

template <class Unit>
bool XmlTextParser::Feed(std::basic_string_view<Unit> block, bool isLast, std::size_t& converted) {
  const std::size_t capacity = std::max<std::size_t>(block.size() * kMaximumUtf8PerUnit, 1);
  auto* const bytes = static_cast<char*>(XML_GetBuffer(m_parser, static_cast<int>(capacity)));
  if (bytes == nullptr) throw std::bad_alloc();
  // Where a document type is declared, what stands between tags may count: in the size that entities may expand to.
  const bool dropsLayout = m_layout == XmlLayout::dropped && m_depth > 0 && !m_hasDoctype;
  const Converted done = dropsLayout ? ToUtf8<true>(block, bytes) : ToUtf8<false>(block, bytes);
  converted = done.units;
  const bool ends = isLast && converted == block.size();
  const auto size = static_cast<int>(done.bytes);
  if (XML_ParseBuffer(m_parser, size, ends ? XML_TRUE : XML_FALSE) != XML_STATUS_OK) return false;
  m_fedBytes += done.bytes;
  const std::uint64_t pending = m_fedBytes - static_cast<std::uint64_t>(XML_GetCurrentByteIndex(m_parser));
  if (pending > m_blockUnits) m_blockUnits = std::min(2 * m_blockUnits, kLargestBlockUnits);
  return true;
}

bool XmlTextParser::Finish(bool accepted, XmlTextFault& fault) {
  if (m_raised) std::rethrow_exception(std::exchange(m_raised, nullptr));
  if (accepted) return true;
  if (!m_refusal.empty()) {
    fault.line = m_refusalLine;
    fault.reason = std::move(m_refusal);
    return false;
  }
  if (XML_GetErrorCode(m_parser) == XML_ERROR_NO_MEMORY) throw std::bad_alloc();
  fault.line = Line();
  fault.reason = ReasonOfError();
  return false;
}

void XmlTextParser::StartElement(const char* name, const char** attributes) {
  const std::string_view element(name);
  std::size_t colon = element.find(':');
  bool hasPrefixes = colon != std::string_view::npos;
  m_attributes.clear();
  for (; *attributes != nullptr; attributes += 2) {
    m_attributes.push_back({attributes[0], attributes[1]});
    hasPrefixes |= m_attributes.back().name.find(':') != std::string_view::npos;
  }
  ++m_depth;
  CountDefaults();
  if (m_stopped) return;
  if (hasPrefixes) {
    OpenPrefixes();
    if (colon != std::string_view::npos) CheckPrefix(element, colon, true);
    for (const XmlElementSink::Attribute& attribute : m_attributes) {
      colon = attribute.name.find(':');
      if (colon != std::string_view::npos) CheckPrefix(attribute.name, colon, false);
    }
    if (m_stopped) return;
  }
  m_sink.OnStartElement(element, m_attributes);
}

void XmlTextParser::EndElement(const char* name) {
  ClosePrefixes();
  --m_depth;
  m_sink.OnEndElement(name);
}

void XmlTextParser::TellPassage(XmlPassage passage) {
  if (m_passageSink != nullptr && !m_isInDoctype) m_passageSink->OnPassage(passage);
}

void XmlTextParser::OpenPrefixes() {
  for (const XmlElementSink::Attribute& attribute : m_attributes) {
    if (!attribute.name.starts_with(kXmlnsColon)) continue;
    if (attribute.value.empty()) {
      Refuse("the prefix of " + std::string(attribute.name) + " is declared without a name space");
      return;
    }
    std::string prefix(attribute.name.substr(kXmlnsColon.size()));
    ++m_declarations[prefix];
    m_openPrefixes.push_back({m_depth, std::move(prefix)});
  }
}

void XmlTextParser::CheckPrefix(std::string_view name, std::size_t colon, bool isElement) {
  if (m_stopped) return;
  const bool isQualified = colon > 0 && colon + 1 < name.size() && name.find(':', colon + 1) == std::string_view::npos;
  if (!isQualified) {
    Refuse("the name " + std::string(name) + " has a colon out of place");
    return;
  }
  const std::string_view prefix = name.substr(0, colon);
  if (prefix == kXmlns ? isElement : !IsPrefixDeclared(prefix)) {
    Refuse("the prefix of " + std::string(name) + " is not declared");
  }
}

bool XmlTextParser::IsPrefixDeclared(std::string_view prefix) const {
  return prefix == "xml" || m_declarations.contains(prefix);
}

void XmlTextParser::ClosePrefixes() {
  while (!m_openPrefixes.empty() && m_openPrefixes.back().depth == m_depth) {
    const auto declaration = m_declarations.find(m_openPrefixes.back().prefix);
    if (--declaration->second == 0) m_declarations.erase(declaration);
    m_openPrefixes.pop_back();
  }
}

void XmlTextParser::DeclareEntity(bool external) {
  if (external) {
    Refuse(kExternalEntity);
  } else if (++m_entities > kMostEntities) {
    Refuse(kTooManyEntities);
  }
}

void XmlTextParser::DeclareAttribute() {
  if (++m_declaredAttributes > kMostDeclaredAttributes) Refuse(kTooManyAttributes);
}

// Declared values count like the entities that they are in all but name. Expat does not count them, since it keeps each
// only once; whoever is told of the element makes a copy.
void XmlTextParser::CountDefaults() {
  if (m_declaredAttributes == 0) return;
  const auto written = static_cast<std::size_t>(XML_GetSpecifiedAttributeCount(m_parser)) / 2;
  for (std::size_t index = written; index < m_attributes.size(); ++index) {
    constexpr std::size_t kBlankEqualsQuotes = 4;
    m_defaultBytes += m_attributes[index].name.size() + m_attributes[index].value.size() + kBlankEqualsQuotes;
  }
  if (m_defaultBytes <= kFreeExpansionBytes) return;
  const auto textBytes = static_cast<float>(XML_GetCurrentByteIndex(m_parser));
  if (static_cast<float>(m_defaultBytes) > kLargestAmplification * textBytes) Refuse(kDefaults);
}

void XmlTextParser::Refuse(std::string reason) {
  m_refusalLine = Line();
  m_refusal = std::move(reason);
  Stop();
}

void XmlTextParser::Stop() {
  m_stopped = true;
  XML_StopParser(m_parser, XML_FALSE);
}

std::string XmlTextParser::ReasonOfError() const {
  const XML_Error error = XML_GetErrorCode(m_parser);
  const std::string open = m_depth > 0 ? m_sink.OpenElement() : std::string();
  switch (error) {
    case XML_ERROR_NO_ELEMENTS:
      if (m_depth == 0) return "there is no element";
      [[fallthrough]];
    case XML_ERROR_TAG_MISMATCH:
    case XML_ERROR_UNCLOSED_TOKEN:
      if (open.empty() || error == XML_ERROR_UNCLOSED_TOKEN) return XML_ErrorString(error);
      return "the element " + open + " is not closed";
    case XML_ERROR_AMPLIFICATION_LIMIT_BREACH:
      return kExpansion;
    default:
      return XML_ErrorString(error);
  }
}

}  // namespace ondrel::platform
