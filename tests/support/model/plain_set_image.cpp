// The object image, byte by byte.
#include <algorithm>
#include <stdexcept>

#include "support/model/hand_bytes.h"
#include "support/model/plain_set.h"
#include "support/status_text.h"

namespace ondrel::test {
namespace {

constexpr __int64 kRoot = -1;

std::string Text(const PlainText& text) {
  std::string bytes = "\xFF\xFE\xFF";
  if (text.size() < 0xFF) {
    bytes += static_cast<char>(text.size());
  } else if (text.size() < 0xFFFE) {
    bytes += '\xFF' + Word(static_cast<unsigned>(text.size()));
  } else {
    throw std::length_error("the names of random edits are shorter");
  }
  for (const char16_t unit : text) bytes += Word(unit);
  return bytes;
}

std::string Queries(const PlainQueries& queries) {
  std::string bytes = Count(queries.size());
  for (const auto& [tag, file] : queries) bytes += Text(tag) + Cookie(file);
  return bytes;
}

std::string Record(const PlainRecord& record) {
  std::string bytes = Cookie(record.cookie) + Text(record.name) + Cookie(record.icon) + Long(record.type) +
                      Queries(record.childQueries) + Cookie(record.menuScript) + Count(record.scripts.size());
  for (const __int64 script : record.scripts) bytes += Cookie(script);
  if (record.HasView()) bytes += Cookie(record.styleSheet) + Queries(record.renderQueries);
  return bytes;
}

/// The path up to its last separator, or whole.
PlainText FolderOf(const PlainText& path) {
  const std::size_t end = path.find_last_of(u"\\/");
  return end == PlainText::npos ? path : path.substr(0, end + 1);
}

PlainText InSmallLetters(PlainText text) {
  for (char16_t& unit : text) {
    if (unit >= u'A' && unit <= u'Z') unit = static_cast<char16_t>(unit + (u'a' - u'A'));
  }
  return text;
}

/// Takes the values of an image one after the other.
class Reader {
 public:
  explicit Reader(std::string_view bytes) : m_rest(bytes) {}

  std::string_view Bytes(std::size_t count) {
    if (m_rest.size() < count) throw PlainRefusal{"CArchiveException 3"};
    const std::string_view bytes = m_rest.substr(0, count);
    m_rest.remove_prefix(count);
    return bytes;
  }
  unsigned long long Number(int size) {
    unsigned long long number = 0;
    int shift = 0;
    for (const char byte : Bytes(static_cast<std::size_t>(size))) {
      number |= static_cast<unsigned long long>(static_cast<unsigned char>(byte)) << shift;
      shift += 8;
    }
    return number;
  }
  int Long() { return static_cast<int>(static_cast<unsigned>(Number(4))); }
  __int64 Cookie() { return static_cast<__int64>(Number(8)); }
  unsigned long long Count() { return Number(8); }
  std::string ByteVector() {
    const unsigned long long length = Number(4);
    return std::string(Bytes(length));
  }
  PlainText Text() {
    if (Number(3) != 0xFFFEFF) throw std::logic_error("an image of random edits has wide text");
    unsigned long long length = Number(1);
    if (length == 0xFF) length = Number(2);
    PlainText text;
    for (; length > 0; --length) text += static_cast<char16_t>(Number(2));
    return text;
  }
  PlainQueries Queries() {
    PlainQueries queries;
    for (unsigned long long left = Count(); left > 0; --left) {
      const PlainText tag = Text();
      queries.emplace_back(tag, Cookie());
    }
    return queries;
  }
  PlainRecord Record() {
    PlainRecord record;
    record.cookie = Cookie();
    record.name = Text();
    record.icon = Cookie();
    record.type = Long();
    record.childQueries = Queries();
    record.menuScript = Cookie();
    for (unsigned long long left = Count(); left > 0; --left) record.scripts.push_back(Cookie());
    if (!record.HasView()) return record;
    record.styleSheet = Cookie();
    record.renderQueries = Queries();
    return record;
  }
  HandBitmap Bitmap() {
    HandBitmap bitmap;
    Long();  // the type
    bitmap.width = Long();
    bitmap.height = Long();
    bitmap.rowBytes = Long();
    Number(2);  // the planes
    bitmap.depth = static_cast<int>(Number(2));
    bitmap.bytes = ByteVector();
    return bitmap;
  }
  HandImage Image() {
    HandImage image;
    image.colour = Bitmap();
    image.mask = Bitmap();
    return image;
  }

