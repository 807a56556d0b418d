// How what the library raises becomes a line for people.
#include "failure.h"

#include <algorithm>
#include <cstdio>
#include <new>

#include <ondrel/platform/drive_letter.h>
#include <ondrel/platform/program.h>

#include "printable.h"

namespace ondrel::command {
namespace {

constexpr const char* kMemoryIsShort = "memory is short; close other programs";

std::string LineText(const Location& where, const std::string& explanation, const std::string& status) {
  std::string line;
  if (!where.file.empty()) line += PrintablePath(where.file) + ':';
  if (where.line > 0) line += std::to_string(where.line) + ':';
  if (!line.empty()) line += ' ';
  return line + Printable(std::string_view(explanation)) + " (" + status + ')';
}

std::string ExplainMissing(const CString& path) {
  if (path.IsEmpty()) return "the name is empty; give the file's name";
  if (!platform::CanReach(path)) {
    const std::string place =
        platform::HasDriveLetter(path.View()) ? "the drive " + Printable(path.Left(2)) : "the network path";
    return place + " cannot be reached from this system; name the file by a relative name";
  }
  const int nameStart = std::max(path.ReverseFind('\\'), path.ReverseFind('/')) + 1;
  if (nameStart > 0 && platform::KindOfPlace(path.Left(nameStart)) != platform::PlaceKind::folder) {
    return "its folder is not there; check the name or make the folder";
  }
  return "there is no such file; check its name";
}

std::string ExplainDenied(const CString& path) {
  switch (platform::KindOfPlace(path)) {
    case platform::PlaceKind::folder:
      return "it is a folder; name a file";
    case platform::PlaceKind::other:
      return "it is no regular file; name a file on disk";
    default:
      return "access is denied; check its permissions";
  }
}

}  // namespace

Failure::Failure(const Location& where, const std::string& explanation, const std::string& status)
    : std::runtime_error(LineText(where, explanation, status)), m_line(where.line), m_explanation(explanation) {}

std::string StatusText(HRESULT status) {
  char text[16];
  std::snprintf(text, sizeof text, "0x%08X", static_cast<unsigned>(status));
  return text;
}

std::string CauseText(int cause) { return "archive cause " + std::to_string(cause); }

HRESULT StatusOf(const CFileException& fault) {
  return fault.m_lOsError > 0 ? HRESULT_FROM_WIN32(static_cast<DWORD>(fault.m_lOsError)) : E_FAIL;
}

std::string ExplainFileFault(const CString& path, HRESULT status) {
  switch (static_cast<DWORD>(status) & 0xFFFF) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
      return ExplainMissing(path);
    case ERROR_ACCESS_DENIED:
      return ExplainDenied(path);
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
      return "another program is using it; close that program";
    case ERROR_DISK_FULL:
      return "the disk is full, or a limit of size is reached; make room";
    case ERROR_INVALID_NAME:
    case ERROR_FILENAME_EXCED_RANGE:
      return "no file can have this name; check it";
    default:
      return "it cannot be opened, read or written; check the file and the disk";
  }
}

std::string ExplainIconFault(const CString& path, HRESULT status) {
  if (status == kInvalidData) return "its icon is damaged; make the file anew";
  if (status == E_OUTOFMEMORY) return kMemoryIsShort;
  // Systems have several statuses for a file without an icon. That the file itself can be read tells it from a file
  // that cannot.
  const bool isReadable = CFile().Open(path, CFile::modeRead | CFile::shareDenyNone) != FALSE;
  if (isReadable) return "it holds no icon; name an icon file, or a program or library that has one";
  return ExplainFileFault(path, status);
}

Failure CurrentFailure(const Location& where) {
  try {
    throw;
  } catch (const Failure& failure) {
    return failure;
  } catch (const CFileException& fault) {
    return {where, ExplainFileFault(fault.m_strFileName, StatusOf(fault)), StatusText(StatusOf(fault))};
  } catch (const CArchiveException& fault) {
    return {where, fault.what(), CauseText(fault.m_cause)};
  } catch (const COleException& fault) {
    return {where, fault.what(), StatusText(fault.m_sc)};
  } catch (const CMemoryException&) {
    return {where, kMemoryIsShort, StatusText(E_OUTOFMEMORY)};
  } catch (const std::bad_alloc&) {
    return {where, kMemoryIsShort, StatusText(E_OUTOFMEMORY)};
  } catch (const CInvalidArgException& fault) {
    return {where, fault.what(), StatusText(E_INVALIDARG)};
  } catch (const CNotSupportedException& fault) {
    return {where, fault.what(), StatusText(E_NOTIMPL)};
  } catch (const std::exception& fault) {
    return {where, fault.what(), StatusText(E_UNEXPECTED)};
  }
}

}  // namespace ondrel::command
