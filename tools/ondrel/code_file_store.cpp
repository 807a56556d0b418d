// The writer hook of the set, and what it does with each kind of code file.
#include "code_file_store.h"

#include <algorithm>
#include <memory>

namespace ondrel::command {
namespace {

constexpr UINT kBlockSize = 64 * 1024;

/// Reads a file to its end and hands it on block by block.
template <class Take>
void ReadBlocks(CFile& file, ULONGLONG length, const Take& take) {
  const auto blockSize = static_cast<UINT>(std::min<ULONGLONG>(length, kBlockSize));
  const std::unique_ptr<char[]> block(new char[blockSize]);
  for (ULONGLONG missing = length; missing > 0;) {
    const UINT read = file.Read(block.get(), static_cast<UINT>(std::min<ULONGLONG>(missing, blockSize)));
    // The file was cut while it was read; what is missing must not go into an image as something else.
    if (read == 0) AfxThrowFileException(CFileException::endOfFile, -1, file.GetFilePath());
    take(block.get(), read);
    missing -= read;
  }
}

ULONGLONG RequireLength(const CFile& file) {
  const ULONGLONG length = file.GetLength();
  if (length > kLargestCodeFile) AfxThrowInvalidArgException();
  return length;
}

void StoreAsItIs(const CString& path, CVellum& archive) {
  CFile file(path, CFile::modeRead | CFile::shareDenyWrite);
  const ULONGLONG length = RequireLength(file);
  archive << static_cast<DWORD>(length);
  ReadBlocks(file, length, [&archive](const char* bytes, UINT count) { archive.Write(bytes, count); });
}

std::vector<char> ReadCodeFile(const CString& path) {
  CFile file(path, CFile::modeRead | CFile::shareDenyWrite);
  const ULONGLONG length = RequireLength(file);
  std::vector<char> contents;
  contents.reserve(static_cast<std::size_t>(length));
  ReadBlocks(file, length,
             [&contents](const char* bytes, UINT count) { contents.insert(contents.end(), bytes, bytes + count); });
  return contents;
}

}  // namespace

std::vector<char> HandledTransform::operator()(std::vector<char> bytes,
                                               const CMMCObjectSet::Variables& variables) const {
  return handler->Filter(path, std::move(bytes), variables);
}

std::vector<char> KeepBytes(std::vector<char> bytes, const CMMCObjectSet::Variables&) { return bytes; }

bool StoreCodeFile(const WCHAR* path, CVellum& archive, CMMCObjectSet::Transform transform,
                   CMMCObjectSet::Variables variables) {
  const auto* const handled = transform.target<HandledTransform>();
  if (handled == nullptr) {
    StoreAsItIs(path, archive);
    return true;
  }
  const CString source = handled->handler->BeginFile(path);
  if (!handled->handler->IsFiltered(path)) {
    StoreAsItIs(source, archive);
    return true;
  }
  // Read here and not by the set, which knows of no other place than the path.
  archive.Write(transform(ReadCodeFile(source), std::move(variables)));
  return true;
}

}  // namespace ondrel::command
