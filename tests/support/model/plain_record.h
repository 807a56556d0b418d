// A record as plain data, for a model of the set that shares nothing with it but numbers.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include <ondrel/platform/types.h>

namespace ondrel::test {

using PlainText = std::u16string;
using PlainQueries = std::vector<std::pair<PlainText, __int64>>;

/// Node types, as numbers.
inline constexpr int kPlainList = 0;
inline constexpr int kPlainHtml = 1;
inline constexpr int kPlainDialog = 2;
inline constexpr int kPlainUnknown = 3;

struct PlainRecord {
  __int64 cookie = 0;
  PlainText name{};
  __int64 icon = 0;
  int type = kPlainList;
  PlainQueries childQueries{};
  __int64 styleSheet = 0;
  __int64 menuScript = 0;
  std::vector<__int64> scripts{};
  PlainQueries renderQueries{};

  /// Whether the persistent forms keep the style sheet and the render queries.
  bool HasView() const { return type == kPlainHtml || type == kPlainDialog; }
};

/// The lines that are given for a set's own records and text (see sets.h).
std::string Describe(const PlainText& text);
std::string Describe(const PlainRecord& record);

}  // namespace ondrel::test
