// Values of a project file as the peers that read and write XML need them: text as UTF-8, cookies as digits.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include <ondrel/platform/types.h>

namespace ondrel::bench {

std::u16string Utf16(std::string_view utf8);
std::string Utf8(std::u16string_view text);

/// The number that all of the text is. Raises std::runtime_error for any other text.
__int64 NumberOf(std::string_view text);

/// The numbers of the node types' names. Raises std::runtime_error for any other name.
std::int32_t TypeOf(std::string_view name);
const char* NameOfType(std::int32_t type);

}  // namespace ondrel::bench
