// Definitions for comparing platforms: project texts with the files that they name.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "support/temporary_folder.h"

namespace ondrel::test {

inline constexpr const char* kDefinition = "console.xml";

/// What the names of a definition are made of.
enum class DefinitionText {
  everything,  ///< All that a project can say, characters beyond the basic plane included.
  /// What survives saves: a project is written as UTF-8 and read through the narrow code page, so only ASCII does.
  lasting,
};

/// A project that has every kind of node and dialog, lists of 0 to 3 entries in every combination that a kind has, text
/// of every kind that a project carries, and code files of 0 bytes to 1 MiB. `variant` chooses another order and other
/// values; no two variants are alike.
void WriteDefinition(const TemporaryFolder& folder, unsigned variant, DefinitionText text);

/// A project with icon files of every depth that hold a 32 x 32 and a 16 x 16 image of patterns.
void WriteIconDefinition(const TemporaryFolder& folder);
/// How many icon files that is.
inline constexpr int kIconFiles = 6;

/// A project with icons of one colour each.
void WriteSolidIconDefinition(const TemporaryFolder& folder);

/// A project with these icon files, found through links, under cookies that count from 1.
void WriteDefinitionOf(const TemporaryFolder& folder, const std::vector<std::filesystem::path>& iconFiles);

}  // namespace ondrel::test
