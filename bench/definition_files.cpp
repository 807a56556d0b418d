#include "definition_files.h"

#include <ondrel/MMCObjectSet.h>
#include <ondrel/platform/program.h>

#include "definition.h"
#include "forms.h"
#include "measure.h"
#include "support/icon_bytes.h"

namespace ondrel::bench {
namespace {

constexpr __int64 kNodes = 50;
constexpr int kFilesOfFolder = 100;

std::string Padded(int number) {
  const std::string digits = std::to_string(number);
  return std::string(digits.size() < 4 ? 4 - digits.size() : 0, '0') + digits;
}

}  // namespace

DefinitionFiles::DefinitionFiles(int codeFiles, std::size_t codeBytes, std::size_t spread, int icons) {
  WriteCode(codeFiles, codeBytes, spread);
  WriteIcons(icons);
  WriteProject();
  WriteResources();
}

void DefinitionFiles::Write(const std::string& name, std::string_view bytes) {
  m_folder.Write(name, bytes);
  m_bytes += bytes.size();
}

void DefinitionFiles::WriteCode(int files, std::size_t bytes, std::size_t spread) {
  const std::size_t mean = bytes / static_cast<std::size_t>(files);
  for (int file = 0; file < files; ++file) {
    // One above the mean, the next as much below it.
    const std::size_t distance = static_cast<std::size_t>(file / 2) * 37 % (spread + 1);
    m_codeFiles.push_back(std::string(kCode) + '/' + Padded(file / kFilesOfFolder) + '/' + Padded(file) + ".js");
    Write(m_codeFiles.back(), ScriptText(file, file % 2 == 0 ? mean + distance : mean - distance));
  }
}

void DefinitionFiles::WriteIcons(int icons) {
  for (int icon = 0; icon < icons; ++icon) {
    m_iconFiles.push_back("icons/" + Padded(icon) + ".ico");
    Write(m_iconFiles.back(), IconBytes(icon));
  }
}

void DefinitionFiles::WriteProject() const {
  const auto set = MakeDefinition(kNodes);
  const auto pathOf = [&](const std::string& name) { return platform::FullPath(ondrel::test::Wide(m_folder / name)); };
  __int64 cookie = 0;
  for (const std::string& name : m_codeFiles)
    AtlThrowIfFailed(set->AddCodeFile(pathOf(name), KeepBytes(nullptr), cookie));
  for (const std::string& name : m_iconFiles) AtlThrowIfFailed(set->AddIconFile(pathOf(name), cookie));
  CFile file(pathOf(kProject), CFile::modeWrite | CFile::modeCreate);
  SaveProject(*set, file);
  file.Close();
}

void DefinitionFiles::WriteResources() const {
  std::string entries;
  for (const auto* const names : {&m_codeFiles, &m_iconFiles}) {
    for (const std::string& name : *names) entries += "    <file>" + name + "</file>\n";
  }
  m_folder.Write(kQtResources, "<RCC>\n  <qresource prefix=\"/\">\n" + entries + "  </qresource>\n</RCC>\n");
  m_folder.Write(kGlibResources,
                 "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<gresources>\n  <gresource prefix=\"/console\">\n" +
                     entries + "  </gresource>\n</gresources>\n");
}

std::string ScriptText(int number, std::size_t bytes) {
  std::string text;
  for (int line = 0; text.size() < bytes; ++line) {
    text += "function action" + std::to_string(number) + '_' + std::to_string(line) + "(node) { return node.child(" +
            std::to_string(FileCookie(1, number + line)) + "); }\n";
  }
  text.resize(bytes);
  return text;
}

std::uint32_t IconColour(int number) { return 0x204060U + static_cast<std::uint32_t>(number) * 0x000103U; }

bool IsInDisc(int size, int x, int y) {
  // From the middle of the image to that of the pixel, in half pixels.
  const int right = 2 * x + 1 - size;
  const int down = 2 * y + 1 - size;
  return right * right + down * down < size * size;
}

std::string IconBytes(int number) {
  using ondrel::test::IconPicture;
  std::vector<ondrel::test::StoredImage> images;
  for (const int size : {16, 32}) {
    IconPicture picture = ondrel::test::SolidPicture(size, size, 32, IconColour(number));
    picture.transparent.resize(picture.pixels.size());
    for (int y = 0; y < size; ++y) {
      for (int x = 0; x < size; ++x) picture.transparent[picture.Index(x, y)] = !IsInDisc(size, x, y);
    }
    images.emplace_back(picture);
  }
  return ondrel::test::IconFileBytes(images);
}

}  // namespace ondrel::bench
