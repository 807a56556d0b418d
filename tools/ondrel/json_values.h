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

/// An object that is written member by member, one a line, to the end of a text.
class JsonObjectWriter {
 public:
  explicit JsonObjectWriter(std::string& out) : m_out(out) { m_out += '{'; }
  ~JsonObjectWriter() { m_out += '}'; }
  JsonObjectWriter(const JsonObjectWriter&) = delete;
  JsonObjectWriter& operator=(const JsonObjectWriter&) = delete;

  void Add(const char* name, const Json& value);

 private:
  friend class JsonArrayWriter;
  std::string& StartMember(const char* name);

  std::string& m_out;
  bool m_isFirst = true;
};

/// A member of an object whose value is an array that is written element by element, one a line. The object gets its
/// next member when the array is whole.
class JsonArrayWriter {
 public:
  JsonArrayWriter(JsonObjectWriter& object, const char* name);
  ~JsonArrayWriter() { m_out += ']'; }
  JsonArrayWriter(const JsonArrayWriter&) = delete;
  JsonArrayWriter& operator=(const JsonArrayWriter&) = delete;

  void Add(const Json& value);

 private:
  std::string& m_out;
  bool m_isFirst = true;
};

}  // namespace ondrel::command
