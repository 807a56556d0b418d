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

constexpr HRESULT kAlreadyExists = HRESULT_FROM_WIN32(ERROR_ALREADY_EXISTS);

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

std::string InLine(int line) { return " in line " + std::to_string(line); }

}  // namespace

ProjectInspector::ProjectInspector(const CString& text, CString folder) : m_folder(std::move(folder)) {
  platform::XmlFault fault;
  if (platform::ScanXml(text, *this, fault) != S_OK) m_fault = fault;
  FindTakenObjects();
  FindTakenFiles(m_iconFiles, "icon file");
  FindTakenFiles(m_codeFiles, "code file");
  m_findings.Sort();
}

int ProjectInspector::LineOfObject(__int64 cookie) const {
  const auto found = m_objectLines.find(cookie);
  return found == m_objectLines.end() ? 0 : found->second;
}

void ProjectInspector::OnStartElement(const CString& name, const Attributes& attributes, int line) {
  if (m_open.empty()) {
    ReadRoot(name, line);
    m_open.emplace_back();
  } else {
    m_open.push_back(ReadChild(name, attributes, line));
  }
}

void ProjectInspector::OnEndElement(const CString&, int) {
  const OpenElement closing = m_open.back();
  m_open.pop_back();
  if (closing.role == Role::node || closing.role == Role::dialog) CloseRecord(m_records[closing.record]);
}

void ProjectInspector::ReadRoot(const CString& name, int line) {
  if (name == _T("Project")) return;
  Report({LoadOrder::kDocument}, line,
         "the root element is " + Quoted(name) + "; a project's is \"Project\", with a capital P", kInvalidData);
}

ProjectInspector::OpenElement ProjectInspector::ReadChild(const CString& name, const Attributes& attributes, int line) {
  // Groups are found at any depth, everything else only directly below its container.
  if (name == _T("NodeGroup")) return {Role::nodes, ++m_groups, 0};
  if (name == _T("DialogGroup")) return {Role::dialogs, ++m_groups, 0};
  if (name == _T("FileGroup") && !m_sawFileGroup) {
    m_sawFileGroup = true;
    return {Role::files, ++m_groups, 0};
  }
  const OpenElement parent = m_open.back();
  switch (parent.role) {
    case Role::nodes:
      if (name == _T("Node")) return ReadRecord(parent, false, attributes, line);
      break;
    case Role::dialogs:
      if (name == _T("Dialog")) return ReadRecord(parent, true, attributes, line);
      break;
    case Role::files:
      if (name == _T("Icon") || name == _T("File")) ReadFile(name == _T("Icon"), attributes, line);
      break;
    case Role::node:
      if (name == _T("Nodes")) return {Role::nodes, parent.group, 0};
      return ReadRecordChild(parent, name, attributes, line);
    case Role::dialog:
      return ReadRecordChild(parent, name, attributes, line);
    case Role::childQueries:
      if (name == _T("Query")) ReadQuery(m_records[parent.record], LoadOrder::kChildQueries, attributes, line);
      break;
    case Role::renderQueries:
      if (name == _T("Query")) ReadQuery(m_records[parent.record], LoadOrder::kRenderQueries, attributes, line);
      break;
    case Role::scripts:
      if (name == _T("Script")) ReadScript(m_records[parent.record], attributes, line);
      break;
    case Role::unread:
      break;
  }
  return {};
}

template <class Owner>
std::optional<__int64> ProjectInspector::ReadCookie(LoadOrder order, const Owner& owner, const Attribute& attribute,
                                                    int line) {
  CComVariant value(attribute.value);
  const HRESULT status = value.ChangeType(VT_I8);
  if (SUCCEEDED(status)) return value.llVal;
  Report(order, line,
         std::string(owner()) + " has the " + Printable(attribute.name) + ' ' + Quoted(attribute.value) +
             ", which is " +
             (status == DISP_E_OVERFLOW ? "beyond 64 bits; give it a smaller number"
                                        : "no whole number; give it decimal digits"),
         status);
  return std::nullopt;
}

