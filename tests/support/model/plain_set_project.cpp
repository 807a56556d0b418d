// The project file: what it carries, and what becomes of it when it is loaded.
#include <algorithm>
#include <stdexcept>

#include "support/model/plain_set.h"
#include "support/status_text.h"

namespace ondrel::test {
namespace {

constexpr __int64 kProjectRoot = -1;

/// The units of the narrow code page from 0x80 to 0x9F; the others are their own.
constexpr char16_t kCodePage[] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

/// Text that is written as UTF-8 and read through the narrow code page. There are no surrogates in it.
PlainText ThroughFile(const PlainText& text) {
  PlainText read;
  const auto readByte = [&](unsigned byte) {
    read += byte >= 0x80 && byte < 0xA0 ? kCodePage[byte - 0x80] : static_cast<char16_t>(byte);
  };
  for (const unsigned unit : text) {
    if (unit < 0x80) {
      readByte(unit);
    } else if (unit < 0x800) {
      readByte(0xC0 | unit >> 6);
      readByte(0x80 | (unit & 0x3F));
    } else {
      readByte(0xE0 | unit >> 12);
      readByte(0x80 | (unit >> 6 & 0x3F));
      readByte(0x80 | (unit & 0x3F));
    }
  }
  return read;
}

PlainQueries ThroughFile(PlainQueries queries) {
  for (auto& [tag, file] : queries) tag = ThroughFile(tag);
  return queries;
}

/// What is left of a record.
PlainRecord ThroughFile(const PlainRecord& record) {
  PlainRecord read{.cookie = record.cookie, .name = ThroughFile(record.name), .icon = record.icon};
  read.type = record.type >= kPlainList && record.type <= kPlainDialog ? record.type : kPlainUnknown;
  read.menuScript = record.menuScript;
  read.scripts = record.scripts;
  if (record.type != kPlainDialog) read.childQueries = ThroughFile(record.childQueries);
  if (record.HasView()) {
    read.styleSheet = record.styleSheet;
    read.renderQueries = ThroughFile(record.renderQueries);
  }
  return read;
}

bool HasScriptWithoutFile(const PlainRecord& record) {
  return std::find(record.scripts.begin(), record.scripts.end(), 0) != record.scripts.end();
}

bool HasScriptWithoutFile(const PlainProject::Node& node) {
  return HasScriptWithoutFile(node.record) ||
         std::any_of(node.children.begin(), node.children.end(),
                     [](const PlainProject::Node& child) { return HasScriptWithoutFile(child); });
}

PlainText ProjectFolderOf(const PlainText& fileName) { return fileName.substr(0, fileName.rfind(u'\\') + 1); }

void RequireInProject(HRESULT status) {
  if (status < 0) throw PlainRefusal{"COleException " + StatusText(status)};
}

}  // namespace

bool PlainProject::HasScriptWithoutFile() const {
  return (top && test::HasScriptWithoutFile(*top)) ||
         std::any_of(dialogs.begin(), dialogs.end(),
                     [](const PlainRecord& record) { return test::HasScriptWithoutFile(record); });
}

PlainProject::Node PlainSet::SaveNode(__int64 cookie) const {
  PlainProject::Node node{ThroughFile(m_nodes.at(cookie).record), {}};
  for (const __int64 child : GetChildNodes(cookie)) node.children.push_back(SaveNode(child));
  return node;
}

PlainProject PlainSet::SaveProject(const PlainText& fileName) {
  PlainProject project;
  // Of several top-level nodes the first one.
  if (const std::list<__int64> top = GetChildNodes(kProjectRoot); !top.empty()) project.top = SaveNode(top.front());
  for (const auto& [cookie, record] : m_dialogs) project.dialogs.push_back(ThroughFile(record));
  const PlainText folder = ProjectFolderOf(fileName);
  const auto save = [&](__int64 cookie, const PlainText& path) -> PlainProject::File {
    const bool isBelow = path.starts_with(folder);
    return {cookie, isBelow, ThroughFile(isBelow ? path.substr(folder.size()) : path)};
  };
  for (const auto& [path, cookie] : m_iconPaths) project.icons.push_back(save(cookie, path));
  for (const auto& [path, file] : m_codePaths) project.codeFiles.push_back(save(file.cookie, path));
  m_modified = false;
  return project;
}

void PlainSet::LoadNode(__int64 parent, const PlainProject::Node& node) {
  RequireInProject(AddNode(parent, node.record.cookie, node.record));
  for (const PlainProject::Node& child : node.children) LoadNode(node.record.cookie, child);
}

void PlainSet::LoadProject(const PlainProject& project, const PlainText& fileName, PlainFactory factory,
                           const PlainDisk& disk) {
  const PlainText folder = ProjectFolderOf(fileName);
  const auto pathOf = [&](const PlainProject::File& file) {
    return file.isBelowFolder ? folder + file.path : file.path;
  };
  PlainSet loaded;
  if (project.top) loaded.LoadNode(kProjectRoot, *project.top);
  for (const PlainRecord& record : project.dialogs) RequireInProject(loaded.AddDialog(record.cookie, record));
  for (const PlainProject::File& file : project.icons)
    RequireInProject(loaded.InsertIconFile(pathOf(file), file.cookie, disk));
  for (const PlainProject::File& file : project.codeFiles) {
    if (factory == PlainFactory::isEmpty) throw PlainRefusal{"std::bad_function_call"};
    const PlainText path = pathOf(file);
    const PlainTransform transform =
        factory == PlainFactory::givesNone ? PlainTransform{PlainTransform::Kind::none, 0} : PlainTransformFor(path);
    RequireInProject(loaded.InsertCodeFile(path, file.cookie, transform));
  }
  loaded.m_images = m_images;
  *this = loaded;
}

}  // namespace ondrel::test
