// The new text is put together by a look at the tags, and then held against what the first one says of the same icons.
#include "compile/mapped_icons.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string>
#include <string_view>

#include <ondrel/platform/utf16.h>

#include "failure.h"
#include "printable.h"
#include "start_tag.h"

namespace ondrel::command {
namespace {

constexpr std::string_view kIconTag = "<Icon";

struct NamedCharacter {
  std::string_view name;
  WCHAR character;
};
constexpr std::array<NamedCharacter, 5> kNamedCharacters{
    {{"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}}};

std::optional<char32_t> ReadNumber(std::string_view digits) {
  const bool isHexadecimal = digits.starts_with('x');
  if (isHexadecimal) digits.remove_prefix(1);
  std::uint32_t number = 0;
  const auto [end, error] =
      std::from_chars(digits.data(), digits.data() + digits.size(), number, isHexadecimal ? 16 : 10);
  if (error != std::errc() || end != digits.data() + digits.size() || number > 0x10FFFF) return std::nullopt;
  return number;
}

/// The character of a reference, without its "&" and ";".
std::optional<char32_t> ReadReference(std::string_view reference) {
  if (reference.starts_with('#')) return ReadNumber(reference.substr(1));
  const auto* const named = std::find_if(kNamedCharacters.begin(), kNamedCharacters.end(),
                                         [reference](const NamedCharacter& entry) { return entry.name == reference; });
  if (named == kNamedCharacters.end()) return std::nullopt;
  return named->character;
}

void AppendCharacter(CString& text, char32_t character) {
  WCHAR units[2];
  text += CString(units, static_cast<int>(platform::PutUtf16(character, units)));
}

/// The value of an attribute, whose bytes the library reads through the narrow code page. None where it refers to what
/// a document type declares.
std::optional<CString> ReadValue(std::string_view bytes) {
  CString value;
  while (!bytes.empty()) {
    const std::size_t plain = std::min(bytes.find('&'), bytes.size());
    value += CString(std::string(bytes.substr(0, plain)).c_str());
    bytes.remove_prefix(plain);
    if (bytes.empty()) break;
    const std::size_t end = bytes.find(';');
    if (end == std::string_view::npos) return std::nullopt;
    const auto character = ReadReference(bytes.substr(1, end - 1));
    if (!character) return std::nullopt;
    AppendCharacter(value, *character);
    bytes.remove_prefix(end + 1);
  }
  return value;
}

bool IsPlainInValue(char32_t character) {
  constexpr std::string_view kMarks = "&<>\"'%";
  return character >= ' ' && character < 0x7F && kMarks.find(static_cast<char>(character)) == std::string_view::npos;
}

/// A value as it may stand in either kind of quotation marks, and within the text of an entity.
std::string WriteValue(const CString& value) {
  std::string text;
  const std::basic_string_view<WCHAR> units = value.View();
  for (const WCHAR *unit = units.data(), *const end = unit + units.size(); unit != end;) {
    const char32_t character = platform::TakeUtf16(unit, end);
    if (IsPlainInValue(character)) {
      text += static_cast<char>(character);
    } else {
      text += "&#" + std::to_string(static_cast<std::uint32_t>(character)) + ';';
    }
  }
  return text;
}

/// The value of the attribute by which an icon file's tag names its path; empty when there is none. `rest` begins
/// behind the element's name.
std::string_view FindPath(std::string_view rest) {
  std::string_view path;
  while (const auto attribute = TakeAttribute(rest)) {
    if (attribute->name == "Name") return {};  // which counts before a path
    if (attribute->name == "Path") path = attribute->value;
  }
  return path;
}

/// The text with the mapped places in the tags of icon files.
std::string RewriteIconPaths(std::string_view text, const PathMap& map) {
  std::string rewritten;
  std::size_t kept = 0;  // how much of the text is in `rewritten`
  for (std::size_t tag = text.find('<'); tag != std::string_view::npos; tag = text.find('<', tag + 1)) {
    if (text.substr(tag).starts_with("<!--")) {
      tag = text.find("-->", tag + 4);
      if (tag == std::string_view::npos) break;
      continue;
    }
    const std::string_view behind = text.substr(tag).starts_with(kIconTag) ? text.substr(tag + kIconTag.size()) : "";
    if (behind.empty() || !EndsTagName(behind)) continue;
    const std::string_view path = FindPath(behind);
    if (path.empty()) continue;
    const auto value = ReadValue(path);
    const auto place = value ? map.PlaceOf(*value) : std::nullopt;
    if (!place) continue;
    const auto start = static_cast<std::size_t>(path.data() - text.data());
    rewritten.append(text.substr(kept, start - kept)).append(WriteValue(*place));
    kept = start + path.size();
  }
  return rewritten.append(text.substr(kept));
}

/// What the set is to file an icon file by.
std::optional<CString> ExpectedPath(const ProjectFile& icon, const PathMap& map) {
  const bool isPath = icon.path && *icon.path == icon.spelling;  // and no name in the project's folder
  const auto place = isPath ? map.PlaceOf(*icon.path) : std::nullopt;
  return place ? place : icon.path;
}

}  // namespace

void MapIconFiles(Definition& definition, const PathMap& map) {
  if (definition.Project().Fault()) return;  // the load tells of it
  const std::vector<ProjectFile> icons = definition.Project().IconFiles();
  const bool isMapped = std::any_of(icons.begin(), icons.end(),
                                    [&map](const ProjectFile& icon) { return ExpectedPath(icon, map) != icon.path; });
  if (!isMapped) return;
  definition.ReplaceText(RewriteIconPaths(definition.text, map));
  const std::vector<ProjectFile>& mapped = definition.Project().IconFiles();
  for (std::size_t index = 0; index < icons.size(); ++index) {
    if (index < mapped.size() && mapped[index].path == ExpectedPath(icons[index], map)) continue;
    throw Failure(definition.At(icons[index].line),
                  "the path of the icon file " + Quoted(icons[index].spelling) +
                      " cannot be mapped; write it out in its Path, and map to a folder with a plain name",
                  StatusText(E_INVALIDARG));
  }
}

}  // namespace ondrel::command
