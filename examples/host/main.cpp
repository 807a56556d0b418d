// A host of the library. It looks into the image that the build compiled, adds to the project that it was compiled
// from, saves it under another name, and compiles and loads that one through the library alone.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "backups.h"
#include "components.h"
#include "definition_files.h"

namespace {

namespace fs = std::filesystem;

/// The number of nodes. Trees may be deeper than the call stack.
std::size_t CountNodes(CMMCObjectSet& definition) {
  std::size_t count = 0;
  std::vector<__int64> pending = {CMMCObjectSet::RootNode};
  while (!pending.empty()) {
    const std::list<__int64> children = definition.GetChildNodes(pending.back());
    pending.pop_back();
    count += children.size();
    pending.insert(pending.end(), children.begin(), children.end());
  }
  return count;
}

std::string NameOf(const CMMCObjectSet& definition, __int64 cookie) {
  CMMCObjectParams* record = nullptr;
  if (!definition.GetParams(cookie, record)) return "(none)";
  return ondrel::platform::ToUtf8(record->GetName());
}

void Print(const fs::path& file, CMMCObjectSet& definition) {
  std::string top;
  for (const __int64 cookie : definition.GetChildNodes(CMMCObjectSet::RootNode)) top += NameOf(definition, cookie);
  std::printf("%s: %s, %zu nodes, %zu dialogs, %zu icons, %zu code files\n", file.filename().string().c_str(),
              top.c_str(), CountNodes(definition), definition.GetDialogs().size(), definition.GetIconFiles().size(),
              definition.GetCodeFiles().size());
}

/// The menu script that an image holds for a node.
std::vector<char> MenuScriptOf(const CMMCObjectSet& definition, __int64 node) {
  CMMCObjectParams* record = nullptr;
  std::vector<char> script;
  if (definition.GetParams(node, record)) definition.GetCodeFileContents(record->GetMenuScript(), script);
  return script;
}

/// Runs an operation on a file. The library's exceptions say in one line what failed and why; those for files name the
/// file themselves, the others are given its name here.
template <class Operation>
void On(const fs::path& file, Operation operation) {
  const auto fail = [&](const std::string& reason) { throw std::runtime_error(file.string() + ": " + reason); };
  try {
    operation();
  } catch (const CArchiveException& raised) {
    if (raised.m_cause != CArchiveException::badSchema) fail(raised.what());
    fail("this is no object image, or one of another version");
  } catch (const COleException& raised) {
    if (raised.m_sc != HRESULT_FROM_WIN32(ERROR_ALREADY_EXISTS)) fail(raised.what());
    fail("a name or path is taken already");
  }
}

void Run(const fs::path& image, const fs::path& project, const fs::path& newProject) {
  const fs::path newImage = fs::path(newProject).replace_extension(".img");
  host::Definition shown;
  On(image, [&] { host::LoadImage(shown, image); });
  Print(image, shown);

  host::Definition edited;
  On(project, [&] { host::LoadProject(edited, project); });
  On(project, [&] { host::AddBackups(edited, fs::path(HOST_FILES)); });
  std::printf("edited, to be saved: %s\n", edited.IsModified() ? "yes" : "no");
  On(newProject, [&] { host::SaveProject(edited, newProject); });
  std::printf("saved, to be saved: %s\n", edited.IsModified() ? "yes" : "no");

  host::Definition saved;
  On(newProject, [&] { host::LoadProject(saved, newProject); });
  Print(newProject, saved);
  On(newImage, [&] { host::CompileImage(saved, newImage); });

  host::Definition compiled;
  On(newImage, [&] { host::LoadImage(compiled, newImage); });
  Print(newImage, compiled);
  const __int64 dialog = compiled.GetDialog(host::kBackupDialog);
  const __int64 top = compiled.GetChildNodes(CMMCObjectSet::RootNode).front();
  const __int64 backups = compiled.GetChildNodes(top).back();
  std::printf("last node: %s, its menu script has %zu bytes; dialog: %s\n", NameOf(compiled, backups).c_str(),
              MenuScriptOf(compiled, backups).size(), NameOf(compiled, dialog).c_str());
}

}  // namespace

int main(int count, char* arguments[]) {
  if (count != 4) {
    std::fprintf(stderr, "usage: disk_host IMAGE PROJECT NEW_PROJECT\n");
    return 2;
  }
  try {
    const host::Components components;
    Run(arguments[1], arguments[2], arguments[3]);
    return 0;
  } catch (const std::exception& raised) {  // all exceptions of the library are such
    std::fprintf(stderr, "disk_host: %s\n", raised.what());
    return 1;
  }
}
