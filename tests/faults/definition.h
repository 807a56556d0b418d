// A small definition with an object of every kind, for sweeps of faults through everything that is done with it.
#pragma once

#include <memory>

#include <ondrel/MMCObjectSet.h>

#include "support/temporary_folder.h"

namespace ondrel::test {

/// Four nodes on three levels and of every type, two dialogs, three icon files (PNG, 32 bits and 1 bit), two code files
/// on disk and two in memory; names and tags so short that they need no memory of their own, and long ones. Every
/// record has scripts.
class Definition {
 public:
  Definition();

  /// A set that holds it, with its modified flag set.
  std::unique_ptr<CMMCObjectSet> Make() const;

  /// The file name that an archive of its project is to have.
  const CString& ProjectName() const { return m_projectName; }
  const TemporaryFolder& Folder() const { return m_folder; }

 private:
  /// A path as a project on Windows has it, so that it stands relative in the project file.
  CString In(LPCWSTR name) const { return Wide(m_folder.Path()) + _T("\\") + name; }

  TemporaryFolder m_folder;
  CString m_projectName;
};

// Cookies that it uses.
inline constexpr __int64 kTopNode = 12;
inline constexpr __int64 kFirstChild = 13;
inline constexpr __int64 kSecondChild = 14;
inline constexpr __int64 kGrandchild = 15;
inline constexpr __int64 kFirstDialog = 20;

}  // namespace ondrel::test