ProjectInspector::OpenElement ProjectInspector::ReadRecordChild(const OpenElement& parent, const CString& name,
                                                                const Attributes& attributes, int line) {
  Record& record = m_records[parent.record];
  if (name == _T("ChildQueries")) return {Role::childQueries, parent.group, parent.record};
  if (name == _T("Scripts")) return {Role::scripts, parent.group, parent.record};
  if (name == _T("RenderQueries") && record.hasView) return {Role::renderQueries, parent.group, parent.record};
  // Of several elements of these two names the first is read.
  if (name == _T("MenuScript") && !record.hasMenuScript) {
    record.hasMenuScript = true;
    ReadFileReference(record, LoadOrder::kMenuScript, name, attributes, line);
  } else if (name == _T("StyleSheet") && record.hasView && !record.hasStyleSheet) {
    record.hasStyleSheet = true;
    ReadFileReference(record, LoadOrder::kStyleSheet, name, attributes, line);
  }
  return {};
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

  Record record;
  record.order = {isDialog ? LoadOrder::kDialogs : LoadOrder::kNodes, parent.group, m_records.size()};
  record.line = line;
  record.isDialog = isDialog;
  record.label = isDialog ? "a dialog" : "a node";
  if (const Attribute* const cookie = Find(attributes, _T("Cookie")); cookie != nullptr) {
    record.label = (isDialog ? "dialog " : "node ") + CookieText(cookie->value);
  }
  for (const Required& required : kRequired) {
    LoadOrder order = record.order;
    order.step = required.step;
    const Attribute* const attribute = Find(attributes, required.attribute);
    if (attribute == nullptr) {
      Report(order, line,
             record.label + " has no " + Printable(CString(required.attribute)) + " attribute; " + required.advice,
             kInvalidData);
    } else if (required.step == LoadOrder::kCookie) {
      record.cookie = ReadCookie(
          order, [&] { return isDialog ? "a dialog" : "a node"; }, *attribute, line);
    } else if (required.step == LoadOrder::kIcon) {
      ReadCookie(
          order, [&] { return record.label; }, *attribute, line);
    } else if (required.step == LoadOrder::kName) {
      record.name = attribute->value;
    } else {
      const auto type = CMMCObjectParams::GetNodeType(attribute->value);
      record.hasView = type == CMMCObjectParams::eHTML || type == CMMCObjectParams::eDialog;
    }
  }
  m_records.push_back(std::move(record));
  return {isDialog ? Role::dialog : Role::node, parent.group, m_records.size() - 1};
}

void ProjectInspector::ReadQuery(const Record& record, LoadOrder::Step step, const Attributes& attributes, int line) {
  LoadOrder order = record.order;
  order.step = step;
  if (Find(attributes, _T("Tag")) == nullptr) {
    Report(order, line, "a Query of " + record.label + " has no Tag attribute; give it one", kInvalidData);
  }
  if (const Attribute* const file = Find(attributes, _T("File")); file == nullptr) {
    Report(order, line, "a Query of " + record.label + " has no File attribute; give it a code file's cookie",
           kInvalidData);
  } else {
    ReadCookie(
        order, [&] { return "a Query of " + record.label; }, *file, line);
  }
}

void ProjectInspector::ReadFileReference(const Record& record, LoadOrder::Step step, const CString& name,
                                         const Attributes& attributes, int line) {
  LoadOrder order = record.order;
  order.step = step;
  const Attribute* const file = Find(attributes, _T("File"));
  if (file == nullptr) return;
  ReadCookie(
      order, [&] { return "the " + Printable(name) + " of " + record.label; }, *file, line);
}

void ProjectInspector::ReadScript(const Record& record, const Attributes& attributes, int line) {
  // A value that is no number makes the load skip the rest of the scripts without a word; no value at all makes it look
  // at this element for ever.
  if (Find(attributes, _T("File")) != nullptr) return;
  LoadOrder order = record.order;
  order.step = LoadOrder::kScripts;
  m_findings.Add(
      {order, line,
       "a Script of " + record.label +
           " has no File attribute, and reading it would never end; give it a code file's cookie or remove it",
       kInvalidData, true});
}

