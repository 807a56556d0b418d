#include "support/model/plain_disk.h"

#include <algorithm>
#include <cstdint>

#include "support/icon_bytes.h"
#include "support/statuses.h"

namespace ondrel::test {
namespace {

constexpr const char* kChangingFile = "p\\changing.ico";

/// An icon whose two images are one colour, so that it does not matter which of them a system scales.
struct Solid {
  Solid(int bitsPerPixel, std::uint32_t colour)
      : large(SolidPicture(32, 32, bitsPerPixel, colour)), smallIcon(SolidPicture(16, 16, bitsPerPixel, colour)) {}

  std::string Bytes() const { return IconFileBytes({StoredImage(large), StoredImage(smallIcon)}); }
  HandIcon Shown() const { return {ImageShown(large), ImageShown(smallIcon)}; }

  IconPicture large;
  IconPicture smallIcon;
};

}  // namespace

PlainText PlainDisk::PathOf(const std::string& name) const {
  const CString root = Wide(m_folder.Path());
  PlainText path(root.View().begin(), root.View().end());
  path += u'\\';
  path.append(name.begin(), name.end());
  return path;
}

void PlainDisk::WriteFile(const std::string& name, const std::string& bytes) {
  std::string below = name;
  std::replace(below.begin(), below.end(), '\\', '/');
  m_folder.Write(below, bytes);
  m_files[PathOf(name)] = bytes;
}

PlainDisk::PlainDisk() {
  const auto addIcon = [&](const std::string& name, const Solid& icon) {
    WriteFile(name, icon.Bytes());
    m_icons[PathOf(name)] = {S_OK, icon.Shown()};
  };
  const Solid red(32, 0xFF0000);
  addIcon("p\\red.ico", red);
  addIcon("p\\grey.ico", Solid(24, 0x808080));
  // The same name in the other folder is another icon: a project that is loaded from there finds it.
  addIcon("q\\red.ico", Solid(32, 0x0000FF));
  // Another spelling of the first.
  m_icons[PathOf("p/red.ico")] = m_icons[PathOf("p\\red.ico")];
  m_files[PathOf("p/red.ico")] = m_files[PathOf("p\\red.ico")];
  WriteFile("p\\text.ico", "no icon");
  m_icons[PathOf("p\\text.ico")] = {kNoIcon, {}};
  WriteFile("p\\damaged.ico", red.Bytes().substr(0, 100));
  m_icons[PathOf("p\\damaged.ico")] = {kInvalidData, {}};
  Change(Changing::good);

  // Code files. Folders that differ in case alone are one folder where the system says so, with the same files then.
  WriteFile("p\\a.js", "alpha");
  WriteFile("P\\a.js", "alpha");
  WriteFile("P\\Z.js", "zeta");
  WriteFile("p\\empty.js", "");
  WriteFile("q\\sub\\b.js", std::string("b\0\xFF\r\n", 5));

  for (const char* name : {"p\\red.ico", "p\\grey.ico", "q\\red.ico", "p/red.ico", "p\\text.ico", "p\\damaged.ico",
                           "p\\missing.ico", kChangingFile}) {
    m_iconPaths.push_back(PathOf(name));
  }
  for (const char* name : {"p\\a.js", "P\\a.js", "P\\Z.js", "p\\empty.js", "q\\sub\\b.js", "p/a.js", "p\\missing.js",
                           "p\\hooked.js", "q\\hooked.js", "p\\red.ico"}) {
    m_codePaths.push_back(PathOf(name));
  }
  m_files[PathOf("p/a.js")] = "alpha";
  m_codePaths.emplace_back(u"hooked.js");
  for (const char* name : {"p\\project.xml", "q\\project.xml", "p\\other.xml"}) m_projectPaths.push_back(PathOf(name));
}

void PlainDisk::Change(Changing what) {
  const Solid green(32, 0x00FF00);
  const PlainText path = PathOf(kChangingFile);
  if (what == Changing::missing) {
    std::filesystem::remove(m_folder / "p/changing.ico");
    m_files.erase(path);
    m_icons.erase(path);
    return;
  }
  const std::string whole = green.Bytes();
  if (what == Changing::good) {
    WriteFile(kChangingFile, whole);
    m_icons[path] = {S_OK, green.Shown()};
  } else {
    WriteFile(kChangingFile, whole.substr(0, whole.size() / 2));
    m_icons[path] = {kInvalidData, {}};
  }
}

PlainDisk::IconFile PlainDisk::IconAt(const PlainText& path) const {
  const auto icon = m_icons.find(path);
  return icon == m_icons.end() ? IconFile{kFileNotFound, {}} : icon->second;
}

const std::string* PlainDisk::BytesAt(const PlainText& path) const {
  const auto file = m_files.find(path);
  return file == m_files.end() ? nullptr : &file->second;
}

}  // namespace ondrel::test
