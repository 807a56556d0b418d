// Numbers as people write them.
#include "com/number_text.h"

#include <algorithm>
#include <limits>

#include <ondrel/platform/os/com.h>

namespace ondrel::platform {
namespace {

constexpr WCHAR kThousands = ',';
constexpr WCHAR kPoint = '.';
constexpr WCHAR kCurrency = '$';

// Far beyond what any type holds, far below where sums of it would overflow.
constexpr LONGLONG kLargestExponent = 1'000'000'000;

bool IsBlank(WCHAR unit) {
  return unit == ' ' || (unit >= 0x09 && unit <= 0x0D) || unit == 0x85 || unit == 0xA0 || unit == 0x1680 ||
         (unit >= 0x2000 && unit <= 0x200A) || unit == 0x2028 || unit == 0x2029 || unit == 0x202F || unit == 0x205F ||
         unit == 0x3000;
}

// The value of a digit, or `base` and more for what is none.
unsigned DigitValue(WCHAR unit, unsigned base) {
  if (unit >= '0' && unit <= '9') return static_cast<unsigned>(unit - '0');
  const unsigned letter = unit | 0x20U;
  return base == 16 && letter >= 'a' && letter <= 'f' ? letter - 'a' + 10 : base;
}

bool IsDigit(WCHAR unit, unsigned base) { return DigitValue(unit, base) < base; }

/// Walks through a text once, from the left.
class NumberParser {
 public:
  NumberParser(std::basic_string_view<WCHAR> text, NumberText& number) : m_rest(text), m_number(number) {}

  bool Parse() {
    TakeLeading();
    TakeBase();
    if (!TakeDigits()) return false;
    TakeTrailing();
    // A minus sign makes up for a parenthesis that is not closed.
    const bool unclosed = m_parenthesis && !m_number.negative;
    return m_rest.empty() && !unclosed;
  }

 private:
  bool Take(WCHAR unit) {
    if (m_rest.empty() || m_rest.front() != unit) return false;
    m_rest.remove_prefix(1);
    return true;
  }
  bool TakeBlank() {
    if (m_rest.empty() || !IsBlank(m_rest.front())) return false;
    m_rest.remove_prefix(1);
    return true;
  }
  // Takes a mark that may stand once.
  bool TakeOnce(WCHAR unit, bool& taken) {
    if (taken || !Take(unit)) return false;
    taken = true;
    return true;
  }

  void TakeLeading() {
    for (;;) {
      if (TakeOnce('-', m_leadingMinus)) {
        m_number.negative = true;
      } else if (!TakeBlank() && !TakeOnce('+', m_leadingPlus) && !TakeOnce(kCurrency, m_currency) &&
                 !TakeOnce('(', m_parenthesis)) {
        return;
      }
    }
  }

  void TakeBase() {
    if (m_currency || m_rest.size() < 2 || m_rest[0] != '&') return;
    const unsigned letter = m_rest[1] | 0x20U;
    if (letter != 'h' && letter != 'o') return;
    m_number.base = letter == 'h' ? 16 : 8;
    m_rest.remove_prefix(2);
  }

  bool TakeDigits() {
    const unsigned base = m_number.base;
    const std::basic_string_view<WCHAR> start = m_rest;
    bool point = false;
    bool digitSeen = false;
    while (!m_rest.empty()) {
      const WCHAR unit = m_rest.front();
      if (IsDigit(unit, base)) {
        digitSeen = true;
        if (!point) ++m_number.wholeDigits;
      } else if (unit == kPoint && !point && base == 10) {
        point = true;
      } else if (unit != kThousands || base != 10 || !(digitSeen || point)) {
        break;
      }
      m_rest.remove_prefix(1);
    }
    m_number.digits = start.substr(0, start.size() - m_rest.size());
    return digitSeen && TakeExponent();
  }

  bool TakeExponent() {
    if (m_number.base != 10 || m_currency || m_rest.empty() || (m_rest.front() | 0x20) != 'e') return true;
    m_rest.remove_prefix(1);
    const bool negative = Take('-');
    if (!negative) Take('+');
    if (m_rest.empty() || !IsDigit(m_rest.front(), 10)) return false;
    LONGLONG exponent = 0;
    while (!m_rest.empty() && IsDigit(m_rest.front(), 10)) {
      exponent = std::min(exponent * 10 + DigitValue(m_rest.front(), 10), kLargestExponent);
      m_rest.remove_prefix(1);
    }
    m_number.wholeDigits += negative ? -exponent : exponent;
    return true;
  }

