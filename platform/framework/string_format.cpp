// CString::Format: text from a format and its arguments.
//
// The C library's own formatting is no use here: its wide text is not UTF-16 everywhere, and it takes what it does not
// know without a word.
#include <ondrel/platform/framework/string.h>

#include <cstdarg>
#include <limits>

#include <ondrel/platform/framework/exceptions.h>

namespace {

using Text = std::basic_string<WCHAR>;
using TextView = std::basic_string_view<WCHAR>;

struct Arguments {
  ~Arguments() { va_end(list); }
  va_list list;
};

struct Conversion {
  bool left = false;
  bool plus = false;
  bool blank = false;
  bool alternate = false;
  bool zeros = false;
  bool is64 = false;
  std::size_t width = 0;
  bool hasPrecision = false;
  std::size_t precision = 0;
};

constexpr std::size_t kMaxCount = static_cast<std::size_t>(std::numeric_limits<int>::max());

class Formatter {
 public:
  Formatter(LPCWSTR format, Arguments& arguments) : m_format(format), m_arguments(arguments) {}

  Text Run() {
    while (*m_format != 0) {
      if (*m_format != '%' || *++m_format == '%') {
        m_text += *m_format++;
      } else {
        Convert();
      }
    }
    return std::move(m_text);
  }

 private:
  void Convert() {
    Conversion conversion;
    ReadFlags(conversion);
    ReadWidth(conversion);
    ReadPrecision(conversion);
    ReadSize(conversion);
    switch (*m_format++) {
      case 'd':
      case 'i':
        AppendSigned(conversion);
        break;
      case 'u':
        AppendUnsigned(conversion, 10, TextView());
        break;
      case 'x':
        AppendUnsigned(conversion, 16, _T("0x"));
        break;
      case 'X':
        AppendUnsigned(conversion, 16, _T("0X"));
        break;
      case 'c':
        AppendUnit(conversion);
        break;
      case 's':
        AppendText(conversion);
        break;
      default:  // the end of the format, too
        AfxThrowInvalidArgException();
    }
  }

  void ReadFlags(Conversion& conversion) {
    for (;; ++m_format) {
      switch (*m_format) {
        case '-':
          conversion.left = true;
          break;
        case '+':
          conversion.plus = true;
          break;
        case ' ':
          conversion.blank = true;
          break;
        case '#':
          conversion.alternate = true;
          break;
        case '0':
          conversion.zeros = true;
          break;
        default:
          return;
      }
    }
  }

  std::size_t ReadNumber() {
    std::size_t number = 0;
    for (; *m_format >= '0' && *m_format <= '9'; ++m_format) {
      number = number * 10 + static_cast<std::size_t>(*m_format - '0');
      if (number > kMaxCount) AfxThrowInvalidArgException();
    }
    return number;
  }

  void ReadWidth(Conversion& conversion) {
    if (*m_format != '*') {
      conversion.width = ReadNumber();
      return;
    }
    ++m_format;
    const long long width = va_arg(m_arguments.list, int);
    if (width < 0) conversion.left = true;
    conversion.width = static_cast<std::size_t>(width < 0 ? -width : width);
  }

  void ReadPrecision(Conversion& conversion) {
    if (*m_format != '.') return;
    ++m_format;
    conversion.hasPrecision = true;
    if (*m_format != '*') {
      conversion.precision = ReadNumber();
      return;
    }
    ++m_format;
    const int precision = va_arg(m_arguments.list, int);
    conversion.hasPrecision = precision >= 0;  // a negative one counts as none
    conversion.precision = precision >= 0 ? static_cast<std::size_t>(precision) : 0;
  }

  bool Take(TextView expected) {
    for (std::size_t index = 0; index < expected.size(); ++index) {
      if (m_format[index] != expected[index]) return false;
    }
    m_format += expected.size();
    return true;
  }

  void ReadSize(Conversion& conversion) {
    conversion.is64 = Take(_T("I64")) || Take(_T("ll"));
    // A single l changes nothing: 32 bits are what a number has without it, and text is wide anyway.
    if (!conversion.is64) Take(_T("l"));
  }

