// The checks of a project's bytes: whether everyone who reads them gets the same characters.
#include <algorithm>
#include <string_view>

#include <ondrel/platform/xml_references.h>

#include "check/checks.h"
#include "printable.h"

namespace ondrel::command {
namespace {

int LineAt(std::string_view text, std::size_t offset) {
  return 1 + static_cast<int>(std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(offset), '\n'));
}

std::size_t CountReferences(std::string_view text) {
  constexpr std::string_view kReference = "&#";
  std::size_t count = 0;
  for (std::size_t at = text.find(kReference); at != std::string_view::npos;
       at = text.find(kReference, at + kReference.size())) {
    ++count;
  }
  return count;
}

}  // namespace

void RemarkOnText(const Definition& definition, Remarks& remarks) {
  const std::string& bytes = definition.FileBytes();
  const auto referenced = platform::ReferenceValues(bytes);
  if (!referenced) return;
  const auto add = [&](const char* code, std::size_t offset, const std::string& explanation) {
    remarks.push_back({Remark::Severity::warning, code, LineAt(bytes, offset), std::nullopt, explanation});
  };
  if (const platform::StrayBytes stray = platform::FindStrayBytes(bytes); stray.count > 0) {
    add("not-utf8", stray.first,
        Counted(stray.count, "byte is", "bytes are") +
            " no UTF-8, the first of them in this line, and taken for code page 1252; save the file as UTF-8");
  }
  // A reference is made of each character beyond ASCII that stands in a value.
  const std::size_t written = CountReferences(*referenced) - CountReferences(bytes);
  if (written == 0) return;
  const auto first = std::mismatch(bytes.begin(), bytes.end(), referenced->begin(), referenced->end()).first;
  add("text-beyond-ascii", static_cast<std::size_t>(first - bytes.begin()),
      Counted(written, "character", "characters") +
          " beyond ASCII in values, the first in this line: a host reads the file through code page 1252 and gets "
          "others; write character references, as &#252; for U+00FC");
}

}  // namespace ondrel::command
