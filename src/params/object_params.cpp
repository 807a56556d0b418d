// The record of a node or dialog: its values and the vocabulary of node types.

#include <ondrel/MMCObjectParams.h>

namespace {

const CString kListName = _T("List");
const CString kHtmlName = _T("HTML");
const CString kDialogName = _T("Dialog");
const CString kUnknownName = _T("Oops!!");  // stands in project files, so the text is part of the format

/// Moves `source` to `target`, unless they are one list: a list moved onto itself may lose its elements.
template <class List>
void TakeOver(List& target, List&& source) {
  if (&target != &source) {
    target.clear();
    target.swap(source);
  }
}

}  // namespace

const DWORD CMMCObjectParams::n_nCurrentVersion = 1;
const int CMMCObjectParams::VT_OBJECT_COOKIE = VT_I8;
const int CMMCObjectParams::VT_FILE_COOKIE = VT_I8;

CMMCObjectParams::CMMCObjectParams() = default;

CMMCObjectParams::CMMCObjectParams(__int64 cookie, CString name, _eTypeNode type)
    : m_cookie(cookie), m_name(std::move(name)), m_type(type) {}

// As the move below, by hand: a copy is kept by no set.
CMMCObjectParams::CMMCObjectParams(const CMMCObjectParams& other)
    : m_cookie(other.m_cookie),
      m_name(other.m_name),
      m_icon(other.m_icon),
      m_type(other.m_type),
      m_childQueries(other.m_childQueries),
      m_styleSheet(other.m_styleSheet),
      m_menuScript(other.m_menuScript),
      m_scripts(other.m_scripts),
      m_renderQueries(other.m_renderQueries) {}

// The source keeps its name: callers still report a record by its name after they have handed it over.
// NOLINTNEXTLINE(performance-noexcept-move-constructor): callers' builds rely on the declaration
CMMCObjectParams::CMMCObjectParams(CMMCObjectParams&& other)
    : m_cookie(other.m_cookie),
      m_name(other.m_name),  // NOLINT(performance-move-constructor-init): the source keeps it
      m_icon(other.m_icon),
      m_type(other.m_type),
      m_childQueries(std::move(other.m_childQueries)),
      m_styleSheet(other.m_styleSheet),
      m_menuScript(other.m_menuScript),
      m_scripts(std::move(other.m_scripts)),
      m_renderQueries(std::move(other.m_renderQueries)) {}

CMMCObjectParams& CMMCObjectParams::operator=(const CMMCObjectParams& other) {
  // All that may fail comes first, so that a record is never replaced by halves.
  CMMCObjectParams copy(other);
  Swap(copy);
  return *this;
}

void CMMCObjectParams::Swap(CMMCObjectParams& other) noexcept {
  const __int64 cookie = m_cookie;
  SetCookie(other.m_cookie);
  other.SetCookie(cookie);
  std::swap(m_name, other.m_name);
  std::swap(m_icon, other.m_icon);
  std::swap(m_type, other.m_type);
  m_childQueries.swap(other.m_childQueries);
  std::swap(m_styleSheet, other.m_styleSheet);
  std::swap(m_menuScript, other.m_menuScript);
  m_scripts.swap(other.m_scripts);
  m_renderQueries.swap(other.m_renderQueries);
}

CMMCObjectParams::~CMMCObjectParams() = default;

CString CMMCObjectParams::GetIdentity() const {
  CString identity;
  // 32 bits on purpose: identities are short names for people, and existing definitions carry them in this form.
  identity.Format(_T("%4.4d"), static_cast<int>(m_cookie));
  return identity;
}

void CMMCObjectParams::SetName(CString name) { m_name = std::move(name); }
CString CMMCObjectParams::GetName() const { return m_name; }

void CMMCObjectParams::SetIcon(__int64 fileCookie) { m_icon = fileCookie; }
__int64 CMMCObjectParams::GetIcon() const { return m_icon; }

void CMMCObjectParams::SetNodeType(_eTypeNode type) { m_type = type; }
CMMCObjectParams::_eTypeNode CMMCObjectParams::GetNodeType() const { return m_type; }

void CMMCObjectParams::SetChildQueries(QueryList&& queries) { TakeOver(m_childQueries, std::move(queries)); }
CMMCObjectParams::QueryList CMMCObjectParams::GetChildQueries() const { return m_childQueries; }

void CMMCObjectParams::SetMenuScript(__int64 fileCookie) { m_menuScript = fileCookie; }
__int64 CMMCObjectParams::GetMenuScript() const { return m_menuScript; }

void CMMCObjectParams::SetScripts(ScriptList&& fileCookies) { TakeOver(m_scripts, std::move(fileCookies)); }
CMMCObjectParams::ScriptList CMMCObjectParams::GetScripts() const { return m_scripts; }

void CMMCObjectParams::SetRenderQueries(QueryList&& queries) { TakeOver(m_renderQueries, std::move(queries)); }
CMMCObjectParams::QueryList CMMCObjectParams::GetRenderQueries() const { return m_renderQueries; }

void CMMCObjectParams::SetStyleSheet(__int64 fileCookie) { m_styleSheet = fileCookie; }
__int64 CMMCObjectParams::GetStyleSheet() const { return m_styleSheet; }

__int64 CMMCObjectParams::GetCookie() const { return m_cookie; }

CString CMMCObjectParams::GetNodeTypeName(_eTypeNode type) {
  switch (type) {
    case eList:
      return kListName;
    case eHTML:
      return kHtmlName;
    case eDialog:
      return kDialogName;
    default:
      return kUnknownName;
  }
}

CMMCObjectParams::_eTypeNode CMMCObjectParams::GetNodeType(CString name) {
  if (name.CompareNoCase(kListName) == 0) return eList;
  if (name.CompareNoCase(kHtmlName) == 0) return eHTML;
  if (name.CompareNoCase(kDialogName) == 0) return eDialog;
  return eUnknown;
}

__int64 CMMCObjectParams::V_OBJECT_COOKIE(CComVariant* variant) { return variant->llVal; }
__int64 CMMCObjectParams::V_FILE_COOKIE(CComVariant* variant) { return variant->llVal; }

void CMMCObjectParams::SetCookie(__int64 cookie) {
  if (cookie == m_cookie) return;
  m_cookie = cookie;
  if (m_cookieChanged != nullptr) m_cookieChanged->store(true, std::memory_order_relaxed);
}

bool CMMCObjectParams::HasView() const { return m_type == eHTML || m_type == eDialog; }
