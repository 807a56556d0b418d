// The walk over a project's text, element by element, beside the library's own reading.
#include "project_inspector.h"

#include <algorithm>
#include <utility>

#include <ondrel/MMCObjectParams.h>
#include <ondrel/platform/com.h>

#include "failure.h"
#include "printable.h"

namespace ondrel::command {
namespace {

const platform::XmlScanHandler::Attribute* Find(const std::vector<platform::XmlScanHandler::Attribute>& attributes,
                                                LPCTSTR name) {
  const auto found = std::find_if(attributes.begin(), attributes.end(),
                                  [name](const auto& attribute) { return attribute.name == name; });
  return found == attributes.end() ? nullptr : &*found;
}

/// A cookie as it stands in the project: a number, or whatever stands in its place.
std::string CookieText(const CString& value) {
  constexpr int kMostDigits = 20;  // of 64 bits, with a sign
  return value.GetLength() > kMostDigits ? Quoted(value) : Printable(value);
}

/// 0, or why a load takes the text for no cookie.
HRESULT ParseCookie(const CString& text, __int64& cookie) {
  CComVariant value(text);
  const HRESULT status = value.ChangeType(VT_I8);
  if (SUCCEEDED(status)) cookie = value.llVal;
  return status;
}

}  // namespace

using Inspector = ProjectInspector;
const Inspector::ElementKind Inspector::kProject{_T("Project")};
const Inspector::ElementKind Inspector::kNodeGroup{_T("NodeGroup")};
const Inspector::ElementKind Inspector::kNodes{_T("Nodes")};
const Inspector::ElementKind Inspector::kNode{_T("Node"), {_T("Cookie"), _T("Name"), _T("Icon"), _T("Type")}};
const Inspector::ElementKind Inspector::kDialogGroup{_T("DialogGroup")};
const Inspector::ElementKind Inspector::kDialog{_T("Dialog"), {_T("Cookie"), _T("Name"), _T("Icon"), _T("Type")}};
const Inspector::ElementKind Inspector::kFileGroup{_T("FileGroup")};
const Inspector::ElementKind Inspector::kIcon{_T("Icon"), {_T("Cookie"), _T("Name"), _T("Path")}};
const Inspector::ElementKind Inspector::kFile{_T("File"), {_T("Cookie"), _T("Name"), _T("Path")}};
const Inspector::ElementKind Inspector::kChildQueries{_T("ChildQueries")};
const Inspector::ElementKind Inspector::kRenderQueries{_T("RenderQueries")};
const Inspector::ElementKind Inspector::kQuery{_T("Query"), {_T("Tag"), _T("File")}};
const Inspector::ElementKind Inspector::kScripts{_T("Scripts")};
const Inspector::ElementKind Inspector::kScript{_T("Script"), {_T("File")}};
const Inspector::ElementKind Inspector::kMenuScript{_T("MenuScript"), {_T("File")}};
const Inspector::ElementKind Inspector::kStyleSheet{_T("StyleSheet"), {_T("File")}};

ProjectInspector::ProjectInspector(const CString& text, CString folder) : m_folder(std::move(folder)) {
  platform::XmlFault fault;
  if (platform::ScanXml(text, *this, fault) != S_OK) m_fault = fault;
  FindTakenObjects();
  FindTakenFiles(m_contents.iconFiles);
  FindTakenFiles(m_contents.codeFiles);
  m_findings.Sort();
}

int ProjectInspector::LineOfObject(__int64 cookie) const {
  const auto found = m_objectLines.find(cookie);
  return found == m_objectLines.end() ? 0 : found->second;
}

void ProjectInspector::OnStartElement(const CString& name, const Attributes& attributes, int line) {
  if (m_open.empty()) {
    ReadRoot(name, line);
    m_open.push_back({Role::project, &kProject});
  } else {
    m_open.push_back(ReadChild(name, attributes, line));
  }
  FindUnreadAttributes(m_open.back(), attributes, line);
}

void ProjectInspector::OnEndElement(const CString&, int) {
  const OpenElement closing = m_open.back();
  m_open.pop_back();
  if (closing.role == Role::node || closing.role == Role::dialog) CloseRecord(closing.record);
}

void ProjectInspector::OnPassage(platform::XmlPassage passage, int line) {
  if (m_open.empty()) {
    m_leftovers.AddPassage({"the document", line}, passage);
  } else if (m_open.back().role != Role::unread) {
    m_leftovers.AddPassage(PlaceIn(m_open.back(), line), passage);
  }
}

void ProjectInspector::ReadRoot(const CString& name, int line) {
  if (name == kProject.name) return;
  Report({{LoadOrder::kDocument},
          line,
          "root-element",
          std::nullopt,
          "the root element is " + Quoted(name) + "; a project's is \"Project\", with a capital P",
          kInvalidData});
}

ProjectInspector::OpenElement ProjectInspector::ReadChild(const CString& name, const Attributes& attributes, int line) {
  // Groups are found at any depth, everything else only directly below its container.
  if (name == kNodeGroup.name) return {Role::nodes, &kNodeGroup, ++m_groups};
  if (name == kDialogGroup.name) return {Role::dialogs, &kDialogGroup, ++m_groups};
  if (name == kFileGroup.name) return ReadFileGroup(line);
  OpenElement& parent = m_open.back();
  const OpenElement leaf{Role::leaf, nullptr, parent.group, parent.record};
  const auto leafOf = [&leaf](const ElementKind& kind) {
    OpenElement element = leaf;
    element.kind = &kind;
    return element;
  };
  switch (parent.role) {
    case Role::nodes:
      if (name == kNode.name) return ReadRecord(parent, false, attributes, line);
      break;
    case Role::dialogs:
      if (name == kDialog.name) return ReadRecord(parent, true, attributes, line);
      break;
    case Role::files:
      if (name != kIcon.name && name != kFile.name) break;
      ReadFile(name == kIcon.name ? Subject::Kind::iconFile : Subject::Kind::codeFile, attributes, line);
      return leafOf(name == kIcon.name ? kIcon : kFile);
    case Role::node:
      if (name == kNodes.name) return {Role::nodes, &kNodes, parent.group, parent.record};
      return ReadRecordChild(parent, name, attributes, line);
    case Role::dialog:
      return ReadRecordChild(parent, name, attributes, line);
    case Role::childQueries:
    case Role::renderQueries:
      if (name != kQuery.name) break;
      ReadQuery(parent, attributes, line);
      return leafOf(kQuery);
    case Role::unusedQueries:
      if (name != kQuery.name) break;
      m_leftovers.AddView(PlaceOf(parent.record, line), kRenderQueries.name);
      parent.role = Role::unread;
      return {};
    case Role::scripts:
      if (name != kScript.name) break;
      ReadScript(parent.record, attributes, line);
      return leafOf(kScript);
    case Role::project:
    case Role::leaf:
      break;
    case Role::unread:
      return {};
  }
  m_leftovers.AddElement(PlaceIn(parent, line), name);
  return {};
}

ProjectInspector::OpenElement ProjectInspector::ReadFileGroup(int line) {
  if (m_fileGroupLine) {
    m_leftovers.AddFileGroup(line, *m_fileGroupLine);
    return {};
  }
  m_fileGroupLine = line;
  return {Role::files, &kFileGroup, ++m_groups};
}

template <class Owner>
std::optional<__int64> ProjectInspector::ReadCookie(LoadOrder order, const std::optional<Subject>& about,
                                                    const Owner& label, const Attribute& attribute, int line) {
  __int64 cookie = 0;
  const HRESULT status = ParseCookie(attribute.value, cookie);
  if (SUCCEEDED(status)) return cookie;
  Report({order, line, "number-malformed", about,
          std::string(label()) + " has the " + Printable(attribute.name) + ' ' + Quoted(attribute.value) +
              ", which is " +
              (status == DISP_E_OVERFLOW ? "beyond 64 bits; give it a smaller number"
                                         : "no whole number; give it decimal digits"),
          status});
  return std::nullopt;
}

ProjectInspector::OpenElement ProjectInspector::ReadRecordChild(const OpenElement& parent, const CString& name,
                                                                const Attributes& attributes, int line) {
  RecordState& state = m_states[parent.record];
  const auto element = [&parent](Role role, const ElementKind& kind) {
    return OpenElement{role, &kind, parent.group, parent.record};
  };
  if (name == kChildQueries.name) return element(Role::childQueries, kChildQueries);
  if (name == kScripts.name) return element(Role::scripts, kScripts);
  if (name == kRenderQueries.name) {
    return element(state.hasView ? Role::renderQueries : Role::unusedQueries, kRenderQueries);
  }
  const bool isMenuScript = name == kMenuScript.name;
  if (!isMenuScript && name != kStyleSheet.name) {
    m_leftovers.AddElement(PlaceOf(parent.record, line), name);
    return {};
  }
  if (!isMenuScript && !state.hasView) {
    if (Find(attributes, _T("File")) == nullptr) return element(Role::leaf, kStyleSheet);
    m_leftovers.AddView(PlaceOf(parent.record, line), name);
    return {};
  }
  // Of several elements of these two names the first is read.
  bool& isThere = isMenuScript ? state.hasMenuScript : state.hasStyleSheet;
  if (isThere) {
    m_leftovers.AddRepeated(PlaceOf(parent.record, line), name);
    return {};
  }
  isThere = true;
  ReadFileReference(parent.record, isMenuScript ? FileReference::Kind::menuScript : FileReference::Kind::styleSheet,
                    attributes, line);
  return element(Role::leaf, isMenuScript ? kMenuScript : kStyleSheet);
}

ProjectInspector::OpenElement ProjectInspector::ReadRecord(const OpenElement& parent, bool isDialog,
                                                           const Attributes& attributes, int line) {
  struct Required {
    LPCTSTR attribute;
    LoadOrder::Step step;
    const char* advice;
  };
  static constexpr Required kRequired[] = {
      {_T("Cookie"), LoadOrder::kCookie, "give it a number that no other node or dialog has"},
      {_T("Name"), LoadOrder::kName, "give it one"},
      {_T("Icon"), LoadOrder::kIcon, "give it an icon file's cookie, or 0 for none"},
      {_T("Type"), LoadOrder::kType, "give it List, HTML or Dialog"},
  };

  const std::size_t index = m_contents.records.size();
  m_states.emplace_back();
  ProjectRecord& record = m_contents.records.emplace_back();
  record.order = {isDialog ? LoadOrder::kDialogs : LoadOrder::kNodes, parent.group, index};
  record.line = line;
  record.isDialog = isDialog;
  record.parent = parent.record;
  record.label = isDialog ? "a dialog" : "a node";
  if (const Attribute* const cookie = Find(attributes, _T("Cookie")); cookie != nullptr) {
    record.label = (isDialog ? "dialog " : "node ") + CookieText(cookie->value);
  }
  for (const Required& required : kRequired) {
    LoadOrder order = record.order;
    order.step = required.step;
    const Attribute* const attribute = Find(attributes, required.attribute);
    if (attribute == nullptr) {
      ReportRecord(
          index, required.step, line, "attribute-missing",
          record.label + " has no " + Printable(CString(required.attribute)) + " attribute; " + required.advice);
    } else if (required.step == LoadOrder::kCookie) {
      record.cookie = ReadCookie(
          order, std::nullopt, [&] { return isDialog ? "a dialog" : "a node"; }, *attribute, line);
    } else if (required.step == LoadOrder::kIcon) {
      const auto icon = ReadCookie(
          order, record.About(), [&] { return record.label; }, *attribute, line);
      if (icon) m_contents.references.push_back({FileReference::Kind::icon, index, *icon, line});
    } else if (required.step == LoadOrder::kName) {
      record.name = attribute->value;
    } else {
      record.type = CMMCObjectParams::GetNodeType(attribute->value);
      m_states.back().hasView = record.type == CMMCObjectParams::eHTML || record.type == CMMCObjectParams::eDialog;
    }
  }
  return {isDialog ? Role::dialog : Role::node, isDialog ? &kDialog : &kNode, parent.group, index};
}

void ProjectInspector::ReadQuery(const OpenElement& parent, const Attributes& attributes, int line) {
  const bool isChildQuery = parent.role == Role::childQueries;
  const LoadOrder::Step step = isChildQuery ? LoadOrder::kChildQueries : LoadOrder::kRenderQueries;
  const ProjectRecord& record = m_contents.records[parent.record];
  RecordState& state = m_states[parent.record];
  const auto label = [&] { return "a Query of " + record.label; };
  if (isChildQuery && record.type == CMMCObjectParams::eDialog && !state.hasLostQueries) {
    state.hasLostQueries = true;
    m_leftovers.AddChildQueries(PlaceOf(parent.record, line));
  }
  if (Find(attributes, _T("Tag")) == nullptr) {
    ReportRecord(parent.record, step, line, "attribute-missing", label() + " has no Tag attribute; give it one");
  }
  const Attribute* const file = Find(attributes, _T("File"));
  if (file == nullptr) {
    ReportRecord(parent.record, step, line, "attribute-missing",
                 label() + " has no File attribute; give it a code file's cookie");
    return;
  }
  LoadOrder order = record.order;
  order.step = step;
  const auto cookie = ReadCookie(order, record.About(), label, *file, line);
  const auto kind = isChildQuery ? FileReference::Kind::childQuery : FileReference::Kind::renderQuery;
  if (cookie) m_contents.references.push_back({kind, parent.record, *cookie, line});
}

void ProjectInspector::ReadFileReference(std::size_t index, FileReference::Kind kind, const Attributes& attributes,
                                         int line) {
  const Attribute* const file = Find(attributes, _T("File"));
  if (file == nullptr) return;
  const bool isMenuScript = kind == FileReference::Kind::menuScript;
  const ProjectRecord& record = m_contents.records[index];
  LoadOrder order = record.order;
  order.step = isMenuScript ? LoadOrder::kMenuScript : LoadOrder::kStyleSheet;
  const auto label = [&] { return (isMenuScript ? "the MenuScript of " : "the StyleSheet of ") + record.label; };
  const auto cookie = ReadCookie(order, record.About(), label, *file, line);
  if (cookie) m_contents.references.push_back({kind, index, *cookie, line});
}

void ProjectInspector::ReadScript(std::size_t index, const Attributes& attributes, int line) {
  RecordState& state = m_states[index];
  const ProjectRecord& record = m_contents.records[index];
  const Attribute* const file = Find(attributes, _T("File"));
  // A value that is no number makes the load skip the rest of the scripts without a word; no value at all makes it look
  // at this element for ever.
  if (file == nullptr) {
    LoadOrder order = record.order;
    order.step = LoadOrder::kScripts;
    Report({order, line, "script-without-file", record.About(),
            "a Script of " + record.label +
                " has no File attribute, and reading it would never end; give it a code file's cookie or remove it",
            kInvalidData, true});
    return;
  }
  if (state.areScriptsCut) return;
  __int64 cookie = 0;
  if (SUCCEEDED(ParseCookie(file->value, cookie))) {
    m_contents.references.push_back({FileReference::Kind::script, index, cookie, line});
  } else {
    state.areScriptsCut = true;
    m_leftovers.AddScript(PlaceOf(index, line), file->value);
  }
}

void ProjectInspector::CloseRecord(std::size_t index) {
  const ProjectRecord& record = m_contents.records[index];
  const RecordState& state = m_states[index];
  if (!state.hasMenuScript) {
    ReportRecord(index, LoadOrder::kMenuScript, record.line, "element-missing",
                 record.label + " has no MenuScript element; add <MenuScript/>");
  }
  if (state.hasView && !state.hasStyleSheet) {
    ReportRecord(index, LoadOrder::kStyleSheet, record.line, "element-missing",
                 record.label + " shows a view but has no StyleSheet element; add <StyleSheet/>");
  }
}

void ProjectInspector::ReadFile(Subject::Kind kindOfFile, const Attributes& attributes, int line) {
  const bool isIcon = kindOfFile == Subject::Kind::iconFile;
  std::vector<ProjectFile>& files = isIcon ? m_contents.iconFiles : m_contents.codeFiles;
  ProjectFile file;
  file.kind = kindOfFile;
  file.order = {isIcon ? LoadOrder::kIcons : LoadOrder::kCodeFiles, 0, files.size(), LoadOrder::kFileName};
  file.line = line;

  const Attribute* const cookie = Find(attributes, _T("Cookie"));
  const Attribute* const name = Find(attributes, _T("Name"));
  const Attribute* const path = Find(attributes, _T("Path"));
  const std::string kind = KindName(kindOfFile);
  if (name != nullptr) {
    file.spelling = name->value;
    file.path = m_folder + name->value;
    file.isNamed = true;
  } else if (path != nullptr) {
    file.spelling = path->value;
    file.path = path->value;
  } else {
    const std::string label = cookie == nullptr ? kind : kind + ' ' + CookieText(cookie->value);
    Report({file.order, line, "attribute-missing", std::nullopt,
            label + " has neither a Name nor a Path attribute; say where the file is", kInvalidData});
  }

  const auto named = [&] { return kind + ' ' + Quoted(file.spelling); };
  file.order.step = LoadOrder::kFileCookie;
  if (cookie == nullptr) {
    Report({file.order, line, "attribute-missing", std::nullopt,
            named() + " has no Cookie attribute; give it a number of its own", kInvalidData});
  } else {
    file.order.step = LoadOrder::kFileCookieNumber;
    file.cookie = ReadCookie(file.order, std::nullopt, named, *cookie, line);
  }
  if (name != nullptr && path != nullptr) m_leftovers.AddPath({named(), line, file.About()});
  file.order.step = LoadOrder::kIconImages;
  files.push_back(std::move(file));
}

void ProjectInspector::FindUnreadAttributes(const OpenElement& element, const Attributes& attributes, int line) {
  if (element.kind == nullptr) return;
  const auto& known = element.kind->attributes;
  for (const Attribute& attribute : attributes) {
    const bool isKnown = std::any_of(known.begin(), known.end(),
                                     [&](LPCTSTR name) { return name != nullptr && attribute.name == name; });
    if (!isKnown) m_leftovers.AddAttribute(PlaceIn(element, line), attribute.name);
  }
}

LeftoverPlace ProjectInspector::PlaceIn(const OpenElement& element, int line) const {
  if (element.role == Role::node || element.role == Role::dialog) return PlaceOf(element.record, line);
  LeftoverPlace place{"the " + Printable(CString(element.kind->name)), line};
  if (element.record == kNoRecord) return place;
  const LeftoverPlace record = PlaceOf(element.record, line);
  place.label += " of " + record.label;
  place.about = record.about;
  return place;
}

LeftoverPlace ProjectInspector::PlaceOf(std::size_t record, int line) const {
  return {m_contents.records[record].label, line, m_contents.records[record].About()};
}

void ProjectInspector::ReportRecord(std::size_t index, LoadOrder::Step step, int line, const char* code,
                                    std::string explanation) {
  const ProjectRecord& record = m_contents.records[index];
  LoadOrder order = record.order;
  order.step = step;
  Report({order, line, code, record.About(), std::move(explanation), kInvalidData});
}

}  // namespace ondrel::command
