// Records and sets for tests: records made in one expression and compared field by field, sets told store by store.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include <ondrel/MMCObjectSet.h>

#include "support/print_text.h"

namespace ondrel::test {

/// The fields of a record, to be named in an expression: {.cookie = 12, .name = _T("Status")}.
struct RecordFields {
  __int64 cookie = 0;
  CString name{};
  __int64 icon = 0;
  CMMCObjectParams::_eTypeNode type = CMMCObjectParams::eList;
  CMMCObjectParams::QueryList childQueries{};
  __int64 styleSheet = 0;
  __int64 menuScript = 0;
  CMMCObjectParams::ScriptList scripts{};
  CMMCObjectParams::QueryList renderQueries{};

  bool operator==(const RecordFields&) const = default;
};

CMMCObjectParams MakeRecord(RecordFields fields);
RecordFields FieldsOf(const CMMCObjectParams& record);
/// A record of each type with every field filled, no two values alike.
RecordFields FullRecord(CMMCObjectParams::_eTypeNode type);

/// One line. Text is shown by units, so that lone surrogates and control characters are told apart too.
std::string Describe(const RecordFields& fields);
std::string Describe(const CString& text);

/// Success, or a message that shows both values of each field that differs.
::testing::AssertionResult SameRecord(const CMMCObjectParams& actual, const RecordFields& expected);
/// The same for the record that a set has under a cookie.
::testing::AssertionResult HasRecord(const CMMCObjectSet& set, __int64 cookie, const RecordFields& expected);

/// A copy of the record that a set has under a cookie. Raises std::out_of_range when there is none.
CMMCObjectParams RecordOf(const CMMCObjectSet& set, __int64 cookie);
/// The name in the record that a set has under a cookie. Raises as RecordOf.
CString NameOf(const CMMCObjectSet& set, __int64 cookie);
/// Adds a node with nothing but a name, which must succeed.
void AddNamed(CMMCObjectSet& set, __int64 parent, __int64 cookie, LPCWSTR name);

/// The four stores of nodes and dialogs, one line for each entry: nodes and dialogs with their keys, dialog names, and
/// where the object index says that each cookie lies. Two sets with the same text hold the same nodes and dialogs.
std::string DescribeObjects(const CMMCObjectSet& set);

}  // namespace ondrel::test
