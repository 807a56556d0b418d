// The checks of icon files and code files.
#include <algorithm>
#include <map>
#include <string_view>

#include <ondrel/platform/drive_letter.h>

#include "check/checks.h"
#include "code_file_fault.h"
#include "icon_picture.h"
#include "printable.h"

namespace ondrel::command {
namespace {

using platform::HasDriveLetter;
using PathView = std::basic_string_view<WCHAR>;

constexpr WCHAR kSeparators[] = {'\\', '/', 0};

bool IsAbsolute(PathView path) {
  return HasDriveLetter(path) || (!path.empty() && PathView(kSeparators).find(path.front()) != PathView::npos);
}

/// Whether a relative path leads above the folder that it starts at.
bool LeavesFolder(PathView path) {
  constexpr WCHAR kUp[] = {'.', '.', 0};
  constexpr WCHAR kHere[] = {'.', 0};
  int depth = 0;
  while (!path.empty()) {
    const PathView part = path.substr(0, path.find_first_of(kSeparators));
    path.remove_prefix(std::min(part.size() + 1, path.size()));
    if (part == kUp) {
      if (--depth < 0) return true;
    } else if (!part.empty() && part != kHere) {
      ++depth;
    }
  }
  return false;
}

void RemarkOnPath(const ProjectFile& file, Remarks& remarks) {
  const auto add = [&](const char* code, const char* explanation) {
    remarks.push_back({Remark::Severity::warning, code, file.line, file.About(), FileLabel(file) + ": " + explanation});
  };
  if (!file.isNamed && IsAbsolute(file.spelling.View())) {
    add("path-absolute",
        "its path is that of one machine; put it below the project's folder and name it by a Name from there");
  } else if (!file.isNamed) {
    add("path-relative", "its Path starts at whatever folder a program runs in; write it as Name");
  } else if (LeavesFolder(file.spelling.View())) {
    add("path-outside", "its path leaves the project's folder; put it below that folder");
  }
}

const char* FileFaultCode(HRESULT status) {
  const DWORD reason = static_cast<DWORD>(status) & 0xFFFF;
  return reason == ERROR_FILE_NOT_FOUND || reason == ERROR_PATH_NOT_FOUND ? "file-missing" : "file-unreadable";
}

const char* IconFaultCode(const CString& path, HRESULT status) {
  if (status == kInvalidData) return "icon-damaged";
  const bool isReadable = CFile().Open(path, CFile::modeRead | CFile::shareDenyNone) != FALSE;
  return isReadable ? "icon-missing" : FileFaultCode(status);
}

/// An icon that was loaded is whole; others are tried.
void RemarkOnIcon(const Definition& definition, const ProjectFile& file, Remarks& remarks) {
  const CMMCObjectIcon* loaded = nullptr;
  if (file.cookie && definition.set.GetIconFile(*file.cookie, &loaded)) return;
  const HRESULT status = CMMCObjectIcon().Construct(*file.path);
  if (SUCCEEDED(status)) return;
  remarks.push_back({Remark::Severity::error, IconFaultCode(*file.path, status), file.line, file.About(),
                     FileLabel(file) + ": " + ExplainIconFault(*file.path, status)});
}

void RemarkOnCodeFile(const ProjectFile& file, Remarks& remarks) {
  const auto fault = FindCodeFileFault(*file.path);
  if (!fault) return;
  const char* const code = fault->isTooLarge ? "file-too-large" : FileFaultCode(fault->status);
  remarks.push_back(
      {Remark::Severity::error, code, file.line, file.About(), FileLabel(file) + ": " + fault->explanation});
}

}  // namespace

void RemarkOnFileNames(const ProjectContents& contents, Remarks& remarks) {
  std::map<__int64, const ProjectFile*> icons;
  for (const bool isIcon : {true, false}) {
    for (const ProjectFile& file : isIcon ? contents.iconFiles : contents.codeFiles) {
      if (file.path) RemarkOnPath(file, remarks);
      if (!file.cookie) continue;
      if (*file.cookie == 0) {
        remarks.push_back({Remark::Severity::warning, "file-cookie-zero", file.line, file.About(),
                           FileLabel(file) + ": where records refer to files, 0 stands for none; give it "
                                             "another cookie"});
      }
      if (isIcon) {
        icons.emplace(*file.cookie, &file);
      } else if (const auto icon = icons.find(*file.cookie); icon != icons.end() && file.path) {
        remarks.push_back({Remark::Severity::error, "cookie-shared", file.line, file.About(),
                           FileLabel(file) + ": its cookie is also that of the icon file in line " +
                               std::to_string(icon->second->line) + ", and no image is made of that; give it another"});
      }
    }
  }
}

void RemarkOnDisk(const Definition& definition, const ProjectContents& contents, Remarks& remarks) {
  for (const ProjectFile& file : contents.iconFiles) {
    if (file.path) RemarkOnIcon(definition, file, remarks);
  }
  for (const ProjectFile& file : contents.codeFiles) {
    if (file.path) RemarkOnCodeFile(file, remarks);
  }
}

void RemarkOnStrips(const Definition& definition, const ProjectContents& contents, Remarks& remarks) {
  const auto cookies = definition.set.GetIconFiles();
  const CMMCObjectIcon* first = nullptr;
  if (cookies.empty() || !definition.set.GetIconFile(cookies.front(), &first)) return;
  const auto size = [](const CMMCObjectIcon& icon, bool large) {
    return SizeText(icon.GetColourBitmap(large).bmWidth, icon.GetColourBitmap(large).bmHeight);
  };
  for (const ProjectFile& file : contents.iconFiles) {
    const CMMCObjectIcon* icon = nullptr;
    if (!file.cookie || !definition.set.GetIconFile(*file.cookie, &icon)) continue;
    if (size(*icon, true) != size(*first, true) || size(*icon, false) != size(*first, false)) {
      remarks.push_back({Remark::Severity::warning, "icon-size", file.line, file.About(),
                         FileLabel(file) + ": its images of " + size(*icon, true) + " and " + size(*icon, false) +
                             " pixels do not fit strips of " + size(*first, true) + " and " + size(*first, false) +
                             ", the sizes of icon file " + std::to_string(cookies.front()) +
                             "; give all icons the same sizes"});
    }
    if (icon->GetColourBitmap(true).bmBitsPixel != kColourBits ||
        icon->GetColourBitmap(false).bmBitsPixel != kColourBits) {
      remarks.push_back({Remark::Severity::warning, "icon-depth", file.line, file.About(),
                         FileLabel(file) + ": its images have not 32 bits a pixel and are black in the strips; "
                                           "make the icon anew"});
    }
  }
}

}  // namespace ondrel::command
