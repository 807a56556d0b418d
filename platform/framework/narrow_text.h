// Text of the narrow code page as wide text.
#pragma once

#include <string>
#include <string_view>

#include <ondrel/platform/types.h>

namespace ondrel::platform {

/// Raises CInvalidArgException for more than INT_MAX bytes, COleException when the conversion is refused.
std::basic_string<WCHAR> TextFromNarrow(std::string_view bytes);

}  // namespace ondrel::platform
