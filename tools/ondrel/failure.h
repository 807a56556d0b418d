// Errors for people: one line that says where, what is wrong, what to do, and the status.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>

#include <ondrel/platform/framework.h>

namespace ondrel::command {

/// What the command answers its caller with.
enum ExitCode : int { kDone = 0, kFailed = 1, kWrongUsage = 2 };

/// A file as the user named it, and a line in it (from 1; 0 when there is none).
struct Location {
  std::string file;
  int line = 0;
};

/// The end of a command. what() is the line for people, without the program's name.
class Failure : public std::runtime_error {
 public:
  /// `explanation` reads "what is wrong; what to do"; `status` is a text of StatusText or CauseText.
  Failure(const Location& where, const std::string& explanation, const std::string& status);

  int Line() const { return m_line; }
  const std::string& Explanation() const { return m_explanation; }

  /// What the command answers: kFailed unless it is another.
  int Exit() const { return m_exit; }
  Failure With(int exit) && {
    m_exit = exit;
    return std::move(*this);
  }

 private:
  int m_line;
  std::string m_explanation;
  int m_exit = kFailed;
};

/// Data that is missing or malformed.
inline constexpr HRESULT kInvalidData = HRESULT_FROM_WIN32(ERROR_INVALID_DATA);

std::string StatusText(HRESULT status);  ///< "0x8007000D"
std::string CauseText(int cause);        ///< "archive cause 7"

/// The status of a failing file operation.
HRESULT StatusOf(const CFileException& fault);

/// The failure of the exception that is being handled, whatever it is; `where` is what the command was working on.
Failure CurrentFailure(const Location& where);

/// What is wrong with a file that could not be opened or read, and what to do: "there is no such file; check its name".
std::string ExplainFileFault(const CString& path, HRESULT status);

/// The same of a file that gave no icon, with a status of CMMCObjectIcon::Construct or platform::ScanIcon.
std::string ExplainIconFault(const CString& path, HRESULT status);

}  // namespace ondrel::command
