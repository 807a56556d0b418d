// The record's binary form: a run of values in the order of the fields, without a tag or a length of the whole.

#include <ondrel/MMCObjectParams.h>

#include "params/archive_counts.h"

using ondrel::LoadCount;
using ondrel::ReserveSome;
using ondrel::StoreCount;

namespace {

void StoreQueries(CVellum& archive, const CMMCObjectParams::QueryList& queries) {
  StoreCount(archive, queries.size());
  for (const auto& [tag, file] : queries) archive << tag << file;
}

void LoadQueries(CVellum& archive, CMMCObjectParams::QueryList& queries) {
  ULONGLONG left = LoadCount(archive);
  ReserveSome(queries, left);
  for (; left > 0; --left) {
    CString tag;
    __int64 file = 0;
    archive >> tag >> file;
    queries.emplace_back(std::move(tag), file);
  }
}

}  // namespace

void CMMCObjectParams::Serialize(CVellum& archive) const {
  archive << m_cookie << m_name << m_icon << static_cast<int>(m_type);
  StoreQueries(archive, m_childQueries);
  archive << m_menuScript;
  StoreCount(archive, m_scripts.size());
  for (const __int64 script : m_scripts) archive << script;
  if (HasView()) {
    archive << m_styleSheet;
    StoreQueries(archive, m_renderQueries);
  }
}

void CMMCObjectParams::Deserialize(CVellum& archive) {
  __int64 cookie = 0;
  int type = 0;
  archive >> cookie;
  SetCookie(cookie);
  archive >> m_name >> m_icon >> type;
  m_type = static_cast<_eTypeNode>(type);
  LoadQueries(archive, m_childQueries);
  archive >> m_menuScript;
  ULONGLONG left = LoadCount(archive);
  ReserveSome(m_scripts, left);
  for (; left > 0; --left) {
    __int64 script = 0;
    archive >> script;
    m_scripts.push_back(script);
  }
  if (HasView()) {
    archive >> m_styleSheet;
    LoadQueries(archive, m_renderQueries);
  }
}
