// Code files and icon files.
#include <limits>
#include <random>

#include "support/model/plain_set.h"
#include "support/statuses.h"

namespace ondrel::test {
const PlainText* PlainSet::IconPathOf(__int64 cookie) const {
  for (const auto& [path, other] : m_iconPaths) {
    if (other == cookie) return &path;
  }
  return nullptr;
}

const PlainText* PlainSet::CodePathOf(__int64 cookie) const {
  for (const auto& [path, file] : m_codePaths) {
    if (file.cookie == cookie) return &path;
  }
  return nullptr;
}

__int64 PlainSet::DrawFileCookie(unsigned random) const {
  std::mt19937 engine(random);
  std::uniform_int_distribution<__int64> numbers(0, std::numeric_limits<__int64>::max());
  for (;;) {
    const __int64 cookie = numbers(engine);
    // Files in memory and icons from an image do not count.
    if (cookie != 0 && IconPathOf(cookie) == nullptr && CodePathOf(cookie) == nullptr) return cookie;
  }
}

HRESULT PlainSet::AddCodeFile(const PlainText& path, PlainTransform transform, unsigned random, __int64& cookie) {
  cookie = DrawFileCookie(random);
  const HRESULT status = InsertCodeFile(path, cookie, transform);
  if (status < 0) {
    cookie = 0;
  } else {
    m_modified = true;
  }
  return status;
}

HRESULT PlainSet::AddIconFile(const PlainText& path, const PlainDisk& disk, unsigned random, __int64& cookie) {
  cookie = DrawFileCookie(random);
  const HRESULT status = InsertIconFile(path, cookie, disk);
  if (status < 0) {
    cookie = 0;
  } else {
    m_modified = true;
  }
  return status;
}

HRESULT PlainSet::InsertCodeFile(const PlainText& path, __int64 cookie, PlainTransform transform) {
  if (m_codePaths.contains(path) || CodePathOf(cookie) != nullptr) return kAlreadyExists;
  m_codePaths[path] = {cookie, transform};
  return S_OK;
}

HRESULT PlainSet::InsertCodeFile(__int64 cookie, const std::string& contents) {
  return m_codeContents.emplace(cookie, contents).second ? S_OK : kAlreadyExists;
}

HRESULT PlainSet::InsertIconFile(const PlainText& path, __int64 cookie, const PlainDisk& disk) {
  const PlainDisk::IconFile file = disk.IconAt(path);
  if (file.status < 0) return file.status;
  if (m_iconPaths.contains(path) || IconPathOf(cookie) != nullptr || m_icons.contains(cookie)) return kAlreadyExists;
  m_iconPaths[path] = cookie;
  m_icons[cookie] = {file.icon, true};
  return S_OK;
}

HRESULT PlainSet::InsertIconFile(__int64 cookie, const HandIcon& icon) {
  return m_icons.emplace(cookie, Icon{icon, false}).second ? S_OK : kAlreadyExists;
}

std::list<__int64> PlainSet::GetCodeFiles() const {
  std::list<__int64> cookies;
  for (const auto& [path, file] : m_codePaths) cookies.push_back(file.cookie);
  for (const auto& [cookie, contents] : m_codeContents) cookies.push_back(cookie);
  return cookies;
}

std::list<__int64> PlainSet::GetIconFiles() const {
  std::list<__int64> cookies;
  for (const auto& [cookie, icon] : m_icons) cookies.push_back(cookie);
  return cookies;
}

const std::string* PlainSet::GetCodeFileContents(__int64 cookie) const {
  const auto contents = m_codeContents.find(cookie);
  return contents == m_codeContents.end() ? nullptr : &contents->second;
}

const PlainText* PlainSet::GetFilePath(__int64 cookie) const {
  const PlainText* const icon = IconPathOf(cookie);
  return icon != nullptr ? icon : CodePathOf(cookie);
}

const HandIcon* PlainSet::GetIconFile(__int64 cookie) const {
  const auto icon = m_icons.find(cookie);
  return icon == m_icons.end() ? nullptr : &icon->second.images;
}

const int* PlainSet::GetIconFileImage(__int64 cookie) const {
  const auto image = m_images.find(cookie);
  return image == m_images.end() ? nullptr : &image->second;
}

int PlainSet::AppendToImageList(int count) {
  m_images.clear();
  for (const auto& [cookie, icon] : m_icons) {
    if (icon.hasHandles) m_images[cookie] = count++;
  }
  return count;
}

HandBitmap PlainSet::MakeStrips(bool large, unsigned key) {
  m_images.clear();
  std::vector<HandImage> images;
  for (const auto& [cookie, icon] : m_icons) {
    m_images[cookie] = static_cast<int>(images.size());
    images.push_back(large ? icon.images.large : icon.images.smallIcon);
  }
  return ExpectedStrip(images, key);
}

}  // namespace ondrel::test