void ProjectInspector::CloseRecord(const Record& record) {
  LoadOrder order = record.order;
  if (!record.hasMenuScript) {
    order.step = LoadOrder::kMenuScript;
    Report(order, record.line, record.label + " has no MenuScript element; add <MenuScript/>", kInvalidData);
  }
  if (record.hasView && !record.hasStyleSheet) {
    order.step = LoadOrder::kStyleSheet;
    Report(order, record.line, record.label + " shows a view but has no StyleSheet element; add <StyleSheet/>",
           kInvalidData);
  }
}

void ProjectInspector::ReadFile(bool isIcon, const Attributes& attributes, int line) {
  std::vector<ProjectFile>& files = isIcon ? m_iconFiles : m_codeFiles;
  ProjectFile file;
  file.order = {isIcon ? LoadOrder::kIcons : LoadOrder::kCodeFiles, 0, files.size(), LoadOrder::kFileName};
  file.line = line;

  const Attribute* const cookie = Find(attributes, _T("Cookie"));
  const std::string kind = isIcon ? "icon file" : "code file";
  if (const Attribute* const name = Find(attributes, _T("Name")); name != nullptr) {
    file.spelling = name->value;
    file.path = m_folder + name->value;
  } else if (const Attribute* const path = Find(attributes, _T("Path")); path != nullptr) {
    file.spelling = path->value;
    file.path = path->value;
  } else {
    const std::string label = cookie == nullptr ? kind : kind + ' ' + CookieText(cookie->value);
    Report(file.order, line, label + " has neither a Name nor a Path attribute; say where the file is", kInvalidData);
  }

  const auto named = [&] { return kind + ' ' + Quoted(file.spelling); };
  file.order.step = LoadOrder::kFileCookie;
  if (cookie == nullptr) {
    Report(file.order, line, named() + " has no Cookie attribute; give it a number of its own", kInvalidData);
  } else {
    file.order.step = LoadOrder::kFileCookieNumber;
    file.cookie = ReadCookie(file.order, named, *cookie, line);
  }
  file.order.step = LoadOrder::kIconImages;
  files.push_back(std::move(file));
}

void ProjectInspector::FindTakenObjects() {
  std::vector<const Record*> records;
  records.reserve(m_records.size());
  for (const Record& record : m_records) records.push_back(&record);
  std::sort(records.begin(), records.end(),
            [](const Record* left, const Record* right) { return left->order < right->order; });

  std::map<CString, int> dialogLines;
  for (const Record* const record : records) {
    if (!record->cookie) continue;
    LoadOrder order = record->order;
    order.step = LoadOrder::kInsert;
    if (const auto [taken, isNew] = m_objectLines.try_emplace(*record->cookie, record->line); !isNew) {
      Report(order, record->line,
             record->label + " has the cookie of the node or dialog" + InLine(taken->second) + "; give it another",
             kAlreadyExists);
    }
    if (!record->isDialog) continue;
    if (const auto [taken, isNew] = dialogLines.try_emplace(record->name, record->line); !isNew) {
      Report(order, record->line,
             record->label + " has the name " + Quoted(record->name) + " of the dialog" + InLine(taken->second) +
                 "; give it another",
             kAlreadyExists);
    }
  }
}

void ProjectInspector::FindTakenFiles(const std::vector<ProjectFile>& files, const char* kind) {
  std::map<CString, int> pathLines;
  std::map<__int64, int> cookieLines;
  for (const ProjectFile& file : files) {
    if (!file.cookie || !file.path) continue;
    LoadOrder order = file.order;
    order.step = LoadOrder::kInsert;
    const auto label = [&] { return std::string(kind) + ' ' + std::to_string(*file.cookie); };
    if (const auto [taken, isNew] = pathLines.try_emplace(*file.path, file.line); !isNew) {
      Report(order, file.line, label() + " names the same file as" + InLine(taken->second) + "; remove one of the two",
             kAlreadyExists);
    } else if (const auto [owner, isFirst] = cookieLines.try_emplace(*file.cookie, file.line); !isFirst) {
      Report(order, file.line, label() + " has the cookie of the " + kind + InLine(owner->second) + "; give it another",
             kAlreadyExists);
    }
  }
}

void ProjectInspector::Report(LoadOrder order, int line, std::string explanation, HRESULT status) {
  m_findings.Add({order, line, std::move(explanation), status, false});
}

}  // namespace ondrel::command