 private:
  std::string_view m_rest;
};

void Require(HRESULT status) {
  if (status < 0) throw PlainRefusal{"COleException " + StatusText(status)};
}

}  // namespace

std::string MarkedBytes(std::string_view bytes, int mark, const std::map<PlainText, __int64>& variables) {
  std::string marked = std::string(bytes) + "#" + std::to_string(mark);
  for (const auto& [name, cookie] : variables) marked += " " + Describe(name) + " " + std::to_string(cookie);
  return marked;
}

std::map<PlainText, __int64> PlainSet::FolderVariables() const {
  std::map<PlainText, __int64> variables;
  for (const auto& [path, file] : m_codePaths) {
    const PlainText folder = FolderOf(path);
    const bool isThere = std::any_of(variables.begin(), variables.end(), [&](const auto& variable) {
      return InSmallLetters(variable.first) == InSmallLetters(folder);
    });
    if (!isThere) variables[folder] = file.cookie;
  }
  return variables;
}

std::string PlainSet::StoreNode(__int64 cookie) const {
  const std::list<__int64> children = GetChildNodes(cookie);
  std::string bytes = Record(m_nodes.at(cookie).record) + Count(children.size());
  for (const __int64 child : children) bytes += StoreNode(child);
  return bytes;
}

std::string PlainSet::StoreCodeFile(__int64 cookie, PlainTransform transform,
                                    const std::map<PlainText, __int64>& variables, const PlainDisk& disk) const {
  const PlainText* const path = GetFilePath(cookie);
  if (path == nullptr) throw PlainRefusal{"CArchiveException 1"};
  if (path->ends_with(kHookedEnding)) return Cookie(cookie) + ByteVector(kHookedContents);
  const std::string* const bytes = disk.BytesAt(*path);
  if (bytes == nullptr) throw PlainRefusal{"CFileException"};
  switch (transform.kind) {
    case PlainTransform::Kind::none:
      throw PlainRefusal{"std::bad_function_call"};
    case PlainTransform::Kind::raises:
      throw PlainRefusal{"std::runtime_error"};
    case PlainTransform::Kind::empties:
      return Cookie(cookie) + ByteVector("");
    case PlainTransform::Kind::marks:
      break;
  }
  return Cookie(cookie) + ByteVector(MarkedBytes(*bytes, transform.mark, variables));
}

std::string PlainSet::StoreIconFile(__int64 cookie) const {
  const HandIcon* const icon = GetIconFile(cookie);
  return icon == nullptr ? "" : Cookie(cookie) + icon->Record();
}

std::string PlainSet::StoreImage(const PlainDisk& disk, bool setModified, bool clearModified) {
  const std::list<__int64> top = GetChildNodes(kRoot);
  if (top.size() > 1) throw PlainRefusal{"CArchiveException 7"};
  std::string bytes = Long(1) + Long(1) + Count(top.size());
  if (!top.empty()) bytes += StoreNode(top.front());
  bytes += Count(m_dialogs.size());
  for (const auto& [cookie, record] : m_dialogs) bytes += Record(record);
  bytes += Count(m_icons.size());
  for (const auto& [cookie, icon] : m_icons) bytes += StoreIconFile(cookie);
  bytes += Count(m_codePaths.size());
  const std::map<PlainText, __int64> variables = FolderVariables();
  for (const auto& [path, file] : m_codePaths) bytes += StoreCodeFile(file.cookie, file.transform, variables, disk);
  bytes += Count(m_codeContents.size());
  for (const auto& [cookie, contents] : m_codeContents) bytes += Cookie(cookie) + ByteVector(contents);
  if (setModified) m_modified = true;
  if (clearModified) m_modified = false;
  return bytes;
}

void PlainSet::LoadImage(std::string_view bytes, bool setModified, bool clearModified) {
  Reader reader(bytes);
  for (int version = 0; version < 2; ++version) {
    if (reader.Long() != 1) throw PlainRefusal{"CArchiveException 7"};
  }
  const unsigned long long top = reader.Count();
  if (top > 1) throw PlainRefusal{"CArchiveException 7"};
  Initialise();
  // The nodes whose children are still to come, with how many.
  std::list<std::pair<__int64, unsigned long long>> open = {{kRoot, top}};
  while (!open.empty()) {
    if (open.back().second == 0) {
      open.pop_back();
      continue;
    }
    --open.back().second;
    const PlainRecord record = reader.Record();
    Require(AddNode(open.back().first, record.cookie, record));
    open.emplace_back(record.cookie, reader.Count());
  }
  for (unsigned long long left = reader.Count(); left > 0; --left) {
    const PlainRecord record = reader.Record();
    Require(AddDialog(record.cookie, record));
  }
  for (unsigned long long left = reader.Count(); left > 0; --left) {
    const __int64 cookie = reader.Cookie();
    HandIcon icon;
    icon.large = reader.Image();
    icon.smallIcon = reader.Image();
    Require(InsertIconFile(cookie, icon));
  }
  for (int section = 0; section < 2; ++section) {
    for (unsigned long long left = reader.Count(); left > 0; --left) {
      const __int64 cookie = reader.Cookie();
      Require(InsertCodeFile(cookie, reader.ByteVector()));
    }
  }
  if (setModified) m_modified = true;
  if (clearModified) m_modified = false;
}

}  // namespace ondrel::test
