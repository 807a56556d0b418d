#include "support/model/plain_record.h"

namespace ondrel::test {
namespace {

template <class List, class Entry>
std::string Listed(const List& list, Entry entry) {
  std::string text = "[";
  for (const auto& value : list) {
    if (text.size() > 1) text += ", ";
    text += entry(value);
  }
  return text + "]";
}

std::string Listed(const PlainQueries& queries) {
  return Listed(queries, [](const auto& query) { return Describe(query.first) + ": " + std::to_string(query.second); });
}

}  // namespace

std::string Describe(const PlainText& text) {
  std::string shown = "\"";
  for (const char16_t unit : text) {
    if (unit >= 0x20 && unit < 0x7F) {
      shown += static_cast<char>(unit);
    } else {
      shown += "{" + std::to_string(static_cast<unsigned>(unit)) + "}";
    }
  }
  return shown + '"';
}

std::string Describe(const PlainRecord& record) {
  return "cookie " + std::to_string(record.cookie) + ", name " + Describe(record.name) + ", icon " +
         std::to_string(record.icon) + ", type " + std::to_string(record.type) + ", child queries " +
         Listed(record.childQueries) + ", style sheet " + std::to_string(record.styleSheet) + ", menu script " +
         std::to_string(record.menuScript) + ", scripts " +
         Listed(record.scripts, [](__int64 script) { return std::to_string(script); }) + ", render queries " +
         Listed(record.renderQueries);
}

}  // namespace ondrel::test
