// Records and the values in them.
#include "json_values.h"

#include <utility>

namespace ondrel::command {
namespace {

Json QueriesJson(const CMMCObjectParams::QueryList& queries) {
  Json list = Json::array();
  for (const auto& [tag, file] : queries) list.push_back({{"tag", platform::ToUtf8(tag)}, {"file", CookieJson(file)}});
  return list;
}

}  // namespace

Json CookieJson(__int64 cookie) { return std::to_string(cookie); }

Json PathJson(const std::optional<CString>& path) { return path ? Json(platform::ToUtf8(*path)) : Json(); }

Json RecordJson(const CMMCObjectParams& record) {
  Json scripts = Json::array();
  for (const __int64 script : record.GetScripts()) scripts.push_back(CookieJson(script));
  return {{"cookie", CookieJson(record.GetCookie())},
          {"name", platform::ToUtf8(record.GetName())},
          {"type", platform::ToUtf8(CMMCObjectParams::GetNodeTypeName(record.GetNodeType()))},
          {"icon", CookieJson(record.GetIcon())},
          {"childQueries", QueriesJson(record.GetChildQueries())},
          {"renderQueries", QueriesJson(record.GetRenderQueries())},
          {"menuScript", CookieJson(record.GetMenuScript())},
          {"scripts", std::move(scripts)},
          {"styleSheet", CookieJson(record.GetStyleSheet())}};
}

std::string JsonLine(const Json& value) { return value.dump(-1, ' ', true, Json::error_handler_t::replace); }

void JsonObjectWriter::Add(const char* name, const Json& value) { StartMember(name) += JsonLine(value); }

std::string& JsonObjectWriter::StartMember(const char* name) {
  m_out.append(m_isFirst ? "\"" : ",\n\"").append(name).append("\":");
  m_isFirst = false;
  return m_out;
}

JsonArrayWriter::JsonArrayWriter(JsonObjectWriter& object, const char* name) : m_out(object.StartMember(name)) {
  m_out += '[';
}

void JsonArrayWriter::Add(const Json& value) {
  if (!m_isFirst) m_out += ',';
  m_isFirst = false;
  m_out += '\n' + JsonLine(value);
}

}  // namespace ondrel::command
