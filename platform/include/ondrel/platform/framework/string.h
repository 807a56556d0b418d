// Wide strings of the framework: CString, and a key type that orders strings without regard to case.
#pragma once

#include <string>
#include <string_view>

#include <ondrel/platform/export.h>
#include <ondrel/platform/types.h>

/// A string of UTF-16 code units. It counts, compares and stores units, not characters: a lone surrogate or a zero unit
/// is a unit like any other. Lengths and positions are in units. Copies are independent. A failing allocation raises
/// std::bad_alloc, a length beyond INT_MAX units CInvalidArgException.
class FRAMEWORK_API CString {
 public:
  CString() noexcept = default;
  CString(LPCWSTR text);  ///< A copy of zero-terminated text; null gives the empty string.
  CString(LPCWSTR text, int length);
  CString(WCHAR unit, int repeat);
  /// Zero-terminated narrow text, converted from the narrow code page (see MultiByteToWideChar in com.h).
  explicit CString(const char* text);
  explicit CString(std::basic_string<WCHAR> text);

  int GetLength() const noexcept { return static_cast<int>(m_text.size()); }
  bool IsEmpty() const noexcept { return m_text.empty(); }
  void Empty() noexcept { m_text.clear(); }

  /// The units, with a zero unit behind the last. Valid until the string changes.
  LPCWSTR GetString() const noexcept { return m_text.c_str(); }
  operator LPCWSTR() const noexcept { return m_text.c_str(); }
  std::basic_string_view<WCHAR> View() const noexcept { return m_text; }

  /// The unit at `index`, 0 to GetLength(); the last is the zero behind the text.
  WCHAR GetAt(int index) const { return m_text[static_cast<std::size_t>(index)]; }
  WCHAR operator[](int index) const { return GetAt(index); }

  CString& operator+=(const CString& other);
  CString& operator+=(LPCWSTR text);
  CString& operator+=(WCHAR unit);

  /// Ordinal comparison, unit by unit, all units counted (zero units too): negative, 0 or positive.
  int Compare(const CString& other) const noexcept;
  /// As Compare, with the letters A to Z and a to z taken as equal. No other letters are folded, whatever the locale.
  int CompareNoCase(const CString& other) const noexcept;

  /// The position of the first occurrence at or after `start`, or -1.
  int Find(const CString& text, int start = 0) const noexcept;
  int Find(WCHAR unit, int start = 0) const noexcept;
  /// The position of the last occurrence, or -1.
  int ReverseFind(WCHAR unit) const noexcept;

  /// Parts of the string. Arguments outside it are cut back to it.
  CString Left(int count) const;
  CString Right(int count) const;
  CString Mid(int first) const;
  CString Mid(int first, int count) const;

  /// Replaces every `from` by `to`; the number of units replaced.
  int Replace(WCHAR from, WCHAR to) noexcept;

  /// Replaces the text by the formatted arguments, as the C library's printf does, for the conversions d, i, u, x, X,
  /// c, s (zero-terminated wide text) and %, with flags, width and precision, and the sizes l (32 bits), ll and I64
  /// (64 bits). Anything else raises CInvalidArgException.
  void Format(LPCWSTR format, ...);

 private:
  std::basic_string<WCHAR> m_text;
};

FRAMEWORK_API CString operator+(const CString& left, const CString& right);
inline CString operator+(const CString& left, LPCWSTR right) { return left + CString(right); }
inline CString operator+(LPCWSTR left, const CString& right) { return CString(left) + right; }

inline bool operator==(const CString& left, const CString& right) noexcept { return left.Compare(right) == 0; }
inline bool operator==(const CString& left, LPCWSTR right) { return left == CString(right); }
inline bool operator!=(const CString& left, const CString& right) noexcept { return !(left == right); }
inline bool operator!=(const CString& left, LPCWSTR right) { return !(left == right); }
inline bool operator<(const CString& left, const CString& right) noexcept { return left.Compare(right) < 0; }
inline bool operator>(const CString& left, const CString& right) noexcept { return right < left; }
inline bool operator<=(const CString& left, const CString& right) noexcept { return !(right < left); }
inline bool operator>=(const CString& left, const CString& right) noexcept { return !(left < right); }

namespace ondrel::platform {

/// CString::CompareNoCase for text that is no CString. Allocates nothing.
FRAMEWORK_API int CompareNoCase(std::basic_string_view<WCHAR> left, std::basic_string_view<WCHAR> right) noexcept;

/// Wide text as UTF-8 for people; a lone surrogate becomes U+FFFD.
FRAMEWORK_API std::string ToUtf8(const CString& text);

}  // namespace ondrel::platform

/// A string that serves as a key ordered without regard to case (CompareNoCase of `StringType`).
template <class StringType>
class CCaselessSortStringT : public StringType {
 public:
  using StringType::StringType;
  CCaselessSortStringT() = default;
  CCaselessSortStringT(const StringType& text) : StringType(text) {}

  friend bool operator<(const CCaselessSortStringT& left, const CCaselessSortStringT& right) noexcept {
    return left.CompareNoCase(right) < 0;
  }
  friend bool operator==(const CCaselessSortStringT& left, const CCaselessSortStringT& right) noexcept {
    return left.CompareNoCase(right) == 0;
  }
};
