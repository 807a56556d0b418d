// Node types and their names.

#include <gtest/gtest.h>

#include <utility>

#include "support/model/sets.h"

namespace ondrel::test {
namespace {

CString TypeName(int type) {
  return CMMCObjectParams::GetNodeTypeName(static_cast<CMMCObjectParams::_eTypeNode>(type));
}
int TypeOf(LPCWSTR name) { return CMMCObjectParams::GetNodeType(CString(name)); }

TEST(NodeType, HasItsName) {
  EXPECT_EQ(TypeName(0), CString(_T("List")));
  EXPECT_EQ(TypeName(1), CString(_T("HTML")));
  EXPECT_EQ(TypeName(2), CString(_T("Dialog")));
}

TEST(NodeType, IsOopsForEveryOtherValue) {
  for (const int type : {3, 4, -1, -2147483647 - 1, 2147483647}) {
    EXPECT_EQ(TypeName(type), CString(_T("Oops!!"))) << "type " << type;
  }
}

TEST(NodeType, IsFoundByNameWithoutRegardToCase) {
  const std::pair<LPCWSTR, int> names[] = {
      {_T("List"), 0}, {_T("list"), 0},   {_T("LIST"), 0},   {_T("lIsT"), 0},   {_T("HTML"), 1},
      {_T("html"), 1}, {_T("Dialog"), 2}, {_T("DIALOG"), 2}, {_T("dialog"), 2},
  };
  for (const auto& [name, type] : names) EXPECT_EQ(TypeOf(name), type) << Describe(CString(name));
}

TEST(NodeType, IsUnknownForAnyOtherName) {
  for (const LPCWSTR name : {_T(""), _T("Oops!!"), _T("Tree"), _T("Lis"), _T("Lists"), _T(" List"), _T("List "),
                             _T("HTM"), _T("Dialogs"), _T("0")}) {
    EXPECT_EQ(TypeOf(name), 3) << Describe(CString(name));
  }
  EXPECT_EQ(CMMCObjectParams::GetNodeType(CString(_T("List\0"), 5)), 3) << "a zero unit counts";
}

}  // namespace
}  // namespace ondrel::test
