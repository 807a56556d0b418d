// The one way from the narrow code page to wide text.
#include "narrow_text.h"

#include <limits>

#include <ondrel/platform/com.h>

namespace ondrel::platform {

std::basic_string<WCHAR> TextFromNarrow(std::string_view bytes) {
  std::basic_string<WCHAR> text;
  if (bytes.empty()) return text;
  if (bytes.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) AfxThrowInvalidArgException();
  const int count = static_cast<int>(bytes.size());
  const int length = MultiByteToWideChar(CP_ACP, 0, bytes.data(), count, nullptr, 0);
  if (length <= 0) AfxThrowOleException(HRESULT_FROM_WIN32(GetLastError()));
  text.resize(static_cast<std::size_t>(length));
  if (MultiByteToWideChar(CP_ACP, 0, bytes.data(), count, text.data(), length) != length) {
    AfxThrowOleException(HRESULT_FROM_WIN32(GetLastError()));
  }
  return text;
}

}  // namespace ondrel::platform