  void TakeTrailing() {
    const bool decimal = m_number.base == 10;
    for (;;) {
      const bool negative = (!m_leadingMinus && Take('-')) || (m_parenthesis && Take(')'));
      if (negative) {
        m_number.negative = true;
      } else if (!TakeBlank() && (m_leadingPlus || !Take('+')) && !(decimal && (Take(kThousands) || Take(kCurrency)))) {
        return;
      }
    }
  }

  std::basic_string_view<WCHAR> m_rest;
  NumberText& m_number;
  bool m_leadingPlus = false;
  bool m_leadingMinus = false;
  bool m_currency = false;
  bool m_parenthesis = false;
};

/// A number without its sign: the whole part, and how what is behind the point compares with a half.
struct Magnitude {
  ULONGLONG whole = 0;
  unsigned firstBehind = 0;  ///< The first digit behind the point.
  bool moreBehind = false;   ///< Whether any other digit there is not 0.
};

bool Shift(ULONGLONG& whole, unsigned base, unsigned digit) {
  if (whole > (std::numeric_limits<ULONGLONG>::max() - digit) / base) return false;
  whole = whole * base + digit;
  return true;
}

bool Measure(const NumberText& number, Magnitude& magnitude) {
  LONGLONG index = 0;
  for (const WCHAR unit : number.digits) {
    if (!IsDigit(unit, number.base)) continue;
    const unsigned digit = DigitValue(unit, number.base);
    if (index < number.wholeDigits) {
      if (!Shift(magnitude.whole, number.base, digit)) return false;
    } else if (index == number.wholeDigits) {
      magnitude.firstBehind = digit;
    } else if (digit != 0) {
      magnitude.moreBehind = true;
    }
    ++index;
  }
  for (; magnitude.whole != 0 && index < number.wholeDigits; ++index) {
    if (!Shift(magnitude.whole, number.base, 0)) return false;
  }
  return true;
}

}  // namespace

HRESULT ParseNumber(std::basic_string_view<WCHAR> text, NumberText& number) {
  return NumberParser(text, number).Parse() ? S_OK : DISP_E_TYPEMISMATCH;
}

HRESULT RoundToInteger(const NumberText& number, LONGLONG lowest, LONGLONG highest, LONGLONG& value) {
  Magnitude magnitude;
  if (!Measure(number, magnitude)) return DISP_E_OVERFLOW;
  const auto limit = static_cast<ULONGLONG>(highest);
  if (number.base != 10) {
    // Bits have no sign of their own; 32 of them are taken as they stand.
    const bool are32Bits = highest == std::numeric_limits<LONG>::max();
    if (magnitude.whole > (are32Bits ? std::numeric_limits<DWORD>::max() : limit)) return DISP_E_OVERFLOW;
    value = are32Bits ? static_cast<LONG>(magnitude.whole) : static_cast<LONGLONG>(magnitude.whole);
    return S_OK;
  }
  constexpr unsigned kHalf = 5;
  const bool isHalf = magnitude.firstBehind == kHalf && !magnitude.moreBehind;
  const bool roundsUp = isHalf ? magnitude.whole % 2 != 0 : magnitude.firstBehind >= kHalf;
  if (roundsUp && !Shift(magnitude.whole, 1, 1)) return DISP_E_OVERFLOW;
  if (magnitude.whole > (number.negative ? 0 - static_cast<ULONGLONG>(lowest) : limit)) return DISP_E_OVERFLOW;
  value = static_cast<LONGLONG>(number.negative ? 0 - magnitude.whole : magnitude.whole);
  return S_OK;
}

HRESULT TruthOf(const NumberText& number, bool& isTrue) {
  // As a floating-point number, whose range is wider: below 10 to the power of this.
  constexpr LONGLONG kMostWholeDigits = 309;
  LONGLONG leadingZeros = 0;
  isTrue = false;
  for (const WCHAR unit : number.digits) {
    if (!IsDigit(unit, number.base)) continue;
    isTrue = unit != '0';
    if (isTrue) break;
    ++leadingZeros;
  }
  return isTrue && number.wholeDigits - leadingZeros > kMostWholeDigits ? DISP_E_OVERFLOW : S_OK;
}

}  // namespace ondrel::platform
