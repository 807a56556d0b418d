// Opening a definition in either of its forms.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include <ondrel/MMCObjectSet.h>

#include "code_file_store.h"
#include "failure.h"
#include "project_inspector.h"

namespace ondrel::command {

enum class DefinitionForm { project, image };

/// How a project's text is read. A host's library takes every byte beyond ASCII for a character of the narrow code
/// page, whatever the text declares: `narrow` does the same. `utf8` hands it such text as character references, so that
/// it gets what was written; bytes that are no UTF-8 are read as the library reads them.
enum class TextReading { utf8, narrow };

/// A loaded definition and what is known of the file that it came from.
struct Definition {
  Definition();

  DefinitionForm form = DefinitionForm::project;
  std::string file;  ///< As the user named it.
  CString folder;    ///< The project's, with its closing separator; empty for an image.
  std::string text;  ///< A project's, as the library was given it; empty for an image.
  CMMCObjectSet set;
  /// Where the bytes of code files are that are not where their paths say.
  std::map<CString, CString> codeFilePlaces;

  /// Where the bytes of the icon file or code file of a path are.
  const CString& PlaceOf(const CString& path) const;

  /// What stands where in a project's text, which is looked at when this is first called: only explanations need it.
  const ProjectInspector& Project() const;

  /// A project's bytes as they stood in the file.
  const std::string& FileBytes() const { return m_fileBytes ? *m_fileBytes : text; }

  /// The place of a line of the file.
  Location At(int line) const { return {file, line}; }
  /// A file's path as people know it: relative to the project's folder when it lies in it.
  CString DisplayPath(const CString& path) const;

  /// Takes a project's bytes.
  void SetText(std::string bytes, TextReading reading);
  /// Has the library read another text of the same lines.
  void ReplaceText(std::string bytes);

 private:
  std::optional<std::string> m_fileBytes;  ///< Where they are not the text.
  mutable std::optional<ProjectInspector> m_project;
};

/// Called when a project's text was read, before it is loaded. May replace the text, and gives what the library asks
/// for the transforms of its code files.
using BeforeLoad = std::function<CMMCObjectSet::TransformFactory(Definition& definition)>;

/// Loads a project file. Raises Failure with the reason when it does not load.
std::unique_ptr<Definition> ReadProject(const std::string& file, TextReading reading,
                                         const BeforeLoad& beforeLoad = nullptr);
/// Loads a project from the text that is to stand in a file, as a host would load it then.
std::unique_ptr<Definition> ReadProjectText(const std::string& file, std::string text);
/// Loads a project file or an object image, whichever the content says.
std::unique_ptr<Definition> ReadDefinition(const std::string& file, TextReading reading);

/// A definition as far as it loads.
struct InspectedDefinition {
  std::unique_ptr<Definition> definition;
  std::optional<Failure> refusal;  ///< Why it does not load. The set is empty then, or holds what was read of an image.
};
/// The same for a file that may be damaged: what ReadDefinition says of a file that can be read but does not load is no
/// failure here.
InspectedDefinition InspectDefinition(const std::string& file, TextReading reading);

}  // namespace ondrel::command
