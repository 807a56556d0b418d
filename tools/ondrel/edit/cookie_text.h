// Cookies as people write them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <ondrel/platform/types.h>

namespace ondrel::command {

/// Whether a text is meant for a cookie: decimal digits, with or without "-".
bool LooksLikeCookie(const std::string& text);
/// The cookie that such a text is; none beyond 64 bits.
std::optional<__int64> ReadCookieText(const std::string& text);

/// "4 and 9"; of many the first few and how many there are: "4, 9, 10 and 97 others".
std::string CookieList(const std::vector<__int64>& cookies);

}  // namespace ondrel::command
