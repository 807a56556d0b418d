// Numbers as people write them: what the conversion of text to a number takes, by the rules of the documented number
// parser of Windows with all its standard flags, for English (United States).
#pragma once

#include <string_view>

#include <ondrel/platform/os/types.h>

namespace ondrel::platform {

/// A text that is a number, not yet brought to a type.
struct NumberText {
  std::basic_string_view<WCHAR> digits;  ///< With what stands between them: separators, a point. From the first one on.
  LONGLONG wholeDigits = 0;  ///< How many of the digits, less than 0 to more than all, are before the point.
  unsigned base = 10;        ///< 10, or 16 or 8 behind "&H" or "&O".
  bool negative = false;
};

/// Takes a text apart: blanks, a sign before or behind, "$", parentheses for a negative number, thousands separators
/// anywhere among the digits, a point, an exponent; or "&H" and "&O" with digits of base 16 and 8. DISP_E_TYPEMISMATCH
/// for any other text.
HRESULT ParseNumber(std::basic_string_view<WCHAR> text, NumberText& number);

/// The number, rounded to an integer, halves to the even one. DISP_E_OVERFLOW beyond `lowest` and `highest`; a number
/// of base 16 or 8 may also be the bits of a negative one where these are 32-bit limits.
HRESULT RoundToInteger(const NumberText& number, LONGLONG lowest, LONGLONG highest, LONGLONG& value);

/// Whether the number is another than 0. DISP_E_OVERFLOW beyond the largest floating-point number.
HRESULT TruthOf(const NumberText& number, bool& isTrue);

}  // namespace ondrel::platform
