// Definitions with files on disk, and the same files as other compilers of resources are told about them.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "support/temporary_folder.h"

namespace ondrel::bench {

/// A folder with code files and icons, and the descriptions of them that the compilers want. Removed with the object.
class DefinitionFiles {
 public:
  /// So many code files, of `codeBytes` together and `spread` bytes at most above or below the mean, and so many icons
  /// with an image of 16 and one of 32 pixels, of 32 bits each.
  DefinitionFiles(int codeFiles, std::size_t codeBytes, std::size_t spread, int icons);

  const std::filesystem::path& Folder() const { return m_folder.Path(); }
  /// Paths below the folder, with "/" between their parts.
  const std::vector<std::string>& CodeFiles() const { return m_codeFiles; }
  const std::vector<std::string>& IconFiles() const { return m_iconFiles; }
  std::size_t Bytes() const { return m_bytes; }  ///< Of all files together.

  // Names in the folder.
  static constexpr const char* kProject = "console.xml";                  ///< A project of 50 nodes with all files.
  static constexpr const char* kQtResources = "console.qrc";              ///< For rcc.
  static constexpr const char* kGlibResources = "console.gresource.xml";  ///< For glib-compile-resources.
  static constexpr const char* kCode = "code";                            ///< The folder of the code files.

 private:
  void WriteCode(int files, std::size_t bytes, std::size_t spread);
  void WriteIcons(int icons);
  void WriteProject() const;
  void WriteResources() const;
  void Write(const std::string& name, std::string_view bytes);

  ondrel::test::TemporaryFolder m_folder;
  std::vector<std::string> m_codeFiles;
  std::vector<std::string> m_iconFiles;
  std::size_t m_bytes = 0;
};

/// A text of so many bytes, which looks like a script; no two numbers give the same.
std::string ScriptText(int number, std::size_t bytes);

/// An icon file with an image of 16 and one of 32 pixels, of 32 bits each: a disc in a colour that no other number has,
/// with nothing around it.
std::string IconBytes(int number);
/// That colour, as 0xRRGGBB, and whether a pixel lies in the disc.
std::uint32_t IconColour(int number);
bool IsInDisc(int size, int x, int y);

}  // namespace ondrel::bench
