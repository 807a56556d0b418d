#include "support/model/plain_conversions.h"

#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace ondrel::test {

CMMCObjectSet::Transform Real(PlainTransform transform) {
  switch (transform.kind) {
    case PlainTransform::Kind::none:
      return nullptr;
    case PlainTransform::Kind::raises:
      return [](std::vector<char>, CMMCObjectSet::Variables) -> std::vector<char> {
        throw std::runtime_error("a transform of random edits raises");
      };
    case PlainTransform::Kind::empties:
      return [](std::vector<char>, CMMCObjectSet::Variables) { return std::vector<char>(); };
    case PlainTransform::Kind::marks:
      break;
  }
  return [mark = transform.mark](std::vector<char> bytes, CMMCObjectSet::Variables variables) {
    std::map<PlainText, __int64> told;
    for (const auto& [name, value] : variables) {
      if (value.vt != VT_I8) throw std::logic_error("a folder's variable is no cookie");
      told[Plain(name)] = value.llVal;
    }
    const std::string marked = MarkedBytes(std::string_view(bytes.data(), bytes.size()), mark, told);
    return std::vector<char>(marked.begin(), marked.end());
  };
}

bool WriteHooked(const WCHAR* path, CVellum& archive, CMMCObjectSet::Transform, CMMCObjectSet::Variables) {
  if (!Plain(CString(path)).ends_with(kHookedEnding)) return false;
  archive.Write(std::vector<char>(kHookedContents.begin(), kHookedContents.end()));
  return true;
}

}  // namespace ondrel::test
