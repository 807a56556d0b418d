// The names and the writing of an image's files.
#include "extract/extracted_parts.h"

#include <algorithm>
#include <cstdio>
#include <string_view>

#include <ondrel/platform/picture.h>
#include <ondrel/platform/utf16.h>

#include "extract/icon_file.h"
#include "icon_picture.h"

namespace ondrel::command {
namespace {

constexpr std::size_t kFewestDigits = 4;

/// Text of which XML holds every character; any other becomes an escape.
CString TextForXml(const CString& text) {
  CString safe;
  const std::basic_string_view<WCHAR> units = text.View();
  for (const WCHAR *unit = units.data(), *const end = unit + units.size(); unit != end;) {
    const WCHAR* const start = unit;
    const char32_t character = platform::TakeUtf16(unit, end);
    if (platform::IsXmlCharacter(character)) {
      safe += CString(start, static_cast<int>(unit - start));
      continue;
    }
    char escape[8];
    std::snprintf(escape, sizeof escape, character < ' ' ? "\\x%02X" : "\\u%04X", static_cast<unsigned>(character));
    safe += CString(escape);
  }
  return safe;
}

CMMCObjectParams::QueryList QueriesForXml(CMMCObjectParams::QueryList queries) {
  for (auto& [tag, file] : queries) tag = TextForXml(tag);
  return queries;
}

/// A record that can be saved.
void MakeFitForXml(CMMCObjectParams& record) {
  record.SetName(TextForXml(record.GetName()));
  record.SetChildQueries(QueriesForXml(record.GetChildQueries()));
  record.SetRenderQueries(QueriesForXml(record.GetRenderQueries()));
}

std::string Padded(std::size_t number, std::size_t digits) {
  std::string text = std::to_string(number);
  return text.size() < digits ? std::string(digits - text.size(), '0') + text : text;
}

}  // namespace

ExtractedParts::ExtractedParts(platform::NewFolder& folder, std::size_t codeFiles, std::size_t icons)
    : m_folder(folder), m_digits(std::max(kFewestDigits, std::to_string(codeFiles).size())) {
  if (codeFiles > 0) m_folder.MakeFolder(_T("code"));
  if (icons > 0) m_folder.MakeFolder(_T("icons"));
}

void ExtractedParts::OnNode(__int64 parent, CMMCObjectParams&& record) {
  NoteUses(record);
  MakeFitForXml(record);
  m_nodes.push_back({parent, std::move(record)});
}

void ExtractedParts::OnDialog(CMMCObjectParams&& record) {
  NoteUses(record);
  MakeFitForXml(record);
  m_dialogs.push_back(std::move(record));
}

void ExtractedParts::NoteUses(const CMMCObjectParams& record) {
  const auto note = [this](__int64 cookie, Use use) {
    Use& noted = m_uses.try_emplace(cookie, use).first->second;
    noted = std::max(noted, use);
  };
  for (const __int64 script : record.GetScripts()) note(script, Use::script);
  note(record.GetMenuScript(), Use::script);
  note(record.GetStyleSheet(), Use::style);
  for (const auto& [tag, file] : record.GetChildQueries()) note(file, Use::query);
  for (const auto& [tag, file] : record.GetRenderQueries()) note(file, Use::query);
}

void ExtractedParts::OnIconFile(__int64 cookie, const CMMCObjectIcon& icon) {
  const IconImages images = ImagesOf(icon);
  const std::string name = "icons\\icon-" + std::to_string(cookie);
  m_folder.WriteFile(CString((name + ".ico").c_str()), IconFileBytes(images));
  const IconImage& shown = images.large.Width() > 0 ? images.large : images.smallIcon;
  if (shown.Width() > 0) {
    const std::vector<BYTE> png = platform::EncodePng(PictureOf(shown));
    m_folder.WriteFile(CString((name + ".png").c_str()), {reinterpret_cast<const char*>(png.data()), png.size()});
  }
  AddFile("Icon", cookie, name + ".ico");
}

void ExtractedParts::OnCodeFile(__int64 cookie, const std::vector<char>& contents, bool) {
  const char* kind = "file-";
  const char* ending = ".txt";
  if (const auto use = m_uses.find(cookie); use != m_uses.end() && cookie != 0) {
    switch (use->second) {
      case Use::script:
        kind = "script-";
        ending = ".js";
        break;
      case Use::style:
        kind = "style-";
        ending = ".xsl";
        break;
      case Use::query:
        kind = "query-";
        ending = ".xml";
        break;
    }
  }
  const std::string name = "code\\" + Padded(++m_codeFiles, m_digits) + '-' + kind + std::to_string(cookie) + ending;
  m_folder.WriteFile(CString(name.c_str()), {contents.data(), contents.size()});
  AddFile("File", cookie, name);
}

void ExtractedParts::AddFile(const char* element, __int64 cookie, const std::string& name) {
  m_fileElements += std::string("<") + element + " Cookie=\"" + std::to_string(cookie) + "\" Name=\"" + name + "\"/>";
}

std::string ExtractedParts::FilesProject() const {
  return "<Project><FileGroup>" + m_fileElements + "</FileGroup></Project>";
}

}  // namespace ondrel::command
