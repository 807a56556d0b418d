// A save into memory, and its proof.
#include "edit/saved_text.h"

#include <algorithm>
#include <memory>
#include <optional>

#include <ondrel/platform/program.h>
#include <ondrel/platform/xml_references.h>

#include "edit/object_name.h"
#include "edit/record_change.h"
#include "nameless_script.h"
#include "node_walk.h"

namespace ondrel::command {
namespace {

constexpr int kSavingSize = 64 * 1024;

bool HasNamelessScript(const CMMCObjectParams& record) {
  const CMMCObjectParams::ScriptList scripts = record.GetScripts();
  return std::find(scripts.begin(), scripts.end(), 0) != scripts.end();
}

/// The first node that has a script with the cookie 0.
class NamelessScriptFinder : public NodeVisitor {
 public:
  void EnterNode(const CMMCObjectParams& node, std::size_t, bool) override {
    if (!m_found && HasNamelessScript(node)) m_found = node.GetCookie();
  }
  void LeaveNode(bool) override {}
  std::optional<__int64> Found() const { return m_found; }

 private:
  std::optional<__int64> m_found;
};

std::optional<__int64> FindNamelessScript(CMMCObjectSet& set) {
  NamelessScriptFinder finder;
  WalkNodes(set, finder);
  if (finder.Found()) return finder.Found();
  for (const __int64 dialog : set.GetDialogs()) {
    CMMCObjectParams* record = nullptr;
    if (set.GetParams(dialog, record) && HasNamelessScript(*record)) return dialog;
  }
  return std::nullopt;
}

/// A script with the cookie 0 is saved without one, and that no load comes back from.
void RequireNamedScripts(Definition& definition, const std::string& text) {
  if (NamesFileOfEveryScript(text)) return;
  const std::optional<__int64> cookie = FindNamelessScript(definition.set);
  throw Failure(definition.At(0),
                (cookie ? ObjectLabel(definition.set, *cookie) : std::string("a node or dialog")) +
                    " has a script with the cookie 0, and a project saved with it would never load again; give it "
                    "its scripts anew, with --script or --no-scripts",
                StatusText(kInvalidData));
}

void RequireSaved(Definition& definition, const Definition& saved, __int64 cookie) {
  CMMCObjectParams* record = nullptr;
  if (!definition.set.GetParams(cookie, record)) return;
  CMMCObjectParams* savedRecord = nullptr;
  if (saved.set.GetParams(cookie, savedRecord) && HoldTheSame(*record, *savedRecord)) return;
  throw Failure(definition.At(0),
                "a save would not keep " + ObjectLabel(definition.set, cookie) +
                    " as it is to be, because it lies outside the tree that is saved; choose another place",
                StatusText(kInvalidData));
}

}  // namespace

CString FullPathOf(const Definition& definition) { return platform::FullPath(platform::PathFromUtf8(definition.file)); }

std::string SavedText(Definition& definition) {
  try {
    CMemFile memory;
    CVellum archive(&memory, CArchive::store | CArchive::bNoFlushOnDelete, kSavingSize);
    archive.m_strFileName = FullPathOf(definition);
    definition.set.SerializeProjectFile(archive, {});
    archive.Close();
    const std::string text(reinterpret_cast<const char*>(memory.GetBytes()),
                           static_cast<std::size_t>(memory.GetLength()));
    return platform::ReferenceValues(text).value_or(text);
  } catch (const std::exception&) {
    throw CurrentFailure(definition.At(0));
  }
}

void RequireLasting(Definition& definition, const std::string& text, const std::vector<__int64>& changed) {
  RequireNamedScripts(definition, text);
  std::unique_ptr<Definition> saved;
  try {
    saved = ReadProjectText(definition.file, text);
  } catch (const Failure& failure) {
    throw Failure(definition.At(0),
                  std::string("the project would not load again, so it stays as it is: ") + failure.what(),
                  StatusText(kInvalidData));
  }
  if (SavedText(*saved) != text) {
    throw Failure(definition.At(0),
                  "the project would be another one when it is loaded and saved again, so it stays as it is",
                  StatusText(E_UNEXPECTED));
  }
  for (const __int64 cookie : changed) RequireSaved(definition, *saved, cookie);
}

}  // namespace ondrel::command
