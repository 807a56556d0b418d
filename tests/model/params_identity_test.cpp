// The identity text of a record: the low 32 bits of the cookie, at least four digits.

#include <gtest/gtest.h>

#include "support/model/sets.h"

namespace ondrel::test {
namespace {

struct Identity {
  __int64 cookie;
  LPCWSTR text;
};

TEST(ParamsIdentity, IsTheLowHalfOfTheCookieInAtLeastFourDigits) {
  const Identity identities[] = {
      {0, _T("0000")},
      {7, _T("0007")},
      {999, _T("0999")},
      {1000, _T("1000")},
      {12345, _T("12345")},
      {0x7FFFFFFF, _T("2147483647")},
      {-1, _T("-0001")},
      {-12345, _T("-12345")},
      {0xFFFFFFFF, _T("-0001")},  // all ones in the low half
      {0x80000000, _T("-2147483648")},
      {0x100000000, _T("0000")},
      {0x100000001, _T("0001")},
      {0x7FFFFFFF0000000C, _T("0012")},
      {-0x100000000 + 5, _T("0005")},
  };
  for (const auto& [cookie, text] : identities) {
    EXPECT_EQ(CMMCObjectParams(cookie, _T("any"), CMMCObjectParams::eHTML).GetIdentity(), CString(text))
        << "cookie " << cookie;
  }
}

}  // namespace
}  // namespace ondrel::test
