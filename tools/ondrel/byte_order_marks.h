// The marks with which text says how it is written.
#pragma once

#include <string_view>

namespace ondrel::command {

inline constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
inline constexpr std::string_view kUtf16Mark = "\xFF\xFE";
inline constexpr std::string_view kUtf16BigEndianMark = "\xFE\xFF";

}  // namespace ondrel::command
