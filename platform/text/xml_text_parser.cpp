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

// The text is converted piece by piece into the parser's own buffer. A piece this small stays in the cache; pieces grow
// when a single token is longer than one, so that the parser need not look at a long token again and again.
constexpr std::size_t kFirstBlockUnits = std::size_t{32} * 1024;
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

bool IsBlank(WCHAR unit) { return unit == ' ' || unit == '\t' || unit == '\r' || unit == '\n'; }

std::uint64_t CountLines(std::basic_string_view<WCHAR> text) {
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

struct Converted {
  std::size_t units;  // how much of the text was converted: all of it unless a surrogate stands alone
  std::size_t bytes;
};

// How much of the text at `unit` is ASCII and was copied, a multiple of kRun. Without decisions inside a run the
// compiler can do it in a few wide instructions; nearly all text is of this kind.
std::size_t CopyAscii(const WCHAR* unit, const WCHAR* end, char* byte) {
  constexpr std::size_t kRun = 16;
  std::size_t copied = 0;
  while (static_cast<std::size_t>(end - unit) - copied >= kRun) {
    WCHAR allBits = 0;
    for (std::size_t i = 0; i < kRun; ++i) allBits |= unit[copied + i];
    if (allBits >= 0x80) break;
    for (std::size_t i = 0; i < kRun; ++i) byte[copied + i] = static_cast<char>(unit[copied + i]);
    copied += kRun;
  }
  return copied;
}

Converted ToUtf8(std::basic_string_view<WCHAR> text, char* bytes) {
  const WCHAR* unit = text.data();
  const WCHAR* const end = unit + text.size();
  char* byte = bytes;
  while (unit != end) {
    const std::size_t ascii = CopyAscii(unit, end, byte);
    unit += ascii;
    byte += ascii;
    if (unit == end) break;
    const WCHAR* const start = unit;
    const char32_t character = TakeUtf16(unit, end);
    if (IsSurrogate(character)) {
      unit = start;
      break;
    }
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
    if (systemId == nullptr && publicId == nullptr) return;
    Run(user, [](XmlTextParser& parser) { parser.Refuse(kExternalDoctype); });
  }
  static void XMLCALL Entity(void* user, const XML_Char*, int, const XML_Char* value, int, const XML_Char*,
                             const XML_Char*, const XML_Char*, const XML_Char*) {
    Run(user, [=](XmlTextParser& parser) { parser.DeclareEntity(value == nullptr); });
  }
  static void XMLCALL AttributeDeclaration(void* user, const XML_Char*, const XML_Char*, const XML_Char*,
                                           const XML_Char*, int) {
    Run(user, [](XmlTextParser& parser) { parser.DeclareAttribute(); });
  }
  static int XMLCALL ExternalEntity(XML_Parser, const XML_Char*, const XML_Char*, const XML_Char*, const XML_Char*) {
    return XML_STATUS_ERROR;  // never reached, since declarations are refused; should it be, nothing is opened
  }
  static void XMLCALL SkippedEntity(void* user, const XML_Char* name, int) {
    Run(user, [=](XmlTextParser& parser) { parser.Refuse("the entity " + std::string(name) + " is not declared"); });
  }
};

XmlTextParser::XmlTextParser(XmlElementSink& sink) : m_sink(sink), m_parser(XML_ParserCreate("UTF-8")) {
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

std::uint64_t XmlTextParser::Line() const { return m_linesBefore + XML_GetCurrentLineNumber(m_parser); }

bool XmlTextParser::Parse(std::basic_string_view<WCHAR> text, XmlTextFault& fault) {
  std::size_t start = !text.empty() && text.front() == 0xFEFF ? 1 : 0;
  while (start < text.size() && IsBlank(text[start])) ++start;
  m_linesBefore = CountLines(text.substr(0, start));

  std::basic_string_view<WCHAR> rest = text.substr(start);
  std::size_t blockUnits = kFirstBlockUnits;
  XML_Index fed = 0;
  bool accepted = true;
  do {
    const std::basic_string_view<WCHAR> block = rest.substr(0, BlockLength(rest, blockUnits));
    rest.remove_prefix(block.size());
    const std::size_t capacity = std::max<std::size_t>(block.size() * kMaximumUtf8PerUnit, 1);
    auto* const bytes = static_cast<char*>(XML_GetBuffer(m_parser, static_cast<int>(capacity)));
    if (bytes == nullptr) throw std::bad_alloc();
    const Converted converted = ToUtf8(block, bytes);
    const bool isWhole = converted.units == block.size();
    const XML_Bool isLast = isWhole && rest.empty() ? XML_TRUE : XML_FALSE;
    accepted = XML_ParseBuffer(m_parser, static_cast<int>(converted.bytes), isLast) == XML_STATUS_OK;
    if (accepted && !isWhole) {
      fault.line = 1 + CountLines(text.substr(0, text.size() - rest.size() - block.size() + converted.units));
      fault.reason = kLoneSurrogate;
      return false;
    }
    fed += static_cast<XML_Index>(converted.bytes);
    const XML_Index pending = fed - XML_GetCurrentByteIndex(m_parser);
    if (pending > static_cast<XML_Index>(blockUnits)) blockUnits = std::min(2 * blockUnits, kLargestBlockUnits);
  } while (accepted && !rest.empty());

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