  void AppendSigned(const Conversion& conversion) {
    if (conversion.alternate) AfxThrowInvalidArgException();
    const LONGLONG value =
        conversion.is64 ? va_arg(m_arguments.list, LONGLONG) : static_cast<LONGLONG>(va_arg(m_arguments.list, LONG));
    const auto magnitude = value < 0 ? 0 - static_cast<ULONGLONG>(value) : static_cast<ULONGLONG>(value);
    TextView sign;
    if (value < 0) {
      sign = _T("-");
    } else if (conversion.plus) {
      sign = _T("+");
    } else if (conversion.blank) {
      sign = _T(" ");
    }
    AppendNumber(conversion, sign, magnitude, 10, _T("0123456789"));
  }

  void AppendUnsigned(const Conversion& conversion, unsigned base, TextView prefix) {
    if (conversion.alternate && prefix.empty()) AfxThrowInvalidArgException();
    const ULONGLONG value =
        conversion.is64 ? va_arg(m_arguments.list, ULONGLONG) : static_cast<ULONGLONG>(va_arg(m_arguments.list, UINT));
    const bool capital = !prefix.empty() && prefix[1] == 'X';
    AppendNumber(conversion, conversion.alternate && value != 0 ? prefix : TextView(), value, base,
                 capital ? _T("0123456789ABCDEF") : _T("0123456789abcdef"));
  }

  void AppendNumber(const Conversion& conversion, TextView prefix, ULONGLONG value, unsigned base, LPCWSTR digits) {
    WCHAR reversed[std::numeric_limits<ULONGLONG>::digits10 + 1];
    std::size_t count = 0;
    for (; value != 0; value /= base) reversed[count++] = digits[value % base];
    std::size_t least = conversion.hasPrecision ? conversion.precision : 1;
    if (conversion.zeros && !conversion.left && !conversion.hasPrecision && conversion.width > prefix.size() + least) {
      least = conversion.width - prefix.size();
    }
    const std::size_t zeros = least > count ? least - count : 0;
    Pad(conversion, prefix.size() + zeros + count, [&] {
      m_text.append(prefix);
      m_text.append(zeros, '0');
      while (count > 0) m_text += reversed[--count];
    });
  }

  // The flags but "-" speak of numbers.
  static void RequireTextConversion(const Conversion& conversion) {
    if (conversion.plus || conversion.blank || conversion.alternate || conversion.zeros || conversion.is64) {
      AfxThrowInvalidArgException();
    }
  }

  void AppendUnit(const Conversion& conversion) {
    RequireTextConversion(conversion);
    const auto unit = static_cast<WCHAR>(va_arg(m_arguments.list, int));
    Pad(conversion, 1, [&] { m_text += unit; });
  }

  void AppendText(const Conversion& conversion) {
    RequireTextConversion(conversion);
    LPCWSTR text = va_arg(m_arguments.list, LPCWSTR);
    if (text == nullptr) text = _T("(null)");
    // With a precision the text need not end in a zero unit.
    std::size_t length = 0;
    while ((!conversion.hasPrecision || length < conversion.precision) && text[length] != 0) ++length;
    Pad(conversion, length, [&] { m_text.append(text, length); });
  }

  template <class Append>
  void Pad(const Conversion& conversion, std::size_t length, Append append) {
    const std::size_t padding = conversion.width > length ? conversion.width - length : 0;
    if (m_text.size() + length + padding > kMaxCount) AfxThrowInvalidArgException();
    if (!conversion.left) m_text.append(padding, ' ');
    append();
    if (conversion.left) m_text.append(padding, ' ');
  }

  LPCWSTR m_format;
  Arguments& m_arguments;
  Text m_text;
};

}  // namespace

void CString::Format(LPCWSTR format, ...) {  // NOLINT(cert-dcl50-cpp): as the framework declares it
  if (format == nullptr) AfxThrowInvalidArgException();
  Arguments arguments;
  va_start(arguments.list, format);
  *this = CString(Formatter(format, arguments).Run());
}
