// The look at a file as the write of an image opens it.
#include "code_file_fault.h"

#include <memory>

#include <ondrel/platform/framework/file.h>

#include "code_file_store.h"
#include "failure.h"

namespace ondrel::command {

std::optional<CodeFileFault> FindCodeFileFault(const CString& path) {
  CFile source;
  std::unique_ptr<CFileException> fault;
  if (!source.Open(path, CFile::modeRead | CFile::shareDenyWrite, &fault)) {
    const HRESULT status = StatusOf(*fault);
    return CodeFileFault{ExplainFileFault(path, status), status};
  }
  if (source.GetLength() <= kLargestCodeFile) return std::nullopt;
  return CodeFileFault{"it has 4 GiB or more; an image holds smaller files only", E_INVALIDARG, true};
}

}  // namespace ondrel::command
