// From the bytes of a code file to text for people.
#include "report/file_contents.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <vector>

#include <ondrel/platform/com.h>

#include "byte_order_marks.h"
#include "failure.h"

namespace ondrel::command {
namespace {

constexpr UINT kCodePage1252 = 1252;

using WideText = std::basic_string<WCHAR>;

WideText Decode(UINT codePage, std::string_view bytes) {
  if (bytes.empty()) return {};
  const int byteCount = static_cast<int>(bytes.size());
  const int length = MultiByteToWideChar(codePage, 0, bytes.data(), byteCount, nullptr, 0);
  WideText text(static_cast<std::size_t>(length), WCHAR{});
  MultiByteToWideChar(codePage, 0, bytes.data(), byteCount, text.data(), length);
  return text;
}

WideText DecodeUtf16(std::string_view bytes, bool bigEndian) {
  WideText text;
  text.reserve(bytes.size() / 2);
  const auto byte = [&](std::size_t index) { return static_cast<unsigned>(static_cast<unsigned char>(bytes[index])); };
  for (std::size_t index = 0; index + 1 < bytes.size(); index += 2) {
    const unsigned first = byte(index);
    const unsigned second = byte(index + 1);
    text += static_cast<WCHAR>(bigEndian ? first << 8 | second : second << 8 | first);
  }
  return text;
}

/// Tabs, line feeds, form feeds and carriage returns are text; other control characters are not.
bool IsText(const WideText& text) {
  return std::none_of(text.begin(), text.end(), [](WCHAR unit) {
    return (unit < 0x20 && unit != '\t' && unit != '\n' && unit != '\f' && unit != '\r') || unit == 0x7F;
  });
}

/// Fewer bytes, where the last character may have lost some of its own.
std::string_view WithoutCutCharacter(std::string_view bytes) {
  std::size_t end = bytes.size();
  while (end > 0 && (static_cast<unsigned char>(bytes[end - 1]) & 0xC0) == 0x80) --end;
  if (end > 0 && static_cast<unsigned char>(bytes[end - 1]) >= 0xC0) --end;
  return bytes.substr(0, end);
}

/// What the bytes say as text, and how many of them said it; nothing when they are none. `isCut` tells that more
/// follow.
FileContents Interpret(std::string_view bytes, bool isCut) {
  FileContents contents;
  const auto take = [&](const WideText& text, const char* encoding, std::size_t shownBytes) {
    if (!IsText(text)) {
      contents.state = FileContents::State::binary;
      return contents;
    }
    contents.state = FileContents::State::text;
    contents.text = platform::ToUtf8(CString(text));
    contents.encoding = encoding;
    contents.shownBytes = shownBytes;
    return contents;
  };

  for (const std::string_view mark : {kUtf16Mark, kUtf16BigEndianMark}) {
    if (!bytes.starts_with(mark)) continue;
    return take(DecodeUtf16(bytes.substr(mark.size()), mark == kUtf16BigEndianMark), "UTF-16", bytes.size());
  }
  const std::string_view whole = isCut ? WithoutCutCharacter(bytes) : bytes;
  const std::string_view unmarked = whole.substr(whole.starts_with(kUtf8Mark) ? kUtf8Mark.size() : 0);
  const WideText text = Decode(CP_UTF8, unmarked);
  // What is no UTF-8 does not come back as it was.
  if (platform::ToUtf8(CString(text)) == unmarked) return take(text, "UTF-8", whole.size());
  return take(Decode(kCodePage1252, bytes), "code page 1252", bytes.size());
}

struct FileStart {
  std::vector<char> bytes;
  bool isCut = false;
};

/// The first bytes of a file, `limit` at most. Raises CFileException.
FileStart ReadStart(const CString& path, std::size_t limit) {
  CFile file(path, CFile::modeRead | CFile::shareDenyNone);
  FileStart start;
  start.bytes.resize(static_cast<std::size_t>(std::min<ULONGLONG>(file.GetLength(), limit)));
  const UINT read = start.bytes.empty() ? 0 : file.Read(start.bytes.data(), static_cast<UINT>(start.bytes.size()));
  start.bytes.resize(read);
  start.isCut = file.GetLength() > read;
  return start;
}

}  // namespace

FileContents ContentsReader::Read(__int64 cookie) {
  FileContents contents;
  const std::size_t limit = std::min(m_room, kMostShownOfFile);
  FileStart start;
  CString path;
  try {
    if (m_definition.set.GetCodeFileContents(cookie, start.bytes)) {
      start.isCut = start.bytes.size() > limit;
      if (start.isCut) start.bytes.resize(limit);
    } else if (m_definition.set.GetFilePath(cookie, path)) {
      start = ReadStart(path, limit);
    }
  } catch (const CFileException& fault) {
    contents.reason = ExplainFileFault(path, StatusOf(fault));
    return contents;
  }
  if (m_room == 0 && start.isCut) {
    contents.state = FileContents::State::leftOut;
    return contents;
  }
  contents = Interpret({start.bytes.data(), start.bytes.size()}, start.isCut);
  m_room -= contents.shownBytes;
  return contents;
}

}  // namespace ondrel::command
