// How the contents of a code file get into an image.
#pragma once

#include <cstdint>
#include <limits>
#include <vector>

#include <ondrel/MMCObjectSet.h>

namespace ondrel::command {

/// What a code file in an image may have at most, in bytes: its length takes 32 bits there.
inline constexpr ULONGLONG kLargestCodeFile = std::numeric_limits<std::uint32_t>::max();

/// Looks after code files that are not simply stored as they are, from where their paths say.
class CodeFileHandler {
 public:
  virtual ~CodeFileHandler() = default;
  /// Told of each of its files when its turn comes. Gives the place of its bytes.
  virtual CString BeginFile(const CString& path) = 0;
  /// Whether the file's bytes are to go through Filter, which is called for such a file only.
  virtual bool IsFiltered(const CString& path) const = 0;
  virtual std::vector<char> Filter(const CString& path, std::vector<char> bytes,
                                   const CMMCObjectSet::Variables& variables) = 0;
};

/// The transform of a code file that is looked after. The handler must live as long as the set.
struct HandledTransform {
  CodeFileHandler* handler;
  CString path;

  std::vector<char> operator()(std::vector<char> bytes, const CMMCObjectSet::Variables& variables) const;
};

/// The transform of all others.
std::vector<char> KeepBytes(std::vector<char> bytes, const CMMCObjectSet::Variables& variables);

/// The writer hook of every set: stores a code file as it is, a block at a time, so that nothing has to hold the whole
/// of it, but for one whose transform is handled. Raises CFileException, and what the handler raises.
bool StoreCodeFile(const WCHAR* path, CVellum& archive, CMMCObjectSet::Transform transform,
                   CMMCObjectSet::Variables variables);

}  // namespace ondrel::command
