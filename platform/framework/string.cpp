// CString: a string of UTF-16 code units.
#include <ondrel/platform/framework/string.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>

#include <ondrel/platform/com.h>

#include "narrow_text.h"

namespace {

constexpr std::size_t kMaxLength = static_cast<std::size_t>(std::numeric_limits<int>::max());

void RequireLength(std::size_t length) {
  if (length > kMaxLength) AfxThrowInvalidArgException();
}

std::size_t CountOf(int count) {
  if (count < 0) AfxThrowInvalidArgException();
  return static_cast<std::size_t>(count);
}

std::basic_string_view<WCHAR> ViewOf(LPCWSTR text) {
  if (text == nullptr) return {};
  const std::basic_string_view<WCHAR> view(text);
  RequireLength(view.size());
  return view;
}

std::basic_string_view<WCHAR> ViewOf(LPCWSTR text, int length) {
  const std::size_t count = CountOf(length);
  if (text == nullptr && count > 0) AfxThrowInvalidArgException();
  return {text, count};
}

constexpr WCHAR FoldCase(WCHAR unit) {
  return unit >= 'A' && unit <= 'Z' ? static_cast<WCHAR>(unit + ('a' - 'A')) : unit;
}

/// How many units both begin with, counted four at a time: fewer than four of them may be left out.
std::size_t CommonStart(std::basic_string_view<WCHAR> left, std::basic_string_view<WCHAR> right) {
  constexpr std::size_t kEach = sizeof(std::uint64_t) / sizeof(WCHAR);
  const std::size_t common = std::min(left.size(), right.size());
  std::size_t start = 0;
  for (; common - start >= kEach; start += kEach) {
    if (std::memcmp(left.data() + start, right.data() + start, sizeof(std::uint64_t)) != 0) break;
  }
  return start;
}

int PositionOf(std::size_t found) {
  return found == std::basic_string_view<WCHAR>::npos ? -1 : static_cast<int>(found);
}

}  // namespace

CString::CString(LPCWSTR text) : m_text(ViewOf(text)) {}

CString::CString(LPCWSTR text, int length) : m_text(ViewOf(text, length)) {}

CString::CString(WCHAR unit, int repeat) : m_text(CountOf(repeat), unit) {}

CString::CString(const char* text)
    : m_text(text == nullptr ? std::basic_string<WCHAR>() : ondrel::platform::TextFromNarrow(text)) {
  RequireLength(m_text.size());
}

CString::CString(std::basic_string<WCHAR> text) : m_text(std::move(text)) { RequireLength(m_text.size()); }

CString& CString::operator+=(const CString& other) {
  RequireLength(m_text.size() + other.m_text.size());
  m_text += other.m_text;
  return *this;
}

CString& CString::operator+=(LPCWSTR text) {
  const std::basic_string_view<WCHAR> added = ViewOf(text);
  RequireLength(m_text.size() + added.size());
  m_text.append(added);
  return *this;
}

CString& CString::operator+=(WCHAR unit) {
  RequireLength(m_text.size() + 1);
  m_text += unit;
  return *this;
}

int CString::Compare(const CString& other) const noexcept {
  // Paths, which maps order by thousands, begin alike, and the library's own comparison takes them unit by unit.
  const std::size_t start = CommonStart(m_text, other.m_text);
  return View().substr(start).compare(other.View().substr(start));
}

int CString::CompareNoCase(const CString& other) const noexcept {
  return ondrel::platform::CompareNoCase(m_text, other.m_text);
}

int CString::Find(const CString& text, int start) const noexcept {
  if (start < 0) return -1;
  return PositionOf(m_text.find(text.m_text, static_cast<std::size_t>(start)));
}

int CString::Find(WCHAR unit, int start) const noexcept {
  if (start < 0) return -1;
  return PositionOf(m_text.find(unit, static_cast<std::size_t>(start)));
}

int CString::ReverseFind(WCHAR unit) const noexcept { return PositionOf(m_text.rfind(unit)); }

CString CString::Left(int count) const { return Mid(0, count); }

CString CString::Right(int count) const {
  const int length = GetLength();
  const int kept = std::clamp(count, 0, length);
  return Mid(length - kept, kept);
}

CString CString::Mid(int first) const { return Mid(first, GetLength()); }

CString CString::Mid(int first, int count) const {
  const int length = GetLength();
  const int from = std::clamp(first, 0, length);
  const int kept = std::clamp(count, 0, length - from);
  return CString(m_text.data() + from, kept);
}

int CString::Replace(WCHAR from, WCHAR to) noexcept {
  int replaced = 0;
  for (WCHAR& unit : m_text) {
    if (unit != from) continue;
    unit = to;
    ++replaced;
  }
  return replaced;
}

CString operator+(const CString& left, const CString& right) {
  const auto leftLength = static_cast<std::size_t>(left.GetLength());
  const auto rightLength = static_cast<std::size_t>(right.GetLength());
  RequireLength(leftLength + rightLength);
  std::basic_string<WCHAR> joined;
  joined.reserve(leftLength + rightLength);
  joined.append(left.View()).append(right.View());
  return CString(std::move(joined));
}

namespace ondrel::platform {

int CompareNoCase(std::basic_string_view<WCHAR> left, std::basic_string_view<WCHAR> right) noexcept {
  const std::size_t common = std::min(left.size(), right.size());
  for (std::size_t index = 0; index < common; ++index) {
    const WCHAR leftUnit = FoldCase(left[index]);
    const WCHAR rightUnit = FoldCase(right[index]);
    if (leftUnit != rightUnit) return leftUnit < rightUnit ? -1 : 1;
  }
  if (left.size() == right.size()) return 0;
  return left.size() < right.size() ? -1 : 1;
}

std::string ToUtf8(const CString& text) {
  // In pieces, because the bytes of a whole text could be more than the conversion can count.
  constexpr std::size_t kPiece = 1 << 20;
  std::string bytes;
  std::basic_string_view<WCHAR> rest = text.View();
  while (!rest.empty()) {
    std::size_t length = std::min(rest.size(), kPiece);
    const bool endsInsidePair = length < rest.size() && (rest[length - 1] & 0xFC00) == 0xD800;
    if (endsInsidePair) --length;
    const int units = static_cast<int>(length);
    const int count = WideCharToMultiByte(CP_UTF8, 0, rest.data(), units, nullptr, 0, nullptr, nullptr);
    const std::size_t start = bytes.size();
    bytes.resize(start + static_cast<std::size_t>(count));
    WideCharToMultiByte(CP_UTF8, 0, rest.data(), units, bytes.data() + start, count, nullptr, nullptr);
    rest.remove_prefix(length);
  }
  return bytes;
}

}  // namespace ondrel::platform
