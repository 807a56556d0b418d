// The first icon of a file, as the model asks for it.
#pragma once

#include <filesystem>
#include <string>

#include "graphics/icon_reading.h"

namespace ondrel::test {

struct FirstIcon {
  HRESULT status = S_OK;
  platform::UniqueIcon large = {};
  platform::UniqueIcon smallIcon = {};
};

inline FirstIcon FirstIconAt(const std::filesystem::path& path) {
  FirstIcon icon;
  icon.status = platform::ExtractFirstIcon(Wide(path), icon.large, icon.smallIcon);
  return icon;
}

/// Of a file with these bytes. Its name is none of an icon file: what it holds decides.
inline FirstIcon FirstIconOf(const std::string& bytes) {
  const TemporaryFolder folder;
  return FirstIconAt(folder.Write("test.bin", bytes));
}

/// Whether there are both icons, or neither and this reason.
inline testing::AssertionResult EndedWith(const FirstIcon& icon, DWORD code) {
  const bool hasBoth = icon.large != nullptr && icon.smallIcon != nullptr;
  const bool hasNone = icon.large == nullptr && icon.smallIcon == nullptr;
  if (icon.status == HRESULT_FROM_WIN32(code) && (code == ERROR_SUCCESS ? hasBoth : hasNone)) {
    return testing::AssertionSuccess();
  }
  return testing::AssertionFailure() << "status " << std::hex << icon.status << ", large " << icon.large.get()
                                     << ", small " << icon.smallIcon.get();
}

}  // namespace ondrel::test
