// Cookies from arguments and into messages.
#include "edit/cookie_text.h"

#include <algorithm>
#include <charconv>
#include <cstddef>

namespace ondrel::command {

bool LooksLikeCookie(const std::string& text) {
  const std::size_t start = text.starts_with('-') ? 1 : 0;
  return text.size() > start && text.find_first_not_of("0123456789", start) == std::string::npos;
}

std::optional<__int64> ReadCookieText(const std::string& text) {
  __int64 cookie = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, cookie);
  if (error != std::errc() || stop != end) return std::nullopt;
  return cookie;
}

std::string CookieList(const std::vector<__int64>& cookies) {
  constexpr std::size_t kMostShown = 5;
  const std::size_t shown = cookies.size() > kMostShown + 1 ? kMostShown : cookies.size();
  std::string text;
  for (std::size_t index = 0; index < shown; ++index) {
    const bool isLast = index + 1 == cookies.size();
    if (index > 0) text += isLast ? " and " : ", ";
    text += std::to_string(cookies[index]);
  }
  if (shown < cookies.size()) text += " and " + std::to_string(cookies.size() - shown) + " others";
  return text;
}

}  // namespace ondrel::command
