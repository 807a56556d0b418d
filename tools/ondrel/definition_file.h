// Opening a definition in either of its forms.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include <ondrel/MMCObjectSet.h>

#include "failure.h"
#include "project_inspector.h"

namespace ondrel::command {

enum class DefinitionForm { project, image };

/// A loaded definition and what is known of the file that it came from.
struct Definition {
  Definition();

  DefinitionForm form = DefinitionForm::project;
  std::string file;                         ///< As the user named it.
  CString folder;                           ///< The project's, with its closing separator; empty for an image.
  std::optional<ProjectInspector> project;  ///< Of a project's text.
  CMMCObjectSet set;

  /// The place of a line of the file.
  Location At(int line) const { return {file, line}; }
  /// A file's path as people know it: relative to the project's folder when it lies in it.
  CString DisplayPath(const CString& path) const;
};

/// Loads a project file. Raises Failure with the reason when it does not load.
std::unique_ptr<Definition> ReadProject(const std::string& file);
/// Loads a project file or an object image, whichever the content says.
std::unique_ptr<Definition> ReadDefinition(const std::string& file);

}  // namespace ondrel::command
