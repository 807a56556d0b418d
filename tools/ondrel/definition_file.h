// Opening a definition in either of its forms.
#pragma once

#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>

#include <ondrel/MMCObjectSet.h>

#include "failure.h"
#include "project_inspector.h"

namespace ondrel::command {

/// What a code file in an image may have at most, in bytes: its length takes 32 bits there.
inline constexpr ULONGLONG kLargestCodeFile = std::numeric_limits<std::uint32_t>::max();

enum class DefinitionForm { project, image };

/// A loaded definition and what is known of the file that it came from.
struct Definition {
  Definition();

  DefinitionForm form = DefinitionForm::project;
  std::string file;  ///< As the user named it.
  CString folder;    ///< The project's, with its closing separator; empty for an image.
  std::string text;  ///< A project's bytes; empty for an image.
  CMMCObjectSet set;

  /// What stands where in a project's text, which is looked at when this is first called: only explanations need it.
  const ProjectInspector& Project() const;

  /// The place of a line of the file.
  Location At(int line) const { return {file, line}; }
  /// A file's path as people know it: relative to the project's folder when it lies in it.
  CString DisplayPath(const CString& path) const;

 private:
  mutable std::optional<ProjectInspector> m_project;
};

/// Loads a project file. Raises Failure with the reason when it does not load.
std::unique_ptr<Definition> ReadProject(const std::string& file);
/// Loads a project file or an object image, whichever the content says.
std::unique_ptr<Definition> ReadDefinition(const std::string& file);

}  // namespace ondrel::command
