// What a definition holds as JSON, value by value.
#pragma once

#include <optional>
#include <string>

#include <nlohmann/json.hpp>

#include <ondrel/MMCObjectParams.h>

namespace ondrel::command {

using Json = nlohmann::ordered_json;

/// A string of decimal digits, since a JSON number does not hold 64 bits everywhere.
Json CookieJson(__int64 cookie);
/// Null for none.
Json PathJson(const std::optional<CString>& path);
/// All values of a node or dialog.
Json RecordJson(const CMMCObjectParams& record);

/// The value as text in one line, with everything beyond ASCII escaped, so that no terminal and no code page on the way
/// can take harm from it. Bytes that are no UTF-8 become U+FFFD.
std::string JsonLine(const Json& value);

/// A member of an object whose value is an array, written element by element, one a line, behind other members.
class JsonArrayWriter {
 public:
  JsonArrayWriter(std::string& out, const char* name);
  ~JsonArrayWriter() { m_out += ']'; }
  JsonArrayWriter(const JsonArrayWriter&) = delete;
  JsonArrayWriter& operator=(const JsonArrayWriter&) = delete;

  void Add(const Json& value);

 private:
  std::string& m_out;
  bool m_isFirst = true;
};

}  // namespace ondrel::command
